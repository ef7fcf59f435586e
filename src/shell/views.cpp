#include "shell/frm_main.h"

#include "runtime/numbers.h"

#include <array>
#include <initializer_list>
#include <utility>

namespace desk {

void frm_main::change_view(int view_mode) {
    if (!logo_hidden) {
        img_logo.visible = false;
        logo_hidden = true;
    }
    view_reset();
    exchange.view_mode = to_integer(view_mode);
    view_paint();
}

void frm_main::view_reset() {
    auto& d = desk_frame;
    for (control* c : std::initializer_list<control*>{
             &catalogue.lstv_timing, &catalogue.lstv_pattern, &d.fra_desk, &d.cmd_run, &d.cmd_download,
             &d.lab_desk_note, &d.cmd_check_all, &d.cmd_check_none, &autorun.fra_auto, &panel.fra_setup,
             &workbench.fra_edid, &translation_frame.fra_edid_edit, &d.fra_hori, &d.fra_vert, &d.lab_pix_clock,
             &d.txt_pix_f, &d.txt_motion_str, &d.lab_motion_str, &d.cmd_upload})
        c->visible = false;
    for (std::size_t i = 0; i < d.hsr_color_setting.size(); ++i) {
        d.hsr_color_setting.at(i).visible = false;
        d.lab_color_setting.at(i).visible = false;
        d.txt_color_setting.at(i).visible = false;
    }
    machine_.events.pump();
}

void frm_main::view_paint() {
    const std::array<std::pair<int, button*>, 7> view_buttons = {{
        {view::timing_select, &catalogue.cmd_timing},
        {view::pattern_select, &catalogue.cmd_pattern},
        {view::favorite_timing, &favorites.cmd_fav_timing},
        {view::favorite_pattern, &favorites.cmd_fav_pattern},
        {view::edid_read_write, &cmd_edid},
        {view::autorun_config, &autorun.cmd_auto},
        {view::panel_control, &cmd_setup},
    }};
    for (const auto& [view, view_button] : view_buttons)
        view_button->back_color = color_button_face;
    for (const auto& [view, view_button] : view_buttons) {
        if (view == exchange.view_mode) view_button->back_color = color_current_view;
    }
}

void frm_main::cmd_edid_click() {
    change_view(view::edid_read_write);
    workbench.fra_edid.visible = true;
    machine_.events.pump();
}

void frm_main::cmd_setup_click() {
    change_view(view::panel_control);
    desk_frame.cmd_download.left = download_left_over_frame;
    desk_frame.cmd_download.top = download_top_over_frame;
    panel.fra_setup.visible = true;
    desk_frame.cmd_download.visible = true;
}

} // namespace desk
