#include "controls/layout.h"
#include "shell/frm_main.h"
#include "translate/decode/established.h"

namespace desk {

namespace {

// the column of view buttons, and the area that all views share
constexpr int column_left = 90;
constexpr int column_width = 2340;
constexpr int area_left = 2520;
constexpr int area_top = 600;
constexpr int area_width = 9090;
constexpr int area_height = 8370;

constexpr int button_height = 420;
constexpr int list_width = 2970;
constexpr int desk_left = area_left + list_width + 60;
constexpr int desk_width = area_width - list_width - 60;

// the rows of the timing figures and of the panel stand two label lines apart
constexpr int row = 2 * label_line_pitch;

// the boxes stand in the gaps that the blanks of lab_hori and lab_vert leave, 120 twips a character
constexpr int figures_label_left = 240;
constexpr int figures_label_top = 330;
constexpr int figures_box_1 = 1830;
constexpr int figures_box_1_width = 900;
constexpr int figures_box_2 = 3420;
constexpr int figures_box_2_width = 960;
constexpr int figures_box_top = 285;
constexpr int figures_box_height = 315;

constexpr color color_desk = 0xB4B4B4;
constexpr color color_readout = 0xE8E8E8;

constexpr int panel_label_top = 780;
constexpr int panel_button_top = panel_label_top + 6 * label_line_pitch - 90;
constexpr int panel_button_left = 2400;
constexpr int panel_button_pitch = 1500;
constexpr int panel_button_width = 1380;
constexpr int panel_button_height = 390;

} // namespace

void frm_main::lay_out_controls() {
    form.name = "frm_main";
    form.width = 11700;
    form.height = 9090;

    desk_frame& d = desk_area;
    frame* const in_window = nullptr;

    // clang-format off
    lay_out(form, {
        {lab_desk, "lab_desk", in_window, area_left, area_top, area_width, area_height},
        {line_rs232, "line_rs232", in_window, column_left, 540, 11520, 0},
        {img_logo, "img_logo", in_window, area_left, area_top, area_width, area_height},

        {link.lab_com, "lab_com", in_window, column_left, 180, 1140, 240, "  RS232 Port"},
        {link.cbo_com, "cbo_com", in_window, 1290, 120, 1140, 360},
        {link.cmd_conn, "cmd_conn", in_window, area_left, 120, 1380, 360, "&Connect"},
        {link.cmd_disconn, "cmd_disconn", in_window, 3960, 120, 1380, 360, "&Disconnect"},
        {about_view.cmd_about, "cmd_about", in_window, 10230, 120, 1380, 360, "A&bout"},

        {rows.cmd_timing, "cmd_timing", in_window, column_left, 660, column_width, button_height, "&Timing Select"},
        {rows.cmd_pattern, "cmd_pattern", in_window, column_left, 1140, column_width, button_height, "&Pattern Select"},
        {favourite_views.cmd_fav_timing, "cmd_fav_timing", in_window, column_left, 1620, column_width, button_height, "&Favorite Timing"},
        {favourite_views.cmd_fav_pattern, "cmd_fav_pattern", in_window, column_left, 2100, column_width, button_height, "Fa&vorite Pattern"},
        {cmd_edid, "cmd_edid", in_window, column_left, 2580, column_width, button_height, "&EDID Read/Write"},
        {autorun_view.cmd_auto, "cmd_auto", in_window, column_left, 3060, column_width, button_height, "&Autorun Config"},
        {cmd_setup, "cmd_setup", in_window, column_left, 3540, column_width, button_height, "Pa&nel Control"},

        {status.fra_status, "fra_status", in_window, column_left, 4140, column_width, 4830, "VELOTRACE OUT Status"},
        {status.lab_timing_lab, "lab_timing_lab", &status.fra_status, 120, 330, 2100, 240, "Timing : "},
        {status.lab_timing, "lab_timing", &status.fra_status, 120, 585, 2100, 525},
        {status.lab_pattern_lab, "lab_pattern_lab", &status.fra_status, 120, 1260, 2100, 240, "Pattern :"},
        {status.lab_pattern, "lab_pattern", &status.fra_status, 120, 1515, 2100, 525},
        {status.lab_out_lab, "lab_out_lab", &status.fra_status, 120, 2190, 2100, 240, "Output Format :"},
        {status.lab_out, "lab_out", &status.fra_status, 120, 2445, 2100, 300},
        {status.lab_hdcp_lab, "lab_hdcp_lab", &status.fra_status, 120, 2895, 2100, 240, "HDCP :"},
        {status.lab_hdcp, "lab_hdcp", &status.fra_status, 120, 3150, 2100, 300},
        {status.cmd_refresh, "cmd_refresh", &status.fra_status, 120, 4245, 2100, button_height, "&Refresh"},

        {rows.lstv_timing, "lstv_timing", in_window, area_left, area_top, list_width, area_height, "", hidden},
        {rows.lstv_timing_sub, "lstv_timing_sub", in_window, area_left, area_top, list_width, area_height, "", hidden},
        {rows.lstv_pattern, "lstv_pattern", in_window, area_left, area_top, list_width, area_height, "", hidden},

        {d.fra_desk, "fra_desk", in_window, desk_left, area_top, desk_width, area_height, "", hidden},
        {d.lab_desk_note, "lab_desk_note", &d.fra_desk, 120, 330, 5820, 960, "", hidden},
        {d.lab_pix_clock, "lab_pix_clock", &d.fra_desk, 3120, 1725, 2880, 225, "Pixel Clock:         MHz", hidden | fixed_pitch},
        {d.txt_pix_f, "txt_pix_f", &d.fra_desk, 4650, 1680, 960, figures_box_height, "", hidden | locked},

        {d.fra_hori, "fra_hori", &d.fra_desk, 120, 2250, 5820, 3000, "Horizontal", hidden},
        {d.lab_hori, "lab_hori", &d.fra_hori, figures_label_left, figures_label_top, 5460, 2610, "", fixed_pitch | row_pitch},
        {d.txt_htotal_pix, "txt_htotal_pix", &d.fra_hori, figures_box_1, figures_box_top, figures_box_1_width, figures_box_height, "", locked},
        {d.txt_hactive_pix, "txt_hactive_pix", &d.fra_hori, figures_box_1, figures_box_top + row, figures_box_1_width, figures_box_height, "", locked},
        {d.txt_hdelay_pix, "txt_hdelay_pix", &d.fra_hori, figures_box_1, figures_box_top + 2 * row, figures_box_1_width, figures_box_height, "", locked},
        {d.txt_hsw_pix, "txt_hsw_pix", &d.fra_hori, figures_box_1, figures_box_top + 3 * row, figures_box_1_width, figures_box_height, "", locked},
        {d.txt_htotal_us, "txt_htotal_us", &d.fra_hori, figures_box_2, figures_box_top, figures_box_2_width, figures_box_height, "", locked},
        {d.txt_hactive_us, "txt_hactive_us", &d.fra_hori, figures_box_2, figures_box_top + row, figures_box_2_width, figures_box_height, "", locked},
        {d.txt_hdelay_us, "txt_hdelay_us", &d.fra_hori, figures_box_2, figures_box_top + 2 * row, figures_box_2_width, figures_box_height, "", locked},
        {d.txt_hsw_us, "txt_hsw_us", &d.fra_hori, figures_box_2, figures_box_top + 3 * row, figures_box_2_width, figures_box_height, "", locked},
        {d.txt_hpol, "txt_hpol", &d.fra_hori, figures_box_1, figures_box_top + 4 * row, figures_box_1_width, figures_box_height, "", locked},
        {d.txt_hf, "txt_hf", &d.fra_hori, figures_box_1, figures_box_top + 5 * row, figures_box_1_width, figures_box_height, "", locked},

        {d.fra_vert, "fra_vert", &d.fra_desk, 120, 5310, 5820, 3000, "Vertical", hidden},
        {d.lab_vert, "lab_vert", &d.fra_vert, figures_label_left, figures_label_top, 5460, 2610, "", fixed_pitch | row_pitch},
        {d.txt_vtotal_line, "txt_vtotal_line", &d.fra_vert, figures_box_1, figures_box_top, figures_box_1_width, figures_box_height, "", locked},
        {d.txt_vactive_line, "txt_vactive_line", &d.fra_vert, figures_box_1, figures_box_top + row, figures_box_1_width, figures_box_height, "", locked},
        {d.txt_vdelay_line, "txt_vdelay_line", &d.fra_vert, figures_box_1, figures_box_top + 2 * row, figures_box_1_width, figures_box_height, "", locked},
        {d.txt_vsw_line, "txt_vsw_line", &d.fra_vert, figures_box_1, figures_box_top + 3 * row, figures_box_1_width, figures_box_height, "", locked},
        {d.txt_vtotal_ms, "txt_vtotal_ms", &d.fra_vert, figures_box_2, figures_box_top, figures_box_2_width, figures_box_height, "", locked},
        {d.txt_vactive_ms, "txt_vactive_ms", &d.fra_vert, figures_box_2, figures_box_top + row, figures_box_2_width, figures_box_height, "", locked},
        {d.txt_vdelay_ms, "txt_vdelay_ms", &d.fra_vert, figures_box_2, figures_box_top + 2 * row, figures_box_2_width, figures_box_height, "", locked},
        {d.txt_vsw_ms, "txt_vsw_ms", &d.fra_vert, figures_box_2, figures_box_top + 3 * row, figures_box_2_width, figures_box_height, "", locked},
        {d.txt_vpol, "txt_vpol", &d.fra_vert, figures_box_1, figures_box_top + 4 * row, figures_box_1_width, figures_box_height, "", locked},
        {d.txt_vf, "txt_vf", &d.fra_vert, figures_box_1, figures_box_top + 5 * row, figures_box_1_width, figures_box_height, "", locked},

        {d.lab_color_setting[0], "lab_color_setting(0)", &d.fra_desk, 240, 2940, 780, 240, "?", hidden},
        {d.hsr_color_setting[0], "hsr_color_setting(0)", &d.fra_desk, 1080, 2910, 3600, 300, "", hidden | disabled},
        {d.txt_color_setting[0], "txt_color_setting(0)", &d.fra_desk, 4860, 2895, 780, 330, "", hidden | disabled},
        {d.lab_color_setting[1], "lab_color_setting(1)", &d.fra_desk, 240, 3540, 780, 240, "?", hidden},
        {d.hsr_color_setting[1], "hsr_color_setting(1)", &d.fra_desk, 1080, 3510, 3600, 300, "", hidden | disabled},
        {d.txt_color_setting[1], "txt_color_setting(1)", &d.fra_desk, 4860, 3495, 780, 330, "", hidden | disabled},
        {d.lab_color_setting[2], "lab_color_setting(2)", &d.fra_desk, 240, 4140, 780, 240, "?", hidden},
        {d.hsr_color_setting[2], "hsr_color_setting(2)", &d.fra_desk, 1080, 4110, 3600, 300, "", hidden | disabled},
        {d.txt_color_setting[2], "txt_color_setting(2)", &d.fra_desk, 4860, 4095, 780, 330, "", hidden | disabled},
        {d.lab_color_setting[3], "lab_color_setting(3)", &d.fra_desk, 240, 4740, 780, 240, "?", hidden},
        {d.hsr_color_setting[3], "hsr_color_setting(3)", &d.fra_desk, 1080, 4710, 3600, 300, "", hidden | disabled},
        {d.txt_color_setting[3], "txt_color_setting(3)", &d.fra_desk, 4860, 4695, 780, 330, "", hidden | disabled},

        {d.lab_motion_str, "lab_motion_str", &d.fra_desk, 240, 2940, 1320, 240, "Custom String", hidden},
        {d.txt_motion_str, "txt_motion_str", &d.fra_desk, 1620, 2895, 2100, 330, "", hidden},
        {d.cmd_upload, "cmd_upload", &d.fra_desk, 3840, 2850, 1380, button_height, "&Upload", hidden},

        {d.cmd_check_all, "cmd_check_all", &d.fra_desk, 90, 2310, 1380, button_height, "Check A&ll", hidden},
        {d.cmd_check_none, "cmd_check_none", &d.fra_desk, 1590, 2310, 1380, button_height, "Check N&one", hidden},

        {switches.fra_setup, "fra_setup", in_window, area_left, area_top, area_width, area_height, "Panel Control", hidden},
        {switches.lab_setup, "lab_setup", &switches.fra_setup, 240, panel_label_top, 8610, 5220, "", row_pitch},
        {switches.cmd_out[0], "cmd_out(0)", &switches.fra_setup, panel_button_left, panel_button_top, panel_button_width, panel_button_height, "PC"},
        {switches.cmd_out[1], "cmd_out(1)", &switches.fra_setup, panel_button_left + panel_button_pitch, panel_button_top, panel_button_width, panel_button_height, "HD"},
        {switches.cmd_out[2], "cmd_out(2)", &switches.fra_setup, panel_button_left + 2 * panel_button_pitch, panel_button_top, panel_button_width, panel_button_height, "DVI"},
        {switches.cmd_out[3], "cmd_out(3)", &switches.fra_setup, panel_button_left + 3 * panel_button_pitch, panel_button_top, panel_button_width, panel_button_height, "HDMI"},
        {switches.cmd_hdcp[0], "cmd_hdcp(0)", &switches.fra_setup, panel_button_left, panel_button_top + row, panel_button_width, panel_button_height, "OFF"},
        {switches.cmd_hdcp[1], "cmd_hdcp(1)", &switches.fra_setup, panel_button_left + panel_button_pitch, panel_button_top + row, panel_button_width, panel_button_height, "ON"},
        {switches.cmd_asc[0], "cmd_asc(0)", &switches.fra_setup, panel_button_left, panel_button_top + 2 * row, panel_button_width, panel_button_height, "EXT 7.1CH"},
        {switches.cmd_asc[1], "cmd_asc(1)", &switches.fra_setup, panel_button_left + panel_button_pitch, panel_button_top + 2 * row, panel_button_width, panel_button_height, "EXT OPT"},
        {switches.cmd_asc[2], "cmd_asc(2)", &switches.fra_setup, panel_button_left + 2 * panel_button_pitch, panel_button_top + 2 * row, panel_button_width, panel_button_height, "INT SINE"},
        {switches.cmd_lpcm[0], "cmd_lpcm(0)", &switches.fra_setup, panel_button_left, panel_button_top + 3 * row, panel_button_width, panel_button_height, "2 CH"},
        {switches.cmd_lpcm[1], "cmd_lpcm(1)", &switches.fra_setup, panel_button_left + panel_button_pitch, panel_button_top + 3 * row, panel_button_width, panel_button_height, "5.1 CH"},
        {switches.cmd_lpcm[2], "cmd_lpcm(2)", &switches.fra_setup, panel_button_left + 2 * panel_button_pitch, panel_button_top + 3 * row, panel_button_width, panel_button_height, "7.1 CH"},
        {switches.cmd_csc[0], "cmd_csc(0)", &switches.fra_setup, panel_button_left, panel_button_top + 4 * row, panel_button_width, panel_button_height, "RGB444"},
        {switches.cmd_csc[1], "cmd_csc(1)", &switches.fra_setup, panel_button_left + panel_button_pitch, panel_button_top + 4 * row, panel_button_width, panel_button_height, "YUV444"},
        {switches.cmd_csc[2], "cmd_csc(2)", &switches.fra_setup, panel_button_left + 2 * panel_button_pitch, panel_button_top + 4 * row, panel_button_width, panel_button_height, "YUV422"},
        {switches.cmd_deep[0], "cmd_deep(0)", &switches.fra_setup, panel_button_left, panel_button_top + 5 * row, panel_button_width, panel_button_height, "8 BIT"},
        {switches.cmd_deep[1], "cmd_deep(1)", &switches.fra_setup, panel_button_left + panel_button_pitch, panel_button_top + 5 * row, panel_button_width, panel_button_height, "10 BIT"},
        {switches.cmd_deep[2], "cmd_deep(2)", &switches.fra_setup, panel_button_left + 2 * panel_button_pitch, panel_button_top + 5 * row, panel_button_width, panel_button_height, "12 BIT"},
        {switches.cmd_auto_go[0], "cmd_auto_go(0)", &switches.fra_setup, panel_button_left, panel_button_top + 6 * row, panel_button_width, panel_button_height, "OFF"},
        {switches.cmd_auto_go[1], "cmd_auto_go(1)", &switches.fra_setup, panel_button_left + panel_button_pitch, panel_button_top + 6 * row, panel_button_width, panel_button_height, "ON"},
        {switches.cmd_fav[0], "cmd_fav(0)", &switches.fra_setup, panel_button_left, panel_button_top + 7 * row, panel_button_width, panel_button_height, "OFF"},
        {switches.cmd_fav[1], "cmd_fav(1)", &switches.fra_setup, panel_button_left + panel_button_pitch, panel_button_top + 7 * row, panel_button_width, panel_button_height, "ON"},
        {switches.cmd_reset, "cmd_reset", &switches.fra_setup, panel_button_left, panel_button_top + 8 * row, panel_button_width, panel_button_height, "Reset"},

        {autorun_view.fra_auto, "fra_auto", in_window, area_left, area_top, area_width, area_height, "Autorun Config", hidden},
        {autorun_view.lab_auto, "lab_auto", &autorun_view.fra_auto, 180, 330, 8700, 960},
        {autorun_view.lstv_auto, "lstv_auto", &autorun_view.fra_auto, 180, 2340, 8730, 4440},
        {rows.cbo_timing, "cbo_timing", &autorun_view.fra_auto, 180, 6990, 3420, 360},
        {rows.cbo_pattern, "cbo_pattern", &autorun_view.fra_auto, 3660, 6990, 3660, 360},
        {autorun_view.cbo_interval, "cbo_interval", &autorun_view.fra_auto, 7380, 6990, 1530, 360},
        {autorun_view.cmd_replace, "cmd_replace", &autorun_view.fra_auto, 180, 7560, 1740, button_height, "Add / Replace"},
        {autorun_view.cmd_delete, "cmd_delete", &autorun_view.fra_auto, 2040, 7560, 1380, button_height, "Delete"},

        {edid.fra_edid, "fra_edid", in_window, area_left, area_top, area_width, area_height, "EDID Read / Write", hidden},
        {edid.lab_write, "lab_write", &edid.fra_edid, 120, 330, 2400, 240, "WRITE"},
        {edid.txt_write, "txt_write", &edid.fra_edid, 120, 600, 4320, 4500, "", locked | multi_line | fixed_pitch | any_length},
        {edid.lab_w_checksum, "lab_w_checksum", &edid.fra_edid, 120, 5190, 2400, 240, "Checksum"},
        {edid.lab_write_checksum[0], "lab_write_checksum(0)", &edid.fra_edid, 120, 5475, 3780, 240, "BK0"},
        {edid.lab_write_checksum[1], "lab_write_checksum(1)", &edid.fra_edid, 120, 5865, 3780, 240, "BK1"},
        {edid.cmd_recover[0], "cmd_recover(0)", &edid.fra_edid, 4020, 5415, 420, 360, "R", hidden},
        {edid.cmd_recover[1], "cmd_recover(1)", &edid.fra_edid, 4020, 5805, 420, 360, "R", hidden},
        {edid.cmd_load, "cmd_load", &edid.fra_edid, 120, 6240, 1020, button_height, "OPEN"},
        {edid.cmd_pre_f, "cmd_pre_f", &edid.fra_edid, 1220, 6240, 1020, button_height, "Pre-F"},
        {edid.cmd_clear_file, "cmd_clear_file", &edid.fra_edid, 2320, 6240, 1020, button_height, "CLEAR"},
        {edid.cmd_save_write, "cmd_save_write", &edid.fra_edid, 3420, 6240, 1020, button_height, "SAVE"},
        {edid.cmd_write, "cmd_write", &edid.fra_edid, 120, 6720, 1020, button_height, "WRITE", disabled},
        {edid.cmd_verify, "cmd_verify", &edid.fra_edid, 1220, 6720, 1020, button_height, "VERIFY", disabled},
        {edid.cmd_w_auto, "cmd_w_auto", &edid.fra_edid, 2320, 6720, 1020, button_height, "AUTO", disabled},
        {edid.cmd_erase, "cmd_erase", &edid.fra_edid, 3420, 6720, 1020, button_height, "ERASE"},
        {edid.cmd_write_translate, "cmd_write_translate", &edid.fra_edid, 120, 7200, 1020, button_height, "TRANS", disabled},
        {edid.cmd_sum_write, "cmd_sum_write", &edid.fra_edid, 1220, 7200, 1020, button_height, "SUM", disabled},

        {edid.lab_read, "lab_read", &edid.fra_edid, 4650, 330, 2400, 240, "  READ"},
        {edid.txt_read, "txt_read", &edid.fra_edid, 4650, 600, 4320, 4500, "", locked | multi_line | fixed_pitch | any_length},
        {edid.lab_r_checksum, "lab_r_checksum", &edid.fra_edid, 4650, 5190, 2400, 240, "Checksum"},
        {edid.lab_read_checksum[0], "lab_read_checksum(0)", &edid.fra_edid, 4650, 5475, 4320, 240, "BK0"},
        {edid.lab_read_checksum[1], "lab_read_checksum(1)", &edid.fra_edid, 4650, 5865, 4320, 240, "BK1"},
        {edid.cmd_read, "cmd_read", &edid.fra_edid, 4650, 6240, 1020, button_height, "READ"},
        {edid.cmd_compare, "cmd_compare", &edid.fra_edid, 5750, 6240, 1020, button_height, "COMP"},
        {edid.cmd_clear_read, "cmd_clear_read", &edid.fra_edid, 6850, 6240, 1020, button_height, "CLEAR"},
        {edid.cmd_save_read, "cmd_save_read", &edid.fra_edid, 7950, 6240, 1020, button_height, "SAVE"},
        {edid.cmd_read_translate, "cmd_read_translate", &edid.fra_edid, 4650, 6720, 1020, button_height, "TRANS", disabled},
        {edid.cmd_sum_read, "cmd_sum_read", &edid.fra_edid, 5750, 6720, 1020, button_height, "SUM", disabled},

        {edid.lab_edid_src, "lab_edid_src", &edid.fra_edid, 120, 7860, 900, 240, "Source :"},
        {edid.opt_edid_src[0], "opt_edid_src(1)", &edid.fra_edid, 1080, 7830, 2100, 300, "HDMI/DVI  OUT"},
        {edid.opt_edid_src[1], "opt_edid_src(2)", &edid.fra_edid, 3240, 7830, 2100, 300, "HDMI/DVI  IN"},
        {edid.opt_edid_src[2], "opt_edid_src(3)", &edid.fra_edid, 5400, 7830, 2100, 300, "VGA  OUT"},

        {edid.fra_pre_f, "fra_pre_f", &edid.fra_edid, 120, 2640, 8850, 3480, "Previuos Files", hidden},
        {edid.lab_pre_f[0], "lab_pre_f(0)", &edid.fra_pre_f, 120, 300, 8610, 285},
        {edid.lab_pre_f[1], "lab_pre_f(1)", &edid.fra_pre_f, 120, 600, 8610, 285},
        {edid.lab_pre_f[2], "lab_pre_f(2)", &edid.fra_pre_f, 120, 900, 8610, 285},
        {edid.lab_pre_f[3], "lab_pre_f(3)", &edid.fra_pre_f, 120, 1200, 8610, 285},
        {edid.lab_pre_f[4], "lab_pre_f(4)", &edid.fra_pre_f, 120, 1500, 8610, 285},
        {edid.lab_pre_f[5], "lab_pre_f(5)", &edid.fra_pre_f, 120, 1800, 8610, 285},
        {edid.lab_pre_f[6], "lab_pre_f(6)", &edid.fra_pre_f, 120, 2100, 8610, 285},
        {edid.lab_pre_f[7], "lab_pre_f(7)", &edid.fra_pre_f, 120, 2400, 8610, 285},
        {edid.lab_pre_f[8], "lab_pre_f(8)", &edid.fra_pre_f, 120, 2700, 8610, 285},
        {edid.lab_pre_f[9], "lab_pre_f(9)", &edid.fra_pre_f, 120, 3000, 8610, 285},

        {edid.fra_compare, "fra_compare", &edid.fra_edid, 2280, 1620, 4530, 2760, "COMPARE", hidden},
        {edid.txt_msg, "txt_msg", &edid.fra_compare, 180, 330, 4170, 1320, "", locked | multi_line},
        {edid.lab_pass, "lab_pass", &edid.fra_compare, 180, 1860, 2400, 600, "", large_bold},
        {edid.cmd_ok, "cmd_ok", &edid.fra_compare, 2970, 2010, 1380, button_height, "OK"},

        {translation.fra_edid_edit, "fra_edid_edit", &edid.fra_edid, 0, 0, area_width, area_height, "Translate [ Read ] EDID", hidden},
        {translation.cmd_edid_report, "cmd_edid_report", &translation.fra_edid_edit, 90, 360, 1500, button_height, "Report"},
        {translation.cmd_edid_back, "cmd_edid_back", &translation.fra_edid_edit, 5760, 360, 2805, button_height, "Back to [EDID Read/Write]"},
        {translation.tree_edid, "tree_edid", &translation.fra_edid_edit, 90, 900, 3585, 7125},
        {translation.txt_edid, "txt_edid", &translation.fra_edid_edit, 3780, 900, 4785, 7125, "", locked | multi_line | fixed_pitch | on_grid},
    });

    for (std::size_t i = 0; i < translation.chk_established.size(); ++i) {
        const int n = static_cast<int>(i);
        const int top = n < 8 ? 1230 + 270 * n : n < 16 ? 3900 + 270 * (n - 8) : 6570;
        const std::string name = "chk_established(" + std::to_string(n) + ")";
        lay_out(form, {{translation.chk_established.at(i), name.c_str(), &translation.fra_edid_edit, 4080, top, 1845, 240, "", hidden}});
        translation.chk_established.at(i).caption = std::string(established_timings.at(i).name);
    }

    lay_out(form, {
        {translation.pic_speaker_fl, "pic_speaker_fl", &translation.fra_edid_edit, 4350, 1230, 450, 375, "", hidden},
        {translation.pic_speaker_flc, "pic_speaker_flc", &translation.fra_edid_edit, 5040, 1170, 375, 450, "", hidden},
        {translation.pic_speaker_fc, "pic_speaker_fc", &translation.fra_edid_edit, 5670, 1170, 375, 450, "", hidden},
        {translation.pic_speaker_frc, "pic_speaker_frc", &translation.fra_edid_edit, 6300, 1170, 375, 450, "", hidden},
        {translation.pic_speaker_fr, "pic_speaker_fr", &translation.fra_edid_edit, 6930, 1230, 450, 375, "", hidden},
        {translation.pic_speaker_lfe, "pic_speaker_lfe", &translation.fra_edid_edit, 7200, 1740, 375, 450, "", hidden},
        {translation.pic_speaker_rl, "pic_speaker_rl", &translation.fra_edid_edit, 4350, 2640, 450, 375, "", hidden},
        {translation.pic_speaker_rlc, "pic_speaker_rlc", &translation.fra_edid_edit, 5040, 2640, 375, 450, "", hidden},
        {translation.pic_speaker_rc, "pic_speaker_rc", &translation.fra_edid_edit, 5670, 2640, 375, 450, "", hidden},
        {translation.pic_speaker_rrc, "pic_speaker_rrc", &translation.fra_edid_edit, 6300, 2640, 375, 450, "", hidden},
        {translation.pic_speaker_rr, "pic_speaker_rr", &translation.fra_edid_edit, 6930, 2640, 375, 450, "", hidden},

        {d.cmd_run, "cmd_run", in_window, 7140, 2100, 1380, 675, "&SET", hidden},
        {d.cmd_download, "cmd_download", in_window, download_left_beside_list, download_top_beside_list, 1380, 375, "Do&wnload", hidden},

        {about_view.fra_about, "fra_about", in_window, 4080, 2700, 5400, 2940, "Software / Firmware Versions", hidden},
        {about_view.lab_about, "lab_about", &about_view.fra_about, 300, 480, 4800, 1500, "", fixed_pitch},
        {about_view.lab_ver, "lab_ver", &about_view.fra_about, 300, 2355, 1800, 240},
        {about_view.cmd_about_ok, "cmd_about_ok", &about_view.fra_about, 3720, 2280, 1380, button_height, "OK"},

        {link.tim_rx, "tim_rx", in_window, 0, 0, 0, 0},
    });
    // clang-format on

    lab_desk.back_color = color_desk;
    for (label* readout : {&status.lab_timing, &status.lab_pattern, &status.lab_out, &status.lab_hdcp})
        readout->back_color = color_readout;
    img_logo.file = "start_picture";
    edid.opt_edid_src[0].value = true;
    for (picture* p : {&translation.pic_speaker_fl, &translation.pic_speaker_flc, &translation.pic_speaker_fc,
                       &translation.pic_speaker_frc, &translation.pic_speaker_fr, &translation.pic_speaker_lfe,
                       &translation.pic_speaker_rl, &translation.pic_speaker_rlc, &translation.pic_speaker_rc,
                       &translation.pic_speaker_rrc, &translation.pic_speaker_rr})
        p->file = p->name.substr(4);
}

} // namespace desk
