#include "support/desk_fixture.h"
#include "support/robot_at_hand.h"

#include <gtest/gtest.h>

#include <string>

namespace desk::robot {
namespace {

/// A desk that runs with the simulated generator at its port 1, in the panel view.
class faults_test : public testing::Test {
protected:
    faults_test() {
        directory.put("marlo_rs232.ini", test::usual_settings);
        directory.put("timing_pattern.ini", test::plain_catalogue(30, 45));
        expect_ok("generator simulated", "start", "click cmd_timing");
    }
    std::string answer(const std::string& line) { return r.answer(line); }
    void expect(const std::string& line, const std::string& expected) { EXPECT_EQ(answer(line), expected) << line; }
    template <class... Lines>
    void expect_ok(const Lines&... lines) {
        (expect(lines, "ok"), ...);
    }

    test::temporary_directory directory;
    test::robot_at_hand r{directory.path()};
};

TEST_F(faults_test, are_off_at_first) {
    expect_ok("click cmd_run");
    expect("field cur_timing", "ok 1");
    expect("faults", "ok {}");
}

TEST_F(faults_test, come_at_the_rate_and_of_the_kinds_asked_for) {
    expect_ok("faults 100 7 drop", "click cmd_run");
    expect("get lab_timing.caption", "ok \"Link Error\"");
    expect("faults", "ok {\"drop\": 2}");
    expect("wire", "ok [\"> TIM001\", \"> TIM001\"]");
    expect_ok("faults off", "click cmd_run");
    expect("field cur_timing", "ok 1");
    expect("faults", "ok {\"drop\": 2}");
}

TEST_F(faults_test, are_of_all_kinds_by_default) {
    expect_ok("faults 100 7");
    for (int i = 0; i < 100; ++i) {
        // an unplugged cable is back by then
        answer("wait 5000");
        answer("click cmd_conn");
        answer("click cmd_run");
    }
    const std::string counts = answer("faults");
    for (const char* kind : {"drop", "repeat", "garble", "delay", "short", "long", "late", "silent", "unplug"})
        EXPECT_NE(counts.find(std::string("\"") + kind + "\": "), std::string::npos) << kind << ": " << counts;
}

TEST_F(faults_test, are_the_same_for_the_same_seed) {
    std::string wires[3];
    const char* plans[] = {"faults 40 7", "faults 40 7", "faults 40 8"};
    for (int run = 0; run < 3; ++run) {
        test::robot_at_hand other(directory.path());
        for (const char* line : {plans[run], "generator simulated", "start", "click cmd_fav_timing", "click cmd_run"})
            other.answer(line);
        for (int i = 0; i < 20; ++i)
            other.answer("click cmd_run");
        wires[run] = other.answer("wire");
    }
    EXPECT_EQ(wires[0], wires[1]);
    EXPECT_NE(wires[0], wires[2]);
}

TEST_F(faults_test, do_not_affect_scripted_replies) {
    expect_ok("faults 100 7 drop", "reply \"TIM*\" echo", "click cmd_run");
    expect("field cur_timing", "ok 1");
    expect("faults", "ok {}");
}

TEST_F(faults_test, pull_the_cable_out_for_a_while) {
    expect_ok("faults 100 7 unplug", "click cmd_run");
    expect("get lab_timing.caption", "ok \"Link Error\"");
    // nothing arrives at the second try
    expect("faults", "ok {\"unplug\": 1}");
    expect_ok("faults off", "wait 5000", "click cmd_run");
    // it must be opened again
    expect("get lab_timing.caption", "ok \"Link Error\"");
    expect_ok("click cmd_conn");
    expect("boxes", "ok []");
    expect_ok("click cmd_run");
    expect("field cur_timing", "ok 1");
}

TEST_F(faults_test, include_settings_that_are_confirmed_and_not_stored) {
    expect_ok("select lstv_timing 7", "faults 100 7 forget", "click cmd_run");
    expect("field cur_timing", "ok 7");
    expect_ok("faults off", "click cmd_refresh");
    expect("field cur_timing", "ok 1");
    expect("faults", "ok {\"forget\": 1}");
}

TEST_F(faults_test, stay_through_the_end_of_the_program) {
    expect_ok("faults 100 7 drop", "stop", "start", "click cmd_timing", "click cmd_run");
    expect("faults", "ok {\"drop\": 2}");
}

TEST(faults_of_the_robot, are_refused_if_malformed) {
    const test::temporary_directory directory;
    test::robot_at_hand r(directory.path());
    for (const char* line : {"faults x 7", "faults 5", "faults 101 7", "faults -1 7", "faults 5 x", "faults 5 7 lies",
                             "faults off now", "faults \"off\"", "faults 5 7 \"drop\"", "faults 5 seed 7"})
        EXPECT_EQ(r.answer(line), "refused \"the command's words are off\"") << line;
    EXPECT_EQ(r.answer("faults 5 7 drop late"), "ok");
    EXPECT_EQ(r.answer("faults off"), "ok");
}

} // namespace
} // namespace desk::robot
