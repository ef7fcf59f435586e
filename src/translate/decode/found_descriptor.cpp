#include "translate/decode/found_descriptor.h"

#include "runtime/failure.h"
#include "runtime/text.h"
#include "translate/decode/detail.h"

namespace desk {

void decode_found_descriptor(std::string& text, const edid_buffer& trans_buff, translation_tables& tables,
                             std::uint8_t kind, int count, std::uint8_t code) {
    tables.arrange_descriptor(trans_buff, 0);
    const descriptor_row* const row = tables.find_descriptor(kind, count, descriptors_of_block_0);
    if (row != nullptr) decode_descriptor(text, trans_buff, tables.tag_address(*row), code);
}

void decode_found_detail(std::string& text, const edid_buffer& trans_buff, translation_tables& tables,
                         std::uint8_t block, int count) {
    tables.arrange_descriptor(trans_buff, block);
    descriptor_row* const row = tables.find_descriptor(
        descriptor_class::detail_timing, count, block == 0 ? descriptors_of_block_0 : tables.descriptor_map.size());
    if (row == nullptr) return;
    while_doing([&] { return "Decoding detailed timing " + number_text(count) + (block == 0 ? "" : " of block 1"); },
                [&] { decode_detail(text, trans_buff, tables.descriptor_start, row->position); });
}

} // namespace desk
