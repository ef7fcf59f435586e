#include "generator/generator_on_line.h"

#include "support/line_time.h"

#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <vector>

namespace desk {
namespace {

using namespace std::chrono_literals;

using test::byte_time;

class generator_on_line_test : public testing::Test {
protected:
    void write(const std::string& text) { line.receive(bytes_of(text), now); }

    /// All bytes that reach the desk in this time.
    std::string run(std::chrono::nanoseconds span) {
        const auto end = now + span;
        std::string heard;
        while (const auto due = line.next_due()) {
            if (*due > end) break;
            now = *due;
            heard += string_of(line.take_due(now));
        }
        now = end;
        return heard;
    }

    simulated_generator generator{76, 48};
    fault_injector faults{generator};
    desk::cable cable;
    generator_on_line line{faults, cable};
    generator_on_line::time now = 1000ms;
};

using texts = std::vector<std::string>;

TEST_F(generator_on_line_test, an_exchange_takes_twelve_bytes_and_the_thinking) {
    write("VER001");
    EXPECT_EQ(run(1ms + 12 * byte_time - 1ns), "VER01");
    EXPECT_EQ(run(1ns), "2");
    EXPECT_EQ(line.next_due(), std::nullopt);
}

TEST_F(generator_on_line_test, the_pace_does_not_depend_on_the_caller) {
    write("VER001");
    // one late call returns all of it
    EXPECT_EQ(string_of(line.take_due(now + 1ms + 12 * byte_time)), "VER012");
}

TEST_F(generator_on_line_test, logs_what_has_arrived) {
    write("TIM007");
    run(6 * byte_time);
    EXPECT_EQ(line.take_log(), texts{"> TIM007"});
    run(1ms + 6 * byte_time);
    EXPECT_EQ(line.take_log(), texts{"< TIM007"});
    EXPECT_EQ(line.take_log(), texts{});
}

TEST_F(generator_on_line_test, logs_bytes_that_are_not_printable_in_hexadecimal) {
    write("MOT001");
    run(100ms);
    write(std::string("AB\0\0\0\0\0\0\0\0\0\n", 12));
    run(100ms);
    write("MOT999");
    run(100ms);
    EXPECT_EQ(line.take_log(), (texts{"> MOT001", "< MOT001", "> hex:41420000000000000000000A", "> MOT999",
                                      "< hex:4D4F5439393941420000000000000000000A"}));
}

TEST_F(generator_on_line_test, reads_an_edid_after_a_pause) {
    write("ERD001");
    EXPECT_EQ(run(101ms + 12 * byte_time), "ERD001");
    EXPECT_EQ(run(256 * byte_time), string_of(generator.state.sinks[0].edid.value()));
}

TEST_F(generator_on_line_test, writes_an_edid) {
    write("EWR001");
    EXPECT_EQ(run(10ms), "EWR001");
    write(std::string(256, 'E'));
    EXPECT_EQ(run(20ms + 262 * byte_time - 1ns), "EWR00");
    EXPECT_EQ(run(1ns), "2");
    EXPECT_EQ(generator.state.sinks[0].edid, bytes(256, 'E'));
}

TEST_F(generator_on_line_test, hears_the_second_try_of_a_write_whose_answer_was_lost) {
    faults.drop(1);
    write("EWR001");
    EXPECT_EQ(run(755ms), "");
    write("EWR001");
    EXPECT_EQ(run(10ms), "EWR001");
    write(std::string(256, 'E'));
    EXPECT_EQ(run(200ms), "EWR002");
}

TEST_F(generator_on_line_test, takes_the_block_of_a_late_answer) {
    faults.delay(1, 600ms);
    write("MOT001");
    EXPECT_EQ(run(620ms), "MOT001");
    write("NEW STRING  ");
    EXPECT_EQ(run(100ms), "");
    write("MOT999");
    EXPECT_EQ(run(100ms), "MOT999NEW STRING  ");
}

TEST_F(generator_on_line_test, answers_commands_that_are_not_awaited) {
    write("CRR001CRR002");
    write("CRR003");
    EXPECT_EQ(run(100ms), "CRR001CRR002CRR003");
    EXPECT_EQ(generator.state.color_r, 3);
}

TEST_F(generator_on_line_test, forgets_half_a_command) {
    write("TIM");
    run(400ms);
    write("PAT005");
    EXPECT_EQ(run(100ms), "PAT005");
}

TEST_F(generator_on_line_test, a_cut_loses_what_is_on_the_line) {
    write("TIM007PAT");
    run(7 * byte_time);
    line.cut();
    EXPECT_EQ(line.next_due(), std::nullopt);
    write("OUT002");
    EXPECT_EQ(run(100ms), "OUT002");
}

TEST_F(generator_on_line_test, logs_random_faults) {
    faults.follow(fault_plan_of({"100", "drop"}));
    write("TIM007");
    EXPECT_EQ(run(100ms), "");
    EXPECT_EQ(line.take_log(), (texts{"> TIM007", "! drop"}));
}

TEST_F(generator_on_line_test, is_absent_while_a_random_fault_unplugs_the_cable) {
    faults.follow(fault_plan_of({"100", "unplug"}));
    write("TIM007PAT005");
    EXPECT_FALSE(cable.pulled_out(now));
    EXPECT_EQ(run(100ms), "");
    EXPECT_TRUE(cable.pulled_out(now));
    EXPECT_EQ(line.take_log(), (texts{"> TIM007", "! unplug"})) << "the rest was still on the line";
    faults.follow({});
    write("OUT002");
    // it is unplugged for 200 to 5000 ms
    EXPECT_EQ(run(99ms), "");
    EXPECT_TRUE(cable.pulled_out(now));
    EXPECT_TRUE(line.next_due()) << "it must be plugged in again";
    EXPECT_EQ(run(5000ms), "");
    EXPECT_FALSE(cable.pulled_out(now));
    EXPECT_FALSE(line.next_due());
    write("OUT003");
    EXPECT_EQ(run(100ms), "OUT003");
}

TEST_F(generator_on_line_test, makes_a_desk_wait_that_writes_too_fast) {
    EXPECT_TRUE(line.ready_for_more(now));
    write(std::string(600, 'x'));
    EXPECT_FALSE(line.ready_for_more(now));
    run(100 * byte_time);
    EXPECT_TRUE(line.ready_for_more(now));
}

} // namespace
} // namespace desk
