#include "report/page/field_map.h"

#include "edid/format/buffer.h"
#include "report/page/page_frame.h"

#include <algorithm>
#include <array>
#include <tuple>

namespace desk::page {

namespace {

bool comes_before(const field& f, std::size_t block, std::size_t offset) {
    return std::tie(f.block, f.end) <= std::tie(block, offset);
}

} // namespace

field_map::field_map(const facts::display_facts& facts) {
    std::vector<field> named;
    named.reserve(facts.bytes.size());
    for (const facts::named_bytes& n : facts.bytes)
        named.push_back({n.where.block, n.where.offset, std::size_t{n.where.offset} + n.where.length, n.what, n.name});
    std::stable_sort(named.begin(), named.end(), [](const field& a, const field& b) {
        return std::tie(a.block, a.begin) < std::tie(b.block, b.begin);
    });
    std::size_t next = 0; // the first byte of the EDID without a field
    const auto add = [&](std::size_t end, facts::part what, std::string_view name) {
        while (next < end) {
            const std::size_t block = next / edid_block_size;
            const std::size_t end_here = std::min(end, (block + 1) * edid_block_size);
            fields_.push_back({block, next % edid_block_size, end_here - block * edid_block_size, what, name});
            next = end_here;
        }
    };
    for (const field& n : named) {
        const std::size_t start = n.block * edid_block_size;
        add(std::min(start + n.begin, facts.size), facts::part::unknown, "Unknown");
        add(std::min(start + n.end, facts.size), n.what, n.name);
    }
    add(facts.size, facts::part::unknown, "Unknown");
}

const field* field_map::at(std::size_t block, std::size_t offset) const {
    const auto found = std::partition_point(fields_.begin(), fields_.end(),
                                            [&](const field& f) { return comes_before(f, block, offset); });
    return found != fields_.end() && found->block == block ? &*found : nullptr;
}

namespace {

std::string id_of(char kind, const field& f) { return kind + std::to_string(f.block) + "-" + std::to_string(f.begin); }

} // namespace

std::string id_of_bytes(const field& f) { return id_of('b', f); }

std::string id_of_row(const field& f) { return id_of('f', f); }

std::string range_words(const field& f) {
    const std::string first = std::to_string(f.begin);
    if (f.end - f.begin == 1) return "byte " + first;
    return "bytes " + first + " to " + std::to_string(f.end - 1);
}

void link_to_bytes(drawing::markup_writer& out, const field_map& fields, std::size_t block, std::size_t offset) {
    const std::string words = std::to_string(block) + ":" + std::to_string(offset);
    const field* f = fields.at(block, offset);
    if (f == nullptr)
        out.text(words);
    else
        link_to(out, id_of_bytes(*f), words);
}

const part_look& look_of(facts::part what) {
    static constexpr std::array<part_look, 24> looks = {{
        {"p-frame", "structure"}, {"p-product", "product"},    {"p-product", "product"},
        {"p-input", "input"},     {"p-input", "features"},     {"p-color", "colour"},
        {"p-timing", "timings"},  {"p-timing", "timings"},     {"p-detailed", "detailed timings"},
        {"p-text", "text"},       {"p-limits", "limits"},      {"p-other", "other descriptor"},
        {"p-frame", "structure"}, {"p-timing", "timings"},     {"p-audio", "audio"},
        {"p-audio", "speakers"},  {"p-vendor", "vendor"},      {"p-input", "capability"},
        {"p-color", "HDR"},       {"p-timing", "YCbCr 4:2:0"}, {"p-other", "DisplayID"},
        {"p-padding", "padding"}, {"p-sum", "checksum"},       {"p-unknown", "unknown"},
    }};
    return looks.at(static_cast<std::size_t>(what));
}

} // namespace desk::page
