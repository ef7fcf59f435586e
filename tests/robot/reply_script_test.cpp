#include "robot/reply_script.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>

namespace desk::robot {
namespace {

std::optional<scripted_answer> parsed(const std::string& parts) {
    return scripted_answer_of(tokens_of(parts).value(), 0);
}

/// The answer to a command as one text: pauses as "+5 ", parts in brackets; "none" for silence.
std::string text_of(const std::optional<scripted_answer>& scripted, const std::string& command = "TIM007") {
    if (!scripted) return "not scripted";
    const answer a = scripted->to(command);
    std::string text;
    for (const answer_part& part : a) {
        if (part.pause.count() > 0) text += "+" + std::to_string(part.pause.count()) + " ";
        text += "[" + string_of(part.data) + "]";
    }
    return a.empty() ? "none" : text;
}

TEST(parts_of_an_answer, are_strings_echoes_bytes_and_pauses) {
    EXPECT_EQ(text_of(parsed("\"VER012\"")), "[VER012]");
    EXPECT_EQ(text_of(parsed("echo")), "[TIM007]");
    EXPECT_EQ(text_of(parsed("hex:414243")), "[ABC]");
    EXPECT_EQ(text_of(parsed("+60 \"T\" echo +5 hex:41")), "+60 [T][TIM007]+5 [A]");
    EXPECT_EQ(text_of(parsed("+5 +10 \"x\"")), "+15 [x]");
}

TEST(parts_of_an_answer, have_a_byte_for_each_character_of_a_string) {
    EXPECT_EQ(text_of(parsed("\"\\u00ff\\u0001\"")), "[\xFF\x01]");
    EXPECT_FALSE(parsed("\"\\u0100\"")) << "no byte";
}

TEST(parts_of_an_answer, can_be_none) {
    EXPECT_EQ(text_of(parsed("none")), "none");
    EXPECT_FALSE(parsed("none echo"));
    EXPECT_FALSE(parsed("echo none"));
    EXPECT_EQ(text_of(parsed("\"none\"")), "[none]") << "in quotes it is a text";
}

TEST(parts_of_an_answer, are_nothing_else) {
    for (const char* tokens : {"", "VER012", "+x", "+-5", "+", "hex:0", "hex:XY", "ECHO"})
        EXPECT_FALSE(parsed(tokens)) << tokens;
}

class script : public testing::Test {
protected:
    void add(const std::string& command, const std::string& parts) { replies.add(command, parsed(parts).value()); }
    std::string answer_to(const std::string& command) { return text_of(replies.take(command), command); }
    reply_script replies;
};

TEST_F(script, has_nothing_for_a_command_that_is_not_in_it) {
    add("TIM001", "echo");
    EXPECT_EQ(answer_to("TIM002"), "not scripted");
}

TEST_F(script, takes_answers_in_turn_and_keeps_the_last) {
    add("TIM001", "\"a\"");
    add("TIM001", "none");
    add("TIM001", "\"c\"");
    EXPECT_EQ(answer_to("TIM001"), "[a]");
    EXPECT_EQ(answer_to("TIM001"), "none") << "silence is a turn";
    EXPECT_EQ(answer_to("TIM001"), "[c]");
    EXPECT_EQ(answer_to("TIM001"), "[c]");
}

TEST_F(script, replaces_an_answer_that_was_kept) {
    add("TIM001", "\"a\"");
    EXPECT_EQ(answer_to("TIM001"), "[a]");
    EXPECT_EQ(answer_to("TIM001"), "[a]");
    add("TIM001", "\"b\"");
    add("TIM001", "\"c\"");
    EXPECT_EQ(answer_to("TIM001"), "[b]");
    EXPECT_EQ(answer_to("TIM001"), "[c]");
}

TEST_F(script, queues_a_new_answer_after_those_that_wait) {
    add("TIM001", "\"a\"");
    add("TIM001", "\"b\"");
    EXPECT_EQ(answer_to("TIM001"), "[a]");
    add("TIM001", "\"c\"");
    EXPECT_EQ(answer_to("TIM001"), "[b]");
    EXPECT_EQ(answer_to("TIM001"), "[c]");
}

TEST_F(script, keeps_the_turns_of_each_command_apart) {
    add("TIM001", "\"a\"");
    add("TIM001", "\"b\"");
    add("TIM002", "\"x\"");
    EXPECT_EQ(answer_to("TIM001"), "[a]");
    EXPECT_EQ(answer_to("TIM002"), "[x]");
    EXPECT_EQ(answer_to("TIM001"), "[b]");
}

TEST_F(script, knows_commands_by_their_start) {
    add("TIM*", "echo");
    EXPECT_EQ(answer_to("TIM007"), "[TIM007]");
    EXPECT_EQ(answer_to("TIM030"), "[TIM030]");
    EXPECT_EQ(answer_to("PAT007"), "not scripted");
    add("*", "\"any\"");
    EXPECT_EQ(answer_to("PAT007"), "[any]");
}

TEST_F(script, puts_an_exact_command_first_and_a_longer_start_before_a_shorter) {
    add("*", "\"all\"");
    add("T*", "\"short\"");
    add("TIM0*", "\"long\"");
    add("TIM007", "\"exact\"");
    EXPECT_EQ(answer_to("TIM007"), "[exact]");
    EXPECT_EQ(answer_to("TIM008"), "[long]");
    EXPECT_EQ(answer_to("TIM100"), "[short]");
    EXPECT_EQ(answer_to("PAT001"), "[all]");
}

TEST_F(script, can_forget) {
    add("TIM001", "\"a\"");
    add("TIM*", "\"b\"");
    replies.clear("TIM001");
    EXPECT_EQ(answer_to("TIM001"), "[b]");
    replies.clear();
    EXPECT_EQ(answer_to("TIM001"), "not scripted");
}

TEST_F(script, has_one_queue_for_raw_blocks) {
    EXPECT_EQ(text_of(replies.take_raw()), "not scripted");
    replies.add_raw(parsed("\"EWR002\"").value());
    replies.add_raw(parsed("\"EWR003\"").value());
    EXPECT_EQ(text_of(replies.take_raw()), "[EWR002]");
    EXPECT_EQ(text_of(replies.take_raw()), "[EWR003]");
    EXPECT_EQ(text_of(replies.take_raw()), "[EWR003]");
    replies.clear_raw();
    EXPECT_EQ(text_of(replies.take_raw()), "not scripted");
    replies.add_raw(parsed("\"x\"").value());
    replies.clear();
    EXPECT_EQ(text_of(replies.take_raw()), "not scripted");
}

} // namespace
} // namespace desk::robot
