#pragma once

#include "dialog_hand.h"
#include "hand.h"
#include "qt/desk_program.h"
#include "simulator_process.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <memory>
#include <optional>

namespace desk::gui {

/// A bench: a folder with first copies of the two files, the desk's real window, and a generator on a pseudo terminal
/// behind COM1.
class bench : public ::testing::Test {
protected:
    bench();

    /// Puts a file into the program's own directory, in the place of one that stands there.
    void put_file(const QString& name, const QByteArray& content) const;
    void remove_file(const QString& name) const;
    QByteArray file(const QString& name) const;

    void plug_generator();
    /// Starts the desk; it must come up.
    void start();

    hand operator_hand() { return hand(program->main_window()); }
    frm_main& desk() { return program->desk(); }
    QString com1() const { return directory.filePath("com1"); }

    QTemporaryDir directory;
    std::optional<simulator_process> generator;
    std::unique_ptr<qt::desk_program> program;
};

} // namespace desk::gui
