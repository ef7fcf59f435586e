#include "simulator_on_event_loop.h"
#include "terminal_pace.h"

#include "generator/cable.h"
#include "generator/fault_injector.h"
#include "generator/generator_on_line.h"
#include "generator/pseudo_terminal.h"
#include "generator/simulated_generator.h"
#include "generator/simulator_console.h"
#include "platform/event_pump.h"

#include <QSocketNotifier>
#include <QTimer>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <optional>

namespace desk::gui {

namespace {

/// A clock that advances by at most two steps of the desk's clock between turns, however late the events run: a delayed
/// desk sends the rest of a block later than a real one does.
class clock_of_events {
public:
    std::chrono::nanoseconds now() {
        const auto turn = std::chrono::steady_clock::now();
        passed_ += std::min<std::chrono::nanoseconds>(turn - last_, 2 * clock_step);
        last_ = turn;
        return passed_;
    }

private:
    std::chrono::steady_clock::time_point last_ = std::chrono::steady_clock::now();
    std::chrono::nanoseconds passed_{0};
};

/// A simulator served by this thread's event loop.
class served_by_events final : public simulator_program {
public:
    explicit served_by_events(const QString& link) : link_(link.toStdString()) {
        turns_.setTimerType(Qt::PreciseTimer);
        QObject::connect(&turns_, &QTimer::timeout, &turns_, [this] { serve(); });
        QObject::connect(&heard_, &QSocketNotifier::activated, &turns_, [this] {
            line_.receive(terminal_->read(), clock_.now());
            serve();
        });
        QObject::connect(&closed_, &QSocketNotifier::activated, &turns_, [this] { terminal_->free_for_next_desk(); });
        closed_.setEnabled(terminal_->close_watch() >= 0);
        std::filesystem::remove(link_);
        std::filesystem::create_symlink(terminal_->name(), link_);
        constexpr int turn_ms = 2;
        turns_.start(turn_ms);
        printed_ = "on " + QByteArray::fromStdString(terminal_->name()) + "\n";
    }
    ~served_by_events() override { hang_up(); }
    served_by_events(const served_by_events&) = delete;
    served_by_events& operator=(const served_by_events&) = delete;

    void end() override { hang_up(); }
    void kill() override { hang_up(); }

    void type(const QByteArray& line) override {
        const std::string reply = console_.take_line(line.toStdString());
        if (!reply.empty()) printed_ += QByteArray::fromStdString(reply) + "\n";
    }

    QByteArray printed() const override { return printed_; }

private:
    void serve() {
        if (!terminal_) return;
        const std::chrono::nanoseconds now = clock_.now();
        terminal_->write(line_.take_due(now));
        for (const std::string& entry : line_.take_log())
            printed_ += QByteArray::fromStdString(entry) + "\n";
        heard_.setEnabled(line_.ready_for_more(now));
    }

    void hang_up() {
        if (!terminal_) return;
        turns_.stop();
        heard_.setEnabled(false);
        closed_.setEnabled(false);
        std::error_code error;
        std::filesystem::remove(link_, error);
        terminal_.reset();
        line_.cut();
    }

    std::filesystem::path link_;
    simulated_generator generator_{79, 64};
    fault_injector faults_{generator_};
    cable cable_;
    simulator_console console_{generator_, faults_, cable_};
    generator_on_line line_{faults_, cable_};
    std::optional<pseudo_terminal> terminal_{std::in_place};
    QSocketNotifier heard_{terminal_->descriptor(), QSocketNotifier::Read};
    QSocketNotifier closed_{terminal_->close_watch(), QSocketNotifier::Read};
    terminal_pace pace_;
    QTimer turns_;
    clock_of_events clock_;
    QByteArray printed_;
};

} // namespace

std::unique_ptr<simulator_program> simulator_on_event_loop(const QString& link) {
    return std::make_unique<served_by_events>(link);
}

} // namespace desk::gui
