#include "translate/decode/audio.h"

#include "support/translation_fixture.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace desk {
namespace {

using test::edid_of;
using test::lines;
using test::text_of;
using test::text_till;
using test::value_after;

constexpr std::uint8_t header_at = 132;

/// The text of a block with this length in its header.
std::string audio_text(int length, const std::vector<int>& after_header) {
    return text_of([&](std::string& text) {
        decode_audio_block(text, edid_of({{header_at, {0x20 + length}}, {header_at + 1, after_header}}), header_at);
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

TEST(audio, has_a_name_for_each_format) {
    const char* const names[] = {
        "Reserved", "Linear PCM", "AC-3",    "MPEG1-Layer1/2", "MP3.MPEG1-Layer3", "MPEG2-Multichannel",
        "AAC",      "DTS",        "ATRAC",   "One Bit Audio",  "Dolby Digital+",   "DTS-HD",
        "MAT-MLP",  "DST",        "WMA Pro", "Reserved"};
    for (int format = 0; format < 16; ++format) {
        const char* const last_line = format == 1                  ? "Bit per Sample(bit) = 16\r\n"
                                      : format >= 2 && format <= 8 ? "Max bit rate = 8 KHz\r\n"
                                                                   : "";
        for (const int highest_bit : {0x00, 0x80})
            EXPECT_EQ(audio_text(3, {highest_bit + format * 8, 0x01, 0x01}),
                      lines({"Audio Format = " + std::string(names[format]), "Sampling Rate(KHz) = 32",
                             "Max number of channels = 1"}) +
                          last_line + "\r\n");
    }
}

TEST(audio, has_a_value_for_each_sampling_rate) {
    const std::vector<std::pair<int, std::string>> rates = {
        {0x00, ""},    {0x01, "32"},     {0x02, "/44.1"}, {0x04, "/48"}, {0x08, "/88.2"},
        {0x10, "/96"}, {0x20, "/176.4"}, {0x40, "/192"},  {0x80, ""},    {0xFF, "32/44.1/48/88.2/96/176.4/192"},
    };
    for (const auto& [byte, shown] : rates)
        EXPECT_EQ(value_after("Sampling Rate(KHz) = ", audio_text(3, {0x09, byte, 0})), shown) << byte;
}

TEST(audio, has_a_value_for_each_sample_size) {
    const std::vector<std::pair<int, std::string>> sizes = {
        {0x00, ""}, {0x01, "16"}, {0x02, "/20"}, {0x04, "/24"}, {0x06, "/20/24"}, {0xF8, ""}, {0xFF, "16/20/24"}};
    for (const auto& [byte, shown] : sizes)
        EXPECT_EQ(value_after("Bit per Sample(bit) = ", audio_text(3, {0x09, 1, byte})), shown) << byte;
}

TEST(audio, has_1_to_8_channels) {
    for (int channels = 1; channels <= 8; ++channels)
        EXPECT_EQ(value_after("Max number of channels = ", audio_text(3, {0x08 + channels - 1, 1, 1})),
                  std::to_string(channels));
}

TEST(audio, has_a_bit_rate_of_8_for_each_step) {
    for (const int byte : {0, 1, 80, 255})
        EXPECT_EQ(value_after("Max bit rate =", audio_text(3, {0x10, 1, byte})),
                  " " + std::to_string(8 * byte) + " KHz");
}

TEST(audio, has_a_third_of_its_length_as_descriptors_rounded) {
    std::vector<int> many;
    for (int i = 0; i < 12; ++i)
        many.insert(many.end(), pcm.begin(), pcm.end());
    for (int length = 0; length < 32; ++length) {
        std::string expected;
        for (int i = 0; i < (length + 1) / 3; ++i)
            expected += pcm_lines;
        EXPECT_EQ(audio_text(length, many), expected) << length;
    }
}

TEST(audio, reads_a_rounded_up_descriptor_beyond_the_block) {
    EXPECT_EQ(value_after("Max bit rate =", audio_text(2, {0x10, 1, 0x50})), " 640 KHz");
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

TEST(audio, does_not_fail_if_the_missing_byte_is_not_shown) {
    EXPECT_EQ(text_of([](std::string& text) {
                  decode_audio_block(text, edid_of({{253, {0x23, 0x78, 0x01}}}), 253);
              }),
              lines({"Audio Format = Reserved", "Sampling Rate(KHz) = 32", "Max number of channels = 1", ""}));
}

} // namespace
} // namespace desk
