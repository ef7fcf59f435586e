#include "translate/decode/block_1_tags.h"

#include <gtest/gtest.h>

#include <map>
#include <string>

namespace desk {
namespace {

TEST(block_1, has_a_title_for_each_known_tag_and_none_for_others) {
    const std::map<int, std::string> titles = {
        {0x01, "Block 1: LCD Timings Block"},
        {0x20, "Block 1: EDID 2.0 Extension Block"},
        {0x30, "Block 1: Color Infomation Type 0 Block"},
        {0x40, "Block 1: DVI Feature Data Block"},
        {0x50, "Block 1: Touch Screen Data Block"},
        {0xF0, "Block 1: Block Map Block"},
        {0xFF, "Block 1: Manufacturer Defined Block"},
    };
    for (int tag = 0; tag < 256; ++tag) {
        const auto known = titles.find(tag);
        EXPECT_EQ(title_of_other_block(static_cast<std::uint8_t>(tag)), known == titles.end() ? "" : known->second);
    }
}

TEST(block_1, has_the_tag_2_if_it_is_a_cea_861_block) {
    EXPECT_EQ(cea_861_tag, 0x02);
    EXPECT_EQ(cea_861_title, "Block 1: CEA 861 Block");
}

} // namespace
} // namespace desk
