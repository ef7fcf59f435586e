#include "report/text/established_lines.h"

#include "support/translation_fixture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace desk {
namespace {

using test::edid_of;
using test::lines;
using test::text_of;

std::string established_text(const std::vector<int>& from_byte_35) {
    return text_of([&](std::string& text) { print_established_lines(text, edid_of({{35, from_byte_35}})); });
}

const std::string all = lines({
    "",
    "--- Established Timing I ---",
    "[v]720x400@70   [v]720x400@88",
    "[v]640x480@60   [v]640x480@67",
    "[v]640x480@72   [v]640x480@75",
    "[v]800x600@56   [v]800x600@60",
    "",
    "--- Established Timing II ---",
    "[v]800x600@72   [v]800x600@75",
    "[v]832x624@75   [v]1024x768@87",
    "[v]1024x7680@60 [v]1024x7680@70",
    "[v]1024x7680@75 [v]1280x1024@75",
    "",
    "--- Manufacturer Timing ---",
    "[v]1152x870@75",
});

/// The lines in which the boxes of these timings alone, counted from 0, are ticked.
std::string with_ticks(const std::vector<int>& timings) {
    std::string text = all;
    int timing = 0;
    for (std::size_t at = 0; (at = text.find('[', at)) != std::string::npos; ++at, ++timing)
        if (std::count(timings.begin(), timings.end(), timing) == 0) text.at(at + 1) = ' ';
    return text;
}

TEST(established_lines, have_a_bit_for_each_box) {
    EXPECT_EQ(established_text({0xFF, 0xFF, 0xFF}), all);
    for (int timing = 0; timing < 17; ++timing) {
        std::vector<int> bytes(3);
        bytes.at(static_cast<std::size_t>(timing / 8)) = 0x80 >> timing % 8;
        EXPECT_EQ(established_text(bytes), with_ticks({timing}));
    }
    EXPECT_EQ(established_text({0, 0, 0x7F}), with_ticks({})) << "the lower bits of byte 37 are not read";
}

} // namespace
} // namespace desk
