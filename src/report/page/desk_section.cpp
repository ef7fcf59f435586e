#include "report/page/sections.h"

namespace desk::page {

void write_desk_report(markup_writer& out, const page_source& source) {
    const desk_outcome& desk = source.desk;
    begin_section(out, "desk", "Desk report");
    if (!desk.remark.empty())
        out.begin("p", "quiet").text("The desk sees two blocks: ").text(desk.remark).text(".").end();
    if (desk.failure) {
        out.begin("div", "failure");
        out.begin("p").begin("strong");
        out.text("Run-time error " + std::to_string(*desk.failure) + ": ").text(desk.failure_text).end();
        out.end();
        out.element("p", desk.sentence);
        out.element("p", "The desk ends here. The text below is its report up to that point.");
        out.end();
    }
    out.begin("pre").attribute("tabindex", 0).text(desk.text).end();
    out.end();
}

} // namespace desk::page
