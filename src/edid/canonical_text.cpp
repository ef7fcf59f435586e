#include "edid/canonical_text.h"

#include "edid/buffer.h"
#include "runtime/text.h"

namespace desk {

namespace {

constexpr std::size_t bytes_of_line = 8;

} // namespace

std::string canonical_piece(std::uint8_t byte, std::size_t index) {
    std::string piece = hex2(byte) + " ";
    if ((index + 1) % bytes_of_line == 0) {
        piece += "//" + hex(static_cast<std::uint32_t>(index));
        piece += line_end;
    }
    if (index + 1 == edid_block_size) piece += line_end;
    return piece;
}

} // namespace desk
