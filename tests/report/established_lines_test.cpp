#include "report/established_lines.h"

#include "support/translation_fixture.h"

#include <gtest/gtest.h>

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

const std::string none = "\r\n" + test::established_lines_of_zeros;

/// The lines with the boxes of these timings, counted from 0, ticked.
std::string with_ticks(const std::vector<int>& timings) {
    std::string text = none;
    for (const int timing : timings) {
        std::size_t at = text.find('[');
        for (int i = 0; i < timing; ++i)
            at = text.find('[', at + 1);
        text.replace(at, 3, "[v]");
    }
    return text;
}

TEST(established_lines, have_a_ticked_box_for_each_timing_that_is_there) {
    EXPECT_EQ(established_text({0xFF, 0xFF, 0xFF}), lines({
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
                                                    }));
}

TEST(established_lines, have_a_bit_for_each_box) {
    for (int timing = 0; timing < 17; ++timing) {
        std::vector<int> bytes(3);
        bytes.at(static_cast<std::size_t>(timing / 8)) = 0x80 >> timing % 8;
        EXPECT_EQ(established_text(bytes), with_ticks({timing}));
    }
    EXPECT_EQ(established_text({0xA0, 0x01, 0x80}), with_ticks({0, 2, 15, 16}));
}

TEST(established_lines, do_not_read_the_lower_bits_of_byte_37) { EXPECT_EQ(established_text({0, 0, 0x7F}), none); }

} // namespace
} // namespace desk
