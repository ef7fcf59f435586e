#pragma once

#include "controls/controls.h"
#include "platform/machine.h"
#include "runtime/failure.h"

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <deque>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace desk::test {

/// A clock that advances one step on each pump in which nothing is due, and events at set times.
class scripted_events final : public event_pump {
public:
    std::int64_t now = 0;
    std::int64_t step = clock_step.count();
    int pumps = 0;
    int turns = 0;
    std::function<void()> on_pump;
    std::function<void()> on_turn; ///< in each turn of a wait that does not pump
    timer* ticking = nullptr;

    /// Runs `work` when `ms` milliseconds have passed.
    void in(std::int64_t ms, std::function<void()> work) { pending_.push_back({now + ms, std::move(work)}); }

    std::chrono::milliseconds clock_time() override { return std::chrono::milliseconds(now); }
    void pump() override {
        ++pumps;
        if (on_pump) on_pump();
        if (!run_due()) now += step;
    }
    void pump_and_rest() override { pump(); }
    void turn_without_progress(std::string_view /*waiting_for*/) override {
        ++turns;
        if (on_turn) on_turn();
    }

private:
    struct pending {
        std::int64_t due;
        std::function<void()> work;
    };

    bool run_due() {
        bool ran = false;
        while (const auto work = take_due()) {
            (*work)();
            ran = true;
        }
        return ran;
    }
    std::optional<std::function<void()>> take_due() {
        const auto due =
            std::find_if(pending_.begin(), pending_.end(), [this](const pending& p) { return p.due <= now; });
        if (due != pending_.end()) {
            auto work = std::move(due->work);
            pending_.erase(due);
            return work;
        }
        if (ticking == nullptr || !ticking->enabled) {
            next_tick_.reset();
            return std::nullopt;
        }
        if (!next_tick_) next_tick_ = now + ticking->interval;
        if (*next_tick_ > now) return std::nullopt;
        next_tick_ = now + ticking->interval;
        return ticking->on_timer;
    }

    std::vector<pending> pending_;
    std::optional<std::int64_t> next_tick_;
};

/// A port that records its calls.
class scripted_port final : public serial_port {
public:
    std::vector<std::string> done; ///< "open 3", "close", "discard input", "discard output", "write TIM001"
    std::set<int> missing;
    bytes waiting;
    std::size_t unsent = 0;
    std::function<void(const std::string&)> on_write;

    void arrive(std::string_view text) { waiting.insert(waiting.end(), text.begin(), text.end()); }
    /// What was written since the last call.
    std::vector<std::string> take_written() { return std::exchange(written_, {}); }

    void open(int number) override {
        done.push_back("open " + std::to_string(number));
        if (number < 1 || missing.contains(number))
            throw runtime_failure(failure::path_file_access_error, "this port can't be opened");
    }
    void close() override { done.emplace_back("close"); }
    std::size_t in_count() override { return waiting.size(); }
    std::size_t out_count() override { return unsent; }
    void discard_input() override {
        done.emplace_back("discard input");
        waiting.clear();
    }
    void discard_output() override { done.emplace_back("discard output"); }
    bytes read() override { return std::exchange(waiting, {}); }
    void write(const bytes& data) override {
        const std::string text = string_of(data);
        done.push_back("write " + text);
        written_.push_back(text);
        if (on_write) on_write(text);
    }

private:
    std::vector<std::string> written_;
};

/// Takes the first prepared value, or `otherwise` if there is none.
template <class Value>
Value take_first(std::deque<Value>& laid_out, Value otherwise) {
    if (laid_out.empty()) return otherwise;
    Value first = std::move(laid_out.front());
    laid_out.pop_front();
    return first;
}

/// Records message boxes and gives the prepared answers, then OK.
class noted_boxes final : public message_box {
public:
    struct shown {
        std::string text;
        box_icon icon;
        box_buttons buttons;
        bool operator==(const shown&) const = default;
    };
    std::vector<shown> all;
    std::deque<box_answer> answers;
    std::function<void()> on_show;

    box_answer show(std::string_view text, box_icon icon, box_buttons buttons) override {
        all.push_back({std::string(text), icon, buttons});
        if (on_show) on_show();
        return take_first(answers, box_answer::ok);
    }
};

/// Records file dialogs and gives the prepared choices, then cancels.
class scripted_files final : public file_dialog {
public:
    std::vector<file_dialog_setup> shown;
    std::deque<std::optional<file_choice>> choices;

    std::optional<file_choice> show(const file_dialog_setup& setup) override {
        shown.push_back(setup);
        return take_first(choices, {});
    }
};

/// Modal windows: calls on_show, then closes the window.
class scripted_windows final : public modal_windows {
public:
    std::function<void(window&)> on_show;

    void show(window& w) override {
        w.visible = true;
        if (on_show) on_show(w);
        w.visible = false;
    }
};

/// A fixed date and time.
class fixed_calendar final : public calendar {
public:
    std::tm moment{};

    fixed_calendar() {
        moment.tm_year = 106;
        moment.tm_mday = 2;
        moment.tm_wday = 1;
        moment.tm_hour = 3;
        moment.tm_min = 4;
        moment.tm_sec = 5;
    }
    std::tm now() override { return moment; }
};

struct fake_machine {
    scripted_port port;
    scripted_events events;
    noted_boxes boxes;
    scripted_files files;
    scripted_windows windows;
    fixed_calendar dates;
    machine host{port, events, boxes, files, windows, dates, {}};

    /// Makes the generator echo every command after `ms` milliseconds.
    void echo_all(std::int64_t ms = 10) {
        port.on_write = [this, ms](const std::string& cmd) { events.in(ms, [this, cmd] { port.arrive(cmd); }); };
    }
    /// Makes the generator give this answer to every command.
    void answer_all(const std::string& answer, std::int64_t ms = 10) {
        port.on_write = [=, this](const std::string&) { events.in(ms, [=, this] { port.arrive(answer); }); };
    }
};

inline const noted_boxes::shown box_disconnected{"RS232 is disconnected !", box_icon::critical, box_buttons::ok};

} // namespace desk::test
