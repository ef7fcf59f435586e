#include "translate/decode/data_block.h"

#include "support/translation_fixture.h"
#include "translate/decode/audio.h"
#include "translate/decode/colorimetry.h"
#include "translate/decode/speaker.h"
#include "translate/decode/video.h"
#include "translate/decode/video_capability.h"
#include "translate/decode/vsdb.h"

#include <gtest/gtest.h>

#include <string>

namespace desk {
namespace {

using test::edid_of;

TEST(data_block, has_the_length_that_its_header_says) {
    const edid_buffer edid = edid_of({{132, {0x5F}}, {164, {0xE0}}});
    EXPECT_EQ(data_block(edid, 132).length(), 31);
    EXPECT_EQ(data_block(edid, 164).length(), 0);
}

TEST(data_block, can_be_read_beyond_its_end_but_not_beyond_the_edid) {
    const edid_buffer edid = edid_of({{253, {0x20, 1, 2}}});
    const data_block block(edid, 253);
    EXPECT_EQ(block.byte(2), 2);
    EXPECT_EQ(test::failure_of([&] { block.byte(3); }), failure::subscript_out_of_range);
}

/// The sentence that reports a decoder's failure to the operator.
template <class Decode>
std::string sentence_of(Decode decode, const edid_buffer& edid, std::uint8_t address) {
    std::string text;
    return test::sentence_of([&] { decode(text, edid, address); });
}

TEST(data_block, is_named_if_its_decoder_fails) {
    const std::string beyond = "it goes to byte 256, beyond the end of the EDID.";
    EXPECT_EQ(sentence_of(decode_audio_block, edid_of({{253, {0x23, 9}}}), 253),
              "Decoding the audio data block at address 0xFD: " + beyond);
    EXPECT_EQ(sentence_of(decode_video_block, edid_of({{254, {0x42}}}), 254),
              "Decoding the video data block at address 0xFE: " + beyond);
    EXPECT_EQ(sentence_of(decode_vsdb, edid_of({{253, {0x65}}}), 253),
              "Decoding the vendor specific data block at address 0xFD: " + beyond);
    EXPECT_EQ(sentence_of(decode_speaker_block, edid_of({{255, {0x83}}}), 255),
              "Decoding the speaker allocation data block at address 0xFF: " + beyond);
    EXPECT_EQ(sentence_of(decode_video_capability, edid_of({{254, {0xE2}}}), 254),
              "Decoding the video capability data block at address 0xFE: " + beyond);
    EXPECT_EQ(sentence_of(decode_colorimetry, edid_of({{254, {0xE3, 5}}}), 254),
              "Decoding the colorimetry data block at address 0xFE: " + beyond);
}

TEST(data_block, reports_what_does_not_fit) {
    EXPECT_EQ(
        sentence_of(decode_video_block, edid_of({{132, {0x41, 107}}}), 132),
        "Decoding the video data block at address 0x84: the video identification code 107 does not fit in two digits.");
    for (const int length : {0, 3})
        EXPECT_EQ(sentence_of(decode_vsdb, edid_of({{132, {0x60 + length, 1, 2, 3}}}), 132),
                  "Decoding the vendor specific data block at address 0x84: a block of length " +
                      std::to_string(length) + " has no payload to list.");
}

} // namespace
} // namespace desk
