#include "edid/facts/block_reader.h"

namespace desk::facts {

void block_reader::keep_unknown(std::size_t offset, std::size_t length, std::string_view what) const {
    unknown_bytes kept{at(offset, length), what, {}};
    kept.bytes.reserve(length);
    for (std::size_t i = 0; i < length; ++i)
        kept.bytes.push_back((*this)[offset + i]);
    facts.unknown.push_back(std::move(kept));
}

} // namespace desk::facts
