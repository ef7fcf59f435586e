#pragma once

#include "edid/format/buffer.h"

#include <string>

namespace desk {

/// Appends the lines of the CEA 861 block's header: tag, revision and byte 131 (CEA-861-D, section 7.5), the last one
/// without its line end; for a block of another kind only the tag.
void decode_dtv(std::string& text, const edid_buffer& trans_buff, bool is_cea_block1);

} // namespace desk
