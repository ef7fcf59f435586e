#pragma once

#include "controls/controls.h"
#include "link/commands.h"

#include <array>

namespace desk {

/// The work area of Timing Select, Pattern Select, Favorite Timing and Favorite Pattern, and the two buttons that
/// send and read back a view's values.
struct desk_frame {
    desk_frame() { txt_motion_str.max_length = custom_string_length; }

    button cmd_run;
    button cmd_download;

    frame fra_desk;
    label lab_desk_note;

    frame fra_hori;
    label lab_hori;
    text_box txt_htotal_pix;
    text_box txt_hactive_pix;
    text_box txt_hdelay_pix;
    text_box txt_hsw_pix;
    text_box txt_htotal_us;
    text_box txt_hactive_us;
    text_box txt_hdelay_us;
    text_box txt_hsw_us;
    text_box txt_hpol;
    text_box txt_hf;

    frame fra_vert;
    label lab_vert;
    text_box txt_vtotal_line;
    text_box txt_vactive_line;
    text_box txt_vdelay_line;
    text_box txt_vsw_line;
    text_box txt_vtotal_ms;
    text_box txt_vactive_ms;
    text_box txt_vdelay_ms;
    text_box txt_vsw_ms;
    text_box txt_vpol;
    text_box txt_vf;

    label lab_pix_clock;
    text_box txt_pix_f;

    // red or Cr, green or Y, blue or Cb, grey
    std::array<slider, 4> hsr_color_setting;
    std::array<text_box, 4> txt_color_setting;
    std::array<label, 4> lab_color_setting;

    label lab_motion_str;
    text_box txt_motion_str;
    button cmd_upload;

    button cmd_check_all;
    button cmd_check_none;
};

} // namespace desk
