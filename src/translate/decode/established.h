#pragma once

#include "edid/format/buffer.h"

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

namespace desk {

/// An established timing: its byte, bit and name.
struct established_timing {
    std::size_t byte;
    int bit;
    std::string_view name;
};

/// The established timings from the highest bit down (VESA E-EDID, section 3.8): eight each of bytes 35 and 36, and the
/// one of byte 37 that the desk knows.
inline constexpr std::array<established_timing, 17> established_timings = {{
    {35, 7, "720x400@70"},
    {35, 6, "720x400@88"},
    {35, 5, "640x480@60"},
    {35, 4, "640x480@67"},
    {35, 3, "640x480@72"},
    {35, 2, "640x480@75"},
    {35, 1, "800x600@56"},
    {35, 0, "800x600@60"},
    {36, 7, "800x600@72"},
    {36, 6, "800x600@75"},
    {36, 5, "832x624@75"},
    {36, 4, "1024x768@87"},
    {36, 3, "1024x768@60"},
    {36, 2, "1024x768@70"},
    {36, 1, "1024x768@75"},
    {36, 0, "1280x1024@75"},
    {37, 7, "1152x870@75"},
}};

/// The headings of bytes 35, 36 and 37.
inline constexpr std::string_view established_1_heading = "--- Established Timing I ---";
inline constexpr std::string_view established_2_heading = "--- Established Timing II ---";
inline constexpr std::string_view manufacturer_heading = "--- Manufacturer Timing ---";

/// Whether an EDID has the timing.
bool is_established(const established_timing& timing, const edid_buffer& trans_buff);

/// Appends the three headings, each followed by empty lines for the check boxes of the timings.
void decode_established(std::string& text);

} // namespace desk
