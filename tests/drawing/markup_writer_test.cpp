#include "drawing/markup_writer.h"
#include "support/utf8.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

namespace desk::drawing {
namespace {

std::string escaped(std::string_view text) {
    std::string out;
    append_escaped(out, text);
    return out;
}

TEST(escaped_text, has_a_reference_for_each_character_of_markup) {
    EXPECT_EQ(escaped("<a href='x'>&\"</a>"), "&lt;a href=&#39;x&#39;&gt;&amp;&quot;&lt;/a&gt;");
}

TEST(escaped_text, keeps_plain_characters_and_spacing) {
    EXPECT_EQ(escaped("Dell, 27 cm\t(1)\r\n"), "Dell, 27 cm\t(1)\r\n");
    EXPECT_EQ(escaped("597 \xC3\x97 336 mm"), "597 \xC3\x97 336 mm");
    EXPECT_EQ(escaped("\xE6\x97\xA5\xE6\x9C\xAC"), "\xE6\x97\xA5\xE6\x9C\xAC");
}

TEST(escaped_text, shows_control_characters_as_pictures) {
    EXPECT_EQ(escaped(std::string_view("\0\x1B[31m\x7F", 7)), "\xE2\x90\x80\xE2\x90\x9B[31m\xE2\x90\xA1");
}

TEST(escaped_text, has_nothing_that_changes_the_direction_of_other_text) {
    for (const char32_t mark : {U'\x202E', U'\x200F', U'\x200E', U'\x2067', U'\x2069', U'\x061C'})
        EXPECT_EQ(escaped("a" + test::utf8(mark) + "b<"), "a\xEF\xBF\xBD"
                                                          "b&lt;");
}

TEST(escaped_text, replaces_what_xml_forbids) {
    EXPECT_EQ(escaped("\xEF\xBF\xBE"), "\xEF\xBF\xBD");     // U+FFFE
    EXPECT_EQ(escaped("\xC2\x85"), "\xEF\xBF\xBD");         // U+0085
    EXPECT_EQ(escaped("\xF0\x9F\xBF\xBF"), "\xEF\xBF\xBD"); // U+1FFFF
}

TEST(escaped_text, reads_invalid_utf_8_as_bytes_of_the_character_set) {
    EXPECT_EQ(escaped("\xE4<"), "\xC3\xA4&lt;");
    EXPECT_EQ(escaped("\x80"), "\xE2\x82\xAC"); // the euro sign
}

TEST(number, loses_zeros_at_its_end) {
    EXPECT_EQ(number_text(59.94, 2), "59.94");
    EXPECT_EQ(number_text(60, 2), "60");
    EXPECT_EQ(number_text(37.5, 2), "37.5");
    EXPECT_EQ(number_text(100, 0), "100");
    EXPECT_EQ(number_text(0.05, 4), "0.05");
    EXPECT_EQ(number_text(-0.25, 1), "-0.3");
    EXPECT_EQ(number_text(-0.01, 1), "0");
}

TEST(number, with_all_decimals_keeps_them) {
    EXPECT_EQ(fixed_text(60, 2), "60.00");
    EXPECT_EQ(fixed_text(0.2, 4), "0.2000");
    EXPECT_EQ(fixed_text(1080, 0), "1080");
}

TEST(number, is_0_if_it_is_none) {
    EXPECT_EQ(number_text(std::nan(""), 1), "0");
    EXPECT_EQ(number_text(std::numeric_limits<double>::infinity(), 1), "0");
    EXPECT_EQ(number_text(1e300, 1), "1000000000000");
}

TEST(markup_writer, nests_elements) {
    std::string out;
    markup_writer writer(out);
    writer.begin("p", "quiet").attribute("id", "a").text("1 < 2");
    writer.begin("br").end_void();
    writer.element("b", "x");
    writer.begin("i").end();
    writer.end();
    EXPECT_EQ(out, "<p class=\"quiet\" id=\"a\">1 &lt; 2<br/><b>x</b><i></i></p>");
}

TEST(markup_writer, escapes_the_values_of_attributes) {
    std::string out;
    markup_writer writer(out);
    writer.begin("a").attribute("title", "\"><script>").attribute("x", 1.26).attribute("y", -3).end_void();
    EXPECT_EQ(out, "<a title=\"&quot;&gt;&lt;script&gt;\" x=\"1.3\" y=\"-3\"/>");
}

} // namespace
} // namespace desk::drawing
