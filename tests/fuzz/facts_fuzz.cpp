// EDIDs of any bytes and any length: their facts, their JSON and their page.

#include "batch/display_json.h"
#include "desk_under_fuzz.h"
#include "edid/facts/display_facts.h"
#include "report/page/display_page.h"
#include "support/strict_xml.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <span>
#include <string>

namespace {

using namespace desk;
using facts::display_facts;

bool is_inside(const facts::place& where, const display_facts& f) {
    return where.block < f.checksums.size() && where.offset + where.length <= 128;
}

void demand_cover(const display_facts& f) {
    std::size_t next = 0;
    for (const facts::named_bytes& n : f.bytes) {
        fuzz::demand(n.where.block * 128U + n.where.offset == next, "the names of the bytes leave none out");
        fuzz::demand(n.where.length > 0 && !n.name.empty(), "each name has bytes");
        next += n.where.length;
    }
    fuzz::demand(next == f.checksums.size() * 128, "the names cover every block");
}

void demand_places(const display_facts& f) {
    const auto inside = [&](const auto& items) {
        return std::all_of(items.begin(), items.end(), [&](const auto& item) { return is_inside(item.where, f); });
    };
    fuzz::demand(inside(f.detailed_timings) && inside(f.modes) && inside(f.unknown) && inside(f.cta.video) &&
                     inside(f.cta.audio) && inside(f.cta.vendors),
                 "each place is in a block");
    for (const facts::finding& found : f.findings) {
        fuzz::demand(found.block < 256 && found.offset < 128, "a finding is in a block");
        fuzz::demand(found.text.ends_with('.') && !found.clause.empty(), "a finding is a sentence with its clause");
    }
}

void demand_json(const display_facts& f, std::size_t size) {
    std::string text;
    batch::append_json(text, {"a\x1B.bin", "", size, 6, "the report"}, f);
    fuzz::demand(std::all_of(text.begin(), text.end(), [](char c) { return c >= 0x20 && c < 0x7F; }),
                 "JSON is one line of printable ASCII");
    const auto object = nlohmann::json::parse(text, nullptr, false);
    fuzz::demand(object.is_object(), "JSON is valid");
    fuzz::demand(object["facts"]["detailed_timings"].size() == f.detailed_timings.size(), "JSON has each timing");
    fuzz::demand(object["findings"].size() == f.findings.size(), "JSON has each finding");
}

void demand_page(const display_facts& f, std::span<const std::uint8_t> bytes) {
    std::string page;
    page::append_display_page(page, {"<a>\x1B.bin", "", bytes, f, {"<report>", 6, "Overflow", "&", ""}, "1.0"});
    const test::strict_xml read(page);
    fuzz::demand(read.fault.empty(), "the page is well-formed and its links lead somewhere");
    fuzz::demand(!read.elements.contains("script"), "no text becomes an element");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const display_facts f = facts::read_display_facts({data, size});
    fuzz::demand(f.checksums.size() == std::min<std::size_t>(size / 128, 256), "each block has its checksum");
    fuzz::demand((facts::best_mode(f) == nullptr) == f.modes.empty(), "there is a best mode if there is one at all");
    demand_cover(f);
    demand_places(f);
    // the check of the JSON takes ten times as long as everything above, that of the page a hundred times
    // the rests are rare in EDIDs
    if (size == 0 || data[size / 2] % 16 == 5) demand_json(f, size);
    if (size == 0 || data[size / 2] % 128 == 39) demand_page(f, {data, size});
    return 0;
}
