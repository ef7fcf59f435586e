#include "robot/virtual_events.h"

#include "controls/controls.h"
#include "controls/window.h"
#include "runtime/failure.h"

#include <gtest/gtest.h>

#include <chrono>
#include <stdexcept>
#include <string>
#include <vector>

namespace desk::robot {
namespace {

using namespace std::chrono_literals;

using strings = std::vector<std::string>;

class virtual_clock : public testing::Test {
protected:
    virtual_clock() { events.start({}); }
    std::function<void()> note(const std::string& what) {
        return [this, what] { noted.push_back(what + " at " + std::to_string(events.clock_time().count())); };
    }
    virtual_events events;
    strings noted;
};

TEST_F(virtual_clock, starts_at_0_and_moves_only_by_pumps) {
    EXPECT_EQ(events.clock_time(), 0ms);
    EXPECT_EQ(events.clock_time(), 0ms);
}

TEST_F(virtual_clock, moves_by_5_with_each_pump_in_which_nothing_is_due) {
    events.pump();
    EXPECT_EQ(events.clock_time(), 5ms);
    events.pump_and_rest();
    EXPECT_EQ(events.clock_time(), 10ms);
}

TEST_F(virtual_clock, does_not_move_in_a_pump_in_which_something_is_due) {
    events.later(5ms, note("work"));
    events.pump();
    events.pump();
    EXPECT_EQ(events.clock_time(), 5ms);
    EXPECT_EQ(noted, strings{"work at 5"});
    events.pump();
    EXPECT_EQ(events.clock_time(), 10ms);
}

TEST_F(virtual_clock, runs_work_when_it_is_due) {
    events.later(20ms, note("work"));
    events.run_on(15ms);
    EXPECT_TRUE(noted.empty());
    events.run_on(5ms);
    EXPECT_EQ(noted, strings{"work at 20"});
}

TEST_F(virtual_clock, runs_work_in_order_of_time_and_then_of_entry) {
    events.later(10ms, note("third"));
    events.later(5ms, note("first"));
    events.later(10ms, note("fourth"));
    events.later(7ms, note("second"));
    events.run_on(10ms);
    EXPECT_EQ(noted, (strings{"first at 5", "second at 10", "third at 10", "fourth at 10"}));
}

TEST_F(virtual_clock, runs_work_without_delay_at_the_next_pump) {
    events.later(0ms, note("work"));
    EXPECT_TRUE(noted.empty());
    events.pump();
    EXPECT_EQ(noted, strings{"work at 0"});
}

TEST_F(virtual_clock, advances_in_steps) {
    events.run_on(7ms);
    EXPECT_EQ(events.clock_time(), 10ms);
    events.run_on(0ms);
    EXPECT_EQ(events.clock_time(), 10ms);
    events.run_on(150000ms);
    EXPECT_EQ(events.clock_time(), 150010ms);
}

TEST_F(virtual_clock, lets_events_come_into_a_handler_that_pumps) {
    events.later(5ms, [this] {
        noted.emplace_back("outer begins");
        events.run_on(20ms);
        noted.emplace_back("outer ends");
    });
    events.later(15ms, [this] { noted.emplace_back("inner"); });
    events.run_on(5ms);
    EXPECT_EQ(noted, (strings{"outer begins", "inner", "outer ends"}));
}

TEST_F(virtual_clock, forgets_everything_at_a_start) {
    events.later(5ms, note("work"));
    events.pump();
    events.start({});
    EXPECT_EQ(events.clock_time(), 0ms);
    events.run_on(50ms);
    EXPECT_TRUE(noted.empty());
}

class timers : public virtual_clock {
protected:
    timers() {
        t.interval = 20;
        form.add(t);
        t.on_timer = note("tick");
        events.start({&form});
    }
    window form;
    timer t;
};

TEST_F(timers, tick_while_they_are_enabled) {
    events.run_on(50ms);
    EXPECT_TRUE(noted.empty());
    t.enabled = true;
    events.run_on(45ms);
    EXPECT_EQ(noted, (strings{"tick at 70", "tick at 90"}));
    t.enabled = false;
    events.run_on(100ms);
    EXPECT_EQ(noted.size(), 2U);
}

TEST_F(timers, restart_their_interval_when_enabled_again) {
    t.enabled = true;
    events.run_on(15ms);
    t.enabled = false;
    events.pump();
    t.enabled = true;
    events.run_on(15ms);
    EXPECT_TRUE(noted.empty());
    events.run_on(5ms);
    EXPECT_EQ(noted.size(), 1U);
}

TEST_F(timers, do_not_nest_if_their_handler_disables_them) {
    t.on_timer = [this] {
        noted.emplace_back("begins");
        t.enabled = false;
        events.run_on(100ms);
        t.enabled = true;
        noted.emplace_back("ends");
    };
    t.enabled = true;
    events.run_on(20ms);
    EXPECT_EQ(noted, (strings{"begins", "ends"}));
}

class the_end : public virtual_clock {};

TEST_F(the_end, is_kept_if_an_event_fails) {
    EXPECT_FALSE(events.ended_by());
    events.run_event([] { throw runtime_failure(failure::overflow, "first"); });
    ASSERT_TRUE(events.ended_by());
    EXPECT_EQ(events.ended_by()->code(), failure::overflow);
    events.run_event([] { throw runtime_failure(failure::type_mismatch, "second"); });
    EXPECT_EQ(events.ended_by()->code(), failure::overflow) << "the first one ended the program";
}

TEST_F(the_end, ends_the_procedure_that_was_suspended) {
    events.later(5ms, [] { throw runtime_failure(failure::overflow, "inner"); });
    bool went_on = false;
    events.run_event([&] {
        events.run_on(50ms);
        went_on = true;
    });
    EXPECT_FALSE(went_on);
    EXPECT_EQ(events.ended_by()->code(), failure::overflow);
    EXPECT_EQ(events.clock_time(), 5ms);
}

TEST_F(the_end, keeps_later_events_from_running) {
    events.later(5ms, [] { throw runtime_failure(failure::overflow, "inner"); });
    events.later(5ms, note("work"));
    events.run_event([&] { events.run_on(50ms); });
    EXPECT_TRUE(noted.empty());
    EXPECT_THROW(events.pump(), program_over);
}

TEST_F(the_end, comes_with_any_exception_too) {
    events.run_event([] { throw std::out_of_range("far out"); });
    ASSERT_TRUE(events.ended_by());
    EXPECT_NE(events.ended_by()->sentence().find("far out"), std::string::npos);
    EXPECT_THROW(events.pump(), program_over);
}

TEST_F(the_end, is_over_with_a_fresh_start) {
    events.run_event([] { throw runtime_failure(failure::overflow, "x"); });
    events.start({});
    EXPECT_FALSE(events.ended_by());
    events.pump();
    EXPECT_EQ(events.clock_time(), 5ms);
}

TEST_F(the_end, comes_to_a_wait_without_progress_after_a_million_turns) {
    events.run_event([&] {
        for (int turn = 1; turn < 1'000'000; ++turn)
            events.turn_without_progress("Waiting");
    });
    EXPECT_FALSE(events.ended_by());
    events.run_event([&] { events.turn_without_progress("Waiting"); });
    ASSERT_TRUE(events.ended_by());
    EXPECT_EQ(events.ended_by()->number(), 0);
    EXPECT_EQ(events.ended_by()->text(), "Does not return");
    EXPECT_EQ(events.clock_time(), 0ms);
}

TEST_F(the_end, is_delayed_by_a_pump_between_the_turns) {
    events.run_event([&] {
        for (int turn = 1; turn <= 999'999; ++turn)
            events.turn_without_progress("Waiting");
        events.pump();
        for (int turn = 1; turn <= 999'999; ++turn)
            events.turn_without_progress("Waiting");
    });
    EXPECT_FALSE(events.ended_by());
}

} // namespace
} // namespace desk::robot
