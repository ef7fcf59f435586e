#include "translate/decode/audio.h"

#include "support/translation_fixture.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace desk {
namespace {

using test::behind;
using test::edid_of;
using test::lines;
using test::text_of;
using test::text_till;

constexpr std::uint8_t header_at = 132;

/// What is told of a block that says it has so many bytes behind its header.
std::string audio_text(int length, const std::vector<int>& behind_header) {
    return text_of([&](std::string& text) {
        decode_audio_block(text, edid_of({{header_at, {0x20 + length}}, {header_at + 1, behind_header}}), header_at);
    });
}

const std::vector<int> pcm = {0x09, 0x07, 0x07};
const std::string pcm_lines = lines({
    "Audio Format = Linear PCM",
    "Sampling Rate(KHz) = 32/44.1/48",
    "Max number of channels = 2",
    "Bit per Sample(bit) = 16/20/24",
    "",
});

TEST(audio, is_told_as_missing_for_address_0) {
    EXPECT_EQ(text_of([](std::string& text) {
                  decode_audio_block(text, edid_of({{0, {0x23, 9, 7, 7}}}), 0);
              }),
              "No Audio Block");
}

TEST(audio, tells_sample_sizes_of_linear_pcm) { EXPECT_EQ(audio_text(3, pcm), pcm_lines); }

TEST(audio, tells_the_bit_rate_of_a_compressed_format) {
    EXPECT_EQ(audio_text(3, {0x15, 0x04, 0x50}), lines({
                                                     "Audio Format = AC-3",
                                                     "Sampling Rate(KHz) = /48",
                                                     "Max number of channels = 6",
                                                     "Max bit rate = 640 KHz",
                                                     "",
                                                 }));
}

TEST(audio, does_not_show_the_third_byte_of_other_formats) {
    EXPECT_EQ(audio_text(3, {0x57, 0x7F, 0x55}), lines({
                                                     "Audio Format = Dolby Digital+",
                                                     "Sampling Rate(KHz) = 32/44.1/48/88.2/96/176.4/192",
                                                     "Max number of channels = 8",
                                                     "",
                                                 }));
}

TEST(audio, has_a_name_for_each_format) {
    struct row {
        int format;
        const char* name;
        const char* last_line;
    };
    const row rows[] = {
        {0, "Reserved", ""},
        {1, "Linear PCM", "Bit per Sample(bit) = 16\r\n"},
        {2, "AC-3", "Max bit rate = 8 KHz\r\n"},
        {3, "MPEG1-Layer1/2", "Max bit rate = 8 KHz\r\n"},
        {4, "MP3.MPEG1-Layer3", "Max bit rate = 8 KHz\r\n"},
        {5, "MPEG2-Multichannel", "Max bit rate = 8 KHz\r\n"},
        {6, "AAC", "Max bit rate = 8 KHz\r\n"},
        {7, "DTS", "Max bit rate = 8 KHz\r\n"},
        {8, "ATRAC", "Max bit rate = 8 KHz\r\n"},
        {9, "One Bit Audio", ""},
        {10, "Dolby Digital+", ""},
        {11, "DTS-HD", ""},
        {12, "MAT-MLP", ""},
        {13, "DST", ""},
        {14, "WMA Pro", ""},
        {15, "Reserved", ""},
    };
    for (const row& r : rows) {
        for (const int highest_bit : {0x00, 0x80})
            EXPECT_EQ(audio_text(3, {highest_bit + r.format * 8, 0x01, 0x01}),
                      lines({"Audio Format = " + std::string(r.name), "Sampling Rate(KHz) = 32",
                             "Max number of channels = 1"}) +
                          r.last_line + "\r\n");
    }
}

TEST(audio, has_a_value_for_each_sampling_rate) {
    const std::vector<std::pair<int, std::string>> rates = {
        {0x00, ""},
        {0x01, "32"},
        {0x02, "/44.1"},
        {0x04, "/48"},
        {0x08, "/88.2"},
        {0x10, "/96"},
        {0x20, "/176.4"},
        {0x40, "/192"},
        {0x80, ""},
        {0x7E, "/44.1/48/88.2/96/176.4/192"},
        {0xFF, "32/44.1/48/88.2/96/176.4/192"},
    };
    for (const auto& [byte, told] : rates)
        EXPECT_EQ(behind("Sampling Rate(KHz) = ", audio_text(3, {0x09, byte, 0})), told) << byte;
}

TEST(audio, has_a_value_for_each_sample_size) {
    const std::vector<std::pair<int, std::string>> sizes = {
        {0x00, ""}, {0x01, "16"}, {0x02, "/20"}, {0x04, "/24"}, {0x06, "/20/24"}, {0xF8, ""}, {0xFF, "16/20/24"}};
    for (const auto& [byte, told] : sizes)
        EXPECT_EQ(behind("Bit per Sample(bit) = ", audio_text(3, {0x09, 1, byte})), told) << byte;
}

TEST(audio, has_1_to_8_channels) {
    for (int channels = 1; channels <= 8; ++channels)
        EXPECT_EQ(behind("Max number of channels = ", audio_text(3, {0x08 + channels - 1, 1, 1})),
                  std::to_string(channels));
}

TEST(audio, has_a_bit_rate_of_8_for_each_step) {
    for (const int byte : {0, 1, 80, 255})
        EXPECT_EQ(behind("Max bit rate =", audio_text(3, {0x10, 1, byte})), " " + std::to_string(8 * byte) + " KHz");
}

TEST(audio, has_a_third_of_its_length_as_descriptors_rounded) {
    std::vector<int> many;
    for (int i = 0; i < 12; ++i)
        many.insert(many.end(), pcm.begin(), pcm.end());
    const std::vector<int> counts = {0, 0, 1, 1, 1, 2, 2, 2, 3, 3, 3, 4, 4, 4,  5,  5,
                                     5, 6, 6, 6, 7, 7, 7, 8, 8, 8, 9, 9, 9, 10, 10, 10};
    for (int length = 0; length < 32; ++length) {
        std::string expected;
        for (int i = 0; i < counts.at(static_cast<std::size_t>(length)); ++i)
            expected += pcm_lines;
        EXPECT_EQ(audio_text(length, many), expected) << length;
    }
}

TEST(audio, reads_a_rounded_up_descriptor_beyond_the_block) {
    EXPECT_EQ(behind("Max bit rate =", audio_text(2, {0x10, 1, 0x50})), " 640 KHz");
}

TEST(audio, tells_its_descriptors_one_behind_the_other) {
    EXPECT_EQ(audio_text(6, {0x09, 0x07, 0x07, 0x50, 0x01, 0x00}), pcm_lines + lines({
                                                                                   "Audio Format = Dolby Digital+",
                                                                                   "Sampling Rate(KHz) = 32",
                                                                                   "Max number of channels = 1",
                                                                                   "",
                                                                               }));
}

TEST(audio, fails_beyond_the_edid_with_the_label_of_what_is_missing) {
    const std::string first_lines =
        "Audio Format = Linear PCM\r\nSampling Rate(KHz) = 32\r\nMax number of channels = 2";
    const auto text_at = [](std::uint8_t address, const std::vector<int>& bytes) {
        return text_till(failure::subscript_out_of_range, [&](std::string& text) {
            decode_audio_block(text, edid_of({{address, bytes}}), address);
        });
    };
    EXPECT_EQ(text_at(255, {0x23}), "Audio Format = ");
    EXPECT_EQ(text_at(254, {0x23, 0x09}), "Audio Format = Linear PCM\r\nSampling Rate(KHz) = ");
    EXPECT_EQ(text_at(253, {0x23, 0x09, 0x01}), first_lines + "\r\nBit per Sample(bit) = ");
    EXPECT_EQ(text_at(253, {0x23, 0x11, 0x01}),
              "Audio Format = AC-3\r\nSampling Rate(KHz) = 32\r\nMax number of channels = 2\r\nMax bit rate =");
    EXPECT_EQ(text_at(252, {0x26, 0x09, 0x07, 0x07}), pcm_lines + "Audio Format = ");
}

TEST(audio, does_not_fail_where_the_missing_byte_is_not_shown) {
    EXPECT_EQ(text_of([](std::string& text) {
                  decode_audio_block(text, edid_of({{253, {0x23, 0x78, 0x01}}}), 253);
              }),
              lines({"Audio Format = Reserved", "Sampling Rate(KHz) = 32", "Max number of channels = 1", ""}));
}

TEST(audio, stands_behind_what_was_there) {
    const edid_buffer edid = edid_of({{132, {0x23, 0x09, 0x07, 0x07}}, {255, {0x23}}});
    for (const std::uint8_t address : test::byte_list{0, 132, 255})
        test::expect_appends([&](std::string& text) { decode_audio_block(text, edid, address); });
}

} // namespace
} // namespace desk
