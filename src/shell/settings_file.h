#pragma once

#include "edid/shared_fields.h"
#include "edid/workbench_frame.h"
#include "link/exchange.h"

#include <string>
#include <string_view>

namespace desk {

inline constexpr const char* settings_file_name = "marlo_rs232.ini";

/// What the settings file keeps from one run to the next: 14 records in this order: the port number, the ten entries of
/// the previous files list, and the three values of the programmer.
struct kept_settings {
    exchange& link;
    workbench_frame& edid;
    shared_fields& fields;

    /// Takes the records over one after another. Throws failure::input_past_end_of_file, failure::type_mismatch or
    /// failure::overflow at the first that can't be taken.
    void read(std::string_view text);
    /// The 14 records. A name of a previous file that they can't hold is left out, and those after it move up.
    std::string text() const;
};

} // namespace desk
