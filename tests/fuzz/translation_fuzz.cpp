#include "desk_under_fuzz.h"
#include "runtime/windows_1252.h"
#include "support/translation_desk.h"

#include <algorithm>
#include <set>

namespace {

using namespace desk;

/// Allowed failures of the translation; any other is a defect.
void demand_expected(const std::optional<runtime_failure>& failed) {
    static const std::set<failure> expected = {failure::invalid_procedure_call, failure::overflow,
                                               failure::subscript_out_of_range, failure::index_out_of_bounds,
                                               failure::key_not_unique};
    fuzz::demand(!failed || (expected.contains(failed->code()) && failed->sentence().size() > 1),
                 "only expected failures occur, with a sentence");
}

void demand_text(const std::string& text) { fuzz::demand(as_utf8(text) == text, "a text is UTF-8"); }

void click_all_nodes(test::translation_desk& d) {
    const int count = d.view.tree_edid.node_count();
    for (int node = 1; node <= count; ++node) {
        demand_expected(d.click(node));
        demand_text(d.text());
        fuzz::demand(d.view.tree_edid.node_count() == count, "a click does not change the tree");
    }
}

std::string report_of(test::translation_desk& d) {
    std::optional<runtime_failure> failed;
    try {
        d.report.report_build("date", "time");
    } catch (const runtime_failure& f) {
        failed = f;
    }
    demand_expected(failed);
    demand_text(d.report.report_text);
    return d.report.report_text;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    edid_buffer edid;
    edid.fill(0xFF);
    std::copy_n(data, std::min(size, edid.size()), edid.begin());
    test::translation_desk d;
    const auto failed = d.translate(edid);
    demand_expected(failed);
    if (!failed) click_all_nodes(d);
    const std::string report = report_of(d);
    fuzz::demand(d.buffers.trans_buff == edid && d.buffers.read_buff == edid, "no byte of an EDID changes");
    test::translation_desk write_side;
    write_side.buffers.write_buff = edid;
    const bool translated = fuzz::ends_well([&] { write_side.tree.cmd_write_translate_click(); });
    fuzz::demand(translated == !failed, "both sides are translated alike");
    test::translation_desk fresh;
    fresh.buffers.trans_buff = edid;
    fuzz::demand(report_of(fresh) == report, "a report does not depend on what was clicked before");
    return 0;
}
