#include "controls/layout.h"

#include "controls/list_view.h"
#include "shell/frm_main.h"
#include "support/desk_fixture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <functional>
#include <optional>
#include <set>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace desk {
namespace {

using kind = control_kind;

constexpr int pixel = 15;             // twips
constexpr int letter = 7 * pixel;     // a character of the one font, on the average
constexpr int fixed_cell = 8 * pixel; // a character of the fixed font

struct expected_control {
    const char* name;
    control_kind kind;
    const char* frame;             ///< empty: the window itself
    const char* caption = nullptr; ///< none: set later, or a kind without one
};

const expected_control all_controls[] = {
    {"cmd_timing", kind::button, "", "Timing Select"},
    {"cmd_pattern", kind::button, "", "Pattern Select"},
    {"cmd_fav_timing", kind::button, "", "Favorite Timing"},
    {"cmd_fav_pattern", kind::button, "", "Favorite Pattern"},
    {"cmd_edid", kind::button, "", "EDID Read/Write"},
    {"cmd_auto", kind::button, "", "Autorun Config"},
    {"cmd_setup", kind::button, "", "Panel Control"},
    {"lab_com", kind::label, "", "  RS232 Port"},
    {"cbo_com", kind::combo_box, ""},
    {"cmd_conn", kind::button, "", "Connect"},
    {"cmd_disconn", kind::button, "", "Disconnect"},
    {"cmd_about", kind::button, "", "About"},
    {"line_rs232", kind::line, ""},
    {"lab_desk", kind::label, ""},
    {"img_logo", kind::picture, ""},
    {"fra_status", kind::frame, "", "VELOTRACE OUT Status"},
    {"cmd_refresh", kind::button, "fra_status", "Refresh"},
    {"lab_timing_lab", kind::label, "fra_status", "Timing : "},
    {"lab_timing", kind::label, "fra_status", ""},
    {"lab_pattern_lab", kind::label, "fra_status", "Pattern :"},
    {"lab_pattern", kind::label, "fra_status", ""},
    {"lab_out_lab", kind::label, "fra_status", "Output Format :"},
    {"lab_out", kind::label, "fra_status", ""},
    {"lab_hdcp_lab", kind::label, "fra_status", "HDCP :"},
    {"lab_hdcp", kind::label, "fra_status", ""},
    {"lstv_timing", kind::list_view, ""},
    {"lstv_timing_sub", kind::list_view, ""},
    {"lstv_pattern", kind::list_view, ""},
    {"cmd_run", kind::button, "", "SET"},
    {"cmd_download", kind::button, "", "Download"},
    {"fra_desk", kind::frame, ""},
    {"lab_desk_note", kind::label, "fra_desk"},
    {"fra_hori", kind::frame, "fra_desk", "Horizontal"},
    {"lab_hori", kind::label, "fra_hori"},
    {"txt_htotal_pix", kind::text_box, "fra_hori"},
    {"txt_hactive_pix", kind::text_box, "fra_hori"},
    {"txt_hdelay_pix", kind::text_box, "fra_hori"},
    {"txt_hsw_pix", kind::text_box, "fra_hori"},
    {"txt_htotal_us", kind::text_box, "fra_hori"},
    {"txt_hactive_us", kind::text_box, "fra_hori"},
    {"txt_hdelay_us", kind::text_box, "fra_hori"},
    {"txt_hsw_us", kind::text_box, "fra_hori"},
    {"txt_hpol", kind::text_box, "fra_hori"},
    {"txt_hf", kind::text_box, "fra_hori"},
    {"fra_vert", kind::frame, "fra_desk", "Vertical"},
    {"lab_vert", kind::label, "fra_vert"},
    {"txt_vtotal_line", kind::text_box, "fra_vert"},
    {"txt_vactive_line", kind::text_box, "fra_vert"},
    {"txt_vdelay_line", kind::text_box, "fra_vert"},
    {"txt_vsw_line", kind::text_box, "fra_vert"},
    {"txt_vtotal_ms", kind::text_box, "fra_vert"},
    {"txt_vactive_ms", kind::text_box, "fra_vert"},
    {"txt_vdelay_ms", kind::text_box, "fra_vert"},
    {"txt_vsw_ms", kind::text_box, "fra_vert"},
    {"txt_vpol", kind::text_box, "fra_vert"},
    {"txt_vf", kind::text_box, "fra_vert"},
    {"lab_pix_clock", kind::label, "fra_desk", "Pixel Clock:         MHz"},
    {"txt_pix_f", kind::text_box, "fra_desk"},
    {"hsr_color_setting(0)", kind::slider, "fra_desk"},
    {"txt_color_setting(0)", kind::text_box, "fra_desk"},
    {"lab_color_setting(0)", kind::label, "fra_desk"},
    {"hsr_color_setting(1)", kind::slider, "fra_desk"},
    {"txt_color_setting(1)", kind::text_box, "fra_desk"},
    {"lab_color_setting(1)", kind::label, "fra_desk"},
    {"hsr_color_setting(2)", kind::slider, "fra_desk"},
    {"txt_color_setting(2)", kind::text_box, "fra_desk"},
    {"lab_color_setting(2)", kind::label, "fra_desk"},
    {"hsr_color_setting(3)", kind::slider, "fra_desk"},
    {"txt_color_setting(3)", kind::text_box, "fra_desk"},
    {"lab_color_setting(3)", kind::label, "fra_desk"},
    {"lab_motion_str", kind::label, "fra_desk", "Custom String"},
    {"txt_motion_str", kind::text_box, "fra_desk"},
    {"cmd_upload", kind::button, "fra_desk", "Upload"},
    {"cmd_check_all", kind::button, "fra_desk", "Check All"},
    {"cmd_check_none", kind::button, "fra_desk", "Check None"},
    {"fra_setup", kind::frame, "", "Panel Control"},
    {"lab_setup", kind::label, "fra_setup"},
    {"cmd_out(0)", kind::button, "fra_setup", "PC"},
    {"cmd_out(1)", kind::button, "fra_setup", "HD"},
    {"cmd_out(2)", kind::button, "fra_setup", "DVI"},
    {"cmd_out(3)", kind::button, "fra_setup", "HDMI"},
    {"cmd_hdcp(0)", kind::button, "fra_setup", "OFF"},
    {"cmd_hdcp(1)", kind::button, "fra_setup", "ON"},
    {"cmd_asc(0)", kind::button, "fra_setup", "EXT 7.1CH"},
    {"cmd_asc(1)", kind::button, "fra_setup", "EXT OPT"},
    {"cmd_asc(2)", kind::button, "fra_setup", "INT SINE"},
    {"cmd_lpcm(0)", kind::button, "fra_setup", "2 CH"},
    {"cmd_lpcm(1)", kind::button, "fra_setup", "5.1 CH"},
    {"cmd_lpcm(2)", kind::button, "fra_setup", "7.1 CH"},
    {"cmd_csc(0)", kind::button, "fra_setup", "RGB444"},
    {"cmd_csc(1)", kind::button, "fra_setup", "YUV444"},
    {"cmd_csc(2)", kind::button, "fra_setup", "YUV422"},
    {"cmd_deep(0)", kind::button, "fra_setup", "8 BIT"},
    {"cmd_deep(1)", kind::button, "fra_setup", "10 BIT"},
    {"cmd_deep(2)", kind::button, "fra_setup", "12 BIT"},
    {"cmd_auto_go(0)", kind::button, "fra_setup", "OFF"},
    {"cmd_auto_go(1)", kind::button, "fra_setup", "ON"},
    {"cmd_fav(0)", kind::button, "fra_setup", "OFF"},
    {"cmd_fav(1)", kind::button, "fra_setup", "ON"},
    {"cmd_reset", kind::button, "fra_setup", "Reset"},
    {"fra_auto", kind::frame, "", "Autorun Config"},
    {"lab_auto", kind::label, "fra_auto"},
    {"lstv_auto", kind::list_view, "fra_auto"},
    {"cbo_timing", kind::combo_box, "fra_auto"},
    {"cbo_pattern", kind::combo_box, "fra_auto"},
    {"cbo_interval", kind::combo_box, "fra_auto"},
    {"cmd_replace", kind::button, "fra_auto", "Add / Replace"},
    {"cmd_delete", kind::button, "fra_auto", "Delete"},
    {"fra_edid", kind::frame, "", "EDID Read / Write"},
    {"lab_read", kind::label, "fra_edid", "  READ"},
    {"txt_read", kind::text_box, "fra_edid"},
    {"lab_write", kind::label, "fra_edid", "WRITE"},
    {"txt_write", kind::text_box, "fra_edid"},
    {"cmd_read", kind::button, "fra_edid", "READ"},
    {"cmd_compare", kind::button, "fra_edid", "COMP"},
    {"cmd_clear_read", kind::button, "fra_edid", "CLEAR"},
    {"cmd_save_read", kind::button, "fra_edid", "SAVE"},
    {"cmd_read_translate", kind::button, "fra_edid", "TRANS"},
    {"cmd_sum_read", kind::button, "fra_edid", "SUM"},
    {"cmd_recover(0)", kind::button, "fra_edid", "R"},
    {"cmd_recover(1)", kind::button, "fra_edid", "R"},
    {"cmd_load", kind::button, "fra_edid", "OPEN"},
    {"cmd_pre_f", kind::button, "fra_edid", "Pre-F"},
    {"cmd_clear_file", kind::button, "fra_edid", "CLEAR"},
    {"cmd_save_write", kind::button, "fra_edid", "SAVE"},
    {"cmd_verify", kind::button, "fra_edid", "VERIFY"},
    {"cmd_write", kind::button, "fra_edid", "WRITE"},
    {"cmd_w_auto", kind::button, "fra_edid", "AUTO"},
    {"cmd_erase", kind::button, "fra_edid", "ERASE"},
    {"cmd_write_translate", kind::button, "fra_edid", "TRANS"},
    {"cmd_sum_write", kind::button, "fra_edid", "SUM"},
    {"lab_edid_src", kind::label, "fra_edid", "Source :"},
    {"opt_edid_src(1)", kind::option_button, "fra_edid", "HDMI/DVI  OUT"},
    {"opt_edid_src(2)", kind::option_button, "fra_edid", "HDMI/DVI  IN"},
    {"opt_edid_src(3)", kind::option_button, "fra_edid", "VGA  OUT"},
    {"lab_r_checksum", kind::label, "fra_edid", "Checksum"},
    {"lab_read_checksum(0)", kind::label, "fra_edid", "BK0"},
    {"lab_read_checksum(1)", kind::label, "fra_edid", "BK1"},
    {"lab_w_checksum", kind::label, "fra_edid", "Checksum"},
    {"lab_write_checksum(0)", kind::label, "fra_edid", "BK0"},
    {"lab_write_checksum(1)", kind::label, "fra_edid", "BK1"},
    {"fra_pre_f", kind::frame, "fra_edid", "Previuos Files"},
    {"lab_pre_f(0)", kind::label, "fra_pre_f"},
    {"lab_pre_f(1)", kind::label, "fra_pre_f"},
    {"lab_pre_f(2)", kind::label, "fra_pre_f"},
    {"lab_pre_f(3)", kind::label, "fra_pre_f"},
    {"lab_pre_f(4)", kind::label, "fra_pre_f"},
    {"lab_pre_f(5)", kind::label, "fra_pre_f"},
    {"lab_pre_f(6)", kind::label, "fra_pre_f"},
    {"lab_pre_f(7)", kind::label, "fra_pre_f"},
    {"lab_pre_f(8)", kind::label, "fra_pre_f"},
    {"lab_pre_f(9)", kind::label, "fra_pre_f"},
    {"fra_compare", kind::frame, "fra_edid", "COMPARE"},
    {"txt_msg", kind::text_box, "fra_compare"},
    {"lab_pass", kind::label, "fra_compare"},
    {"cmd_ok", kind::button, "fra_compare", "OK"},
    {"fra_edid_edit", kind::frame, "fra_edid", "Translate [ Read ] EDID"},
    {"tree_edid", kind::tree_view, "fra_edid_edit"},
    {"txt_edid", kind::text_box, "fra_edid_edit"},
    {"chk_established(0)", kind::check_box, "fra_edid_edit"},
    {"chk_established(1)", kind::check_box, "fra_edid_edit"},
    {"chk_established(2)", kind::check_box, "fra_edid_edit"},
    {"chk_established(3)", kind::check_box, "fra_edid_edit"},
    {"chk_established(4)", kind::check_box, "fra_edid_edit"},
    {"chk_established(5)", kind::check_box, "fra_edid_edit"},
    {"chk_established(6)", kind::check_box, "fra_edid_edit"},
    {"chk_established(7)", kind::check_box, "fra_edid_edit"},
    {"chk_established(8)", kind::check_box, "fra_edid_edit"},
    {"chk_established(9)", kind::check_box, "fra_edid_edit"},
    {"chk_established(10)", kind::check_box, "fra_edid_edit"},
    {"chk_established(11)", kind::check_box, "fra_edid_edit"},
    {"chk_established(12)", kind::check_box, "fra_edid_edit"},
    {"chk_established(13)", kind::check_box, "fra_edid_edit"},
    {"chk_established(14)", kind::check_box, "fra_edid_edit"},
    {"chk_established(15)", kind::check_box, "fra_edid_edit"},
    {"chk_established(16)", kind::check_box, "fra_edid_edit"},
    {"pic_speaker_fl", kind::picture, "fra_edid_edit"},
    {"pic_speaker_flc", kind::picture, "fra_edid_edit"},
    {"pic_speaker_fc", kind::picture, "fra_edid_edit"},
    {"pic_speaker_frc", kind::picture, "fra_edid_edit"},
    {"pic_speaker_fr", kind::picture, "fra_edid_edit"},
    {"pic_speaker_lfe", kind::picture, "fra_edid_edit"},
    {"pic_speaker_rl", kind::picture, "fra_edid_edit"},
    {"pic_speaker_rlc", kind::picture, "fra_edid_edit"},
    {"pic_speaker_rc", kind::picture, "fra_edid_edit"},
    {"pic_speaker_rrc", kind::picture, "fra_edid_edit"},
    {"pic_speaker_rr", kind::picture, "fra_edid_edit"},
    {"cmd_edid_report", kind::button, "fra_edid_edit", "Report"},
    {"cmd_edid_back", kind::button, "fra_edid_edit", "Back to [EDID Read/Write]"},
    {"fra_about", kind::frame, "", "Software / Firmware Versions"},
    {"lab_about", kind::label, "fra_about"},
    {"lab_ver", kind::label, "fra_about"},
    {"cmd_about_ok", kind::button, "fra_about", "OK"},
    {"tim_rx", kind::timer, ""},
};

std::optional<std::string> caption_of(const control& c) {
    switch (c.kind()) {
    case control_kind::frame:
        return dynamic_cast<const frame&>(c).caption.get();
    case control_kind::button:
        return dynamic_cast<const button&>(c).caption.get();
    case control_kind::label:
        return dynamic_cast<const label&>(c).caption.get();
    case control_kind::option_button:
        return dynamic_cast<const option_button&>(c).caption.get();
    default:
        return std::nullopt;
    }
}

/// A place in the window, in twips.
struct area {
    int left;
    int top;
    int right;
    int bottom;
    bool meets(const area& other) const {
        return left < other.right && other.left < right && top < other.bottom && other.top < bottom;
    }
    bool holds(const area& other) const {
        return left <= other.left && other.right <= right && top <= other.top && other.bottom <= bottom;
    }
};

area place_of(const control& c) {
    int left = c.left;
    int top = c.top;
    for (const frame* f = c.parent; f != nullptr; f = f->parent) {
        left += f->left;
        top += f->top;
    }
    return {left, top, left + c.width, top + c.height};
}

class main_window_layout : public test::desk_fixture {
protected:
    const control& named(const std::string& name) const {
        const control* c = desk.form.find(name);
        if (c == nullptr) throw std::runtime_error("no control " + name);
        return *c;
    }
    void expect_place(const std::string& name, int left, int top, int width, int height) const {
        const control& c = named(name);
        EXPECT_EQ(c.left, left) << name;
        EXPECT_EQ(c.top, top) << name;
        EXPECT_EQ(c.width, width) << name;
        EXPECT_EQ(c.height, height) << name;
    }
    std::vector<const control*> on_show() const {
        std::vector<const control*> shown;
        for (const control* c : desk.form.controls())
            if (c->shown() && c->kind() != control_kind::timer) shown.push_back(c);
        return shown;
    }
};

TEST_F(main_window_layout, has_every_control_in_its_frame_with_its_kind_and_caption) {
    for (const expected_control& expected : all_controls) {
        const control* c = desk.form.find(expected.name);
        if (c == nullptr) {
            ADD_FAILURE() << "no control " << expected.name;
            continue;
        }
        EXPECT_EQ(c->kind(), expected.kind) << expected.name;
        EXPECT_EQ(c->parent == nullptr ? "" : c->parent->full_name(), expected.frame) << expected.name;
        EXPECT_EQ(caption_of(*c), expected.caption == nullptr ? caption_of(*c) : expected.caption) << expected.name;
    }
}

TEST_F(main_window_layout, has_no_other_controls) {
    std::set<std::string> expected;
    for (const expected_control& c : all_controls)
        expected.insert(c.name);
    for (const control* c : desk.form.controls())
        EXPECT_TRUE(expected.contains(c->full_name())) << c->full_name();
    EXPECT_EQ(desk.form.controls().size(), expected.size()) << "every name once";
}

TEST_F(main_window_layout, shows_the_start_picture_beside_the_column_and_the_top_row) {
    const std::set<std::string> at_start = {
        "cmd_timing",      "cmd_pattern", "cmd_fav_timing", "cmd_fav_pattern", "cmd_edid",
        "cmd_auto",        "cmd_setup",   "lab_com",        "cbo_com",         "cmd_conn",
        "cmd_disconn",     "cmd_about",   "line_rs232",     "lab_desk",        "img_logo",
        "fra_status",      "cmd_refresh", "lab_timing_lab", "lab_timing",      "lab_pattern",
        "lab_pattern_lab", "lab_out_lab", "lab_out",        "lab_hdcp_lab",    "lab_hdcp"};
    std::set<std::string> shown;
    for (const control* c : on_show())
        shown.insert(c->full_name());
    EXPECT_EQ(shown, at_start);
    for (const char* name : {"fra_pre_f", "fra_compare", "fra_about", "cmd_recover(0)", "cmd_recover(1)"})
        EXPECT_FALSE(named(name).visible) << name;
}

TEST_F(main_window_layout, has_the_named_places) {
    expect_place("tree_edid", 90, 900, 3585, 7125);
    expect_place("txt_edid", 3780, 900, 4785, 7125);
    for (int i = 0; i <= 16; ++i) {
        const int top = i < 8 ? 1230 + 270 * i : i < 16 ? 3900 + 270 * (i - 8) : 6570;
        expect_place("chk_established(" + std::to_string(i) + ")", 4080, top, 1845, 240);
    }
    expect_place("pic_speaker_fl", 4350, 1230, 450, 375);
    expect_place("pic_speaker_flc", 5040, 1170, 375, 450);
    expect_place("pic_speaker_fc", 5670, 1170, 375, 450);
    expect_place("pic_speaker_frc", 6300, 1170, 375, 450);
    expect_place("pic_speaker_fr", 6930, 1230, 450, 375);
    expect_place("pic_speaker_lfe", 7200, 1740, 375, 450);
    expect_place("pic_speaker_rl", 4350, 2640, 450, 375);
    expect_place("pic_speaker_rlc", 5040, 2640, 375, 450);
    expect_place("pic_speaker_rc", 5670, 2640, 375, 450);
    expect_place("pic_speaker_rrc", 6300, 2640, 375, 450);
    expect_place("pic_speaker_rr", 6930, 2640, 375, 450);
    EXPECT_EQ(named("img_logo").width, 606 * pixel);
    EXPECT_EQ(named("img_logo").height, 558 * pixel);
    EXPECT_EQ(desk.img_logo.file, "start_picture");
}

TEST_F(main_window_layout, moves_download_with_the_views) {
    desk.load();
    const auto expect_download = [this](button& view, int left, int top) {
        view.on_click();
        EXPECT_EQ(desk.desk_frame.cmd_download.left, left) << view.name;
        EXPECT_EQ(desk.desk_frame.cmd_download.top, top) << view.name;
        EXPECT_EQ(desk.desk_frame.cmd_download.parent, nullptr) << "it counts from the window";
    };
    for (int round = 0; round < 2; ++round) {
        expect_download(desk.autorun.cmd_auto, 2700, 2100);
        expect_download(desk.catalogue.cmd_pattern, 5640, 2250);
        expect_download(desk.cmd_setup, 2700, 2100);
        expect_download(desk.favorites.cmd_fav_timing, 5640, 2250);
        expect_download(desk.favorites.cmd_fav_pattern, 5640, 2250);
    }
}

TEST_F(main_window_layout, has_the_frames_of_the_views_in_one_area_beside_the_buttons) {
    const area logo = place_of(named("img_logo"));
    for (const char* name : {"lstv_timing", "lstv_pattern", "fra_desk", "fra_setup", "fra_auto", "fra_edid"})
        EXPECT_TRUE(logo.holds(place_of(named(name)))) << name;
    for (const char* name : {"cmd_timing", "cmd_setup", "fra_status"})
        EXPECT_LE(place_of(named(name)).right, logo.left) << name;
    EXPECT_GE(place_of(named("fra_status")).top, place_of(named("cmd_setup")).bottom);
}

TEST_F(main_window_layout, has_every_control_inside_its_frame_or_window) {
    const area whole{0, 0, desk.form.width, desk.form.height};
    for (const control* c : desk.form.controls()) {
        if (c->kind() == control_kind::timer) continue;
        const area around = c->parent == nullptr ? whole : place_of(*c->parent);
        EXPECT_TRUE(around.holds(place_of(*c))) << c->full_name();
        EXPECT_GT(c->width, 0) << c->full_name();
        EXPECT_TRUE(c->height > 0 || c->kind() == control_kind::line) << c->full_name();
    }
}

TEST_F(main_window_layout, has_buttons_as_wide_as_their_captions) {
    for (const control* c : desk.form.controls()) {
        if (c->kind() != control_kind::button) continue;
        const std::string caption = *caption_of(*c);
        EXPECT_GE(c->width, static_cast<int>(caption.size()) * letter) << c->full_name() << " " << caption;
    }
}

TEST_F(main_window_layout, has_fonts_of_fixed_pitch_where_columns_count) {
    EXPECT_EQ(desk.about.lab_about.font, text_font::fixed);
    EXPECT_EQ(desk.workbench.txt_read.font, text_font::fixed);
    EXPECT_EQ(desk.workbench.txt_write.font, text_font::fixed);
    EXPECT_EQ(desk.translation_frame.txt_edid.font, text_font::fixed);
    EXPECT_EQ(desk.desk_frame.lab_hori.font, text_font::fixed);
    EXPECT_EQ(desk.desk_frame.lab_vert.font, text_font::fixed);
}

TEST_F(main_window_layout, locks_the_text_boxes_that_only_show) {
    for (const text_box* t : {&desk.workbench.txt_read, &desk.workbench.txt_write, &desk.workbench.txt_msg, &desk.translation_frame.txt_edid,
                              &desk.desk_frame.txt_hf, &desk.desk_frame.txt_pix_f})
        EXPECT_TRUE(t->locked) << t->name;
    for (const text_box* t : {&desk.desk_frame.txt_motion_str, &desk.desk_frame.txt_color_setting[0]})
        EXPECT_FALSE(t->locked) << t->name;
    for (const text_box* t : {&desk.workbench.txt_read, &desk.workbench.txt_write, &desk.translation_frame.txt_edid})
        EXPECT_TRUE(t->multi_line) << t->name;
}

TEST_F(main_window_layout, starts_with_the_buttons_dead_that_need_an_edid) {
    for (const char* name : {"cmd_read_translate", "cmd_sum_read", "cmd_write", "cmd_verify", "cmd_w_auto",
                             "cmd_write_translate", "cmd_sum_write"})
        EXPECT_FALSE(named(name).enabled) << name;
    for (const char* name : {"cmd_read", "cmd_load", "cmd_erase", "cmd_compare", "cmd_run", "cmd_about"})
        EXPECT_TRUE(named(name).enabled) << name;
}

TEST_F(main_window_layout, chooses_the_first_sink_at_first) {
    EXPECT_TRUE(desk.workbench.opt_edid_src[0].value);
    EXPECT_FALSE(desk.workbench.opt_edid_src[1].value);
    EXPECT_FALSE(desk.workbench.opt_edid_src[2].value);
}

TEST_F(main_window_layout, has_the_boxes_in_the_gaps_of_their_titles) {
    desk.load();
    const auto expect_gaps = [](const frame& around, const label& titles) {
        ASSERT_GT(titles.line_pitch, 0);
        std::vector<std::string> lines;
        std::string text = titles.caption;
        for (std::size_t end = 0; (end = text.find("\r\n")) != std::string::npos; text.erase(0, end + 2))
            lines.push_back(text.substr(0, end));
        for (const control* box : around.owner->controls()) {
            if (box->parent != &around || box->kind() != control_kind::text_box) continue;
            const int middle = box->top + box->height / 2 - titles.top;
            const int line = middle / titles.line_pitch;
            ASSERT_LT(static_cast<std::size_t>(line), lines.size()) << box->name;
            const std::string& title = lines.at(static_cast<std::size_t>(line));
            EXPECT_FALSE(title.empty()) << box->name << " stands between two titles";
            for (std::size_t i = 0; i < title.size(); ++i) {
                const int from = titles.left + static_cast<int>(i) * fixed_cell;
                const bool under = box->left < from + fixed_cell && from < box->left + box->width;
                EXPECT_TRUE(!under || title[i] == ' ') << box->name << " covers " << title[i] << " of " << title;
            }
        }
    };
    expect_gaps(desk.desk_frame.fra_hori, desk.desk_frame.lab_hori);
    expect_gaps(desk.desk_frame.fra_vert, desk.desk_frame.lab_vert);
}

TEST_F(main_window_layout, has_the_box_of_the_clock_in_its_gap) {
    const label& title = desk.desk_frame.lab_pix_clock;
    const text_box& box = desk.desk_frame.txt_pix_f;
    EXPECT_GE(box.left, title.left + 12 * fixed_cell) << "behind \"Pixel Clock:\"";
    EXPECT_LE(box.left + box.width, title.left + 21 * fixed_cell) << "before \"MHz\"";
}

TEST_F(main_window_layout, has_the_rows_of_the_panel_beside_their_titles) {
    desk.load();
    const label& titles = desk.panel.lab_setup;
    ASSERT_GT(titles.line_pitch, 0);
    // the line of each title: three lines of a note, three empty ones, then a title on every second line
    const std::vector<std::pair<std::string, int>> rows = {
        {"cmd_out(0)", 6},   {"cmd_hdcp(0)", 8},     {"cmd_asc(0)", 10}, {"cmd_lpcm(0)", 12}, {"cmd_csc(0)", 14},
        {"cmd_deep(0)", 16}, {"cmd_auto_go(0)", 18}, {"cmd_fav(0)", 20}, {"cmd_reset", 22}};
    const std::string longest = "Output Format = ";
    for (const auto& [name, line] : rows) {
        const control& b = named(name);
        const int middle = b.top + b.height / 2 - titles.top;
        EXPECT_EQ(middle / titles.line_pitch, line) << name;
        EXPECT_GE(b.left, titles.left + static_cast<int>(longest.size()) * letter) << name;
    }
    for (const char* group : {"cmd_out", "cmd_asc", "cmd_lpcm", "cmd_csc", "cmd_deep"}) {
        for (const int i : {1, 2})
            EXPECT_EQ(named(group + ("(" + std::to_string(i) + ")")).top, named(std::string(group) + "(0)").top);
    }
}

TEST_F(main_window_layout, has_download_between_the_note_and_the_rows_of_the_panel) {
    desk.load();
    desk.cmd_setup.on_click();
    const area download = place_of(desk.desk_frame.cmd_download);
    const label& titles = desk.panel.lab_setup;
    const int text_top = place_of(titles).top;
    EXPECT_GE(download.top, text_top + 3 * titles.line_pitch);
    EXPECT_LE(download.bottom, text_top + 6 * titles.line_pitch);
}

// ---- what is on show together ----

struct state {
    const char* name;
    std::function<void(frm_main&)> enter;
};

void PrintTo(const state& s, std::ostream* out) { *out << s.name; }

void choose_pattern(frm_main& desk, int row) {
    desk.catalogue.cmd_pattern.on_click();
    desk.catalogue.lstv_pattern.select(row);
    desk.catalogue.lstv_pattern.on_click();
}

void show_in_edid_view(frm_main& desk, const std::string& start) {
    desk.cmd_edid.on_click();
    desk.translation_frame.fra_edid_edit.visible = start.starts_with("chk") || start.starts_with("pic");
    for (control* c : desk.form.controls())
        if (c->name.starts_with(start)) c->visible = true;
}

const state states[] = {
    {"start", [](frm_main&) {}},
    {"timing_select", [](frm_main& d) { d.catalogue.cmd_timing.on_click(); }},
    {"pattern_select", [](frm_main& d) { choose_pattern(d, 1); }},
    {"color_setting", [](frm_main& d) { choose_pattern(d, 13); }},
    {"motion_string", [](frm_main& d) { choose_pattern(d, 41); }},
    {"favorite_timing", [](frm_main& d) { d.favorites.cmd_fav_timing.on_click(); }},
    {"favorite_pattern", [](frm_main& d) { d.favorites.cmd_fav_pattern.on_click(); }},
    {"edid", [](frm_main& d) { d.cmd_edid.on_click(); }},
    {"previous_files", [](frm_main& d) { show_in_edid_view(d, "fra_pre_f"); }},
    {"compare", [](frm_main& d) { show_in_edid_view(d, "fra_compare"); }},
    {"wrong_sums", [](frm_main& d) { show_in_edid_view(d, "cmd_recover"); }},
    {"translation", [](frm_main& d) { show_in_edid_view(d, "fra_edid_edit"); }},
    {"established_timings", [](frm_main& d) { show_in_edid_view(d, "chk_established"); }},
    {"speakers", [](frm_main& d) { show_in_edid_view(d, "pic_speaker"); }},
    {"autorun", [](frm_main& d) { d.autorun.cmd_auto.on_click(); }},
    {"panel", [](frm_main& d) { d.cmd_setup.on_click(); }},
    {"about",
     [](frm_main& d) {
         d.catalogue.cmd_timing.on_click();
         d.about.fra_about.visible = true;
     }},
};

class in_each_state : public main_window_layout, public testing::WithParamInterface<state> {
protected:
    in_each_state() {
        desk.load();
        GetParam().enter(desk);
    }
    /// Whether the upper one, which stands later in the window, lies over the other on purpose.
    static bool lies_over(const control& upper, const control& lower) {
        static const std::set<std::string> overlays = {"fra_about", "fra_pre_f", "fra_compare", "fra_edid_edit"};
        static const std::set<std::string> titles = {"lab_hori", "lab_vert", "lab_setup"};
        if (overlays.contains(upper.name) || lower.name == "lab_desk") return true;
        if (titles.contains(lower.name)) return upper.kind() != control_kind::label;
        if (upper.name == "txt_pix_f") return lower.name == "lab_pix_clock";
        if (upper.name == "chk_established" || upper.name.starts_with("pic_speaker_")) return lower.name == "txt_edid";
        if (upper.name == "cmd_download" || upper.name == "cmd_run") return lower.kind() == control_kind::frame;
        return false;
    }
};

TEST_P(in_each_state, nothing_overlaps_but_what_lies_over_others_on_purpose) {
    const auto shown = on_show();
    for (std::size_t i = 0; i < shown.size(); ++i) {
        for (std::size_t k = i + 1; k < shown.size(); ++k) {
            const control& lower = *shown[i];
            const control& upper = *shown[k];
            if (lower.parent != upper.parent || lies_over(upper, lower)) continue;
            EXPECT_FALSE(place_of(lower).meets(place_of(upper))) << upper.full_name() << " over " << lower.full_name();
        }
    }
}

TEST_P(in_each_state, download_and_set_cover_nothing_inside_a_frame) {
    for (const button* over : {&desk.desk_frame.cmd_download, &desk.desk_frame.cmd_run}) {
        if (!over->shown()) continue;
        for (const control* c : on_show()) {
            const bool overlay = c->name == "fra_about" || (c->parent != nullptr && c->parent->name == "fra_about");
            if (c->parent == nullptr || overlay || c->name == "lab_setup") continue;
            EXPECT_FALSE(place_of(*over).meets(place_of(*c))) << over->name << " and " << c->full_name();
        }
    }
}

TEST_P(in_each_state, no_two_mnemonics_clash) {
    std::set<int> seen;
    for (const control* c : on_show()) {
        const auto* b = dynamic_cast<const button*>(c);
        if (b == nullptr || b->mnemonic == 0) continue;
        EXPECT_TRUE(seen.insert(std::tolower(b->mnemonic)).second) << b->mnemonic << " of " << b->full_name();
        EXPECT_NE(b->caption.get().find(b->mnemonic), std::string::npos) << b->full_name();
    }
    EXPECT_FALSE(seen.empty());
}

INSTANTIATE_TEST_SUITE_P(views, in_each_state, testing::ValuesIn(states),
                         [](const auto& info) { return std::string(info.param.name); });

} // namespace
} // namespace desk
