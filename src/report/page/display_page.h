#pragma once

#include "edid/facts/display_facts.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace desk::page {

/// The desk's own report of an EDID, as far as it goes.
struct desk_outcome {
    std::string_view text;
    std::optional<int> failure; ///< the number of the run-time failure that ends it
    std::string_view failure_text;
    std::string_view sentence; ///< what the desk was doing
    std::string_view remark;   ///< what it made of an EDID of another size; empty: nothing
};

/// What a page shows.
struct page_source {
    std::string_view file_name; ///< as named
    std::string_view sha256;    ///< of the file; empty: not shown
    std::span<const std::uint8_t> bytes;
    const facts::display_facts& facts;
    desk_outcome desk;
    std::string_view version; ///< of the program
};

/// Appends the page of one display.
void append_display_page(std::string& out, const page_source& source);

} // namespace desk::page
