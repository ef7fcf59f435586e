// Thousands of exchanges on the real clock, from the real window over a pseudo terminal to the simulator: memory and
// descriptors stay constant after the first tenth.

#include "operated_simulator.h"
#include "qt/appearance.h"
#include "qt/desk_program.h"
#include "soak/process_resources.h"
#include "ui_driver.h"

#include <QApplication>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <cstdlib>
#include <iostream>
#include <stdexcept>

namespace {

using namespace desk;
using desk::gui::ui_driver;
using desk::test::stays_flat;

constexpr int rows = 60;
constexpr int most_in_a_row_unanswered = 3;
constexpr std::size_t most_growth_kib = 2048;

class bench {
public:
    bench() {
        for (const char* name : {"marlo_rs232.ini", "timing_pattern.ini"}) {
            QFile::copy(QString(FIRST_FILES) + "/" + name, folder_.filePath(name));
            QFile::setPermissions(folder_.filePath(name), QFile::ReadOwner | QFile::WriteOwner);
        }
        generator_ = std::make_unique<gui::operated_simulator>(folder_.filePath("com1"), QStringList{"--quiet"});
        program_ = std::make_unique<qt::desk_program>(std::filesystem::path(folder_.path().toStdString()));
        if (!program_->start()) throw std::runtime_error("the desk does not start");
        if (!QTest::qWaitForWindowExposed(&program_->main_window())) throw std::runtime_error("no window is shown");
        at().click("cmd_timing");
    }

    void exchange() {
        const int row = 1 + count_++ % rows;
        at().click_row("lstv_timing", row);
        at().click("cmd_run");
        // a busy machine may leave one unanswered
        unanswered_ = program_->desk().catalogue.cur_timing == row ? 0 : unanswered_ + 1;
        if (unanswered_ > most_in_a_row_unanswered)
            throw std::runtime_error("the generator does not answer: " + at().text("lab_timing").toStdString());
    }

private:
    ui_driver at() { return ui_driver(program_->main_window()); }

    QTemporaryDir folder_;
    std::unique_ptr<gui::operated_simulator> generator_;
    std::unique_ptr<qt::desk_program> program_;
    int count_ = 0;
    int unanswered_ = 0;
};

int run(int count) {
    bench b;
    return stays_flat(count, most_growth_kib, [&] { b.exchange(); }) ? 0 : 1;
}

} // namespace

int main(int argument_count, char** arguments) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const int count = argument_count == 2 ? std::atoi(arguments[1]) : 0;
    if (count < 10) {
        std::cerr << "usage: real_exchanges COUNT\n";
        return 2;
    }
    QApplication application(argument_count, arguments);
    QApplication::setQuitOnLastWindowClosed(false);
    qt::set_appearance(application);
    try {
        return run(count);
    } catch (const std::exception& e) {
        std::cerr << "real_exchanges: " << e.what() << '\n';
        return 1;
    }
}
