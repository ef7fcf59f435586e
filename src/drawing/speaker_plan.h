#pragma once

#include "drawing/markup_writer.h"

#include <cstdint>
#include <span>
#include <string_view>

namespace desk::drawing {

enum class speaker_height : std::uint8_t { ear, top, bottom, subwoofer };

/// A speaker in the room seen from above.
struct placed_speaker {
    std::string_view label; ///< of two to four letters
    double across = 0;      ///< -1 at the left to 1 at the right of the listener
    double ahead = 0;       ///< -1 behind to 1 before the listener
    speaker_height height = speaker_height::ear;
    bool present = false;
};

/// The speakers around the listener: filled if present.
void draw_speaker_plan(markup_writer& out, std::span<const placed_speaker> speakers, std::string_view description);

} // namespace desk::drawing
