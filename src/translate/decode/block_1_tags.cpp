#include "translate/decode/block_1_tags.h"

#include <algorithm>
#include <array>

namespace desk {

namespace {

struct tag_title {
    std::uint8_t tag;
    std::string_view title;
};

constexpr std::array<tag_title, 7> titles = {{
    {0x01, "Block 1: LCD Timings Block"},
    {0x20, "Block 1: EDID 2.0 Extension Block"},
    {0x30, "Block 1: Color Infomation Type 0 Block"},
    {0x40, "Block 1: DVI Feature Data Block"},
    {0x50, "Block 1: Touch Screen Data Block"},
    {0xF0, "Block 1: Block Map Block"},
    {0xFF, "Block 1: Manufacturer Defined Block"},
}};

} // namespace

std::string_view title_of_other_block(std::uint8_t tag) {
    const auto found =
        std::find_if(titles.begin(), titles.end(), [tag](const tag_title& row) { return row.tag == tag; });
    return found == titles.end() ? "" : found->title;
}

} // namespace desk
