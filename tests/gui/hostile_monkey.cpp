// Random input on the real window: keys and buttons are pressed, held, repeated and released anywhere, during
// exchanges, boxes and menus, while the generator answers late, wrongly or not at all. At the end nothing is stuck,
// and a Refresh shows the generator's state.

#include "operated_simulator.h"
#include "qt/appearance.h"
#include "qt/desk_program.h"
#include "raw_input.h"
#include "simulator_program.h"
#include "ui_driver.h"

#include <QApplication>
#include <QDialog>
#include <QFile>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPointer>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QTreeWidget>
#include <QWheelEvent>
#include <QWindow>

#include <array>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <memory>
#include <random>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

namespace desk::gui {

namespace {

class dice {
public:
    explicit dice(unsigned seed) : random_(seed) {}
    int below(int limit) { return static_cast<int>(random_() % static_cast<unsigned>(limit)); }
    template <class Choices>
    const auto& one_of(const Choices& choices) {
        return choices[static_cast<std::size_t>(below(static_cast<int>(choices.size())))];
    }

private:
    std::mt19937 random_;
};

constexpr std::array keys = {
    Qt::Key_Tab,  Qt::Key_Backtab, Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space,  Qt::Key_Up,     Qt::Key_Down,
    Qt::Key_Left, Qt::Key_Right,   Qt::Key_Home,   Qt::Key_End,   Qt::Key_Escape, Qt::Key_PageUp, Qt::Key_PageDown,
    Qt::Key_F4,   Qt::Key_Menu,    Qt::Key_Delete, Qt::Key_7,     Qt::Key_0,      Qt::Key_A,      Qt::Key_C,
    Qt::Key_E,    Qt::Key_F,       Qt::Key_L,      Qt::Key_N,     Qt::Key_O,      Qt::Key_P,      Qt::Key_R,
    Qt::Key_S,    Qt::Key_T,       Qt::Key_V,      Qt::Key_W,     Qt::Key_Y,      Qt::Key_Plus,   Qt::Key_Asterisk};
constexpr std::array modifiers = {Qt::NoModifier,  Qt::NoModifier,      Qt::NoModifier,   Qt::AltModifier,
                                  Qt::AltModifier, Qt::ControlModifier, Qt::ShiftModifier};
constexpr std::array buttons = {Qt::LeftButton, Qt::LeftButton, Qt::LeftButton, Qt::RightButton, Qt::MiddleButton};

QWidget* window_on_top() {
    if (QWidget* const popup = QApplication::activePopupWidget()) return popup;
    if (QWidget* const modal = QApplication::activeModalWidget()) return modal;
    for (QWidget* w : QApplication::topLevelWidgets())
        if (w->isVisible() && w->objectName() == "frm_main") return w;
    return nullptr;
}

/// Erasing and resetting the generator take minutes and test nothing more here.
bool takes_minutes(const QWidget* w) {
    return w != nullptr && (w->objectName() == "cmd_erase" || w->objectName() == "cmd_reset");
}

class random_input {
public:
    random_input(dice& d, QString folder) : dice_(d), folder_(std::move(folder)) {}

    void act() {
        QWidget* const top = window_on_top();
        if (top == nullptr || top->windowHandle() == nullptr) return;
        if (answer(*top)) return;
        if (dice_.below(2) == 0)
            work_keys();
        else
            work_mouse(*top);
    }

    void release_all() {
        for (const Qt::Key key : std::exchange(down_, {}))
            raw_input::release(key);
        QWidget* const top = window_on_top();
        if (top == nullptr || top->windowHandle() == nullptr) return;
        const QPointer<QWindow> w = top->windowHandle();
        for (const auto button : {Qt::LeftButton, Qt::RightButton, Qt::MiddleButton})
            if (w && (QGuiApplication::mouseButtons() & button) != 0) QTest::mouseRelease(w, button);
    }

private:
    /// Handles a window that random input would leave open for too long.
    bool answer(QWidget& top) {
        if (auto* const dialog = qobject_cast<QFileDialog*>(&top)) {
            static const std::vector<QString> names = {"a.hex", "b.bin", "missing.hex", "c.ddc"};
            if (dice_.below(3) == 0) return dialog->reject(), true;
            auto& name = *dialog->findChild<QLineEdit*>("fileNameEdit");
            name.setText(folder_ + "/" + dice_.one_of(names));
            QTest::keyClick(&name, Qt::Key_Enter);
            return true;
        }
        auto* const box = qobject_cast<QMessageBox*>(&top);
        if (box == nullptr || !box->text().contains("erase")) return false;
        return box->reject(), true;
    }

    void work_keys() {
        const Qt::KeyboardModifiers held = dice_.one_of(modifiers);
        if (!down_.empty() && dice_.below(3) != 0) {
            const Qt::Key key = *std::next(down_.begin(), dice_.below(static_cast<int>(down_.size())));
            if (dice_.below(2) == 0) return raw_input::repeat(key, 1 + dice_.below(5), held);
            down_.erase(key);
            // sometimes another program gets the release
            if (dice_.below(10) != 0) raw_input::release(key, held);
            return;
        }
        const Qt::Key key = dice_.one_of(keys);
        if (takes_minutes(QApplication::focusWidget()) && key != Qt::Key_Tab) return;
        down_.insert(key);
        raw_input::press(key, held);
    }

    void work_mouse(QWidget& top) {
        const QPointer<QWindow> w = top.windowHandle();
        const Qt::KeyboardModifiers held =
            Qt::KeyboardModifiers(dice_.one_of(modifiers)) & ~Qt::KeyboardModifiers(Qt::AltModifier);
        const Qt::MouseButton button = dice_.one_of(buttons);
        QWidget* const under = some_widget(top);
        const QPoint at = under->mapTo(
            &top, QPoint(dice_.below(std::max(1, under->width())), dice_.below(std::max(1, under->height()))));
        if (takes_minutes(top.childAt(at))) return;
        switch (dice_.below(8)) {
        case 0:
            QTest::mouseMove(w, at);
            return;
        case 1:
            QTest::mousePress(w, button, held, at);
            return;
        case 2:
            if (QGuiApplication::mouseButtons() != Qt::NoButton) QTest::mouseRelease(w, button, held, at);
            return;
        case 3: {
            QWheelEvent turn(at, top.mapToGlobal(QPointF(at)), {}, {0, dice_.below(2) == 0 ? 120 : -120}, Qt::NoButton,
                             held, Qt::NoScrollPhase, false);
            QSpontaneKeyEvent::setSpontaneous(&turn);
            qApp->notify(w, &turn);
            return;
        }
        case 4:
            QTest::mousePress(w, button, held, at);
            if (w) QTest::mouseRelease(w, button, held, at);
            // the second half of a double click, whatever has opened meanwhile
            if (QWidget* const now = window_on_top(); now != nullptr && now->windowHandle() != nullptr)
                QTest::mouseDClick(now->windowHandle(), button, held, at);
            return;
        default:
            QTest::mousePress(w, button, held, at);
            if (w) QTest::mouseRelease(w, button, held, at);
        }
    }

    QWidget* some_widget(QWidget& top) {
        std::vector<QWidget*> seen;
        for (QWidget* w : top.findChildren<QWidget*>())
            if (w->isVisible() && w->window() == &top) seen.push_back(w);
        return seen.empty() ? &top : dice_.one_of(seen);
    }

    dice& dice_;
    QString folder_;
    std::set<Qt::Key> down_;
};

class bench {
public:
    bench(int events, unsigned seed) : dice_(seed), input_(dice_, folder_.path()), left_(events), seed_(seed) {
        next_.setSingleShot(true);
        // during everything: exchanges, boxes, and its own actions
        QObject::connect(&next_, &QTimer::timeout, &next_, [this] { act(); });
    }

    void run() {
        const QByteArray edid = generator().sink(1);
        put("a.hex", edid.toHex(' '));
        put("b.bin", edid);
        generator().command(QString("faults 15 seed %1 drop repeat garble delay short long").arg(seed_));
        while (left_ > 0 || !program_)
            run_program();
        generator().command("faults off");
        clear_quit();
        check_at_end();
    }

    void report(int events) const {
        std::cout << events << " events, " << starts_ << " starts, " << failures_ << " run-time failures" << std::endl;
    }

private:
    operated_simulator& generator() {
        if (!generator_) generator_ = std::make_unique<operated_simulator>(simulator_for(folder_.filePath("com1")));
        return *generator_;
    }

    void put(const QString& name, const QByteArray& content) const {
        QFile f(folder_.filePath(name));
        if (!f.open(QFile::WriteOnly) || f.write(content) != content.size()) throw std::runtime_error("no file");
    }

    /// After an event loop has quit, Qt refuses every further dialog.
    static void clear_quit() {
        QTimer::singleShot(0, qApp, [] { QApplication::exit(); });
        QApplication::exec();
    }

    void start_program() {
        clear_quit();
        for (const char* name : {"marlo_rs232.ini", "timing_pattern.ini"}) {
            QFile::remove(folder_.filePath(name));
            QFile::copy(QString(FIRST_FILES) + "/" + name, folder_.filePath(name));
            QFile::setPermissions(folder_.filePath(name), QFile::ReadOwner | QFile::WriteOwner);
        }
        for (const char* port : {"com2", "com3", "com4", "com5", "com6", "com7", "com8"})
            keep_closed(folder_.filePath(port));
        program_ = std::make_unique<qt::desk_program>(std::filesystem::path(folder_.path().toStdString()));
        ++starts_;
        if (!program_->start()) throw std::runtime_error("the desk does not start");
        if (!QTest::qWaitForWindowActive(&program_->main_window())) throw std::runtime_error("no window is shown");
    }

    void run_program() {
        start_program();
        next_.start(0);
        QApplication::exec();
        next_.stop();
        if (!program_->gate().over()) return;
        if (program_->gate().failure()) ++failures_;
        program_.reset();
    }

    void act() {
        next_.start(1 + dice_.below(3));
        if (program_->gate().over()) {
            // a run-time failure waits in its box
            if (auto* const box = qobject_cast<QDialog*>(QApplication::activeModalWidget())) box->reject();
            return;
        }
        if (left_-- > 0) return input_.act();
        // closes open windows one by one until the desk is idle
        input_.release_all();
        QWidget* const top = window_on_top();
        if (top == nullptr || top->objectName() == "frm_main") return QApplication::exit();
        if (auto* const dialog = qobject_cast<QDialog*>(top))
            dialog->reject();
        else if (top->windowType() == Qt::Popup)
            top->close();
        else
            close_window(*top);
    }

    static void close_window(QWidget& top) {
        for (const char* closing_button : {"cmd_ok", "cmd_exit"}) {
            auto* const b = top.findChild<QWidget*>(closing_button);
            if (b != nullptr && b->isVisible() && b->isEnabled()) return ui_driver(top).click(closing_button);
        }
    }

    void check_at_end() {
        const ui_driver ui(program_->main_window());
        // a key released over another program counts as down for a while
        const auto list_opens = [&ui] { return ui.click("cbo_com"), QApplication::activePopupWidget() != nullptr; };
        if (!wait_until(list_opens, 10000)) throw std::runtime_error("the window ignores clicks");
        raw_input::tap(Qt::Key_Home);
        raw_input::tap(Qt::Key_Return);
        ui.click("cmd_timing");
        mark(ui, "lstv_timing", program_->desk().catalogue.lstv_timing, 5);
        ui.click("cmd_run");
        ui.click("cmd_pattern");
        mark(ui, "lstv_pattern", program_->desk().catalogue.lstv_pattern, 7);
        ui.click("cmd_run");
        ui.click("cmd_refresh");
        const auto hdcp = ui.text("lab_hdcp") == "ON" ? "on" : "off";
        generator().command("state");
        static const std::vector<QString> outputs = {"PC", "HD", "DVI", "HDMI"};
        const auto output = std::find(outputs.begin(), outputs.end(), ui.text("lab_out")) - outputs.begin() + 1;
        const QString shown = QString("timing %1, pattern %2, output %3 (%4), HDCP %5\n")
                                  .arg(program_->desk().catalogue.cur_timing)
                                  .arg(program_->desk().catalogue.cur_pattern)
                                  .arg(output)
                                  .arg(ui.text("lab_out"), hdcp);
        if (program_->desk().catalogue.cur_timing != 5 || program_->desk().catalogue.cur_pattern != 7 ||
            !generator().has_printed(shown.toUtf8()))
            throw std::runtime_error("Refresh shows something else: " + shown.toStdString() +
                                     "the last traffic: " + generator().traffic().mid(-12).join(", ").toStdString() +
                                     ", COM" + std::to_string(program_->desk().exchange.com_port) +
                                     (program_->desk().exchange.rs232_connected ? "" : ", closed"));
    }

    static void mark(const ui_driver& ui, const QString& name, const list_view& list, int row) {
        const auto marks = [&] { return ui.click_row(name, row), list.selected() == row; };
        if (!wait_until(marks, 5000)) throw std::runtime_error("a click marks no row of " + name.toStdString());
        const auto& rows = ui.find<QTreeWidget>(name);
        if (rows.indexOfTopLevelItem(rows.currentItem()) + 1 != row)
            throw std::runtime_error("another row is marked in " + name.toStdString());
    }

    QTemporaryDir folder_;
    dice dice_;
    random_input input_;
    int left_;
    unsigned seed_;
    QTimer next_;
    std::unique_ptr<operated_simulator> generator_;
    std::unique_ptr<qt::desk_program> program_;
    int starts_ = 0;
    int failures_ = 0;
};

} // namespace

} // namespace desk::gui

int main(int argument_count, char** arguments) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const int events = argument_count >= 2 ? std::atoi(arguments[1]) : 0;
    const int seed = argument_count == 3 ? std::atoi(arguments[2]) : 1;
    if (events < 1 || argument_count > 3) {
        std::cerr << "usage: hostile_monkey EVENTS [SEED]\n";
        return 2;
    }
    QApplication application(argument_count, arguments);
    QApplication::setQuitOnLastWindowClosed(false);
    desk::qt::set_appearance(application);
    try {
        desk::gui::bench b(events, static_cast<unsigned>(seed));
        b.run();
        b.report(events);
        return 0;
    } catch (const std::exception& e) {
        std::cerr << "hostile_monkey: " << e.what() << '\n';
        return 1;
    }
}
