#include "report/report_opener.h"

namespace desk {

report_opener::report_opener(machine& m, translation_frame& view, const edid_buffers& buffers,
                             translation_tables& tables, shared_fields& fields)
    : machine_(m), buffers_(buffers), tables_(tables), fields_(fields) {
    view.cmd_edid_report.on_click = [this] { cmd_edid_report_click(); };
}

void report_opener::cmd_edid_report_click() {
    // a closed window can be reopened before this procedure continues: each call owns its window
    const auto opened = std::make_shared<frm_report>(machine_, buffers_, tables_, fields_);
    frm_report_ = opened;
    opened->load();
    machine_.windows.show(opened->form);
}

} // namespace desk
