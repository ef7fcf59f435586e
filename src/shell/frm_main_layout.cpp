#include "controls/layout.h"
#include "shell/frm_main.h"
#include "translate/decode/established.h"

namespace desk {

namespace {

// the column of view buttons, and the area shared by all views
constexpr int column_left = 90;
constexpr int column_width = 2340;
constexpr int column_pitch = 480;
constexpr int area_left = 2520;
constexpr int area_top = 600;
constexpr int area_width = 9090;
constexpr int area_height = 8370;

constexpr int gap = 90;     // between neighbours in the window
constexpr int margin = 180; // inside the frames of views
constexpr int bar_top = 60;
constexpr int button_height = 420;
constexpr int button_width = 1380;
constexpr int box_height = 390;
constexpr int line_height = 240;
constexpr int note_top = 480;
constexpr int note_height = 720;

constexpr int list_width = 2850;
constexpr int desk_left = area_left + list_width + gap;
constexpr int desk_width = area_width - list_width - gap;
constexpr int desk_inside = desk_width - 2 * margin;

// the boxes fill the gaps left by the spaces in lab_hori and lab_vert, at 120 twips a character, two lines of these
// labels apart
constexpr int figures_pitch = 210;
constexpr int figures_row = 2 * figures_pitch;
constexpr int figures_height = 2850;
constexpr int figures_label_left = 420;
constexpr int figures_label_top = 315;
constexpr int figures_box_1 = 2010;
constexpr int figures_box_1_width = 900;
constexpr int figures_box_2 = 3600;
constexpr int figures_box_2_width = 960;
constexpr int figures_box_top = 225;
constexpr int figures_box_height = 360;

// the same for the buttons of the panel
constexpr int panel_pitch = 270;
constexpr int panel_row = 2 * panel_pitch;
constexpr int panel_label_top = 540;
constexpr int panel_button_top = panel_label_top + 6 * panel_pitch - 90;
constexpr int panel_button_left = 2490;
constexpr int panel_button_pitch = 1620;
constexpr int panel_button_width = 1560;
constexpr int panel_button_height = 450;

// below the note: the buttons and what they act on
constexpr int extras_top = 2640;
constexpr int slider_pitch = 600;
constexpr int slider_height = 330;

// a step of the list is edited below its columns
constexpr int step_top = 7170;
constexpr int step_timing = 870;
constexpr int step_pattern = 3810;
constexpr int step_interval = 7050;

// the two sides of the workbench
constexpr int write_left = margin;
constexpr int read_left = 4650;
// the caption begins with two spaces, and its letters are aligned with the text below
constexpr int two_spaces = 105;
constexpr int side_width = 4260;
constexpr int side_button = 1020;
constexpr int side_pitch = 1080;
constexpr int text_top = 690;
constexpr int text_height = 5130;
constexpr int sum_top = text_top + text_height + 60;
constexpr int sum_left = 960;
constexpr int side_buttons_top = sum_top + 2 * button_height + 90;
constexpr int side_row = 480;

} // namespace

void frm_main::lay_out_controls() {
    form.name = "frm_main";
    form.width = 11700;
    form.height = 9090;

    auto& d = desk_frame;
    frame* const in_window = nullptr;

    // clang-format off
    lay_out(form, {
        {lab_desk, "lab_desk", in_window, area_left, area_top, area_width, area_height},
        {line_rs232, "line_rs232", in_window, 0, 540, 11700, 0},
        {img_logo, "img_logo", in_window, area_left, area_top, area_width, area_height},

        {exchange.lab_com, "lab_com", in_window, column_left, bar_top, 1140, button_height, "  RS232 Port", in_middle},
        {exchange.cbo_com, "cbo_com", in_window, 1290, bar_top, 1140, button_height},
        {exchange.cmd_conn, "cmd_conn", in_window, area_left, bar_top, button_width, button_height, "&Connect"},
        {exchange.cmd_disconn, "cmd_disconn", in_window, 3960, bar_top, button_width, button_height, "&Disconnect"},
        {about.cmd_about, "cmd_about", in_window, 10230, bar_top, button_width, button_height, "A&bout"},

        {catalogue.cmd_timing, "cmd_timing", in_window, column_left, area_top, column_width, 450, "&Timing Select", in_column},
        {catalogue.cmd_pattern, "cmd_pattern", in_window, column_left, area_top + column_pitch, column_width, 450, "&Pattern Select", in_column},
        {favorites.cmd_fav_timing, "cmd_fav_timing", in_window, column_left, area_top + 2 * column_pitch, column_width, 450, "&Favorite Timing", in_column},
        {favorites.cmd_fav_pattern, "cmd_fav_pattern", in_window, column_left, area_top + 3 * column_pitch, column_width, 450, "Fa&vorite Pattern", in_column},
        {cmd_edid, "cmd_edid", in_window, column_left, area_top + 4 * column_pitch, column_width, 450, "&EDID Read/Write", in_column},
        {autorun.cmd_auto, "cmd_auto", in_window, column_left, area_top + 5 * column_pitch, column_width, 450, "&Autorun Config", in_column},
        {cmd_setup, "cmd_setup", in_window, column_left, area_top + 6 * column_pitch, column_width, 450, "Pa&nel Control", in_column},

        {status_frame.fra_status, "fra_status", in_window, column_left, 4020, column_width, 4950, "VELOTRACE OUT Status"},
        {status_frame.lab_timing_lab, "lab_timing_lab", &status_frame.fra_status, 120, 420, 2100, line_height, "Timing : ", small_print},
        {status_frame.lab_timing, "lab_timing", &status_frame.fra_status, 120, 690, 2100, 600},
        {status_frame.lab_pattern_lab, "lab_pattern_lab", &status_frame.fra_status, 120, 1410, 2100, line_height, "Pattern :", small_print},
        {status_frame.lab_pattern, "lab_pattern", &status_frame.fra_status, 120, 1680, 2100, 600},
        {status_frame.lab_out_lab, "lab_out_lab", &status_frame.fra_status, 120, 2400, 2100, line_height, "Output Format :", small_print},
        {status_frame.lab_out, "lab_out", &status_frame.fra_status, 120, 2670, 2100, box_height, "", in_middle},
        {status_frame.lab_hdcp_lab, "lab_hdcp_lab", &status_frame.fra_status, 120, 3180, 2100, line_height, "HDCP :", small_print},
        {status_frame.lab_hdcp, "lab_hdcp", &status_frame.fra_status, 120, 3450, 2100, box_height, "", in_middle},
        {status_frame.cmd_refresh, "cmd_refresh", &status_frame.fra_status, 120, 4410, 2100, button_height, "&Refresh"},

        {catalogue.lstv_timing, "lstv_timing", in_window, area_left, area_top, list_width, area_height, "", hidden},
        {catalogue.lstv_timing_sub, "lstv_timing_sub", in_window, area_left, area_top, list_width, area_height, "", hidden},
        {catalogue.lstv_pattern, "lstv_pattern", in_window, area_left, area_top, list_width, area_height, "", hidden},

        {d.fra_desk, "fra_desk", in_window, desk_left, area_top, desk_width, area_height, "", hidden | view_frame},
        {d.lab_desk_note, "lab_desk_note", &d.fra_desk, margin, note_top, desk_inside, note_height, "", hidden},
        {d.lab_pix_clock, "lab_pix_clock", &d.fra_desk, 3090, 1755, 2880, line_height, "Pixel Clock:         MHz", hidden | fixed_pitch},
        {d.txt_pix_f, "txt_pix_f", &d.fra_desk, 4590, 1680, 960, figures_box_height, "", hidden | locked},

        {d.fra_hori, "fra_hori", &d.fra_desk, margin, 2400, desk_inside, figures_height, "Horizontal", hidden},
        {d.lab_hori, "lab_hori", &d.fra_hori, figures_label_left, figures_label_top, 5280, 11 * figures_pitch, "", fixed_pitch},
        {d.txt_htotal_pix, "txt_htotal_pix", &d.fra_hori, figures_box_1, figures_box_top, figures_box_1_width, figures_box_height, "", locked},
        {d.txt_hactive_pix, "txt_hactive_pix", &d.fra_hori, figures_box_1, figures_box_top + figures_row, figures_box_1_width, figures_box_height, "", locked},
        {d.txt_hdelay_pix, "txt_hdelay_pix", &d.fra_hori, figures_box_1, figures_box_top + 2 * figures_row, figures_box_1_width, figures_box_height, "", locked},
        {d.txt_hsw_pix, "txt_hsw_pix", &d.fra_hori, figures_box_1, figures_box_top + 3 * figures_row, figures_box_1_width, figures_box_height, "", locked},
        {d.txt_htotal_us, "txt_htotal_us", &d.fra_hori, figures_box_2, figures_box_top, figures_box_2_width, figures_box_height, "", locked},
        {d.txt_hactive_us, "txt_hactive_us", &d.fra_hori, figures_box_2, figures_box_top + figures_row, figures_box_2_width, figures_box_height, "", locked},
        {d.txt_hdelay_us, "txt_hdelay_us", &d.fra_hori, figures_box_2, figures_box_top + 2 * figures_row, figures_box_2_width, figures_box_height, "", locked},
        {d.txt_hsw_us, "txt_hsw_us", &d.fra_hori, figures_box_2, figures_box_top + 3 * figures_row, figures_box_2_width, figures_box_height, "", locked},
        {d.txt_hpol, "txt_hpol", &d.fra_hori, figures_box_1, figures_box_top + 4 * figures_row, figures_box_1_width, figures_box_height, "", locked},
        {d.txt_hf, "txt_hf", &d.fra_hori, figures_box_1, figures_box_top + 5 * figures_row, figures_box_1_width, figures_box_height, "", locked},

        {d.fra_vert, "fra_vert", &d.fra_desk, margin, 2400 + figures_height + gap, desk_inside, figures_height, "Vertical", hidden},
        {d.lab_vert, "lab_vert", &d.fra_vert, figures_label_left, figures_label_top, 5280, 11 * figures_pitch, "", fixed_pitch},
        {d.txt_vtotal_line, "txt_vtotal_line", &d.fra_vert, figures_box_1, figures_box_top, figures_box_1_width, figures_box_height, "", locked},
        {d.txt_vactive_line, "txt_vactive_line", &d.fra_vert, figures_box_1, figures_box_top + figures_row, figures_box_1_width, figures_box_height, "", locked},
        {d.txt_vdelay_line, "txt_vdelay_line", &d.fra_vert, figures_box_1, figures_box_top + 2 * figures_row, figures_box_1_width, figures_box_height, "", locked},
        {d.txt_vsw_line, "txt_vsw_line", &d.fra_vert, figures_box_1, figures_box_top + 3 * figures_row, figures_box_1_width, figures_box_height, "", locked},
        {d.txt_vtotal_ms, "txt_vtotal_ms", &d.fra_vert, figures_box_2, figures_box_top, figures_box_2_width, figures_box_height, "", locked},
        {d.txt_vactive_ms, "txt_vactive_ms", &d.fra_vert, figures_box_2, figures_box_top + figures_row, figures_box_2_width, figures_box_height, "", locked},
        {d.txt_vdelay_ms, "txt_vdelay_ms", &d.fra_vert, figures_box_2, figures_box_top + 2 * figures_row, figures_box_2_width, figures_box_height, "", locked},
        {d.txt_vsw_ms, "txt_vsw_ms", &d.fra_vert, figures_box_2, figures_box_top + 3 * figures_row, figures_box_2_width, figures_box_height, "", locked},
        {d.txt_vpol, "txt_vpol", &d.fra_vert, figures_box_1, figures_box_top + 4 * figures_row, figures_box_1_width, figures_box_height, "", locked},
        {d.txt_vf, "txt_vf", &d.fra_vert, figures_box_1, figures_box_top + 5 * figures_row, figures_box_1_width, figures_box_height, "", locked},

        {d.lab_color_setting[0], "lab_color_setting(0)", &d.fra_desk, margin, extras_top, 840, box_height, "?", hidden | in_middle},
        {d.hsr_color_setting[0], "hsr_color_setting(0)", &d.fra_desk, 1080, extras_top + 30, 3540, slider_height, "", hidden | disabled},
        {d.txt_color_setting[0], "txt_color_setting(0)", &d.fra_desk, 4740, extras_top, 780, box_height, "", hidden | disabled},
        {d.lab_color_setting[1], "lab_color_setting(1)", &d.fra_desk, margin, extras_top + slider_pitch, 840, box_height, "?", hidden | in_middle},
        {d.hsr_color_setting[1], "hsr_color_setting(1)", &d.fra_desk, 1080, extras_top + slider_pitch + 30, 3540, slider_height, "", hidden | disabled},
        {d.txt_color_setting[1], "txt_color_setting(1)", &d.fra_desk, 4740, extras_top + slider_pitch, 780, box_height, "", hidden | disabled},
        {d.lab_color_setting[2], "lab_color_setting(2)", &d.fra_desk, margin, extras_top + 2 * slider_pitch, 840, box_height, "?", hidden | in_middle},
        {d.hsr_color_setting[2], "hsr_color_setting(2)", &d.fra_desk, 1080, extras_top + 2 * slider_pitch + 30, 3540, slider_height, "", hidden | disabled},
        {d.txt_color_setting[2], "txt_color_setting(2)", &d.fra_desk, 4740, extras_top + 2 * slider_pitch, 780, box_height, "", hidden | disabled},
        {d.lab_color_setting[3], "lab_color_setting(3)", &d.fra_desk, margin, extras_top + 3 * slider_pitch, 840, box_height, "?", hidden | in_middle},
        {d.hsr_color_setting[3], "hsr_color_setting(3)", &d.fra_desk, 1080, extras_top + 3 * slider_pitch + 30, 3540, slider_height, "", hidden | disabled},
        {d.txt_color_setting[3], "txt_color_setting(3)", &d.fra_desk, 4740, extras_top + 3 * slider_pitch, 780, box_height, "", hidden | disabled},

        {d.lab_motion_str, "lab_motion_str", &d.fra_desk, margin, extras_top, 1320, button_height, "Custom String", hidden | in_middle},
        {d.txt_motion_str, "txt_motion_str", &d.fra_desk, 1560, extras_top, 2880, button_height, "", hidden},
        {d.cmd_upload, "cmd_upload", &d.fra_desk, 4590, extras_top, button_width, button_height, "&Upload", hidden},

        {d.cmd_check_all, "cmd_check_all", &d.fra_desk, margin, extras_top, button_width, button_height, "Check A&ll", hidden},
        {d.cmd_check_none, "cmd_check_none", &d.fra_desk, 1680, extras_top, 1560, button_height, "Check N&one", hidden},

        {panel.fra_setup, "fra_setup", in_window, area_left, area_top, area_width, area_height, "Panel Control", hidden | view_frame},
        {panel.lab_setup, "lab_setup", &panel.fra_setup, margin, panel_label_top, area_width - 2 * margin, 23 * panel_pitch},
        {panel.cmd_out[0], "cmd_out(0)", &panel.fra_setup, panel_button_left, panel_button_top, panel_button_width, panel_button_height, "PC"},
        {panel.cmd_out[1], "cmd_out(1)", &panel.fra_setup, panel_button_left + panel_button_pitch, panel_button_top, panel_button_width, panel_button_height, "HD"},
        {panel.cmd_out[2], "cmd_out(2)", &panel.fra_setup, panel_button_left + 2 * panel_button_pitch, panel_button_top, panel_button_width, panel_button_height, "DVI"},
        {panel.cmd_out[3], "cmd_out(3)", &panel.fra_setup, panel_button_left + 3 * panel_button_pitch, panel_button_top, panel_button_width, panel_button_height, "HDMI"},
        {panel.cmd_hdcp[0], "cmd_hdcp(0)", &panel.fra_setup, panel_button_left, panel_button_top + panel_row, panel_button_width, panel_button_height, "OFF"},
        {panel.cmd_hdcp[1], "cmd_hdcp(1)", &panel.fra_setup, panel_button_left + panel_button_pitch, panel_button_top + panel_row, panel_button_width, panel_button_height, "ON"},
        {panel.cmd_asc[0], "cmd_asc(0)", &panel.fra_setup, panel_button_left, panel_button_top + 2 * panel_row, panel_button_width, panel_button_height, "EXT 7.1CH"},
        {panel.cmd_asc[1], "cmd_asc(1)", &panel.fra_setup, panel_button_left + panel_button_pitch, panel_button_top + 2 * panel_row, panel_button_width, panel_button_height, "EXT OPT"},
        {panel.cmd_asc[2], "cmd_asc(2)", &panel.fra_setup, panel_button_left + 2 * panel_button_pitch, panel_button_top + 2 * panel_row, panel_button_width, panel_button_height, "INT SINE"},
        {panel.cmd_lpcm[0], "cmd_lpcm(0)", &panel.fra_setup, panel_button_left, panel_button_top + 3 * panel_row, panel_button_width, panel_button_height, "2 CH"},
        {panel.cmd_lpcm[1], "cmd_lpcm(1)", &panel.fra_setup, panel_button_left + panel_button_pitch, panel_button_top + 3 * panel_row, panel_button_width, panel_button_height, "5.1 CH"},
        {panel.cmd_lpcm[2], "cmd_lpcm(2)", &panel.fra_setup, panel_button_left + 2 * panel_button_pitch, panel_button_top + 3 * panel_row, panel_button_width, panel_button_height, "7.1 CH"},
        {panel.cmd_csc[0], "cmd_csc(0)", &panel.fra_setup, panel_button_left, panel_button_top + 4 * panel_row, panel_button_width, panel_button_height, "RGB444"},
        {panel.cmd_csc[1], "cmd_csc(1)", &panel.fra_setup, panel_button_left + panel_button_pitch, panel_button_top + 4 * panel_row, panel_button_width, panel_button_height, "YUV444"},
        {panel.cmd_csc[2], "cmd_csc(2)", &panel.fra_setup, panel_button_left + 2 * panel_button_pitch, panel_button_top + 4 * panel_row, panel_button_width, panel_button_height, "YUV422"},
        {panel.cmd_deep[0], "cmd_deep(0)", &panel.fra_setup, panel_button_left, panel_button_top + 5 * panel_row, panel_button_width, panel_button_height, "8 BIT"},
        {panel.cmd_deep[1], "cmd_deep(1)", &panel.fra_setup, panel_button_left + panel_button_pitch, panel_button_top + 5 * panel_row, panel_button_width, panel_button_height, "10 BIT"},
        {panel.cmd_deep[2], "cmd_deep(2)", &panel.fra_setup, panel_button_left + 2 * panel_button_pitch, panel_button_top + 5 * panel_row, panel_button_width, panel_button_height, "12 BIT"},
        {panel.cmd_auto_go[0], "cmd_auto_go(0)", &panel.fra_setup, panel_button_left, panel_button_top + 6 * panel_row, panel_button_width, panel_button_height, "OFF"},
        {panel.cmd_auto_go[1], "cmd_auto_go(1)", &panel.fra_setup, panel_button_left + panel_button_pitch, panel_button_top + 6 * panel_row, panel_button_width, panel_button_height, "ON"},
        {panel.cmd_fav[0], "cmd_fav(0)", &panel.fra_setup, panel_button_left, panel_button_top + 7 * panel_row, panel_button_width, panel_button_height, "OFF"},
        {panel.cmd_fav[1], "cmd_fav(1)", &panel.fra_setup, panel_button_left + panel_button_pitch, panel_button_top + 7 * panel_row, panel_button_width, panel_button_height, "ON"},
        {panel.cmd_reset, "cmd_reset", &panel.fra_setup, panel_button_left, panel_button_top + 8 * panel_row, panel_button_width, panel_button_height, "Reset"},

        {autorun.fra_auto, "fra_auto", in_window, area_left, area_top, area_width, area_height, "Autorun Config", hidden | view_frame},
        {autorun.lab_auto, "lab_auto", &autorun.fra_auto, margin, note_top, 8730, note_height},
        {autorun.lstv_auto, "lstv_auto", &autorun.fra_auto, margin, 2400, 8730, 4650},
        {catalogue.cbo_timing, "cbo_timing", &autorun.fra_auto, step_timing, step_top, 2880, button_height},
        {catalogue.cbo_pattern, "cbo_pattern", &autorun.fra_auto, step_pattern, step_top, 3180, button_height},
        {autorun.cbo_interval, "cbo_interval", &autorun.fra_auto, step_interval, step_top, 1860, button_height},
        {autorun.cmd_replace, "cmd_replace", &autorun.fra_auto, step_timing, 7770, 1740, button_height, "Add / Replace"},
        {autorun.cmd_delete, "cmd_delete", &autorun.fra_auto, 2730, 7770, button_width, button_height, "Delete"},

        {workbench.fra_edid, "fra_edid", in_window, area_left, area_top, area_width, area_height, "EDID Read / Write", hidden | view_frame},
        {workbench.lab_edid_src, "lab_edid_src", &workbench.fra_edid, 2580, 60, 840, 330, "Source :", in_middle},
        {workbench.opt_edid_src[0], "opt_edid_src(1)", &workbench.fra_edid, 3480, 60, 1920, 330, "HDMI/DVI  OUT"},
        {workbench.opt_edid_src[1], "opt_edid_src(2)", &workbench.fra_edid, 5640, 60, 1680, 330, "HDMI/DVI  IN"},
        {workbench.opt_edid_src[2], "opt_edid_src(3)", &workbench.fra_edid, 7590, 60, 1320, 330, "VGA  OUT"},

        {workbench.lab_write, "lab_write", &workbench.fra_edid, write_left, 435, 2400, line_height, "WRITE"},
        {workbench.txt_write, "txt_write", &workbench.fra_edid, write_left, text_top, side_width, text_height, "", locked | multi_line | fixed_pitch | any_length},
        {workbench.lab_w_checksum, "lab_w_checksum", &workbench.fra_edid, write_left, sum_top, sum_left, button_height, "Checksum", small_print | in_middle},
        {workbench.lab_write_checksum[0], "lab_write_checksum(0)", &workbench.fra_edid, write_left + sum_left, sum_top, 2820, button_height, "BK0", small_print | in_middle},
        {workbench.lab_write_checksum[1], "lab_write_checksum(1)", &workbench.fra_edid, write_left + sum_left, sum_top + button_height, 2820, button_height, "BK1", small_print | in_middle},
        {workbench.cmd_recover[0], "cmd_recover(0)", &workbench.fra_edid, 4020, sum_top, 420, button_height, "R", hidden},
        {workbench.cmd_recover[1], "cmd_recover(1)", &workbench.fra_edid, 4020, sum_top + button_height, 420, button_height, "R", hidden},
        {workbench.cmd_load, "cmd_load", &workbench.fra_edid, write_left, side_buttons_top, side_button, button_height, "OPEN"},
        {workbench.cmd_pre_f, "cmd_pre_f", &workbench.fra_edid, write_left + side_pitch, side_buttons_top, side_button, button_height, "Pre-F"},
        {workbench.cmd_clear_file, "cmd_clear_file", &workbench.fra_edid, write_left + 2 * side_pitch, side_buttons_top, side_button, button_height, "CLEAR"},
        {workbench.cmd_save_write, "cmd_save_write", &workbench.fra_edid, write_left + 3 * side_pitch, side_buttons_top, side_button, button_height, "SAVE"},
        {workbench.cmd_write, "cmd_write", &workbench.fra_edid, write_left, side_buttons_top + side_row, side_button, button_height, "WRITE", disabled},
        {workbench.cmd_verify, "cmd_verify", &workbench.fra_edid, write_left + side_pitch, side_buttons_top + side_row, side_button, button_height, "VERIFY", disabled},
        {workbench.cmd_w_auto, "cmd_w_auto", &workbench.fra_edid, write_left + 2 * side_pitch, side_buttons_top + side_row, side_button, button_height, "AUTO", disabled},
        {workbench.cmd_erase, "cmd_erase", &workbench.fra_edid, write_left + 3 * side_pitch, side_buttons_top + side_row, side_button, button_height, "ERASE"},
        {workbench.cmd_write_translate, "cmd_write_translate", &workbench.fra_edid, write_left, side_buttons_top + 2 * side_row, side_button, button_height, "TRANS", disabled},
        {workbench.cmd_sum_write, "cmd_sum_write", &workbench.fra_edid, write_left + side_pitch, side_buttons_top + 2 * side_row, side_button, button_height, "SUM", disabled},

        {workbench.lab_read, "lab_read", &workbench.fra_edid, read_left - two_spaces, 435, 2400, line_height, "  READ"},
        {workbench.txt_read, "txt_read", &workbench.fra_edid, read_left, text_top, side_width, text_height, "", locked | multi_line | fixed_pitch | any_length},
        {workbench.lab_r_checksum, "lab_r_checksum", &workbench.fra_edid, read_left, sum_top, sum_left, button_height, "Checksum", small_print | in_middle},
        {workbench.lab_read_checksum[0], "lab_read_checksum(0)", &workbench.fra_edid, read_left + sum_left, sum_top, side_width - sum_left, button_height, "BK0", small_print | in_middle},
        {workbench.lab_read_checksum[1], "lab_read_checksum(1)", &workbench.fra_edid, read_left + sum_left, sum_top + button_height, side_width - sum_left, button_height, "BK1", small_print | in_middle},
        {workbench.cmd_read, "cmd_read", &workbench.fra_edid, read_left, side_buttons_top, side_button, button_height, "READ"},
        {workbench.cmd_compare, "cmd_compare", &workbench.fra_edid, read_left + side_pitch, side_buttons_top, side_button, button_height, "COMP"},
        {workbench.cmd_clear_read, "cmd_clear_read", &workbench.fra_edid, read_left + 2 * side_pitch, side_buttons_top, side_button, button_height, "CLEAR"},
        {workbench.cmd_save_read, "cmd_save_read", &workbench.fra_edid, read_left + 3 * side_pitch, side_buttons_top, side_button, button_height, "SAVE"},
        {workbench.cmd_read_translate, "cmd_read_translate", &workbench.fra_edid, read_left, side_buttons_top + side_row, side_button, button_height, "TRANS", disabled},
        {workbench.cmd_sum_read, "cmd_sum_read", &workbench.fra_edid, read_left + side_pitch, side_buttons_top + side_row, side_button, button_height, "SUM", disabled},

        {workbench.fra_pre_f, "fra_pre_f", &workbench.fra_edid, margin, 2700, 8730, 3930, "Previuos Files", hidden | overlay_frame},
        {workbench.lab_pre_f[0], "lab_pre_f(0)", &workbench.fra_pre_f, margin, 480, 8370, 300, "", in_middle},
        {workbench.lab_pre_f[1], "lab_pre_f(1)", &workbench.fra_pre_f, margin, 810, 8370, 300, "", in_middle},
        {workbench.lab_pre_f[2], "lab_pre_f(2)", &workbench.fra_pre_f, margin, 1140, 8370, 300, "", in_middle},
        {workbench.lab_pre_f[3], "lab_pre_f(3)", &workbench.fra_pre_f, margin, 1470, 8370, 300, "", in_middle},
        {workbench.lab_pre_f[4], "lab_pre_f(4)", &workbench.fra_pre_f, margin, 1800, 8370, 300, "", in_middle},
        {workbench.lab_pre_f[5], "lab_pre_f(5)", &workbench.fra_pre_f, margin, 2130, 8370, 300, "", in_middle},
        {workbench.lab_pre_f[6], "lab_pre_f(6)", &workbench.fra_pre_f, margin, 2460, 8370, 300, "", in_middle},
        {workbench.lab_pre_f[7], "lab_pre_f(7)", &workbench.fra_pre_f, margin, 2790, 8370, 300, "", in_middle},
        {workbench.lab_pre_f[8], "lab_pre_f(8)", &workbench.fra_pre_f, margin, 3120, 8370, 300, "", in_middle},
        {workbench.lab_pre_f[9], "lab_pre_f(9)", &workbench.fra_pre_f, margin, 3450, 8370, 300, "", in_middle},

        {workbench.fra_compare, "fra_compare", &workbench.fra_edid, 1920, 1800, 5250, 2880, "COMPARE", hidden | overlay_frame},
        {workbench.txt_msg, "txt_msg", &workbench.fra_compare, 240, 510, 4770, 1440, "", locked | multi_line},
        {workbench.lab_pass, "lab_pass", &workbench.fra_compare, 240, 2130, 2400, 600, "", large_bold | in_middle},
        {workbench.cmd_ok, "cmd_ok", &workbench.fra_compare, 3630, 2220, button_width, button_height, "OK"},

        {translation_frame.fra_edid_edit, "fra_edid_edit", &workbench.fra_edid, margin, 15, 8730, area_height - 30, "Translate [ Read ] EDID", hidden | page_frame},
        {translation_frame.cmd_edid_report, "cmd_edid_report", &translation_frame.fra_edid_edit, 90, 420, 1500, button_height, "Report"},
        {translation_frame.cmd_edid_back, "cmd_edid_back", &translation_frame.fra_edid_edit, 5760, 420, 2805, button_height, "Back to [EDID Read/Write]"},
        {translation_frame.tree_edid, "tree_edid", &translation_frame.fra_edid_edit, 90, 900, 3585, 7125},
        {translation_frame.txt_edid, "txt_edid", &translation_frame.fra_edid_edit, 3780, 900, 4785, 7125, "", locked | multi_line | fixed_pitch | on_grid},
    });

    for (std::size_t i = 0; i < translation_frame.chk_established.size(); ++i) {
        const int n = static_cast<int>(i);
        const int top = n < 8 ? 1230 + 270 * n : n < 16 ? 3900 + 270 * (n - 8) : 6570;
        const std::string name = "chk_established(" + std::to_string(n) + ")";
        lay_out(form, {{translation_frame.chk_established.at(i), name.c_str(), &translation_frame.fra_edid_edit, 4080, top, 1845, 240, "", hidden}});
        translation_frame.chk_established.at(i).caption = std::string(established_timings.at(i).name);
    }

    lay_out(form, {
        {translation_frame.pic_speaker_fl, "pic_speaker_fl", &translation_frame.fra_edid_edit, 4350, 1230, 450, 375, "", hidden},
        {translation_frame.pic_speaker_flc, "pic_speaker_flc", &translation_frame.fra_edid_edit, 5040, 1170, 375, 450, "", hidden},
        {translation_frame.pic_speaker_fc, "pic_speaker_fc", &translation_frame.fra_edid_edit, 5670, 1170, 375, 450, "", hidden},
        {translation_frame.pic_speaker_frc, "pic_speaker_frc", &translation_frame.fra_edid_edit, 6300, 1170, 375, 450, "", hidden},
        {translation_frame.pic_speaker_fr, "pic_speaker_fr", &translation_frame.fra_edid_edit, 6930, 1230, 450, 375, "", hidden},
        {translation_frame.pic_speaker_lfe, "pic_speaker_lfe", &translation_frame.fra_edid_edit, 7200, 1740, 375, 450, "", hidden},
        {translation_frame.pic_speaker_rl, "pic_speaker_rl", &translation_frame.fra_edid_edit, 4350, 2640, 450, 375, "", hidden},
        {translation_frame.pic_speaker_rlc, "pic_speaker_rlc", &translation_frame.fra_edid_edit, 5040, 2640, 375, 450, "", hidden},
        {translation_frame.pic_speaker_rc, "pic_speaker_rc", &translation_frame.fra_edid_edit, 5670, 2640, 375, 450, "", hidden},
        {translation_frame.pic_speaker_rrc, "pic_speaker_rrc", &translation_frame.fra_edid_edit, 6300, 2640, 375, 450, "", hidden},
        {translation_frame.pic_speaker_rr, "pic_speaker_rr", &translation_frame.fra_edid_edit, 6930, 2640, 375, 450, "", hidden},

        {d.cmd_run, "cmd_run", in_window, 7140, 2100, 1200, 720, "&SET", hidden},
        {d.cmd_download, "cmd_download", in_window, download_left_beside_list, download_top_beside_list, button_width, button_height, "Do&wnload", hidden},

        {about.fra_about, "fra_about", in_window, 4365, 3000, 5400, 2760, "Software / Firmware Versions", hidden | overlay_frame},
        {about.lab_about, "lab_about", &about.fra_about, 240, 600, 4920, 1200, "", fixed_pitch},
        {about.lab_ver, "lab_ver", &about.fra_about, 240, 2100, 1800, button_height, "", in_middle},
        {about.cmd_about_ok, "cmd_about_ok", &about.fra_about, 3780, 2100, button_width, button_height, "OK"},

        {exchange.tim_rx, "tim_rx", in_window, 0, 0, 0, 0},
    });
    // clang-format on

    for (label* figures : {&d.lab_hori, &d.lab_vert})
        figures->line_pitch = figures_pitch;
    panel.lab_setup.line_pitch = panel_pitch;
    for (label* readout :
         {&status_frame.lab_timing, &status_frame.lab_pattern, &status_frame.lab_out, &status_frame.lab_hdcp})
        readout->back_color = color_readout;
    img_logo.file = "start_picture";
    workbench.opt_edid_src[0].value = true;
    for (picture* p :
         {&translation_frame.pic_speaker_fl, &translation_frame.pic_speaker_flc, &translation_frame.pic_speaker_fc,
          &translation_frame.pic_speaker_frc, &translation_frame.pic_speaker_fr, &translation_frame.pic_speaker_lfe,
          &translation_frame.pic_speaker_rl, &translation_frame.pic_speaker_rlc, &translation_frame.pic_speaker_rc,
          &translation_frame.pic_speaker_rrc, &translation_frame.pic_speaker_rr})
        p->file = p->name.substr(4);
}

} // namespace desk
