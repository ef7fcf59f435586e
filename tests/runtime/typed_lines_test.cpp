#include "runtime/typed_lines.h"

#include <gtest/gtest.h>

namespace desk {
namespace {

TEST(typed_lines, come_whole_and_in_order) {
    typed_lines lines;
    lines.add("state\ndr");
    EXPECT_EQ(lines.next(), "state");
    EXPECT_EQ(lines.next(), std::nullopt);
    lines.add("op 2\n\n");
    EXPECT_TRUE(lines.has_line());
    EXPECT_EQ(lines.next(), "drop 2");
    EXPECT_EQ(lines.next(), "");
    EXPECT_FALSE(lines.has_line());
}

TEST(typed_lines, give_the_last_one_without_a_line_end) {
    typed_lines lines;
    lines.add("quit");
    lines.end();
    EXPECT_EQ(lines.next(), "quit");
    lines.end();
    EXPECT_EQ(lines.next(), std::nullopt);
}

TEST(typed_lines, keep_one_byte_more_than_the_longest_and_continue_at_the_next) {
    typed_lines lines;
    for (int i = 0; i < 1000; ++i)
        lines.add(std::string(1000, 'x'));
    lines.add("\nstate\n");
    EXPECT_EQ(lines.next(), std::string(typed_lines::longest + 1, 'x'));
    EXPECT_EQ(lines.next(), "state");
}

} // namespace
} // namespace desk
