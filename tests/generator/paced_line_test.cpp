#include "generator/paced_line.h"

#include "support/line_time.h"

#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <vector>

namespace desk {
namespace {

using namespace std::chrono_literals;

using test::byte_time;

std::string taken(paced_line& line, paced_line::time now) { return string_of(line.take_until(now)); }

std::vector<std::string> finished(paced_line& line, paced_line::time now) {
    std::vector<std::string> texts;
    for (const bytes& part : line.take_finished_parts(now))
        texts.push_back(string_of(part));
    return texts;
}

using texts = std::vector<std::string>;

TEST(paced_line, a_byte_takes_ten_bit_times) { EXPECT_EQ(byte_time, paced_line::time(10s) / 19200); }

TEST(paced_line, bytes_arrive_one_after_the_other) {
    paced_line line;
    line.send({{0ms, bytes_of("TIM007")}}, 10ms);
    EXPECT_EQ(line.next_arrival(), 10ms + byte_time);
    EXPECT_EQ(taken(line, 10ms + byte_time - 1ns), "");
    EXPECT_EQ(taken(line, 10ms + byte_time), "T");
    EXPECT_EQ(line.next_arrival(), 10ms + 2 * byte_time);
    EXPECT_EQ(taken(line, 10ms + 6 * byte_time - 1ns), "IM00");
    EXPECT_EQ(taken(line, 10ms + 6 * byte_time), "7");
    EXPECT_EQ(line.next_arrival(), std::nullopt);
}

TEST(paced_line, pauses_come_before_their_part) {
    paced_line line;
    line.send({{1ms, bytes_of("AB")}, {100ms, bytes_of("C")}}, 0ms);
    EXPECT_EQ(taken(line, 1ms + 2 * byte_time), "AB");
    EXPECT_EQ(line.next_arrival(), 101ms + 3 * byte_time);
    EXPECT_EQ(line.free_at(), 101ms + 3 * byte_time);
}

TEST(paced_line, an_answer_waits_until_the_line_is_free) {
    paced_line line;
    line.send({{0ms, bytes_of("AAAA")}}, 0ms);
    line.send({{1ms, bytes_of("B")}}, byte_time);
    EXPECT_EQ(taken(line, 5 * byte_time - 1ns), "AAAA");
    EXPECT_EQ(taken(line, 5 * byte_time), "B");
}

TEST(paced_line, a_pause_of_one_answer_holds_up_no_other) {
    paced_line line;
    line.send({{300ms, bytes_of("late")}}, 0ms);
    line.send({{0ms, bytes_of("TIM007")}}, 10ms);
    EXPECT_EQ(line.next_arrival(), 10ms + byte_time);
    EXPECT_EQ(finished(line, 10ms + 6 * byte_time), texts{"TIM007"});
    EXPECT_EQ(line.next_arrival(), 10ms + byte_time);
    EXPECT_EQ(taken(line, 299ms), "TIM007");
    EXPECT_EQ(line.next_arrival(), 300ms + byte_time);
    EXPECT_EQ(line.free_at(), 300ms + 4 * byte_time);
    EXPECT_EQ(taken(line, 300ms + 4 * byte_time), "late");
}

TEST(paced_line, another_answer_goes_between_the_parts_of_one) {
    paced_line line;
    line.send({{0ms, bytes_of("one")}, {100ms, bytes_of("two")}}, 0ms);
    line.send({{0ms, bytes_of("between")}}, 50ms);
    EXPECT_EQ(finished(line, 1000ms), (texts{"one", "between", "two"}));
}

TEST(paced_line, a_part_without_bytes_is_only_its_pause) {
    paced_line line;
    line.send({{5ms, {}}, {5ms, bytes_of("A")}, {20ms, {}}}, 0ms);
    EXPECT_EQ(line.next_arrival(), 10ms + byte_time);
    EXPECT_EQ(finished(line, 10ms + byte_time), texts{"A"});
    // nothing follows the last pause
    EXPECT_EQ(line.free_at(), 10ms + byte_time);
}

TEST(paced_line, silence_takes_no_time) {
    paced_line line;
    line.send({}, 50ms);
    EXPECT_EQ(line.next_arrival(), std::nullopt);
    EXPECT_EQ(line.free_at(), 0ms);
}

TEST(paced_line, reports_a_part_when_its_last_byte_has_arrived) {
    paced_line line;
    line.send({{0ms, bytes_of("ERD001")}, {100ms, bytes_of("data")}}, 0ms);
    EXPECT_EQ(finished(line, 6 * byte_time - 1ns), texts{});
    EXPECT_EQ(finished(line, 6 * byte_time), texts{"ERD001"});
    EXPECT_EQ(finished(line, 6 * byte_time), texts{});
    EXPECT_EQ(finished(line, 1000ms), texts{"data"});
    // reading the parts removes no bytes
    EXPECT_EQ(taken(line, 1000ms), "ERD001data");
}

TEST(paced_line, clear_loses_what_is_on_the_line) {
    paced_line line;
    line.send({{500ms, bytes_of("TIM007")}}, 0ms);
    line.clear();
    EXPECT_EQ(taken(line, 1000ms), "");
    EXPECT_EQ(finished(line, 1000ms), texts{});
    line.send({{0ms, bytes_of("A")}}, 0ms);
    EXPECT_EQ(line.next_arrival(), byte_time);
}

} // namespace
} // namespace desk
