// Drives the real windows off screen with the simulated generator and saves a picture of every view.

#include "dialog_hand.h"
#include "hand.h"
#include "off_screen.h"
#include "operated_simulator.h"
#include "qt/desk_program.h"
#include "qt/look.h"
#include "runtime/version.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QScreen>
#include <QTemporaryDir>
#include <QTest>

#include <cstdio>
#include <exception>
#include <functional>
#include <optional>
#include <stdexcept>
#include <string_view>
#include <vector>

namespace {

using desk::gui::hand;

class tour {
public:
    tour(const hand& operator_hand, QDir pictures) : hand_(operator_hand), pictures_(std::move(pictures)) {}

    void walk() {
        picture("start");
        hand_.click("cmd_about");
        demand("lab_about", "Hardware F/W is v1.2");
        picture("about");
        hand_.click("cmd_about_ok");

        hand_.click("cmd_timing");
        hand_.click_row("lstv_timing", 7);
        hand_.click("cmd_run");
        demand("lab_timing", "[07]");
        picture("timing_select");

        hand_.click("cmd_pattern");
        hand_.click_row("lstv_pattern", 3);
        hand_.click("cmd_run");
        demand("lab_pattern", "[03]");
        picture("pattern_select");
        hand_.click_row("lstv_pattern", 13);
        hand_.click("cmd_download");
        demand("lab_color_setting_0", "Red");
        picture("pattern_color_setting");
        hand_.click_row("lstv_pattern", 41);
        hand_.type("txt_motion_str", "VELOTRACE");
        hand_.click("cmd_upload");
        hand_.click("cmd_download");
        demand("txt_motion_str", "VELOTRACE");
        picture("pattern_motion_string");

        hand_.click("cmd_fav_timing");
        hand_.click_check("lstv_timing", 2);
        hand_.click_check("lstv_timing", 5);
        hand_.click("cmd_run");
        hand_.click("cmd_download");
        picture("favorite_timing");
        hand_.click("cmd_fav_pattern");
        hand_.click_check("lstv_pattern", 3);
        hand_.click("cmd_run");
        picture("favorite_pattern");
        workbench();
        translation();
        programmer();

        hand_.click("cmd_auto");
        add_step(1, 6, 2, 1);
        add_step(2, 11, 12, 5);
        add_step(4, 22, 40, 30);
        hand_.click("cmd_run");
        hand_.click("cmd_download");
        picture("autorun_config");

        hand_.click("cmd_setup");
        hand_.click("cmd_download");
        hand_.click("cmd_csc_1");
        hand_.click("cmd_deep_2");
        picture("panel_control");
        hand_.click("cmd_reset");
        picture("panel_after_reset");
        hand_.click("cmd_refresh");
        demand("lab_timing", "[01]");
        picture("panel_after_refresh");
        without_a_port();
    }

private:
    void workbench() {
        hand_.click("cmd_edid");
        hand_.click("cmd_read");
        demand("lab_read_checksum_0", "Correct.");
        save_read_side("display.bin", 2);
        in_window([this](const hand& diag) {
            save_picture(diag, "hex_style");
            diag.click("opt_hex_type_1");
            diag.click("cmd_ok");
        });
        save_read_side("display.hex", 1);
        desk::gui::in_next_window("QFileDialog", [this](const hand& dialog) {
            save_picture(dialog, "file_dialog");
            QTest::keyClick(QApplication::activeModalWidget(), Qt::Key_Escape);
        });
        hand_.click("cmd_load");
        desk::gui::answer_next_file_dialog(dialogs_, folder_.filePath("display.hex"));
        hand_.click("cmd_load");
        demand("lab_write_checksum_1", "Correct.");
        picture("edid_read_write");
        hand_.click("cmd_pre_f");
        picture("edid_previous_files");
        hand_.click("cmd_pre_f");
        hand_.click("cmd_write");
        demand("lab_pass", "PASS");
        hand_.click("cmd_verify");
        demand("txt_msg", "Match entirely.");
        picture("edid_verify");
        hand_.click("cmd_ok");
        hand_.click("opt_edid_src_3");
        hand_.click("cmd_read");
        hand_.click("cmd_compare");
        demand("lab_pass", "FAIL");
        picture("edid_compare");
        hand_.click("cmd_ok");
    }

    void translation() {
        hand_.click("opt_edid_src_1");
        hand_.click("cmd_read");
        hand_.click("cmd_read_translate");
        demand("txt_edid", "Block 0 is VESA Basic Block");
        picture("translation_root");
        hand_.click_node("tree_edid", {block_0, "Established Timings"});
        picture("translation_established");
        hand_.click_node("tree_edid", {block_0, "Detail Timings/Monitor Descriptors", "Detail Timing1"});
        picture("translation_detail_timing");
        hand_.click_node("tree_edid", {block_1, data_blocks, "Video Data Block"});
        picture("translation_video");
        hand_.click_node("tree_edid", {block_1, data_blocks, "Speaker Allocation Data Block"});
        demand("txt_edid", "FL/FR");
        picture("translation_speakers");
        desk::gui::in_next_window("frm_report", [this](const hand& report) {
            save_picture(report, "report");
            report.click("cmd_exit");
        });
        hand_.click("cmd_edid_report");
        hand_.click("cmd_edid_back");
    }

    void programmer() {
        in_window([this](const hand& diag) {
            diag.choose("cbo_eeprom", 1);
            diag.click("opt_unused_1");
            diag.click("cmd_checksum");
            save_picture(diag, "programmer_sum");
            diag.click("cmd_ok");
        });
        hand_.click("cmd_sum_write");
        in_window([this](const hand& diag) {
            diag.type("txt_sn", "305419896");
            diag.click("chk_auto_sn");
            diag.click("cmd_run");
            save_picture(diag, "automatic_run");
            diag.click("cmd_ok");
        });
        hand_.click("cmd_w_auto");
    }

    void without_a_port() {
        hand_.click("cmd_disconn");
        desk::gui::in_next_window("", [this](const hand& box) {
            save_picture(box, "no_port");
            QTest::keyClick(QApplication::activeModalWidget(), Qt::Key_Escape);
        });
        hand_.click("cmd_refresh");
        picture("disconnected");
    }

    void save_read_side(const QString& name, int filter) {
        desk::gui::answer_next_file_dialog(dialogs_, folder_.filePath(name), filter);
        hand_.click("cmd_save_read");
    }

    static void in_window(const std::function<void(const hand&)>& work) { desk::gui::in_next_window("frm_diag", work); }

    void picture(const QString& name) {
        // the finished bar stays for a moment
        desk::gui::wait_until([this] { return !hand_.find("work_bar").isVisible(); }, 2000);
        save_picture(hand_, name);
    }

    void save_picture(const hand& h, const QString& name) {
        ++count_;
        const QString path = pictures_.filePath(QString("%1_%2.png").arg(count_, 2, 10, QChar('0')).arg(name));
        h.save_picture(path);
        std::printf("  %s\n", qPrintable(path));
    }

    void add_step(int row, int timing, int pattern, int interval) const {
        hand_.click_row("lstv_auto", row);
        hand_.choose("cbo_timing", timing);
        hand_.choose("cbo_pattern", pattern);
        hand_.choose("cbo_interval", interval);
        hand_.click("cmd_replace");
    }

    void demand(const QString& label, const QString& text) const {
        const QString shown = hand_.text(label);
        if (!shown.contains(text))
            throw std::runtime_error((label + " reads \"" + shown + "\", not \"" + text + "\"").toStdString());
    }

    static constexpr const char* block_0 = "Block 0: VESA Basic Block";
    static constexpr const char* block_1 = "Block 1: CEA 861 Block";
    static constexpr const char* data_blocks = "Data Block Collection";

    const hand& hand_;
    QDir pictures_;
    QTemporaryDir folder_; // for EDID files
    std::vector<desk::gui::seen_dialog> dialogs_;
    int count_ = 0;
};

/// Prints Qt's messages, except the offscreen platform's warning about windows of fixed size.
void show_message(QtMsgType, const QMessageLogContext&, const QString& text) {
    if (text != "This plugin does not support propagateSizeHints()") std::fprintf(stderr, "%s\n", qPrintable(text));
}

/// Options of the pictures; the default is a light desk at 1:1.
struct wishes {
    QString folder;
    bool dark = false;
    QString screen;      ///< "1366x768": fill it; empty: the window's own size
    QByteArray scale;    ///< of the screen
    bool of_all = false; ///< three screens, three scales and both schemes, each in its own folder
};

bool understands(int argument_count, char** arguments, wishes& w) {
    for (int i = 1; i < argument_count; ++i) {
        const QByteArray a = arguments[i];
        if (a == "--dark")
            w.dark = true;
        else if (a == "--all")
            w.of_all = true;
        else if (a.startsWith("--scale="))
            w.scale = a.sliced(8);
        else if (a.startsWith("--screen="))
            w.screen = QString::fromLatin1(a.sliced(9));
        else if (!a.startsWith("--") && w.folder.isEmpty())
            w.folder = QString::fromLocal8Bit(a);
        else
            return false;
    }
    return !w.folder.isEmpty();
}

int run(const wishes& w) {
    QTemporaryDir directory;
    for (const char* name : {"marlo_rs232.ini", "timing_pattern.ini"})
        QFile::copy(QString(FIRST_FILES) + "/" + name, directory.filePath(name));
    const desk::gui::operated_simulator generator(directory.filePath("com1"));
    desk::qt::desk_program program(std::filesystem::path(directory.path().toStdString()));
    if (!program.start()) return 1;
    if (!w.screen.isEmpty()) {
        program.main_window().resize(program.main_window().screen()->availableSize());
        QCoreApplication::processEvents();
    }
    QDir().mkpath(w.folder);
    std::printf("The desk off screen against the simulated generator:\n");
    tour(hand(program.main_window()), QDir(w.folder)).walk();
    return program.gate().over() ? 1 : 0;
}

/// Each in a separate process, since a process has one scale.
int run_all(const char* program, const QString& folder) {
    int failed = 0;
    for (const char* screen : {"1024x600", "1366x768", "1920x1080"})
        for (const char* scale : {"1", "1.5", "2"})
            for (const char* scheme : {"light", "dark"}) {
                QStringList arguments = {folder + "/" + screen + "_" + scale + "_" + scheme,
                                         QString("--screen=") + screen, QString("--scale=") + scale};
                if (scheme == std::string_view("dark")) arguments << "--dark";
                if (QProcess::execute(program, arguments) != 0) ++failed;
            }
    return failed == 0 ? 0 : 1;
}

} // namespace

int main(int argument_count, char** arguments) {
    if (argument_count == 2 && std::string_view(arguments[1]) == "--version") {
        std::fputs(desk::version_line("velotrace_tour").c_str(), stdout);
        return 0;
    }
    wishes w;
    if (!understands(argument_count, arguments, w)) {
        std::fprintf(stderr, "usage: velotrace_tour FOLDER [--dark] [--screen=WIDTHxHEIGHT] [--scale=FACTOR] [--all] | "
                             "--version\n");
        return 2;
    }
    if (w.of_all) return run_all(arguments[0], w.folder);
    std::optional<desk::gui::off_screen> screen;
    // a requested screen replaces the platform's default
    const bool off_screen = qgetenv("QT_QPA_PLATFORM") == "offscreen" && !w.screen.isEmpty();
    if (off_screen || !qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        screen.emplace(w.screen.isEmpty() ? "3840x2400" : w.screen);
    if (!w.scale.isEmpty()) qputenv("QT_SCALE_FACTOR", w.scale);
    qInstallMessageHandler(show_message);
    // native dialogs are out of reach
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    QApplication application(argument_count, arguments);
    if (screen) screen->settle();
    QApplication::setQuitOnLastWindowClosed(false);
    desk::qt::set_look(application, w.dark ? desk::qt::scheme::dark : desk::qt::scheme::light);
    try {
        return run(w);
    } catch (const std::exception& e) {
        std::fprintf(stderr, "The tour has ended early: %s\n", e.what());
        return 1;
    }
}
