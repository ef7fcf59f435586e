// Puts the desk into a situation in which the test requests its end: ending_desk SITUATION FOLDER. Prints "there"
// once it is in it; on POSIX systems, a line on standard input presses the main window's close button.

#include "dialog_driver.h"
#include "operated_simulator.h"
#include "platform/end_request.h"
#include "qt/appearance.h"
#include "qt/desk_program.h"
#include "qt/end_watch.h"
#include "runtime/failure.h"
#include "ui_driver.h"
#include "unread_line.h"

#include <QAbstractScrollArea>
#include <QApplication>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QFileDialog>
#include <QListView>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QSocketNotifier>
#include <QTest>
#include <QTimer>

#include <atomic>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <thread>

#ifndef _WIN32
#include <unistd.h>
#endif

namespace desk::gui {

namespace {

void print_there() {
    std::puts("there");
    std::fflush(stdout);
}

/// Prints "there" once `holds` returns true, even inside the event loop of a box or a menu.
void print_there_when(std::function<bool()> holds) {
    auto* const poll = new QTimer(qApp);
    QObject::connect(poll, &QTimer::timeout, poll, [poll, holds = std::move(holds)] {
        if (!holds()) return;
        poll->stop();
        poll->deleteLater();
        print_there();
    });
    poll->start(5);
}

template <class Window>
bool is_open() {
    return qobject_cast<Window*>(QApplication::activeModalWidget()) != nullptr;
}

class ending_desk {
public:
    ending_desk(const std::filesystem::path& folder, qt::end_watch& watch) : folder_(folder), program_(folder) {
        program_.end_on(watch);
    }

    int run(const std::string& situation) {
        if (situation == "start_up") {
            print_there_when(is_open<QMessageBox>);
        } else if (situation == "endless_drain") {
            unread_line_.emplace(folder_);
        } else {
            generator_.emplace(simulator_for(QString::fromStdString((folder_ / "com1").string())));
        }
        if (program_.start()) {
            QTimer::singleShot(0, qApp, [this, situation] { enter(situation); });
            QApplication::exec();
        }
        return program_.exit_status();
    }

    void close() { program_.main_window().close(); }

private:
    ui_driver at() { return ui_driver(program_.main_window()); }

    void enter(const std::string& situation) {
        static const std::map<std::string, void (ending_desk::*)()> ways = {
            {"rest", &ending_desk::rest},
            {"exchange", &ending_desk::exchange},
            {"erase", &ending_desk::erase},
            {"automatic_run", &ending_desk::automatic_run},
            {"endless_drain", &ending_desk::endless_drain},
            {"modal_window", &ending_desk::modal_window},
            {"report", &ending_desk::report},
            {"message_box", &ending_desk::message_box},
            {"file_dialog", &ending_desk::file_dialog},
            {"menu_of_the_file_dialog", &ending_desk::menu_of_the_file_dialog},
            {"menu_of_a_text", &ending_desk::menu_of_a_text},
            {"open_list", &ending_desk::open_list},
            {"held_slider", &ending_desk::held_slider},
            {"failure_box", &ending_desk::failure_box},
        };
        (this->*ways.at(situation))();
    }

    /// Reads an EDID into the READ window, unsaved.
    void read_edid() {
        at().click("cmd_edid");
        at().click("cmd_read");
    }

    void print_there_when_heard(const QByteArray& command) {
        print_there_when([this, command] { return generator_->has_printed("> " + command + "\n"); });
    }

    void rest() {
        read_edid();
        print_there();
    }

    void exchange() {
        read_edid();
        generator_->command("silent");
        at().click("cmd_timing");
        print_there_when_heard("TIM001");
        at().click("cmd_run");
    }

    void erase() {
        read_edid();
        generator_->command("erase 60000");
        std::vector<seen_box> boxes;
        answer_next_box(boxes, QMessageBox::Yes);
        print_there_when_heard("ERS001");
        at().click("cmd_erase");
    }

    /// Opens the same EDID from a file in the WRITE window.
    void open_edid() {
        const QByteArray edid = generator_->sink(1);
        const QString path = QString::fromStdString((folder_ / "first.bin").string());
        QFile file(path);
        if (!file.open(QFile::WriteOnly)) return;
        file.write(edid);
        file.close();
        std::vector<seen_dialog> dialogs;
        answer_next_file_dialog(dialogs, path);
        at().click("cmd_load");
    }

    void automatic_run() {
        read_edid();
        open_edid();
        generator_->command("silent");
        in_next_window("frm_diag", [this](const ui_driver& ui) {
            generator_->traffic(); // of the earlier READ
            print_there_when([this] { return generator_->commands().contains("ESC001"); });
            ui.click("cmd_run");
        });
        at().click("cmd_w_auto");
    }

    void endless_drain() {
        unread_line_->fill();
        at().click("cmd_timing");
        // no events run during that wait
        auto* const beat = new QTimer(qApp);
        QObject::connect(beat, &QTimer::timeout, beat, [this] { ++beats_; });
        beat->start(5);
        watcher_ = std::thread([this] {
            int before = -1;
            while (before != beats_) {
                before = beats_;
                std::this_thread::sleep_for(std::chrono::milliseconds(500));
            }
            print_there();
        });
        watcher_.detach();
        at().click("cmd_run");
    }

    void modal_window() {
        read_edid();
        in_next_window("frm_diag", [](const ui_driver&) { print_there(); });
        at().click("cmd_sum_read");
    }

    void report() {
        read_edid();
        at().click("cmd_read_translate");
        in_next_window("frm_report", [](const ui_driver&) { print_there(); });
        at().click("cmd_edid_report");
    }

    void message_box() {
        read_edid();
        at().click("cmd_disconn");
        print_there_when(is_open<QMessageBox>);
        at().click("cmd_about");
    }

    void file_dialog() {
        read_edid();
        print_there_when(is_open<QFileDialog>);
        at().click("cmd_load");
    }

    static bool is_menu_open() { return qobject_cast<QMenu*>(QApplication::activePopupWidget()) != nullptr; }

    /// The context menu of the dialog's files has its own event loop.
    void menu_of_the_file_dialog() {
        read_edid();
        QTimer::singleShot(500, qApp, [] {
            auto* const dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
            if (dialog == nullptr) return;
            auto* const files = dialog->findChild<QListView*>("listView");
            emit files->customContextMenuRequested(QPoint(5, 5));
        });
        print_there_when(is_menu_open);
        at().click("cmd_load");
    }

    void menu_of_a_text() {
        read_edid();
        QWidget& text = *at().find<QAbstractScrollArea>("txt_read").viewport();
        print_there_when(is_menu_open);
        QContextMenuEvent asked(QContextMenuEvent::Mouse, QPoint(9, 9), text.mapToGlobal(QPoint(9, 9)));
        QApplication::sendEvent(&text, &asked);
    }

    void open_list() {
        read_edid();
        at().find<QComboBox>("cbo_com").showPopup();
        print_there_when([] { return QApplication::activePopupWidget() != nullptr; });
    }

    void held_slider() {
        read_edid();
        at().click("cmd_pattern");
        at().click_row("lstv_pattern", 13);
        at().click("cmd_download");
        QTest::mousePress(&at().find("hsr_color_setting_0"), Qt::LeftButton, Qt::NoModifier, QPoint(40, 5));
        print_there();
    }

    void failure_box() {
        read_edid();
        print_there_when(is_open<QMessageBox>);
        program_.gate().run([] { throw runtime_failure(failure::overflow, "on purpose"); });
    }

    std::filesystem::path folder_;
    std::optional<operated_simulator> generator_;
    std::optional<unread_line> unread_line_;
    qt::desk_program program_;
    std::atomic<int> beats_ = 0;
    std::thread watcher_;
};

int run(int argument_count, char** arguments) {
    const end_request request;
    QApplication application(argument_count, arguments);
    qt::end_watch watch(request);
    QApplication::setQuitOnLastWindowClosed(false);
    qt::set_appearance(application);
    if (argument_count != 3) return 2;
    ending_desk desk(arguments[2], watch);
#ifndef _WIN32
    QSocketNotifier typed(STDIN_FILENO, QSocketNotifier::Read);
    QObject::connect(&typed, &QSocketNotifier::activated, &typed, [&] {
        typed.setEnabled(false);
        desk.close();
    });
#endif
    return desk.run(arguments[1]);
}

} // namespace

} // namespace desk::gui

int main(int argument_count, char** arguments) { return desk::gui::run(argument_count, arguments); }
