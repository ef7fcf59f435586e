#pragma once

#include "runtime/bytes.h"

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace desk {

/// One row of the autorun list. An interval of 0 seconds marks it as unused.
struct autorun_row {
    int timing = 1;
    int pattern = 1;
    int interval_s = 0;
    bool operator==(const autorun_row&) const = default;
};

/// The display on one connector. Without an EDID (256 bytes) every access ends in a DDC error.
struct edid_sink {
    std::optional<bytes> edid;
    bool write_protected = false;
    bool operator==(const edid_sink&) const = default;
};

inline constexpr std::size_t autorun_row_count = 32;
inline constexpr std::size_t sink_count = 3;
inline constexpr std::size_t custom_string_size = 12;
inline constexpr std::size_t sink_memory_size = 256;

/// What a reset restores to these power-on values. Rows count from 1; numbers are those of the commands in the
/// comments.
struct generator_settings {
    int timing = 1;        // TIM
    int pattern = 1;       // PAT
    int output_format = 4; // OUT: 1 PC, 2 HD, 3 DVI, 4 HDMI
    int hdcp = 0;          // HDC: 0 off, 1 on
    int audio_source = 3;  // ASC: 1 EXT 7.1CH, 2 EXT OPT, 3 INT SINE
    int lpcm = 1;          // PCM: 1 2 CH, 2 5.1 CH, 3 7.1 CH
    int color_space = 1;   // CSC: 1 RGB444, 2 YUV444, 3 YUV422
    int deep_color = 1;    // DEE: 1 8 BIT, 2 10 BIT, 3 12 BIT
    int autorun = 0;       // ATO: 0 off, 1 on
    int my_favorite = 0;   // FAV: 0 off, 1 on

    int color_r = 128; // CRR: 0 to 255, red or Cr
    int color_g = 128; // CRG: green or Y
    int color_b = 128; // CRB: blue or Cb
    int color_y = 128; // CRY: grey

    std::vector<bool> favorite_timings;  // FT+, FT-: one per timing
    std::vector<bool> favorite_patterns; // FP+, FP-: one per pattern

    std::array<autorun_row, autorun_row_count> autorun_rows;                                                 // ATS
    std::array<std::uint8_t, custom_string_size> custom_string{'V', 'E', 'L', 'O', 'T', 'R', 'A', 'C', 'E'}; // MOT

    int chosen_autorun_row = 1; // ATN: 1 to 32
    int chosen_sink = 1;        // ESC: 1 HDMI/DVI OUT, 2 HDMI/DVI IN, 3 VGA OUT

    bool operator==(const generator_settings&) const = default;
};

/// The memory of the simulated generator.
struct generator_state : generator_settings {
    std::array<edid_sink, sink_count> sinks;
    std::string version = "VER012"; // the answer to VER001

    using milliseconds = std::chrono::milliseconds;
    milliseconds think_time{1};   // before each answer
    milliseconds reset_time{900}; // before the answer to RST001
    milliseconds data_time{100};  // between the answer to ERD001 and the data
    milliseconds write_time{20};  // before the result of an EDID write
    milliseconds erase_time{
        3000}; // before the result of an EDID erase; below 50 ms the desk takes it for part of the echo

    bool operator==(const generator_state&) const = default;
};

} // namespace desk
