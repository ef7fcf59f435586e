#pragma once

#include "edid/shared_fields.h"
#include "edid/workbench_frame.h"
#include "link/exchange.h"

#include <string>
#include <string_view>

namespace desk {

inline constexpr const char* settings_file_name = "marlo_rs232.ini";

/// The settings kept between runs, in 14 records: the port number, the ten previous files, and the programmer's three
/// values.
struct stored_settings {
    exchange& link;
    workbench_frame& edid;
    shared_fields& fields;

    /// Reads the records in order. Throws failure::input_past_end_of_file, failure::type_mismatch or
    /// failure::overflow at the first invalid one.
    void read(std::string_view text);
    /// The 14 records. Skips a previous file whose name they can't hold, and moves up those after it.
    std::string text() const;
};

} // namespace desk
