#include "signal/catalogue.h"

#include "runtime/failure.h"
#include "runtime/list_format.h"
#include "runtime/numbers.h"
#include "runtime/text.h"
#include "runtime/windows_1252.h"

namespace desk {

namespace {

// the figures of a timing in lstv_timing_sub; htotal is the row's text
enum figure { hactive = 1, hdelay, hsw, hpol, vtotal, vactive, vdelay, vsw, vpol, pix_f };

} // namespace

catalogue::catalogue(exchange& link, desk_frame& desk, status_frame& status)
    : exchange_(link), desk_frame_(desk), status_(status) {
    lstv_timing.columns = {{"Timings", 2400}};
    lstv_pattern.columns = {{"Patterns", 2400}};
    for (const char* title :
         {"htotal", "hactive", "hdelay", "hsw", "hpol", "vtotal", "vactive", "vdelay", "vsw", "vpol", "pix_f"})
        lstv_timing_sub.columns.push_back({title, 600});

    cmd_timing.on_click = [this] { cmd_timing_click(); };
    cmd_pattern.on_click = [this] { cmd_pattern_click(); };
    lstv_timing.on_click = [this] { lstv_timing_click(); };
    lstv_timing.on_key_up = [this] { lstv_timing_click(); };
    lstv_pattern.on_click = [this] { lstv_pattern_click(); };
    lstv_pattern.on_key_up = [this] { lstv_pattern_click(); };
    desk_frame_.cmd_check_all.on_click = [this] { cmd_check_all_click(); };
    desk_frame_.cmd_check_none.on_click = [this] { cmd_check_none_click(); };
    exchange_.selected_pattern = [this] { return lstv_pattern.selected(); };
}

void catalogue::load(std::string_view text) {
    list_reader values(text);
    exchange_.fav_timing_count =
        while_doing([] { return "the number of timings"; }, [&] { return values.read_integer(); });
    for (int i = 1; i <= exchange_.fav_timing_count; ++i) {
        while_doing([&] { return "timing" + str(i); },
                    [&] {
                        const std::string name = as_utf8(values.read_string());
                        lstv_timing.add_row(name);
                        cbo_timing.add_item(name, i - 1);
                        lstv_timing_sub.add_row(number_text(values.read_integer()));
                        for (const int f : {hactive, hdelay, hsw})
                            lstv_timing_sub.set_sub_item(i, f, number_text(values.read_integer()));
                        lstv_timing_sub.set_sub_item(i, hpol, as_utf8(values.read_string()));
                        for (const int f : {vtotal, vactive, vdelay, vsw})
                            lstv_timing_sub.set_sub_item(i, f, number_text(values.read_integer()));
                        lstv_timing_sub.set_sub_item(i, vpol, as_utf8(values.read_string()));
                        lstv_timing_sub.set_sub_item(i, pix_f, number_text(values.read_single()));
                    });
    }
    exchange_.fav_pattern_count =
        while_doing([] { return "the number of patterns"; }, [&] { return values.read_integer(); });
    for (int i = 1; i <= exchange_.fav_pattern_count; ++i) {
        while_doing([&] { return "pattern" + str(i); },
                    [&] {
                        const std::string name = as_utf8(values.read_string());
                        lstv_pattern.add_row(name);
                        cbo_pattern.add_item(name, i - 1);
                    });
    }
}

void catalogue::show_timing_detail() {
    const int r = lstv_timing.selected();
    desk_frame& d = desk_frame_;
    d.fra_desk.caption = lstv_timing.text(r);
    d.txt_htotal_pix.text = lstv_timing_sub.text(r);
    d.txt_hactive_pix.text = lstv_timing_sub.sub_item(r, hactive);
    d.txt_hdelay_pix.text = lstv_timing_sub.sub_item(r, hdelay);
    d.txt_hsw_pix.text = lstv_timing_sub.sub_item(r, hsw);
    d.txt_hpol.text = lstv_timing_sub.sub_item(r, hpol);
    d.txt_vtotal_line.text = lstv_timing_sub.sub_item(r, vtotal);
    d.txt_vactive_line.text = lstv_timing_sub.sub_item(r, vactive);
    d.txt_vdelay_line.text = lstv_timing_sub.sub_item(r, vdelay);
    d.txt_vsw_line.text = lstv_timing_sub.sub_item(r, vsw);
    d.txt_vpol.text = lstv_timing_sub.sub_item(r, vpol);
    d.txt_pix_f.text = format_hash(val(lstv_timing_sub.sub_item(r, pix_f)));

    const double f = static_cast<float>(val(lstv_timing_sub.sub_item(r, pix_f)));
    const auto number_in = [](const text_box& box) { return val(box.text.get()); };
    const double htotal = number_in(d.txt_htotal_pix);
    const auto us = [&](const text_box& pixels) { return format_zero(divide(number_in(pixels), f)); };
    const auto ms = [&](const text_box& lines) { return format_zero(divide(number_in(lines) * htotal, f) / 1000); };
    // a row with a zero in pix_f, htotal or vtotal ends the program here
    while_doing([&] { return "Showing the figures of " + lstv_timing.text(r); },
                [&] {
                    d.txt_htotal_us.text = us(d.txt_htotal_pix);
                    d.txt_hactive_us.text = us(d.txt_hactive_pix);
                    d.txt_hdelay_us.text = us(d.txt_hdelay_pix);
                    d.txt_hsw_us.text = us(d.txt_hsw_pix);
                    d.txt_vtotal_ms.text = ms(d.txt_vtotal_line);
                    d.txt_vactive_ms.text = ms(d.txt_vactive_line);
                    d.txt_vdelay_ms.text = ms(d.txt_vdelay_line);
                    d.txt_vsw_ms.text = ms(d.txt_vsw_line);
                    d.txt_hf.text = format_hash(divide(f, htotal) * 1000);
                    d.txt_vf.text = format_hash(divide(f, number_in(d.txt_vtotal_line) * htotal) * 1000000);
                });

    d.fra_hori.visible = true;
    d.fra_vert.visible = true;
    d.lab_pix_clock.visible = true;
    d.txt_pix_f.visible = true;
}

void catalogue::show_pattern_extras() {
    const int r = lstv_pattern.selected();
    std::string note = "Select a pattern in pattern table.\r\n"
                       "Press [SET] to upload the selected pattern to VELOTRACE.";
    desk_frame_.cmd_download.visible = r == motion_string_pattern || r == color_setting_pattern;
    show_motion_set(r == motion_string_pattern);
    show_color_set(r == color_setting_pattern);
    if (r == motion_string_pattern) note += "\r\nPress [Download] to get VELOTRACE's custom string";
    if (r == color_setting_pattern) note += "\r\nPress [Download] to get VELOTRACE's Color Settings.";
    desk_frame_.lab_desk_note.caption = note;
}

void catalogue::show_motion_set(bool shown) {
    desk_frame_.txt_motion_str.visible = shown;
    desk_frame_.lab_motion_str.visible = shown;
    desk_frame_.cmd_upload.visible = shown;
}

void catalogue::show_color_set(bool shown) {
    for (std::size_t i = 0; i < desk_frame_.hsr_color_setting.size(); ++i) {
        desk_frame_.hsr_color_setting.at(i).visible = shown;
        desk_frame_.lab_color_setting.at(i).visible = shown;
        desk_frame_.txt_color_setting.at(i).visible = shown;
        if (!shown) continue;
        // disabled until a download has filled them
        desk_frame_.lab_color_setting.at(i).caption = "?";
        desk_frame_.txt_color_setting.at(i).text = "";
        desk_frame_.txt_color_setting.at(i).enabled = false;
        desk_frame_.hsr_color_setting.at(i).enabled = false;
    }
}

void catalogue::cmd_timing_click() {
    change_view(view::timing_select);
    if (cur_timing != not_known) {
        lstv_timing.select(cur_timing);
        status_.lab_timing.caption = lstv_timing.text(cur_timing);
    }
    show_timing_detail();
    lstv_timing.check_boxes = false;
    desk_frame_.lab_desk_note.caption = "Select a timing in timing table.\r\n"
                                        "Press [SET] to upload the selected timing to VELOTRACE.";
    desk_frame_.lab_desk_note.visible = true;
    desk_frame_.fra_desk.visible = true;
    desk_frame_.cmd_run.visible = true;
    lstv_timing.visible = true;
    exchange_.host().events.pump();
    lstv_timing.set_focus();
}

void catalogue::cmd_pattern_click() {
    change_view(view::pattern_select);
    if (cur_pattern != not_known) {
        lstv_pattern.select(cur_pattern);
        status_.lab_pattern.caption = lstv_pattern.text(cur_pattern);
    }
    desk_frame_.cmd_download.left = download_left_beside_list;
    desk_frame_.cmd_download.top = download_top_beside_list;
    show_pattern_extras();
    desk_frame_.fra_desk.caption = lstv_pattern.text(lstv_pattern.selected());
    lstv_pattern.check_boxes = false;
    desk_frame_.lab_desk_note.visible = true;
    desk_frame_.fra_desk.visible = true;
    desk_frame_.cmd_run.visible = true;
    lstv_pattern.visible = true;
    exchange_.host().events.pump();
    lstv_pattern.set_focus();
}

void catalogue::lstv_timing_click() {
    if (exchange_.view_mode == view::timing_select) show_timing_detail();
}

void catalogue::lstv_pattern_click() {
    if (exchange_.view_mode != view::pattern_select) return;
    desk_frame_.fra_desk.caption = lstv_pattern.text(lstv_pattern.selected());
    show_pattern_extras();
}

void catalogue::cmd_check_all_click() { check_rows(true); }

void catalogue::cmd_check_none_click() { check_rows(false); }

void catalogue::check_rows(bool checked) {
    if (exchange_.view_mode == view::favorite_timing) {
        for (int i = 1; i <= exchange_.fav_timing_count; ++i)
            lstv_timing.set_checked(i, checked);
    } else if (exchange_.view_mode == view::favorite_pattern) {
        for (int i = 1; i <= exchange_.fav_pattern_count; ++i)
            lstv_pattern.set_checked(i, checked);
    }
}

} // namespace desk
