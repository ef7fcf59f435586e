#pragma once

#include "edid/format/buffer.h"
#include "translate/decode/translation_tables.h"

#include <cstdint>
#include <string>

namespace desk {

// The panel and the report look up a descriptor each time they show one: the table can hold the other block, or a
// position that decode_detail has lowered.

/// Appends the content of monitor descriptor number `count` of a class in block 0; nothing if there is none.
void decode_found_descriptor(std::string& text, const edid_buffer& trans_buff, translation_tables& tables,
                             std::uint8_t kind, int count, std::uint8_t code);

/// Appends the lines of detailed timing number `count` of a block; nothing if there is none. Throws what decode_detail
/// throws.
void decode_found_detail(std::string& text, const edid_buffer& trans_buff, translation_tables& tables,
                         std::uint8_t block, int count);

} // namespace desk
