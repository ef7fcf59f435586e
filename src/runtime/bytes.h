#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace desk {

/// Raw bytes of the line or of a file.
using bytes = std::vector<std::uint8_t>;

inline bytes bytes_of(std::string_view text) { return {text.begin(), text.end()}; }
inline std::string string_of(const bytes& data) { return {data.begin(), data.end()}; }

} // namespace desk
