#include "robot/answers.h"

#include "runtime/failure.h"

#include <gtest/gtest.h>

namespace desk::robot {
namespace {

TEST(answers, are_ok_refused_or_fatal) {
    EXPECT_EQ(ok(), "ok");
    EXPECT_EQ(ok(json(7)), "ok 7");
    EXPECT_EQ(ok(json("text")), "ok \"text\"");
    EXPECT_EQ(refused("no program"), "refused \"no program\"");
    EXPECT_EQ(fatal(runtime_failure(failure::overflow, "why")), "fatal 6 \"Overflow\"");
    EXPECT_EQ(fatal(runtime_failure(failure::path_file_access_error, "why")), "fatal 75 \"Path/File access error\"");
    EXPECT_EQ(fatal(runtime_failure(failure::does_not_return, "why")), "fatal 0 \"Does not return\"");
}

TEST(json_text, has_one_space_after_colons_and_commas_only) {
    const json value = {{"text", "a"}, {"sub", {"x", "y"}}, {"checked", false}};
    EXPECT_EQ(json_text(value), "{\"text\": \"a\", \"sub\": [\"x\", \"y\"], \"checked\": false}");
    EXPECT_EQ(json_text(json::array()), "[]");
    EXPECT_EQ(json_text(json::array({json::array({1, 2}), json::array()})), "[[1, 2], []]");
    EXPECT_EQ(json_text(json::object()), "{}");
}

TEST(json_text, keeps_the_order_of_keys) {
    EXPECT_EQ(json_text(json{{"z", 1}, {"a", 2}, {"m", 3}}), "{\"z\": 1, \"a\": 2, \"m\": 3}");
}

TEST(json_text, has_whole_numbers_as_integers) {
    EXPECT_EQ(json_text(json(305419896.0)), "305419896");
    EXPECT_EQ(json_text(json(4294967295.0)), "4294967295");
    EXPECT_EQ(json_text(json(-2.0)), "-2");
    EXPECT_EQ(json_text(json(0.5)), "0.5");
    EXPECT_EQ(json_text(json(254)), "254");
}

TEST(json_text, writes_booleans_as_words) {
    EXPECT_EQ(json_text(json(true)), "true");
    EXPECT_EQ(json_text(json(false)), "false");
}

TEST(json_text, escapes_only_control_characters_quotes_and_backslashes) {
    EXPECT_EQ(json_text(json("a\r\n\tb")), "\"a\\r\\n\\tb\"");
    EXPECT_EQ(json_text(json("say \"x\" \\ /")), "\"say \\\"x\\\" \\\\ /\"");
    EXPECT_EQ(json_text(json(std::string("\x01\0", 2))), "\"\\u0001\\u0000\"");
    EXPECT_EQ(json_text(json("\x7Fäß€")), "\"\x7Fäß€\"");
}

TEST(json_text, reads_invalid_utf8_by_the_character_set) { EXPECT_EQ(json_text(json("gr\xFCn \x80")), "\"grün €\""); }

} // namespace
} // namespace desk::robot
