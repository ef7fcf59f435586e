#include "report/text/established_lines.h"

#include "translate/decode/established.h"
#include "translate/decode/text_output.h"

#include <array>
#include <cstddef>
#include <string_view>

namespace desk {

namespace {

/// In the order of `established_timings`. Intended: it prints 7680 lines for three of them.
constexpr std::array<std::string_view, established_timings.size()> labels = {
    "720x400@70   ", "720x400@88",   "640x480@60   ", "640x480@67",   "640x480@72   ", "640x480@75",
    "800x600@56   ", "800x600@60",   "800x600@72   ", "800x600@75",   "832x624@75   ", "1024x768@87",
    "1024x7680@60 ", "1024x7680@70", "1024x7680@75 ", "1280x1024@75", "1152x870@75",
};

constexpr std::size_t first_of_2 = 8;
constexpr std::size_t manufacturer = 16;

void print_section(std::string& text, const edid_buffer& trans_buff, std::string_view heading, std::size_t first,
                   std::size_t end) {
    print(text, line_end, heading, line_end);
    for (std::size_t i = first; i < end; ++i) {
        print(text, is_established(established_timings.at(i), trans_buff) ? "[v]" : "[ ]", labels.at(i));
        const bool line_is_full = (i - first) % 2 == 1 || i + 1 == end;
        if (line_is_full) print_line(text);
    }
}

} // namespace

void print_established_lines(std::string& text, const edid_buffer& trans_buff) {
    print_section(text, trans_buff, established_1_heading, 0, first_of_2);
    print_section(text, trans_buff, established_2_heading, first_of_2, manufacturer);
    print_section(text, trans_buff, manufacturer_heading, manufacturer, labels.size());
}

} // namespace desk
