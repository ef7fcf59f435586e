#pragma once

#include <string>
#include <vector>

namespace desk::test {

/// Everything that a change of view hides.
inline const std::vector<std::string> view_controls = {
    "lstv_timing",
    "lstv_pattern",
    "fra_desk",
    "cmd_run",
    "cmd_download",
    "lab_desk_note",
    "cmd_check_all",
    "cmd_check_none",
    "fra_auto",
    "fra_setup",
    "fra_edid",
    "fra_edid_edit",
    "fra_hori",
    "fra_vert",
    "lab_pix_clock",
    "txt_pix_f",
    "txt_motion_str",
    "lab_motion_str",
    "cmd_upload",
    "hsr_color_setting(0)",
    "lab_color_setting(0)",
    "txt_color_setting(0)",
    "hsr_color_setting(1)",
    "lab_color_setting(1)",
    "txt_color_setting(1)",
    "hsr_color_setting(2)",
    "lab_color_setting(2)",
    "txt_color_setting(2)",
    "hsr_color_setting(3)",
    "lab_color_setting(3)",
    "txt_color_setting(3)",
};

} // namespace desk::test
