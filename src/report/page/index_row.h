#pragma once

#include "report/page/display_page.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace desk::page {

/// What the index says about a display. There can be very many, so it is small.
struct index_row {
    std::string page; ///< the file name of its page
    std::string model;
    std::string maker;           ///< three letters
    std::string_view maker_name; ///< static
    std::uint32_t width = 0;     ///< of the best mode; 0: there is none
    std::uint32_t height = 0;
    std::uint32_t rate_mhz = 0; ///< in thousandths of a hertz
    std::uint16_t diagonal = 0; ///< in tenths of an inch; 0: not stated
    std::uint16_t year = 0;     ///< 1990 to 2245; 0: not stated
    std::uint16_t errors = 0;
    std::uint16_t warnings = 0;
    std::uint16_t notes = 0;
    std::uint16_t failure = 0; ///< the number of the desk's run-time failure
    bool desk_fails = false;
    bool interlaced = false;
    bool hdr = false;
};

index_row row_of(const page_source& source, std::string page);

} // namespace desk::page
