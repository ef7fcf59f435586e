// The real window under random input, while the line floods, makes noise and hangs up. The sanitizers, the watchdog
// and the final check find failures.

#include "generator/command_stream.h"
#include "generator/pseudo_terminal.h"
#include "generator/simulated_generator.h"
#include "qt/appearance.h"
#include "qt/desk_program.h"
#include "ui_driver.h"

#include <QApplication>
#include <QCloseEvent>
#include <QComboBox>
#include <QDialog>
#include <QElapsedTimer>
#include <QFile>
#include <QFileDialog>
#include <QLineEdit>
#include <QPointer>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QWindow>

#include <atomic>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <random>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include <poll.h>

namespace {

using namespace desk;
using std::chrono::milliseconds;

/// Longer than any wait of the desk.
constexpr auto watchdog_patience = std::chrono::seconds(60);

command_stream::time now() { return std::chrono::steady_clock::now().time_since_epoch(); }

class dice {
public:
    explicit dice(std::uint64_t seed) : random_(seed) {}
    int below(int limit) { return static_cast<int>(random_() % static_cast<std::uint64_t>(limit)); }
    template <class Choices>
    const auto& one_of(const Choices& choices) {
        return choices[static_cast<std::size_t>(below(static_cast<int>(choices.size())))];
    }
    bytes noise(int count) {
        bytes data;
        for (int i = 0; i < count; ++i)
            data.push_back(static_cast<std::uint8_t>(below(256)));
        return data;
    }

private:
    std::mt19937_64 random_;
};

/// A generator that mostly answers, on a line that floods, makes noise and hangs up. Runs in its own thread.
class hostile_line {
public:
    hostile_line(std::filesystem::path link, std::uint64_t seed) : link_(std::move(link)), dice_(seed) {
        plug();
        thread_ = std::thread([this] { serve(); });
    }
    ~hostile_line() {
        ending_ = true;
        thread_.join();
    }
    hostile_line(const hostile_line&) = delete;
    hostile_line& operator=(const hostile_line&) = delete;

    /// From now on the line is quiet and the generator answers.
    void calm_down() { calm_ = true; }
    std::map<std::string, int> weather() {
        const std::lock_guard lock(mutex_);
        return weather_;
    }

private:
    void plug() {
        terminal_.emplace();
        std::error_code ignored;
        std::filesystem::remove(link_, ignored);
        std::filesystem::create_symlink(terminal_->name(), link_, ignored);
    }

    void serve() {
        while (!ending_) {
            if (!terminal_) plug();
            pollfd line{terminal_->descriptor(), POLLIN, 0};
            if (::poll(&line, 1, 5) > 0) hear(terminal_->read());
            if (!calm_ && dice_.below(100) == 0) misbehave();
        }
    }

    void hear(const bytes& data) {
        stream_.receive(string_of(data), now());
        while (const std::optional<stream_item> item = stream_.next()) {
            if (!item->raw) last_command_ = item->data;
            const answer parts =
                item->raw ? generator_.raw_block(last_command_, bytes_of(item->data)) : generator_.command(item->data);
            if (!calm_ && dice_.below(20) == 0) {
                count("lost answer");
                continue;
            }
            for (const answer_part& part : parts)
                terminal_->write(part.data);
            if (item->raw) continue;
            if (const std::size_t raw = simulated_generator::raw_block_after(item->data))
                stream_.expect_raw(raw, now());
        }
    }

    void misbehave() {
        switch (dice_.below(6)) {
        case 0:
            terminal_->write(dice_.noise(65536));
            return count("flood");
        case 1:
            terminal_->write(dice_.noise(1 + dice_.below(20)));
            return count("noise");
        case 2:
            terminal_->write(bytes(40000, '7'));
            return count("flood of digits");
        case 3:
            terminal_.reset();
            std::this_thread::sleep_for(milliseconds(dice_.below(500)));
            return count("hang-up");
        case 4:
            // to a desk that has not opened the new terminal yet
            plug();
            return count("another terminal");
        default:
            std::this_thread::sleep_for(milliseconds(dice_.below(800)));
            return count("silence");
        }
    }

    void count(const std::string& what) {
        const std::lock_guard lock(mutex_);
        ++weather_[what];
    }

    std::filesystem::path link_;
    dice dice_;
    simulated_generator generator_{79, 64};
    std::optional<pseudo_terminal> terminal_;
    command_stream stream_;
    std::string last_command_; // the command that a raw block belongs to
    std::mutex mutex_;
    std::map<std::string, int> weather_;
    std::atomic<bool> calm_ = false;
    std::atomic<bool> ending_ = false;
    std::thread thread_;
};

/// Ends the process if random input stalls for long: something hangs.
class watchdog {
public:
    watchdog() : thread_([this] { watch(); }) {}
    ~watchdog() {
        ending_ = true;
        thread_.join();
    }
    watchdog(const watchdog&) = delete;
    watchdog& operator=(const watchdog&) = delete;
    void note_progress(const std::string& what) {
        const std::lock_guard lock(mutex_);
        last_ = what;
        last_seen_ = std::chrono::steady_clock::now();
    }

private:
    void watch() {
        while (!ending_) {
            std::this_thread::sleep_for(milliseconds(200));
            const std::lock_guard lock(mutex_);
            if (std::chrono::steady_clock::now() - last_seen_ < watchdog_patience) continue;
            std::cerr << "hostile_line: no progress after: " << last_ << std::endl;
            std::abort();
        }
    }

    std::mutex mutex_;
    std::string last_ = "the start";
    std::chrono::steady_clock::time_point last_seen_ = std::chrono::steady_clock::now();
    std::atomic<bool> ending_ = false;
    std::thread thread_;
};

/// Random input to whatever is on the screen.
class random_input {
public:
    random_input(dice& d, watchdog& dog, QString folder) : dice_(d), dog_(dog), folder_(std::move(folder)) {}

    void move() {
        QWidget* const top = top_window();
        if (top == nullptr) return;
        ++moves_;
        if (auto* const dialog = qobject_cast<QFileDialog*>(top)) return choose_file(*dialog);
        QWidget* const target = some_widget(*top);
        if (target == nullptr) return;
        dog_.note_progress(target->objectName().toStdString() + " in " + top->objectName().toStdString());
        work(*target);
    }

    int moves() const { return moves_; }

private:
    static QWidget* top_window() {
        if (QWidget* const popup = QApplication::activePopupWidget()) return popup;
        if (QWidget* const modal = QApplication::activeModalWidget()) return modal;
        for (QWidget* w : QApplication::topLevelWidgets()) {
            if (w->isVisible() && w->objectName() == "frm_main") return w;
        }
        return nullptr;
    }

    QWidget* some_widget(QWidget& top) {
        std::vector<QWidget*> widgets;
        for (QWidget* w : top.findChildren<QWidget*>()) {
            // ERASE and the generator's reset take minutes and test nothing here
            if (w->isVisible() && w->isEnabled() && w->window() == &top && w->objectName() != "cmd_erase")
                widgets.push_back(w);
        }
        return widgets.empty() ? &top : dice_.one_of(widgets);
    }

    void choose_file(QFileDialog& dialog) {
        dog_.note_progress("the file dialog");
        static const std::vector<QString> names = {"a.hex", "b.bin", "c.ddc", "marlo_rs232.ini", "missing.hex", "x"};
        if (dice_.below(3) == 0) return dialog.reject();
        dialog.findChild<QLineEdit*>("fileNameEdit")->setText(folder_ + "/" + dice_.one_of(names));
        QTest::keyClick(dialog.findChild<QLineEdit*>("fileNameEdit"), Qt::Key_Enter);
    }

    void work(QWidget& w) {
        const QPoint at(dice_.below(std::max(1, w.width())), dice_.below(std::max(1, w.height())));
        QWidget& top = *w.window();
        // any event can close the window, for example a menu
        const QPointer<QWindow> window = top.windowHandle();
        if (!window) return;
        const QPoint elsewhere(dice_.below(top.width()), dice_.below(top.height()));
        const QPoint there = w.mapTo(&top, at);
        static const std::vector<Qt::Key> keys = {Qt::Key_Tab,  Qt::Key_Return, Qt::Key_Space,  Qt::Key_Up,
                                                  Qt::Key_Down, Qt::Key_Left,   Qt::Key_Right,  Qt::Key_Home,
                                                  Qt::Key_End,  Qt::Key_Escape, Qt::Key_PageUp, Qt::Key_A,
                                                  Qt::Key_7,    Qt::Key_Delete, Qt::Key_F4};
        static const std::vector<Qt::KeyboardModifier> modifiers = {Qt::NoModifier, Qt::NoModifier, Qt::ControlModifier,
                                                                    Qt::ShiftModifier, Qt::AltModifier};
        switch (dice_.below(10)) {
        case 0:
            drag(window, Qt::LeftButton, there, there);
            return drag(window, Qt::LeftButton, there, there);
        case 1:
            return drag(window, Qt::RightButton, there, there);
        case 2:
            return drag(window, Qt::LeftButton, there, elsewhere);
        case 3:
        case 4:
        case 5:
            return press_key(window, dice_.one_of(keys), dice_.one_of(modifiers));
        default:
            return drag(window, Qt::LeftButton, there, there);
        }
    }

    static void drag(const QPointer<QWindow>& window, Qt::MouseButton button, QPoint from, QPoint to) {
        if (window) QTest::mousePress(window, button, Qt::NoModifier, from);
        if (window && from != to) QTest::mouseMove(window, to);
        if (window) QTest::mouseRelease(window, button, Qt::NoModifier, to);
    }

    static void press_key(const QPointer<QWindow>& window, Qt::Key key, Qt::KeyboardModifier modifier) {
        QTest::keyPress(window, key, modifier);
        if (window) QTest::keyRelease(window, key, modifier);
    }

    dice& dice_;
    watchdog& dog_;
    QString folder_;
    int moves_ = 0;
};

class bench {
public:
    explicit bench(std::uint64_t seed) : dice_(seed), input_(dice_, dog_, folder_.path()) {
        fill_folder();
        line_.emplace(std::filesystem::path(folder_.filePath("com1").toStdString()), seed + 1);
        moves_.setTimerType(Qt::PreciseTimer);
        // input comes during everything: exchanges, boxes, drags
        QObject::connect(&moves_, &QTimer::timeout, &moves_, [this] {
            moves_.start(dice_.below(40));
            input_.move();
        });
        moves_.setSingleShot(true);
        end_.setSingleShot(true);
        QObject::connect(&end_, &QTimer::timeout, &end_, [this] {
            if (!program_->gate().over()) program_->main_window().close();
        });
    }

    void run(int seconds) {
        QElapsedTimer time;
        time.start();
        while (time.elapsed() < seconds * 1000LL)
            run_program(seconds * 1000LL - time.elapsed());
        line_->calm_down();
        check_at_end();
    }

    void report() {
        std::cout << input_.moves() << " moves, " << starts_ << " starts, " << failures_ << " run-time failures";
        for (const auto& [what, count] : line_->weather())
            std::cout << ", " << count << " x " << what;
        std::cout << std::endl;
    }

private:
    void fill_folder() {
        for (const char* name : {"marlo_rs232.ini", "timing_pattern.ini"}) {
            QFile::remove(folder_.filePath(name));
            QFile::copy(QString(FIRST_FILES) + "/" + name, folder_.filePath(name));
            QFile::setPermissions(folder_.filePath(name), QFile::ReadOwner | QFile::WriteOwner);
        }
        const bytes edid = *simulated_generator(79, 64).state.sinks[0].edid;
        QByteArray raw(reinterpret_cast<const char*>(edid.data()), static_cast<qsizetype>(edid.size()));
        // keeps the machine's ports closed
        for (const char* port : {"com2", "com3", "com4", "com5", "com6", "com7", "com8"})
            QFile::link("no_device", folder_.filePath(port));
        put("a.hex", raw.toHex(' '));
        put("b.bin", raw);
        put("c.ddc", QByteArray(100, '\xA5') + raw);
    }
    void put(const QString& name, const QByteArray& content) const {
        QFile f(folder_.filePath(name));
        if (!f.open(QFile::WriteOnly) || f.write(content) != content.size()) throw std::runtime_error("no file");
    }

    void start_program() {
        program_ = std::make_unique<qt::desk_program>(std::filesystem::path(folder_.path().toStdString()));
        moves_.start(0);
        ++starts_;
        // the input also works the boxes at start-up
        program_->start();
    }

    void run_program(qint64 ms) {
        // after a program has ended in this process, Qt refuses every further dialog
        QTimer::singleShot(0, qApp, [] { QApplication::quit(); });
        QApplication::exec();
        fill_folder();
        start_program();
        end_.start(static_cast<int>(std::min<qint64>(ms, 20'000)));
        // the program's main loop: it ends with the program
        if (!program_->gate().over()) QApplication::exec();
        moves_.stop();
        end_.stop();
        if (program_->gate().failure()) ++failures_;
        if (!program_->gate().over()) throw std::runtime_error("the main loop ended before the program");
        program_.reset();
    }

    void check_at_end() {
        QTimer::singleShot(0, qApp, [] { QApplication::quit(); });
        QApplication::exec();
        fill_folder();
        program_ = std::make_unique<qt::desk_program>(std::filesystem::path(folder_.path().toStdString()));
        if (!program_->start()) throw std::runtime_error("the desk does not start without faults");
        gui::ui_driver at(program_->main_window());
        if (!QTest::qWaitForWindowExposed(&program_->main_window())) throw std::runtime_error("no window is shown");
        at.click("cmd_timing");
        for (int tries = 0; tries < 20 && program_->desk().catalogue.cur_timing != 5; ++tries) {
            at.click("cmd_conn");
            at.click_row("lstv_timing", 5);
            at.click("cmd_run");
        }
        if (program_->desk().catalogue.cur_timing != 5) throw std::runtime_error("the link does not recover");
    }

    dice dice_;
    watchdog dog_;
    QTemporaryDir folder_;
    random_input input_;
    std::optional<hostile_line> line_;
    std::unique_ptr<qt::desk_program> program_;
    QTimer moves_;
    QTimer end_; // of the current program
    int starts_ = 0;
    int failures_ = 0;
};

} // namespace

int main(int argument_count, char** arguments) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const int seconds = argument_count >= 2 ? std::atoi(arguments[1]) : 0;
    const int seed = argument_count == 3 ? std::atoi(arguments[2]) : 1;
    if (seconds < 1 || argument_count > 3) {
        std::cerr << "usage: hostile_line SECONDS [SEED]\n";
        return 2;
    }
    QApplication application(argument_count, arguments);
    QApplication::setQuitOnLastWindowClosed(false);
    qt::set_appearance(application);
    try {
        bench b(static_cast<std::uint64_t>(seed));
        b.run(seconds);
        b.report();
        return 0;
    } catch (const std::exception& e) {
        std::cerr << "hostile_line: " << e.what() << '\n';
        return 1;
    }
}
