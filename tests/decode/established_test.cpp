#include "translate/decode/established.h"

#include "support/translation_fixture.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace desk {
namespace {

using test::edid_of;

struct row {
    std::size_t byte;
    int bit;
    const char* name;
};

const row rows[] = {
    {35, 7, "720x400@70"},  {35, 6, "720x400@88"},  {35, 5, "640x480@60"},  {35, 4, "640x480@67"},
    {35, 3, "640x480@72"},  {35, 2, "640x480@75"},  {35, 1, "800x600@56"},  {35, 0, "800x600@60"},
    {36, 7, "800x600@72"},  {36, 6, "800x600@75"},  {36, 5, "832x624@75"},  {36, 4, "1024x768@87"},
    {36, 3, "1024x768@60"}, {36, 2, "1024x768@70"}, {36, 1, "1024x768@75"}, {36, 0, "1280x1024@75"},
    {37, 7, "1152x870@75"},
};

std::vector<std::string> established_in(const edid_buffer& edid) {
    std::vector<std::string> names;
    for (const established_timing& timing : established_timings)
        if (is_established(timing, edid)) names.emplace_back(timing.name);
    return names;
}

TEST(established, has_a_bit_for_each_timing) {
    ASSERT_EQ(established_timings.size(), std::size(rows));
    for (std::size_t i = 0; i < std::size(rows); ++i) {
        EXPECT_EQ(established_timings.at(i).name, rows[i].name);
        EXPECT_EQ(established_in(edid_of({{rows[i].byte, {1 << rows[i].bit}}})),
                  std::vector<std::string>{rows[i].name});
    }
}

TEST(established, does_not_read_the_lower_bits_of_byte_37) {
    EXPECT_TRUE(established_in(edid_of({{37, {0x7F}}})).empty());
    EXPECT_TRUE(established_in(edid_of({{34, {0xFF}}, {38, {0xFF}}})).empty());
}

} // namespace
} // namespace desk
