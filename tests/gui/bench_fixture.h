#pragma once

#include "dialog_driver.h"
#include "operated_simulator.h"
#include "qt/desk_program.h"
#include "ui_driver.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <optional>

namespace desk::gui {

/// A test bench: a folder with initial copies of the two ini files, the desk's real window, and a simulated generator
/// on a pseudo terminal at COM1.
class bench : public ::testing::Test {
protected:
    bench();

    /// Creates or replaces a file in the program's own directory.
    void put_file(const QString& name, const QByteArray& content) const;
    void remove_file(const QString& name) const;
    QByteArray file(const QString& name) const;

    void plug_generator();
    std::function<bool()> heard(const QByteArray& command) const {
        return [this, command] { return generator->has_printed("> " + command + "\n"); };
    }
    /// Starts the desk and expects its window.
    void start();

    ui_driver driver() { return ui_driver(program->main_window()); }
    frm_main& desk() { return program->desk(); }
    QString com1() const { return directory.filePath("com1"); }

    QTemporaryDir directory;
    std::optional<operated_simulator> generator;
    std::unique_ptr<qt::desk_program> program;
};

} // namespace desk::gui
