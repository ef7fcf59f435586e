// Drives the real windows off screen with the simulated generator and saves a picture of every view.

#include "dialog_driver.h"
#include "off_screen.h"
#include "operated_simulator.h"
#include "qt/appearance.h"
#include "qt/desk_program.h"
#include "runtime/version.h"
#include "ui_driver.h"

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

using desk::gui::ui_driver;

class tour {
public:
    tour(const ui_driver& driver, QDir pictures) : ui_(driver), pictures_(std::move(pictures)) {}

    void walk() {
        picture("start");
        ui_.click("cmd_about");
        demand("lab_about", "Hardware F/W is v1.2");
        picture("about");
        ui_.click("cmd_about_ok");

        ui_.click("cmd_timing");
        ui_.click_row("lstv_timing", 7);
        ui_.click("cmd_run");
        demand("lab_timing", "[07]");
        picture("timing_select");

        ui_.click("cmd_pattern");
        ui_.click_row("lstv_pattern", 3);
        ui_.click("cmd_run");
        demand("lab_pattern", "[03]");
        picture("pattern_select");
        ui_.click_row("lstv_pattern", 13);
        ui_.click("cmd_download");
        demand("lab_color_setting_0", "Red");
        picture("pattern_color_setting");
        ui_.click_row("lstv_pattern", 41);
        ui_.type("txt_motion_str", "VELOTRACE");
        ui_.click("cmd_upload");
        ui_.click("cmd_download");
        demand("txt_motion_str", "VELOTRACE");
        picture("pattern_motion_string");

        ui_.click("cmd_fav_timing");
        ui_.click_check("lstv_timing", 2);
        ui_.click_check("lstv_timing", 5);
        ui_.click("cmd_run");
        ui_.click("cmd_download");
        picture("favorite_timing");
        ui_.click("cmd_fav_pattern");
        ui_.click_check("lstv_pattern", 3);
        ui_.click("cmd_run");
        picture("favorite_pattern");
        workbench();
        translation();
        programmer();

        ui_.click("cmd_auto");
        add_step(1, 6, 2, 1);
        add_step(2, 11, 12, 5);
        add_step(4, 22, 40, 30);
        ui_.click("cmd_run");
        ui_.click("cmd_download");
        picture("autorun_config");

        ui_.click("cmd_setup");
        ui_.click("cmd_download");
        ui_.click("cmd_csc_1");
        ui_.click("cmd_deep_2");
        picture("panel_control");
        ui_.click("cmd_reset");
        picture("panel_after_reset");
        ui_.click("cmd_refresh");
        demand("lab_timing", "[01]");
        picture("panel_after_refresh");
        without_a_port();
    }

private:
    void workbench() {
        ui_.click("cmd_edid");
        ui_.click("cmd_read");
        demand("lab_read_checksum_0", "Correct.");
        save_read_side("display.bin", 2);
        in_window([this](const ui_driver& diag) {
            save_picture(diag, "hex_style");
            diag.click("opt_hex_type_1");
            diag.click("cmd_ok");
        });
        save_read_side("display.hex", 1);
        desk::gui::in_next_window("QFileDialog", [this](const ui_driver& dialog) {
            save_picture(dialog, "file_dialog");
            QTest::keyClick(QApplication::activeModalWidget(), Qt::Key_Escape);
        });
        ui_.click("cmd_load");
        desk::gui::answer_next_file_dialog(dialogs_, folder_.filePath("display.hex"));
        ui_.click("cmd_load");
        demand("lab_write_checksum_1", "Correct.");
        picture("edid_read_write");
        ui_.click("cmd_pre_f");
        picture("edid_previous_files");
        ui_.click("cmd_pre_f");
        ui_.click("cmd_write");
        demand("lab_pass", "PASS");
        ui_.click("cmd_verify");
        demand("txt_msg", "Match entirely.");
        picture("edid_verify");
        ui_.click("cmd_ok");
        ui_.click("opt_edid_src_3");
        ui_.click("cmd_read");
        ui_.click("cmd_compare");
        demand("lab_pass", "FAIL");
        picture("edid_compare");
        ui_.click("cmd_ok");
    }

    void translation() {
        ui_.click("opt_edid_src_1");
        ui_.click("cmd_read");
        ui_.click("cmd_read_translate");
        demand("txt_edid", "Block 0 is VESA Basic Block");
        picture("translation_root");
        ui_.click_node("tree_edid", {block_0, "Established Timings"});
        picture("translation_established");
        ui_.click_node("tree_edid", {block_0, "Detail Timings/Monitor Descriptors", "Detail Timing1"});
        picture("translation_detail_timing");
        ui_.click_node("tree_edid", {block_1, data_blocks, "Video Data Block"});
        picture("translation_video");
        ui_.click_node("tree_edid", {block_1, data_blocks, "Speaker Allocation Data Block"});
        demand("txt_edid", "FL/FR");
        picture("translation_speakers");
        desk::gui::in_next_window("frm_report", [this](const ui_driver& report) {
            save_picture(report, "report");
            report.click("cmd_exit");
        });
        ui_.click("cmd_edid_report");
        ui_.click("cmd_edid_back");
    }

    void programmer() {
        in_window([this](const ui_driver& diag) {
            diag.choose("cbo_eeprom", 1);
            diag.click("opt_unused_1");
            diag.click("cmd_checksum");
            save_picture(diag, "programmer_sum");
            diag.click("cmd_ok");
        });
        ui_.click("cmd_sum_write");
        in_window([this](const ui_driver& diag) {
            diag.type("txt_sn", "305419896");
            diag.click("chk_auto_sn");
            diag.click("cmd_run");
            save_picture(diag, "automatic_run");
            diag.click("cmd_ok");
        });
        ui_.click("cmd_w_auto");
    }

    void without_a_port() {
        ui_.click("cmd_disconn");
        desk::gui::in_next_window("", [this](const ui_driver& box) {
            save_picture(box, "no_port");
            QTest::keyClick(QApplication::activeModalWidget(), Qt::Key_Escape);
        });
        ui_.click("cmd_refresh");
        picture("disconnected");
    }

    void save_read_side(const QString& name, int filter) {
        desk::gui::answer_next_file_dialog(dialogs_, folder_.filePath(name), filter);
        ui_.click("cmd_save_read");
    }

    static void in_window(const std::function<void(const ui_driver&)>& work) {
        desk::gui::in_next_window("frm_diag", work);
    }

    void picture(const QString& name) {
        // the finished bar stays for a moment
        desk::gui::wait_until([this] { return !ui_.find("work_bar").isVisible(); }, 2000);
        save_picture(ui_, name);
    }

    void save_picture(const ui_driver& ui, const QString& name) {
        ++count_;
        const QString path = pictures_.filePath(QString("%1_%2.png").arg(count_, 2, 10, QChar('0')).arg(name));
        ui.save_picture(path);
        std::printf("  %s\n", qPrintable(path));
    }

    void add_step(int row, int timing, int pattern, int interval) const {
        ui_.click_row("lstv_auto", row);
        ui_.choose("cbo_timing", timing);
        ui_.choose("cbo_pattern", pattern);
        ui_.choose("cbo_interval", interval);
        ui_.click("cmd_replace");
    }

    void demand(const QString& label, const QString& text) const {
        const QString shown = ui_.text(label);
        if (!shown.contains(text))
            throw std::runtime_error((label + " reads \"" + shown + "\", not \"" + text + "\"").toStdString());
    }

    static constexpr const char* block_0 = "Block 0: VESA Basic Block";
    static constexpr const char* block_1 = "Block 1: CEA 861 Block";
    static constexpr const char* data_blocks = "Data Block Collection";

    const ui_driver& ui_;
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
    tour(ui_driver(program.main_window()), QDir(w.folder)).walk();
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
    desk::qt::set_appearance(application, w.dark ? desk::qt::scheme::dark : desk::qt::scheme::light);
    try {
        return run(w);
    } catch (const std::exception& e) {
        std::fprintf(stderr, "The tour has ended early: %s\n", e.what());
        return 1;
    }
}
