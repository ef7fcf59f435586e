// Measures the desk in real time with the simulated generator on a pseudo terminal paced at 19200 baud.

#include "link/commands.h"
#include "operated_simulator.h"
#include "qt/appearance.h"
#include "qt/desk_program.h"
#include "qt/plan_fit.h"
#include "report.h"
#include "runtime/failure.h"
#include "ui_driver.h"

#include <QApplication>
#include <QEventLoop>
#include <QFile>
#include <QProcess>
#include <QScrollBar>
#include <QTemporaryDir>
#include <QTimer>

#include <sys/resource.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <functional>
#include <string>
#include <vector>

namespace {

using desk::bench::median;
using desk::bench::report;
using clock_type = std::chrono::steady_clock;

double ms_since(clock_type::time_point start) {
    return std::chrono::duration<double, std::milli>(clock_type::now() - start).count();
}

std::int64_t now_ns() { return clock_type::now().time_since_epoch().count(); }

double processor_ms() {
    rusage used{};
    getrusage(RUSAGE_SELF, &used);
    const auto ms = [](const timeval& t) {
        return static_cast<double>(t.tv_sec) * 1000 + static_cast<double>(t.tv_usec) / 1000;
    };
    return ms(used.ru_utime) + ms(used.ru_stime);
}

/// CPU use of this process during `work`, in per cent of a core.
double processor_percent(const std::function<void()>& work) {
    const double before = processor_ms();
    const auto start = clock_type::now();
    work();
    return 100 * (processor_ms() - before) / ms_since(start);
}

/// A value from this process's status: "VmRSS:" or "VmHWM:".
double memory_mb(const char* entry) {
    QFile status("/proc/self/status");
    if (!status.open(QFile::ReadOnly)) return 0;
    for (const QByteArray& line : status.readAll().split('\n'))
        if (line.startsWith(entry)) return line.simplified().split(' ').value(1).toDouble() / 1024;
    return 0;
}

/// Runs the event loop with nothing to do.
void rest(int ms) {
    QEventLoop loop;
    QTimer::singleShot(ms, &loop, &QEventLoop::quit);
    loop.exec();
}

void prepare(const QTemporaryDir& directory) {
    for (const char* name : {"marlo_rs232.ini", "timing_pattern.ini"})
        QFile::copy(QString(FIRST_FILES) + "/" + name, directory.filePath(name));
}

std::filesystem::path path_of(const QTemporaryDir& directory) { return directory.path().toStdString(); }

/// Starts the desk in a separate process: prints the time of its first complete paint, and its memory.
int first_paint(std::int64_t started_ns, int argument_count, char** arguments) {
    class first_paint_watch final : public QObject {
    public:
        using QObject::QObject;
        bool painted = false;

    protected:
        bool eventFilter(QObject* watched, QEvent* e) override {
            if (e->type() == QEvent::Paint) painted = true;
            return QObject::eventFilter(watched, e);
        }
    };
    QApplication application(argument_count, arguments);
    desk::qt::set_appearance(application);
    const QTemporaryDir directory;
    prepare(directory);
    QFile settings(directory.filePath("marlo_rs232.ini"));
    settings.setPermissions(QFile::ReadOwner | QFile::WriteOwner);
    if (settings.open(QFile::ReadWrite)) settings.write("0");
    settings.close();
    desk::qt::desk_program program(path_of(directory));
    first_paint_watch watch;
    if (!program.start()) return 1;
    // the contents are painted by the children, not by the window itself
    application.installEventFilter(&watch);
    while (!watch.painted)
        QApplication::processEvents(QEventLoop::WaitForMoreEvents);
    // the window and its children are painted in one pass
    QApplication::processEvents();
    const double ms = static_cast<double>(now_ns() - started_ns) / 1e6;
    for (const char* view : {"cmd_timing", "cmd_pattern", "cmd_fav_timing", "cmd_edid", "cmd_auto", "cmd_setup"}) {
        program.gate().run([&] { dynamic_cast<desk::button&>(*program.desk().form.find(view)).on_click(); });
        QApplication::processEvents();
        program.main_window().grab();
    }
    std::printf("%.2f %.2f\n", ms, memory_mb("VmRSS:"));
    return 0;
}

void measure_start(const char* self) {
    std::vector<double> starts;
    double memory = 0;
    for (int i = 0; i < 15; ++i) {
        QProcess child;
        child.start(self, {"--first-paint", QString::number(now_ns())});
        child.waitForFinished();
        const auto words = child.readAllStandardOutput().simplified().split(' ');
        if (words.size() != 2) continue;
        starts.push_back(words[0].toDouble());
        memory = std::max(memory, words[1].toDouble());
    }
    report("process start to first painted window, median of 15", median(starts), "ms", 100);
    report("resident memory after a walk through all views", memory, "MB", 50);
}

/// Opens a BIN file in a separate process: prints the time until its text is drawn, and the peak memory.
int open_long_file(const char* megabytes, int argument_count, char** arguments) {
    QApplication application(argument_count, arguments);
    desk::qt::set_appearance(application);
    const QTemporaryDir directory;
    prepare(directory);
    QFile file(directory.filePath("long.bin"));
    if (!file.open(QFile::WriteOnly)) return 1;
    file.write(QByteArray(std::stoll(megabytes) * 1024 * 1024, '\x10'));
    file.close();
    const desk::gui::operated_simulator generator(directory.filePath("com1"));
    desk::qt::desk_program program(path_of(directory));
    if (!program.start()) return 1;
    desk::gui::ui_driver(program.main_window()).click("cmd_edid");
    desk::frm_main& desk = program.desk();
    desk.shared_fields.edid_file_name = file.fileName().toStdString();
    const auto start = clock_type::now();
    program.gate().run([&] {
        try {
            desk.file_opener.load_file();
        } catch (const desk::runtime_failure&) {
            // it shows the text, though an EDID has 256 bytes
        }
    });
    program.main_window().grab();
    std::printf("%.2f %.2f\n", ms_since(start), memory_mb("VmHWM:"));
    return 0;
}

void measure_long_files(const char* self) {
    for (const int megabytes : {4, 16}) {
        QProcess child;
        child.start(self, {"--open", QString::number(megabytes)});
        child.waitForFinished();
        const auto words = child.readAllStandardOutput().simplified().split(' ');
        if (words.size() != 2) continue;
        const std::string what = "BIN file of " + std::to_string(megabytes) + " MB opened";
        report(what.c_str(), words[0].toDouble() / 1000, "s", 0.5 * megabytes);
        report((what + ", largest memory").c_str(), words[1].toDouble(), "MB", 50 * megabytes);
    }
}

void measure_link() {
    const QTemporaryDir directory;
    prepare(directory);
    desk::gui::operated_simulator generator(directory.filePath("com1"));
    desk::qt::desk_program program(path_of(directory));
    if (!program.start()) return;
    desk::exchange& link = program.desk().exchange;
    const std::string query = desk::command::query(desk::mnemonic::timing);
    const auto exchange_ms = [&] {
        const auto start = clock_type::now();
        program.gate().run([&] { link.tx_cmd(query); });
        return ms_since(start);
    };

    std::vector<double> exchanges;
    int answered = 0;
    const double used_before = processor_ms();
    const double working = processor_percent([&] {
        for (int i = 0; i < 200; ++i) {
            exchanges.push_back(exchange_ms());
            if (link.rx_done) ++answered;
        }
    });
    const double used = processor_ms() - used_before;
    std::printf("%-58s %9d\n", "ordinary exchanges answered of 200", answered);
    report("ordinary exchange, median of 200", median(exchanges), "ms", 22);
    report("ordinary exchange, longest of 200", *std::max_element(exchanges.begin(), exchanges.end()), "ms", 40);
    report("processor use while exchanging", working, "%", 5);
    report("processor time of an exchange", used / 200, "ms", 1);

    generator.command("silent");
    rest(50);
    double dead = 0;
    const double waiting = processor_percent([&] {
        for (int i = 0; i < 2; ++i)
            dead = std::max(dead, exchange_ms());
    });
    report("dead link reported after", dead, "ms", 1700);
    report("processor use while waiting for an answer", waiting, "%", 5);
    report("processor use idle", processor_percent([] { rest(5000); }), "%", 1);
}

/// A bench with a catalogue of 60 timings, the number for which the favorite walk has a bound.
void measure_signal() {
    const QTemporaryDir directory;
    prepare(directory);
    QFile::remove(directory.filePath("timing_pattern.ini"));
    QFile catalogue(directory.filePath("timing_pattern.ini"));
    if (!catalogue.open(QFile::WriteOnly)) return;
    catalogue.write("60\n");
    for (int i = 1; i <= 60; ++i)
        catalogue.write(QString("\"[%1] timing\",800,640,16,96,\"-\",525,480,10,2,\"-\",25.175\n")
                            .arg(i, 2, 10, QChar('0'))
                            .toLatin1());
    catalogue.write("45\n");
    for (int i = 1; i <= 45; ++i)
        catalogue.write(QString("\"[%1] pattern\"\n").arg(i, 2, 10, QChar('0')).toLatin1());
    catalogue.close();
    desk::gui::operated_simulator generator(directory.filePath("com1"), {"--timings", "60", "--patterns", "45"});
    desk::qt::desk_program program(path_of(directory));
    if (!program.start()) return;
    const desk::gui::ui_driver driver(program.main_window());
    desk::frm_main& desk = program.desk();
    const auto seconds_of = [&](const char* view, const char* button) {
        driver.click(view);
        generator.traffic();
        const auto start = clock_type::now();
        driver.click(button);
        return ms_since(start) / 1000;
    };
    const auto report_exchanges = [&](const char* what, double seconds, double bound, qsizetype commands) {
        report(what, seconds, "s", bound);
        const qsizetype sent = generator.commands().size();
        if (sent != commands || !desk.exchange.rx_done)
            std::printf("  %lld commands, not %lld, the last %s\n", static_cast<long long>(sent),
                        static_cast<long long>(commands), desk.exchange.rx_done ? "answered" : "not answered");
    };

    driver.click("cmd_fav_timing");
    driver.click_check("lstv_timing", 1);
    report_exchanges("favorite SET of 60 rows", seconds_of("cmd_fav_timing", "cmd_run"), 1.32, 60);
    for (int row = 1; row <= desk::autorun_rows; ++row)
        desk.autorun.lstv_auto.set_sub_item(row, 3, "600");
    report_exchanges("autorun upload of 32 rows", seconds_of("cmd_auto", "cmd_run"), 2.75, 128);
    report_exchanges("autorun download", seconds_of("cmd_auto", "cmd_download"), 0.6, 1);

    driver.click("cmd_pattern");
    driver.click_row("lstv_pattern", 13);
    driver.click("cmd_download");
    generator.traffic();
    auto& bar = driver.find<QScrollBar>("hsr_color_setting_2");
    bar.setSliderDown(true);
    QStringList expected;
    const auto start = clock_type::now();
    // from the value set by the download, once over all 256 values
    const int first = bar.value();
    for (int i = 1; i <= 256; ++i) {
        const int value = (first + i) % 256;
        bar.setSliderPosition(value);
        expected.append(QString("CRB%1").arg(value, 3, 10, QChar('0')));
    }
    const double handed_over = ms_since(start);
    const bool whole = generator.commands_up_to(expected.last()) == expected;
    report("slider dragged through 256 values, in the desk", handed_over, "ms", 1000);
    report("the same, until the generator has received the last", ms_since(start) / 1000, "s", 1.0);
    std::printf("  %s\n",
                whole ? "256 commands, none lost, all in order" : "the commands are NOT the 256 values in order");
}

/// TRANS of the READ side and a click on every node.
void measure_translation(desk::qt::desk_program& program) {
    desk::frm_main& desk = program.desk();
    const desk::tree_view& tree = desk.translation_frame.tree_edid;
    const auto translate = [&] {
        desk.workbench.cmd_read_translate.on_click();
        for (int node = 1; node <= tree.node_count(); ++node)
            tree.on_node_click(node);
    };
    std::vector<double> silent;
    for (int i = 0; i < 200; ++i) {
        const auto start = clock_type::now();
        translate();
        silent.push_back(ms_since(start));
    }
    report("TRANS and a click on each node, without drawing, median", median(silent), "ms", 20);
    std::printf("  %d nodes\n", tree.node_count());
    std::vector<double> drawn;
    for (int i = 0; i < 20; ++i) {
        const auto start = clock_type::now();
        program.gate().run([&] { desk.workbench.cmd_read_translate.on_click(); });
        for (int node = 1; node <= tree.node_count(); ++node) {
            program.gate().run([&] { tree.on_node_click(node); });
            QApplication::processEvents();
        }
        drawn.push_back(ms_since(start) / tree.node_count());
    }
    report("the same, drawn, for each node", median(drawn), "ms", 16);
    desk.translation_frame.cmd_edid_back.on_click();
}

/// Resizes the window, with a new scale each time.
void measure_sizes(desk::qt::desk_program& program) {
    std::vector<double> drawn;
    for (int i = 0; i < 40; ++i) {
        const auto start = clock_type::now();
        const double scale = 1 + (i % 20) / 16.0;
        program.main_window().resize(desk::qt::plan_pixels({11700, 9090}, scale));
        QApplication::processEvents();
        drawn.push_back(ms_since(start));
    }
    report("the window drawn at another size, the longest of 40", *std::max_element(drawn.begin(), drawn.end()), "ms",
           50);
}

void measure_edid() {
    const QTemporaryDir directory;
    prepare(directory);
    const desk::gui::operated_simulator generator(directory.filePath("com1"));
    desk::qt::desk_program program(path_of(directory));
    if (!program.start()) return;
    const desk::gui::ui_driver driver(program.main_window());
    desk::frm_main& desk = program.desk();
    driver.click("cmd_edid");
    const auto median_seconds_of = [&](const char* button) {
        std::vector<double> times;
        for (int i = 0; i < 9; ++i) {
            const auto start = clock_type::now();
            driver.click(button);
            times.push_back(ms_since(start) / 1000);
        }
        return median(times);
    };

    report("READ of 256 bytes, the pause of 100 ms included", median_seconds_of("cmd_read"), "s", 0.45);
    if (!desk.shared_fields.read_ok) std::printf("  the READ has FAILED\n");

    measure_translation(program);
    measure_sizes(program);

    // the window's text is in the simple HEX format
    const std::string hex_file = path_of(directory).string() + "/bench.hex";
    QFile file(QString::fromStdString(hex_file));
    if (!file.open(QFile::WriteOnly)) return;
    file.write(desk.workbench.txt_read.text.get().c_str());
    file.close();
    desk.shared_fields.edid_file_name = hex_file;
    std::vector<double> openings;
    for (int i = 0; i < 200; ++i) {
        const auto start = clock_type::now();
        desk.file_opener.load_file();
        openings.push_back(ms_since(start));
    }
    report("HEX file of 256 bytes opened in the core, median of 200", median(openings), "ms", 2);
    if (desk.edid_buffers.write_buff != desk.edid_buffers.read_buff) std::printf("  the file was NOT read as it is\n");

    desk.window_text.enable_write_side(true);
    report("WRITE of 256 bytes, up to the generator's answer", median_seconds_of("cmd_write"), "s", 0.35);
    if (desk.exchange.rx_text != "EWR002") std::printf("  the WRITE has FAILED\n");
}

} // namespace

int main(int argument_count, char** arguments) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    if (argument_count == 3 && std::string(arguments[1]) == "--first-paint")
        return first_paint(std::stoll(arguments[2]), argument_count, arguments);
    if (argument_count == 3 && std::string(arguments[1]) == "--open")
        return open_long_file(arguments[2], argument_count, arguments);
    measure_start(arguments[0]);
    measure_long_files(arguments[0]);
    QApplication application(argument_count, arguments);
    QApplication::setQuitOnLastWindowClosed(false);
    desk::qt::set_appearance(application);
    measure_link();
    measure_signal();
    measure_edid();
    return 0;
}
