#include "report/page/sections.h"
#include "report/page/words.h"

namespace desk::page {

namespace {

void write_row(markup_writer& out, const facts::finding& f, const field_map& fields) {
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

} // namespace

void write_findings(markup_writer& out, const page_source& source, const field_map& fields) {
    begin_section(out, "findings", "Findings");
    if (source.facts.findings.empty()) {
        out.element("p", "quiet", "No departure from the standards was found.");
        return out.end();
    }
    begin_table(out, "findings", "Where the EDID departs from the standards");
    table_head(out, {"Severity", "Place", "Finding", "Clause"});
    out.begin("tbody");
    for (const auto level : {facts::severity::error, facts::severity::warning, facts::severity::note})
        for (const facts::finding& f : source.facts.findings)
            if (f.level == level) write_row(out, f, fields);
    out.end();
    end_table(out);
    out.end();
}

} // namespace desk::page
