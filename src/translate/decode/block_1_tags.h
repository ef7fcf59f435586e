#pragma once

#include <cstdint>
#include <string_view>

namespace desk {

/// The tag of a CEA 861 block (CEA-861-D, section 7.5).
inline constexpr std::uint8_t cea_861_tag = 0x02;
inline constexpr std::string_view cea_861_title = "Block 1: CEA 861 Block";

/// The title of an extension block of another kind, by its tag (VESA E-EDID, section 2.2.3); empty for an unknown tag.
std::string_view title_of_other_block(std::uint8_t tag);

} // namespace desk
