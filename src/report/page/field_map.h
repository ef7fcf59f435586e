#pragma once

#include "drawing/markup_writer.h"
#include "edid/facts/display_facts.h"

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace desk::page {

/// A run of bytes of one block that belong together.
struct field {
    std::size_t block = 0;
    std::size_t begin = 0; ///< in the block
    std::size_t end = 0;   ///< one beyond the last byte
    facts::part what = facts::part::unknown;
    std::string_view name;

    bool has(const facts::place& where) const {
        return where.block == block && where.offset >= begin && where.offset < end;
    }
};

/// Divides an EDID into fields: every byte is in exactly one.
class field_map {
public:
    explicit field_map(const facts::display_facts& facts);

    std::span<const field> fields() const { return fields_; }
    /// The field of a byte. Null beyond the EDID.
    const field* at(std::size_t block, std::size_t offset) const;

private:
    std::vector<field> fields_;
};

/// The anchors of a field's bytes in the dump, and of its row in the list of fields: "b0-36", "f0-36".
std::string id_of_bytes(const field& f);
std::string id_of_row(const field& f);
/// "bytes 36 to 53", "byte 20".
std::string range_words(const field& f);

/// A link to the bytes of a place: "0:36"; block and offset.
void link_to_bytes(drawing::markup_writer& out, const field_map& fields, std::size_t block, std::size_t offset);

/// The class of a kind of bytes in the page's style, and its words in the legend.
struct part_look {
    std::string_view class_name;
    std::string_view words;
};
const part_look& look_of(facts::part what);

} // namespace desk::page
