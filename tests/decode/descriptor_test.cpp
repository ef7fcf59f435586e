#include "translate/decode/descriptor.h"

#include "support/translation_fixture.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace desk {
namespace {

using test::codes_of;
using test::edid_of;
using test::lines;
using test::text_of;
using test::text_till;

constexpr std::uint8_t tag_at = 57; // of the first descriptor

/// The output for a code and a descriptor with these bytes from its tag on.
std::string descriptor_text(int code, const std::vector<int>& from_tag) {
    return text_of([&](std::string& text) {
        decode_descriptor(text, edid_of({{tag_at, from_tag}}), tag_at, static_cast<std::uint8_t>(code));
    });
}

struct text_field {
    int code;
    std::string label;
};
const text_field text_fields[] = {
    {0xFF, "Monitor Serial Number = "},
    {0xFE, "Monitor ASCII String = "},
    {0xFC, "Monitor Name = "},
};

/// Expects each of the three text fields to show these 13 bytes as `expected`, whatever bytes follow.
void expect_text(const std::string& field, const std::string& expected) {
    for (const text_field& f : text_fields) {
        std::vector<int> bytes = {f.code, 0};
        for (const int code : codes_of(field + "behind the field"))
            bytes.push_back(code);
        EXPECT_EQ(descriptor_text(f.code, bytes), f.label + expected);
    }
}

TEST(text_descriptor, ends_at_its_line_feed) {
    expect_text("ABC\n         ", "ABC");
    expect_text("ABC\nDEF\n     ", "ABC");
    expect_text("ABCDEFGHIJKL\n", "ABCDEFGHIJKL");
    expect_text("VELOTRACE 17M", "VELOTRACE 17M");
    expect_text("\n            ", "");
}

TEST(text_descriptor, keeps_spaces_and_other_bytes_unchanged) {
    expect_text(" A  B \r\t   \n ", " A  B \r\t   ");
    expect_text(std::string("A\0B\n         ", 13), std::string("A\0B", 3));
}

TEST(text_descriptor, is_in_the_desks_character_set) {
    expect_text("\x80\x81\x9D\xE4\xFF\n       ", "\xE2\x82\xAC\xC2\x81\xC2\x9D\xC3\xA4\xC3\xBF");
}

TEST(text_descriptor, does_not_compare_the_tag_with_the_code) {
    EXPECT_EQ(descriptor_text(0xFC, {0x10, 0, 'A', 10}), "Monitor Name = A");
    EXPECT_EQ(descriptor_text(0xFF, {0xFC, 0, 'A', 10}), "Monitor Serial Number = A");
}

TEST(text_descriptor, fails_beyond_the_edid_after_its_label) {
    EXPECT_EQ(text_till(failure::subscript_out_of_range,
                        [](std::string& text) {
                            decode_descriptor(text, edid_of({{254, {'A', 'B'}}}), 252, 0xFC);
                        }),
              "Monitor Name = AB");
    EXPECT_EQ(
        text_till(failure::subscript_out_of_range, [](std::string& text) { decode_descriptor(text, {}, 254, 0xFE); }),
        "Monitor ASCII String = ");
}

TEST(range_limits, are_shown_unchanged) {
    EXPECT_EQ(descriptor_text(0xFD, {0xFD, 0, 0, 255, 200, 0, 255, 2}),
              lines({
                  "--- Monitor Range Limits ---",
                  "Min Vertical Rate = 0 Hz",
                  "Max Vertical Rate = 255 Hz",
                  "",
                  "Min Horizontal Rate = 200 KHz",
                  "Max Horizontal Rate = 0 KHz",
                  "",
                  "Max Pixel Clock Rate = 2550 MHz",
              }) + "2nd Timing Formula = 2nd GTF curve supported");
}

TEST(range_limits, have_three_texts_for_the_timing_formula) {
    for (int formula = 0; formula < 256; ++formula) {
        const std::string text = descriptor_text(0xFD, {0xFD, 0, 1, 2, 3, 4, 5, formula, 7, 8, 9});
        EXPECT_EQ(test::behind("2nd Timing Formula = ", text), formula == 0   ? "Not supported"
                                                               : formula == 2 ? "2nd GTF curve supported"
                                                                              : "?");
    }
}

TEST(range_limits, ignore_the_offset_flags_and_the_parameters_of_the_formula) {
    EXPECT_EQ(descriptor_text(0xFD, {0xFD, 0x0F, 50, 75, 30, 80, 15, 2, 1, 2, 3, 4, 5, 6, 7}),
              descriptor_text(0xFD, {0xFD, 0x00, 50, 75, 30, 80, 15, 2}));
}

TEST(range_limits, fail_beyond_the_edid) {
    text_till(failure::subscript_out_of_range, [](std::string& text) { decode_descriptor(text, {}, 249, 0xFD); });
}

// its six pairs begin at the fifth byte, but the desk reads from the tag on
const std::vector<int> six_timings = {0xFA, 0, 0xD1, 0xC0, 0x81, 0x80, 0x71, 0x80, 0x61, 0x40, 0x31, 0x59, 0xA9, 0xC0};

TEST(standard_timings_9_to_11, also_read_the_byte_after_the_tag) {
    const std::string text = descriptor_text(0xE1, {0xFA, 0xC5});
    EXPECT_EQ(text.substr(0, text.find("\r\n\r\n")), lines({
                                                         "--- Standard Timing 9 ---",
                                                         "Horizontal Active Pixel = 2248",
                                                         "Vertical Active Pixel = 1264.5",
                                                         "Image Aspect Ratio = 16:9",
                                                     }) + "Refresh Rate = 65");
}

TEST(unknown_descriptor, is_reported_by_its_tag) {
    const std::vector<std::pair<int, std::string>> tags = {{0x10, "10"}, {0xFB, "FB"}, {0x00, "00"}, {0x0A, "0A"}};
    for (const auto& [tag, digits] : tags)
        EXPECT_EQ(descriptor_text(0xE3, {tag, 1, 2, 3}),
                  lines({"Unknown detail-timing or monitor descriptor.", "Tag address = 0x39"}) + "Tag data = 0x" +
                      digits);
}

TEST(descriptor, shows_nothing_for_other_codes) {
    for (int code = 0; code < 256; ++code) {
        const bool known = code >= 0xFC || (code >= 0xE1 && code <= 0xE3);
        EXPECT_EQ(descriptor_text(code, six_timings).empty(), !known) << code;
    }
}

} // namespace
} // namespace desk
