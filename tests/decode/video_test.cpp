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

// clang-format off
const char* const vic_texts[] = {
    "No VIC Available", // 0
    " 640x480p  59/60  4:3", // 1
    " 720x480p  59/60  4:3", // 2
    " 720x480p  59/60 16:9", // 3
    "1280x720p  59/60 16:9", // 4
    "1920x1080i 59/60 16:9", // 5
    "1440x480i  59/60  4:3", // 6
    "1440x480i  59/60 16:9", // 7
    "1440x240p  59/60  4:3", // 8
    "1440x240p  59/60 16:9", // 9
    "2880x480i  59/60  4:3", // 10
    "2880x480i  59/60 16:9", // 11
    "2880x240p  50/60  4:3", // 12
    "2880x240p  50/60 16:9", // 13
    "1440x480p  59/60  4:3", // 14
    "1440x480p  59/60 16:9", // 15
    "1920x1080p 59/60 16:9", // 16
    " 720x576p  50     4:3", // 17
    " 720x576p  50    16:9", // 18
    "1280x720p  50    16:9", // 19
    "1920x1080i 50    16:9", // 20
    "1440x576i  50     4:3", // 21
    "1440x576i  50    16:9", // 22
    "1440x288p  50     4:3", // 23
    "1440x288p  50    16:9", // 24
    "2880x576i  50     4:3", // 25
    "2880x576i  50    16:9", // 26
    "2880x288p  50     4:3", // 27
    "2880x288p  50    16:9", // 28
    "1440x576p  50     4:3", // 29
    "1440x576p  50    16:9", // 30
    "1920x1080p 50    16:9", // 31
    "1920x1080p 23/24 16:9", // 32
    "1920x1080p 25    16:9", // 33
    "1920x1080p 29/30 16:9", // 34
    "2880x480p  59/60  4:3", // 35
    "2880x480p  59/60 16:9", // 36
    "2880x576p  50     4:3", // 37
    "2880x576p  50    16:9", // 38
    "1920x1080i 50    16:9", // 39
    "1920x1080i 100   16:9", // 40
    "1280x720p  100   16:9", // 41
    " 720x576p  100    4:3", // 42
    " 720x576p  100   16:9", // 43
    "1440x576i  100    4:3", // 44
    "1440x576i  100   16:9", // 45
    "1920x1080i 119/120 16:9", // 46
    "1280x720p  119/120 16:9", // 47
    " 720x480p  119/120  4:3", // 48
    " 720x480p  119/120 16:9", // 49
    "1440x480i  119/120  4:3", // 50
    "1440x480i  119/120 16:9", // 51
    " 720x576p  200     4:3", // 52
    " 720x576p  200    16:9", // 53
    "1440x576i  200     4:3", // 54
    "1440x576i  200    16:9", // 55
    " 720x480p  239/240  4:3", // 56
    " 720x480p  239/240 16:9", // 57
    "1440x480i  239/240  4:3", // 58
    "1440x480i  239/240 16:9", // 59
};
// clang-format on

constexpr std::uint8_t video_header_at = 140;

edid_buffer edid_with(const std::vector<int>& descriptors) {
    return edid_of(
        {{video_header_at, {0x40 + static_cast<int>(descriptors.size())}}, {video_header_at + 1, descriptors}});
}
std::string video_text(const std::vector<int>& descriptors) {
    return text_of([&](std::string& text) { decode_video_block(text, edid_with(descriptors), video_header_at); });
}
std::string padded(int vic) { return (vic < 10 ? " " : "") + std::to_string(vic); }

TEST(video, is_told_as_missing_for_address_0) {
    EXPECT_EQ(text_of([](std::string& text) {
                  decode_video_block(text, edid_of({{0, {0x41, 4}}}), 0);
              }),
              "No Video Block");
}

TEST(video, is_empty_for_a_block_without_descriptors) { EXPECT_EQ(video_text({}), ""); }

TEST(video, has_a_text_for_each_code_up_to_59) {
    ASSERT_EQ(std::size(vic_texts), 60U);
    for (int vic = 0; vic < 60; ++vic) {
        const std::string line = padded(vic) + " " + vic_texts[vic];
        EXPECT_EQ(video_text({vic}), line + "\r\n");
        EXPECT_EQ(video_text({vic + 128}), line + " is Native\r\n");
    }
}

TEST(video, is_reserved_from_60_on) {
    for (int vic = 60; vic < 100; ++vic) {
        EXPECT_EQ(video_text({vic}), std::to_string(vic) + " Reserved\r\n");
        EXPECT_EQ(video_text({vic + 128}), std::to_string(vic) + " Reserved is Native\r\n");
    }
}

TEST(video, keeps_the_order_of_the_block) {
    EXPECT_EQ(video_text({0x84, 0x10, 0, 60, 16}), lines({
                                                       " 4 1280x720p  59/60 16:9 is Native",
                                                       "16 1920x1080p 59/60 16:9",
                                                       " 0 No VIC Available",
                                                       "60 Reserved",
                                                       "16 1920x1080p 59/60 16:9",
                                                   }));
}

TEST(video, has_up_to_31_descriptors) {
    std::string expected;
    for (int i = 0; i < 31; ++i)
        expected += " 1  640x480p  59/60  4:3\r\n";
    EXPECT_EQ(video_text(std::vector<int>(31, 1)), expected);
}

TEST(video, reads_no_more_than_its_length_says) {
    EXPECT_EQ(text_of([](std::string& text) {
                  decode_video_block(text, edid_of({{140, {0x41, 60, 61}}}), 140);
              }),
              "60 Reserved\r\n");
}

TEST(video, fails_for_a_code_of_three_digits_behind_the_lines_before_it) {
    for (int vic = 100; vic < 128; ++vic) {
        for (const int native : {0, 128}) {
            EXPECT_EQ(text_till(failure::invalid_procedure_call,
                                [&](std::string& text) {
                                    decode_video_block(text, edid_with({99, vic + native, 1}), video_header_at);
                                }),
                      "99 Reserved\r\n");
        }
    }
}

TEST(video, fails_beyond_the_edid_behind_the_lines_before_it) {
    const auto text_at = [](std::uint8_t address, const std::vector<int>& bytes) {
        return text_till(failure::subscript_out_of_range, [&](std::string& text) {
            decode_video_block(text, edid_of({{address, bytes}}), address);
        });
    };
    EXPECT_EQ(text_at(255, {0x41}), "");
    EXPECT_EQ(text_at(253, {0x5F, 60, 61}), "60 Reserved\r\n61 Reserved\r\n");
}

TEST(video, stands_behind_what_was_there) {
    const edid_buffer edid = edid_of({{132, {0x41, 1}}, {140, {0x42, 1, 100}}});
    for (const std::uint8_t address : test::byte_list{0, 132, 140})
        test::expect_appends([&](std::string& text) { decode_video_block(text, edid, address); });
}

} // namespace
} // namespace desk
