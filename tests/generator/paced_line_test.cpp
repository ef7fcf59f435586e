#include "generator/paced_line.h"

#include "support/line_time.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace desk {
namespace {

using test::byte_ns;
using test::ms;

std::string taken(paced_line& line, std::int64_t now_ns) { return string_of(line.take_until(now_ns)); }

std::vector<std::string> finished(paced_line& line, std::int64_t now_ns) {
    std::vector<std::string> texts;
    for (const bytes& part : line.take_finished_parts(now_ns))
        texts.push_back(string_of(part));
    return texts;
}

using texts = std::vector<std::string>;

TEST(paced_line, a_byte_takes_ten_bit_times) { EXPECT_EQ(byte_ns, 10'000'000'000 / 19200); }

TEST(paced_line, bytes_arrive_one_after_the_other) {
    paced_line line;
    line.send({{0, bytes_of("TIM007")}}, 10 * ms);
    EXPECT_EQ(line.next_arrival_ns(), 10 * ms + byte_ns);
    EXPECT_EQ(taken(line, 10 * ms + byte_ns - 1), "");
    EXPECT_EQ(taken(line, 10 * ms + byte_ns), "T");
    EXPECT_EQ(line.next_arrival_ns(), 10 * ms + 2 * byte_ns);
    EXPECT_EQ(taken(line, 10 * ms + 6 * byte_ns - 1), "IM00");
    EXPECT_EQ(taken(line, 10 * ms + 6 * byte_ns), "7");
    EXPECT_EQ(line.next_arrival_ns(), std::nullopt);
}

TEST(paced_line, pauses_stand_before_their_part) {
    paced_line line;
    line.send({{1, bytes_of("AB")}, {100, bytes_of("C")}}, 0);
    EXPECT_EQ(taken(line, ms + 2 * byte_ns), "AB");
    EXPECT_EQ(line.next_arrival_ns(), 101 * ms + 3 * byte_ns);
    EXPECT_EQ(line.free_ns(), 101 * ms + 3 * byte_ns);
}

TEST(paced_line, a_fraction_of_a_millisecond_counts) {
    paced_line line;
    line.send({{0.25, bytes_of("A")}}, 0);
    EXPECT_EQ(line.next_arrival_ns(), 250'000 + byte_ns);
}

TEST(paced_line, an_answer_waits_until_the_line_is_free) {
    paced_line line;
    line.send({{0, bytes_of("AAAA")}}, 0);
    line.send({{1, bytes_of("B")}}, byte_ns);
    EXPECT_EQ(taken(line, 5 * byte_ns - 1), "AAAA");
    EXPECT_EQ(taken(line, 5 * byte_ns), "B");
}

TEST(paced_line, a_pause_of_one_answer_holds_up_no_other) {
    paced_line line;
    line.send({{300, bytes_of("late")}}, 0);
    line.send({{0, bytes_of("TIM007")}}, 10 * ms);
    EXPECT_EQ(line.next_arrival_ns(), 10 * ms + byte_ns);
    EXPECT_EQ(finished(line, 10 * ms + 6 * byte_ns), texts{"TIM007"});
    EXPECT_EQ(line.next_arrival_ns(), 10 * ms + byte_ns);
    EXPECT_EQ(taken(line, 299 * ms), "TIM007");
    EXPECT_EQ(line.next_arrival_ns(), 300 * ms + byte_ns);
    EXPECT_EQ(line.free_ns(), 300 * ms + 4 * byte_ns);
    EXPECT_EQ(taken(line, 300 * ms + 4 * byte_ns), "late");
}

TEST(paced_line, another_answer_goes_between_the_parts_of_one) {
    paced_line line;
    line.send({{0, bytes_of("one")}, {100, bytes_of("two")}}, 0);
    line.send({{0, bytes_of("between")}}, 50 * ms);
    EXPECT_EQ(finished(line, 1000 * ms), (texts{"one", "between", "two"}));
}

TEST(paced_line, a_part_without_bytes_is_only_its_pause) {
    paced_line line;
    line.send({{5, {}}, {5, bytes_of("A")}, {20, {}}}, 0);
    EXPECT_EQ(line.next_arrival_ns(), 10 * ms + byte_ns);
    EXPECT_EQ(finished(line, 10 * ms + byte_ns), texts{"A"});
    // nothing comes behind the last pause
    EXPECT_EQ(line.free_ns(), 10 * ms + byte_ns);
}

TEST(paced_line, silence_takes_no_time) {
    paced_line line;
    line.send({}, 50 * ms);
    EXPECT_EQ(line.next_arrival_ns(), std::nullopt);
    EXPECT_EQ(line.free_ns(), 0);
}

TEST(paced_line, tells_a_part_when_its_last_byte_has_arrived) {
    paced_line line;
    line.send({{0, bytes_of("ERD001")}, {100, bytes_of("data")}}, 0);
    EXPECT_EQ(finished(line, 6 * byte_ns - 1), texts{});
    EXPECT_EQ(finished(line, 6 * byte_ns), texts{"ERD001"});
    EXPECT_EQ(finished(line, 6 * byte_ns), texts{});
    EXPECT_EQ(finished(line, 1000 * ms), texts{"data"});
    // looking at the parts takes no bytes
    EXPECT_EQ(taken(line, 1000 * ms), "ERD001data");
}

TEST(paced_line, clear_loses_what_is_on_the_line) {
    paced_line line;
    line.send({{500, bytes_of("TIM007")}}, 0);
    line.clear();
    EXPECT_EQ(taken(line, 1000 * ms), "");
    EXPECT_EQ(finished(line, 1000 * ms), texts{});
    line.send({{0, bytes_of("A")}}, 0);
    EXPECT_EQ(line.next_arrival_ns(), byte_ns);
}

} // namespace
} // namespace desk
