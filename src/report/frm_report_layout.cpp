#include "controls/layout.h"
#include "report/frm_report.h"

namespace desk {

void frm_report::lay_out_controls() {
    form.name = "frm_report";
    form.caption = "EDID Report";
    form.width = 7500;
    form.height = 8400;

    frame* const in_window = nullptr;

    // clang-format off
    lay_out(form, {
        {txt_report, "txt_report", in_window, 120, 120, 7260, 7560, "", locked | multi_line | fixed_pitch},
        {cmd_save, "cmd_save", in_window, 4500, 7860, 1380, 420, "Save", disabled},
        {cmd_exit, "cmd_exit", in_window, 6000, 7860, 1380, 420, "Exit", disabled},
    });
    // clang-format on
    form.takes_extra_room = &txt_report;
}

} // namespace desk
