#include "generator/command_stream.h"

#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <vector>

namespace desk {
namespace {

using namespace std::chrono_literals;

std::vector<std::string> pull_all(command_stream& stream) {
    std::vector<std::string> items;
    while (const auto item = stream.next())
        items.push_back((item->raw ? "raw " : "") + item->data);
    return items;
}

using texts = std::vector<std::string>;

TEST(command_stream, cuts_after_six_characters) {
    command_stream stream;
    stream.receive("TIM007PAT", 0ms);
    EXPECT_EQ(pull_all(stream), texts{"TIM007"});
    stream.receive("012", 1ms);
    EXPECT_EQ(pull_all(stream), texts{"PAT012"});
}

TEST(command_stream, cuts_commands_that_follow_each_other) {
    command_stream stream;
    stream.receive("CRR001CRR002CRR003", 0ms);
    EXPECT_EQ(pull_all(stream), (texts{"CRR001", "CRR002", "CRR003"}));
}

TEST(command_stream, takes_single_bytes_and_reports_when_the_last_came) {
    command_stream stream;
    auto now = command_stream::time(10ms);
    for (const char c : std::string("VER001")) {
        EXPECT_FALSE(stream.next().has_value());
        stream.receive(std::string(1, c), now += 500us);
    }
    const auto item = stream.next();
    ASSERT_TRUE(item.has_value());
    EXPECT_FALSE(item->raw);
    EXPECT_EQ(item->data, "VER001");
    EXPECT_EQ(item->complete_at, 13ms);
}

TEST(command_stream, takes_any_bytes_as_a_raw_block) {
    command_stream stream;
    stream.receive("MOT001", 0ms);
    ASSERT_EQ(pull_all(stream), texts{"MOT001"});
    stream.expect_raw(12, 5ms);
    EXPECT_TRUE(stream.raw_expected());
    const std::string block("HELLO\0\0\0\0\0\0\0", 12);
    stream.receive(block + "TIM001", 20ms);
    EXPECT_EQ(pull_all(stream), (texts{"raw " + block, "TIM001"}));
    EXPECT_FALSE(stream.raw_expected());
}

TEST(command_stream, forgets_half_a_command_after_a_silence) {
    command_stream stream;
    stream.receive("TIM", 0ms);
    EXPECT_TRUE(pull_all(stream).empty());
    stream.receive("PAT003", 300'500us);
    EXPECT_EQ(pull_all(stream), texts{"PAT003"});
}

TEST(command_stream, keeps_half_a_command_over_a_short_pause) {
    command_stream stream;
    stream.receive("TIM", 0ms);
    stream.receive("004", 300ms);
    EXPECT_EQ(pull_all(stream), texts{"TIM004"});
}

TEST(command_stream, forgets_more_than_one_fragment) {
    command_stream stream;
    stream.receive("TI", 0ms);
    stream.receive("PA", 400ms);
    stream.receive("OUT002", 800ms);
    EXPECT_EQ(pull_all(stream), texts{"OUT002"});
}

TEST(command_stream, does_not_forget_whole_items_that_wait) {
    command_stream stream;
    stream.receive("TIM001", 0ms);
    stream.receive("PAT001", 5000ms);
    EXPECT_EQ(pull_all(stream), (texts{"TIM001", "PAT001"}));
}

TEST(command_stream, is_back_to_commands_when_the_raw_block_never_comes) {
    command_stream stream;
    stream.receive("EWR001", 0ms);
    ASSERT_EQ(pull_all(stream), texts{"EWR001"});
    stream.expect_raw(256, 4ms);
    stream.receive("EWR001", 755ms);
    EXPECT_EQ(pull_all(stream), texts{"EWR001"});
    EXPECT_FALSE(stream.raw_expected());
}

TEST(command_stream, is_back_to_commands_when_a_raw_block_breaks_off) {
    command_stream stream;
    stream.expect_raw(256, 0ms);
    stream.receive(std::string(100, 'x'), 50ms);
    EXPECT_TRUE(pull_all(stream).empty());
    stream.receive("VER001", 1000ms);
    EXPECT_EQ(pull_all(stream), texts{"VER001"});
}

TEST(command_stream, waits_for_a_raw_block_from_the_answer_on) {
    command_stream stream;
    stream.receive("MOT001", 0ms);
    ASSERT_EQ(pull_all(stream), texts{"MOT001"});
    // an answer that took its time
    stream.expect_raw(12, 600ms);
    stream.receive("ABCDEFGHIJKL", 640ms);
    EXPECT_EQ(pull_all(stream), texts{"raw ABCDEFGHIJKL"});
}

TEST(command_stream, forgets_on_request) {
    command_stream stream;
    stream.receive("TIM", 0ms);
    stream.expect_raw(12, 0ms);
    stream.forget();
    EXPECT_FALSE(stream.raw_expected());
    stream.receive("ASC001", 1ms);
    EXPECT_EQ(pull_all(stream), texts{"ASC001"});
}

} // namespace
} // namespace desk
