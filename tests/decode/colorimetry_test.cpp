#include "translate/decode/colorimetry.h"

#include "support/translation_fixture.h"

#include <gtest/gtest.h>

#include <string>

namespace desk {
namespace {

using test::edid_of;
using test::text_of;
using test::text_till;

TEST(colorimetry, has_two_bits) {
    const std::string shown[] = {"", "xvYCC601", "/xvYCC709", "xvYCC601/xvYCC709"};
    for (int byte = 0; byte < 256; ++byte) {
        const edid_buffer edid = edid_of({{132, {0xE3, 5, byte, 0xFF}}});
        EXPECT_EQ(text_of([&](std::string& text) { decode_colorimetry(text, edid, 132); }),
                  "Colorimetry Support=" + shown[byte % 4]);
    }
}

TEST(colorimetry, fails_beyond_the_edid_after_its_label) {
    for (const std::uint8_t address : test::byte_list{254, 255})
        EXPECT_EQ(text_till(failure::subscript_out_of_range,
                            [&](std::string& text) { decode_colorimetry(text, {}, address); }),
                  "Colorimetry Support=");
}

} // namespace
} // namespace desk
