#include "translate/decode/speaker.h"

#include "support/translation_fixture.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace desk {
namespace {

using test::edid_of;
using test::text_of;
using test::text_till;

const std::string floor_plan = "     FL   FLC   FC   FRC   FR\r\n\r\n\r\n\r\n"
                               "                                LFE\r\n\r\n\r\n\r\n\r\n"
                               "     RL   RLC   RC   RRC   RR\r\n\r\n\r\n";

const std::vector<std::pair<int, std::string>> positions = {
    {0x00, ""},
    {0x01, "FL/FR  "},
    {0x02, "LFE  "},
    {0x04, "FC  "},
    {0x08, "RL/RR  "},
    {0x10, "RC  "},
    {0x20, "FLC/FRC  "},
    {0x40, "RLC/RRC  "},
    {0x80, ""},
    {0x4F, "FL/FR  LFE  FC  RL/RR  RLC/RRC  "},
    {0xFF, "FL/FR  LFE  FC  RL/RR  RC  FLC/FRC  RLC/RRC  "},
};

edid_buffer edid_with(int speakers) { return edid_of({{132, {0x83, speakers, 0xFF, 0xFF}}}); }

TEST(speakers, are_none_for_address_0) { EXPECT_EQ(speaker_allocation(edid_of({{0, {0x83, 0x7F}}}), 0), 0); }

TEST(speakers, are_listed_under_a_floor_plan) {
    for (const auto& [byte, names] : positions) {
        EXPECT_EQ(text_of([&, byte = byte](std::string& text) { decode_speaker_block(text, edid_with(byte), 132); }),
                  floor_plan + "Speaker Allocation =\r\n " + names);
    }
}

TEST(speakers, can_be_listed_without_the_floor_plan) {
    for (const auto& [byte, names] : positions) {
        EXPECT_EQ(
            text_of([&, byte = byte](std::string& text) { print_speaker_allocation(text, edid_with(byte), 132); }),
            "Speaker Allocation =\r\n " + names);
    }
}

TEST(speakers, come_back_as_seven_bits) {
    for (int byte = 0; byte < 256; ++byte)
        EXPECT_EQ(speaker_allocation(edid_with(byte), 132), byte % 128);
}

TEST(speakers, fail_beyond_the_edid_after_their_label) {
    EXPECT_EQ(text_till(failure::subscript_out_of_range,
                        [](std::string& text) {
                            decode_speaker_block(text, edid_of({{255, {0x83}}}), 255);
                        }),
              floor_plan + "Speaker Allocation =\r\n ");
}

} // namespace
} // namespace desk
