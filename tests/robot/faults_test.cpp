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
        for (const char* line : {"generator simulated", "start", "click cmd_timing"})
            expect(line, "ok");
    }
    std::string answer(const std::string& line) { return r.answer(line); }
    void expect(const std::string& line, const std::string& expected) { EXPECT_EQ(answer(line), expected) << line; }

    test::temporary_directory directory;
    test::robot_at_hand r{directory.path()};
};

TEST_F(faults_test, are_off_at_first) {
    expect("click cmd_run", "ok");
    expect("field cur_timing", "ok 1");
    expect("faults", "ok {}");
}

TEST_F(faults_test, come_at_the_rate_and_of_the_kinds_asked_for) {
    expect("faults 100 7 drop", "ok");
    expect("click cmd_run", "ok");
    expect("get lab_timing.caption", "ok \"Link Error\"");
    expect("faults", "ok {\"drop\": 2}");
    expect("wire", "ok [\"> TIM001\", \"> TIM001\"]");
    expect("faults off", "ok");
    expect("click cmd_run", "ok");
    expect("field cur_timing", "ok 1");
    expect("faults", "ok {\"drop\": 2}");
}

TEST_F(faults_test, come_all_where_no_kind_is_named) {
    expect("faults 100 7", "ok");
    for (int i = 0; i < 100; ++i) {
        // the cable is back by then, if it was out
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

TEST_F(faults_test, leave_scripted_replies_alone) {
    expect("faults 100 7 drop", "ok");
    expect("reply \"TIM*\" echo", "ok");
    expect("click cmd_run", "ok");
    expect("field cur_timing", "ok 1");
    expect("faults", "ok {}");
}

TEST_F(faults_test, pull_the_cable_out_for_a_while) {
    expect("faults 100 7 unplug", "ok");
    expect("click cmd_run", "ok");
    expect("get lab_timing.caption", "ok \"Link Error\"");
    // nothing arrives at the second try
    expect("faults", "ok {\"unplug\": 1}");
    expect("faults off", "ok");
    expect("wait 5000", "ok");
    expect("click cmd_run", "ok");
    // it has to be opened anew
    expect("get lab_timing.caption", "ok \"Link Error\"");
    expect("click cmd_conn", "ok");
    expect("boxes", "ok []");
    expect("click cmd_run", "ok");
    expect("field cur_timing", "ok 1");
}

TEST_F(faults_test, lie_about_what_is_stored) {
    expect("select lstv_timing 7", "ok");
    expect("faults 100 7 forget", "ok");
    expect("click cmd_run", "ok");
    expect("field cur_timing", "ok 7");
    expect("faults off", "ok");
    expect("click cmd_refresh", "ok");
    expect("field cur_timing", "ok 1");
    expect("faults", "ok {\"forget\": 1}");
}

TEST_F(faults_test, stay_through_the_end_of_the_program) {
    expect("faults 100 7 drop", "ok");
    expect("stop", "ok");
    expect("start", "ok");
    expect("click cmd_timing", "ok");
    expect("click cmd_run", "ok");
    expect("faults", "ok {\"drop\": 2}");
}

TEST(faults_of_the_robot, are_refused_where_they_are_none) {
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
