#include "report/page/sections.h"
#include "report/page/words.h"

namespace desk::page {

void write_findings(markup_writer& out, const page_source& source, const field_map& fields) {
    begin_section(out, "findings", "Findings");
    if (source.facts.findings.empty()) {
        out.element("p", "quiet", "The EDID keeps to the standards as far as they are checked here.");
        return out.end();
    }
    begin_table(out, "findings", "Where the EDID departs from the standards");
    table_head(out, {"Severity", "Place", "Finding", "Clause"});
    out.begin("tbody");
    for (const facts::finding& f : source.facts.findings) {
        out.begin("tr");
        out.begin("td");
        out.begin("span", "chip " + std::string(name_of(f.level))).text(name_of(f.level)).end();
        out.end();
        out.begin("td");
        link_to_bytes(out, fields, f.block, f.offset);
        out.end();
        out.element("td", f.text);
        out.element("td", "quiet", f.clause);
        out.end();
    }
    out.end();
    end_table(out);
    out.end();
}

} // namespace desk::page
