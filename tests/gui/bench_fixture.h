#pragma once

#include "dialog_hand.h"
#include "hand.h"
#include "operated_simulator.h"
#include "qt/desk_program.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <functional>
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
    /// A generator that keeps in step with this thread, where the system allows it.
    static std::unique_ptr<simulator_program> simulator_for(const QString& link);
    /// Holds once the generator has heard this command.
    std::function<bool()> heard(const QByteArray& command) const {
        return [this, command] { return generator->has_printed("> " + command + "\n"); };
    }
    /// Starts the desk; it must come up.
    void start();

    hand operator_hand() { return hand(program->main_window()); }
    frm_main& desk() { return program->desk(); }
    QString com1() const { return directory.filePath("com1"); }

    QTemporaryDir directory;
    std::optional<operated_simulator> generator;
    std::unique_ptr<qt::desk_program> program;
};

} // namespace desk::gui
