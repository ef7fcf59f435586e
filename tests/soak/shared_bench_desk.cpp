// One user's desk on a shared bench: the real window on a shared folder. It connects, sends, reads, opens and saves
// at random until the program ends. "close" on standard input closes the window.

#include "dialog_driver.h"
#include "platform/end_request.h"
#include "qt/appearance.h"
#include "qt/desk_program.h"
#include "qt/end_watch.h"
#include "ui_driver.h"

#include <QApplication>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QSocketNotifier>
#include <QTest>
#include <QTimer>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <random>
#include <string>

#include <unistd.h>

namespace {

using namespace desk;
using desk::gui::ui_driver;

/// 32 lines of eight bytes, and an empty one between the blocks.
constexpr std::ptrdiff_t whole_edid_lines = 33;

class operator_at_random {
public:
    operator_at_random(qt::desk_program& program, QString folder, unsigned seed)
        : program_(program), folder_(std::move(folder)), random_(seed) {
        QObject::connect(&answers_, &QTimer::timeout, &answers_, [] { answer_box(); });
        answers_.start(10);
        moves_.setSingleShot(true);
        QObject::connect(&moves_, &QTimer::timeout, &moves_, [this] {
            // a box may precede the window at start-up
            if (program_.main_window().isVisible()) move();
            moves_.start(20);
        });
        moves_.start(0);
    }

private:
    ui_driver at() { return ui_driver(program_.main_window()); }
    int below(int limit) { return static_cast<int>(random_() % static_cast<unsigned>(limit)); }
    QString some_file() { return folder_ + "/edid_" + QString::number(below(3)) + ".hex"; }

    static void answer_box() {
        if (auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget()))
            box->buttons().constFirst()->click();
    }

    void move() {
        switch (below(6)) {
        case 0:
            return at().click("cmd_conn");
        case 1:
            at().click("cmd_timing");
            at().click_row("lstv_timing", 1 + below(20));
            return at().click("cmd_run");
        case 2:
            at().click("cmd_edid");
            return at().click("cmd_read");
        case 3:
            at().click("cmd_edid");
            gui::answer_next_file_dialog(dialogs_, some_file());
            return at().click("cmd_load");
        case 4:
            return save("cmd_save_read", program_.desk().workbench.txt_read);
        default:
            return save("cmd_save_write", program_.desk().workbench.txt_write);
        }
    }

    /// Saves a complete EDID; a failed READ leaves one of any length.
    void save(const char* button, const text_box& box) {
        if (file_line_count(box.text) != whole_edid_lines) return;
        at().click("cmd_edid");
        gui::answer_next_file_dialog(dialogs_, some_file());
        gui::in_next_window("frm_diag", [](const ui_driver& style) { style.click("cmd_ok"); });
        at().click(button);
    }

    static std::ptrdiff_t file_line_count(const std::string& text) {
        return std::count(text.begin(), text.end(), '\n');
    }

    qt::desk_program& program_;
    QString folder_;
    std::mt19937 random_;
    std::vector<gui::seen_dialog> dialogs_;
    QTimer answers_;
    QTimer moves_;
};

} // namespace

int main(int argument_count, char** arguments) {
    if (argument_count != 3) {
        std::cerr << "usage: shared_bench_desk FOLDER SEED\n";
        return 2;
    }
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const end_request request;
    QApplication application(argument_count, arguments);
    QApplication::setQuitOnLastWindowClosed(false);
    qt::end_watch watch(request);
    qt::set_appearance(application);
    const std::filesystem::path folder = std::filesystem::absolute(arguments[1]);
    qt::desk_program program(folder);
    std::cout << "started" << std::endl;
    operator_at_random user(program, QString::fromStdString(folder.string()),
                            static_cast<unsigned>(std::atoi(arguments[2])));
    QSocketNotifier orders(STDIN_FILENO, QSocketNotifier::Read);
    QTimer closing;
    QObject::connect(&orders, &QSocketNotifier::activated, &closing, [&] {
        orders.setEnabled(false);
        closing.start(5);
    });
    // the window may not exist yet
    QObject::connect(&closing, &QTimer::timeout, &closing, [&] {
        if (!program.gate().over() && program.main_window().isVisible()) program.main_window().close();
    });
    program.end_on(watch);
    if (program.start()) QApplication::exec();
    return program.exit_status();
}
