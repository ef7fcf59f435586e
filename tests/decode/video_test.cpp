#include "translate/decode/video.h"

#include "support/translation_fixture.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace desk {
namespace {

using test::edid_of;
using test::lines;
using test::text_of;
using test::text_till;

constexpr std::uint8_t header_at = 140;

edid_buffer edid_with(const std::vector<int>& descriptors) {
    return edid_of({{header_at, {0x40 + static_cast<int>(descriptors.size())}}, {header_at + 1, descriptors}});
}
std::string video_text(const std::vector<int>& descriptors) {
    return text_of([&](std::string& text) { decode_video_block(text, edid_with(descriptors), header_at); });
}

TEST(video, is_reported_missing_at_address_0) {
    EXPECT_EQ(text_of([](std::string& text) {
                  decode_video_block(text, edid_of({{0, {0x41, 4}}}), 0);
              }),
              "No Video Block");
}

TEST(video, is_empty_for_a_block_without_descriptors) { EXPECT_EQ(video_text({}), ""); }

// tests/golden/61 and 62 have the texts of all codes
TEST(video, says_for_each_code_up_to_59_whether_it_is_native) {
    for (int vic = 0; vic < 60; ++vic) {
        const std::string line = video_text({vic});
        EXPECT_TRUE(line.starts_with((vic < 10 ? " " : "") + std::to_string(vic) + " ")) << line;
        EXPECT_TRUE(line.ends_with("\r\n") && line.find("Reserved") == std::string::npos) << line;
        EXPECT_EQ(video_text({vic + 128}), line.substr(0, line.size() - 2) + " is Native\r\n");
    }
    EXPECT_EQ(video_text({0, 1, 59}),
              lines({" 0 No VIC Available", " 1  640x480p  59/60  4:3", "59 1440x480i  239/240 16:9"}));
}

TEST(video, is_reserved_from_60_on) {
    for (int vic = 60; vic < 100; ++vic) {
        EXPECT_EQ(video_text({vic}), std::to_string(vic) + " Reserved\r\n");
        EXPECT_EQ(video_text({vic + 128}), std::to_string(vic) + " Reserved is Native\r\n");
    }
}

TEST(video, has_up_to_31_descriptors) {
    std::string expected;
    for (int i = 0; i < 31; ++i)
        expected += " 1  640x480p  59/60  4:3\r\n";
    EXPECT_EQ(video_text(std::vector<int>(31, 1)), expected);
}

TEST(video, reads_no_further_than_its_length) {
    EXPECT_EQ(text_of([](std::string& text) {
                  decode_video_block(text, edid_of({{140, {0x41, 60, 61}}}), 140);
              }),
              "60 Reserved\r\n");
}

TEST(video, fails_at_a_three_digit_code_after_the_lines_before_it) {
    for (int vic = 100; vic < 128; ++vic) {
        for (const int native : {0, 128}) {
            EXPECT_EQ(text_till(failure::invalid_procedure_call,
                                [&](std::string& text) {
                                    decode_video_block(text, edid_with({99, vic + native, 1}), header_at);
                                }),
                      "99 Reserved\r\n");
        }
    }
}

TEST(video, fails_beyond_the_edid_after_the_lines_before_it) {
    const auto text_at = [](std::uint8_t address, const std::vector<int>& bytes) {
        return text_till(failure::subscript_out_of_range, [&](std::string& text) {
            decode_video_block(text, edid_of({{address, bytes}}), address);
        });
    };
    EXPECT_EQ(text_at(255, {0x41}), "");
    EXPECT_EQ(text_at(253, {0x5F, 60, 61}), "60 Reserved\r\n61 Reserved\r\n");
}

} // namespace
} // namespace desk
