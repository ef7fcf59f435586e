#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace desk {

/// The text that the READ and WRITE windows show for byte `index`: two digits and a space; after the eighth byte of a
/// line "//", the index without leading zeros and a line end; after byte 127 another line end.
std::string canonical_piece(std::uint8_t byte, std::size_t index);

} // namespace desk
