#pragma once

#include "edid/format/buffer.h"

#include <string>

namespace desk {

/// Appends the established timings in the report's form: three sections, two timings to a line, "[v]" before each that
/// the EDID has and "[ ]" before the others.
void print_established_lines(std::string& text, const edid_buffer& trans_buff);

} // namespace desk
