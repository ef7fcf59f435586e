#pragma once

#include "report/page/display_page.h"
#include "report/page/field_map.h"

#include <string>

namespace desk::page {

/// What a field says, in a line; empty for one that says nothing.
std::string meaning_of(const field& f, const page_source& source);

/// "1080p" formats and the like: "1920 × 1080, 60 Hz (VIC 16)".
std::string video_words(const facts::video_code& code);

/// The names of the speakers whose bits are set.
std::string speaker_words(std::uint32_t bits);

/// What a display sends over HDMI of the HDMI Forum: "4 lanes of 12 Gbit/s"; empty without a fixed rate link.
std::string link_words(unsigned lanes, unsigned gbps);

} // namespace desk::page
