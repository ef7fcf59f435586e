#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace desk {

/// The piece of text that the READ and WRITE windows show for byte `index`: two digits and a blank; behind the eighth
/// byte of a line "//", the index without leading zeros and the line's end; behind byte 127 an empty line more.
std::string canonical_piece(std::uint8_t byte, std::size_t index);

} // namespace desk
