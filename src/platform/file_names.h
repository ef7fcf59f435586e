#pragma once

#include <string>
#include <string_view>

namespace desk {

/// A file name with equivalent letters folded: names with equal results can refer to the same file.
std::string folded_name(std::string_view name);

} // namespace desk
