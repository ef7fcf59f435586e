#include "translate/decode/dtv.h"

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
using test::value_after;

std::string dtv_text(const std::vector<int>& from_byte_128, bool is_cea_block1 = true) {
    return text_of([&](std::string& text) { decode_dtv(text, edid_of({{128, from_byte_128}}), is_cea_block1); });
}

TEST(dtv, is_shown_line_by_line) {
    EXPECT_EQ(dtv_text({2, 3, 4, 0xF1}), lines({
                                             "Block Tag = 2, CEA 861 Extension",
                                             "Revision = 3",
                                             "Underscan = Supported",
                                             "Basic Audio = Supported",
                                             "RGB/YCbCr444 = Supported",
                                             "RGB/YCbCr422 = Supported",
                                         }) + "Native Format Number = 1");
    EXPECT_EQ(dtv_text({2, 1, 255, 0x00}), lines({
                                               "Block Tag = 2, CEA 861 Extension",
                                               "Revision = 1",
                                               "Underscan = Not Supported",
                                               "Basic Audio = Not Supported",
                                               "RGB/YCbCr444 = Not Supported",
                                               "RGB/YCbCr422 = Not Supported",
                                           }) + "Native Format Number = 0");
}

TEST(dtv, is_the_tag_alone_for_another_block) {
    EXPECT_EQ(dtv_text({2, 3, 4, 0xF1}, false), "Block Tag = 2, NOT CEA 861 Extension\r\n");
    EXPECT_EQ(dtv_text({255, 3, 4, 0xF1}, false), "Block Tag = 255, NOT CEA 861 Extension\r\n");
}

TEST(dtv, has_a_character_for_the_revision) {
    const std::vector<std::pair<int, std::string>> characters = {
        {0, "0"}, {9, "9"}, {10, ":"}, {80, "\xE2\x82\xAC"}, {207, "\xC3\xBF"}, {208, "\xC4\x80"}, {255, "\xC4\xAF"}};
    for (const auto& [byte, character] : characters)
        EXPECT_EQ(value_after("Revision = ", dtv_text({2, byte})), character) << byte;
}

TEST(dtv, has_a_line_for_each_bit_of_byte_131) {
    const std::vector<std::pair<int, std::string>> flags = {
        {0x80, "Underscan = "}, {0x40, "Basic Audio = "}, {0x20, "RGB/YCbCr444 = "}, {0x10, "RGB/YCbCr422 = "}};
    for (const auto& [mask, label] : flags) {
        const std::string alone = dtv_text({2, 3, 4, mask});
        for (const auto& [other_mask, other_label] : flags)
            EXPECT_EQ(value_after(other_label, alone), other_mask == mask ? "Supported" : "Not Supported");
        EXPECT_EQ(value_after(label, dtv_text({2, 3, 4, 0xFF - mask})), "Not Supported");
    }
    for (int number = 0; number < 16; ++number)
        EXPECT_EQ(value_after("Native Format Number =", dtv_text({2, 3, 4, 0xF0 + number})),
                  " " + std::to_string(number));
}

} // namespace
} // namespace desk
