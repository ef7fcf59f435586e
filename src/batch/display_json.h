#pragma once

#include "edid/facts/display_facts.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace desk::batch {

/// What the JSON form says about a file besides the facts of its EDID.
struct file_in_json {
    std::string_view name;        ///< as named on the command line
    std::string_view sha256;      ///< of the file's bytes
    std::size_t size = 0;         ///< of the file
    std::optional<int> failure;   ///< the number of the run-time failure that ends the desk's report
    std::string_view report_text; ///< the desk's report, as far as it goes
};

/// How every object begins.
inline constexpr std::string_view start_of_json = "{\"file\":";

/// Appends one object without a line end; docs/edid_report.schema.json describes it.
void append_json(std::string& text, const file_in_json& file, const facts::display_facts& facts);

} // namespace desk::batch
