#include "edid/format/canonical_text.h"

#include "edid/format/buffer.h"
#include "runtime/text.h"

namespace desk {

std::string canonical_piece(std::uint8_t byte, std::size_t index) {
    std::string piece;
    append_listed_byte(piece, byte, index);
    if (index + 1 == edid_block_size) piece += line_end;
    return piece;
}

} // namespace desk
