#include "translate/decode/video_capability.h"

#include "support/translation_fixture.h"

#include <gtest/gtest.h>

#include <string>

namespace desk {
namespace {

using test::edid_of;
using test::text_of;
using test::text_till;
using test::value_after;

std::string capability_text(int byte) {
    return text_of([&](std::string& text) {
        decode_video_capability(text, edid_of({{132, {0xE2, 0x00, byte, 0xFF}}}), 132);
    });
}

TEST(video_capability, has_two_bits_for_each_scan_behaviour) {
    const std::string scan_texts[] = {"Not Supported", "Always Overscan", "Always Underscan", "Both Over/Underscan"};
    for (int byte = 0; byte < 256; ++byte) {
        const std::string text = capability_text(byte);
        EXPECT_EQ(value_after("CE Scan Behavior=", text), scan_texts[byte % 4]);
        EXPECT_EQ(value_after("IT Scan Behavior=", text), scan_texts[byte / 4 % 4]);
        EXPECT_EQ(value_after("PT Scan Behavior=", text), scan_texts[byte / 16 % 4]);
        EXPECT_EQ(value_after("Quantization Range = ", text), byte / 64 % 2 == 1 ? "Selectable" : "No Data");
    }
}

TEST(video_capability, fails_beyond_the_edid_after_its_first_label) {
    for (const std::uint8_t address : test::byte_list{254, 255})
        EXPECT_EQ(text_till(failure::subscript_out_of_range,
                            [&](std::string& text) {
                                decode_video_capability(text, edid_of({{254, {0xE2}}}), address);
                            }),
                  "CE Scan Behavior=");
}

} // namespace
} // namespace desk
