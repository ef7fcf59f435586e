#include "controls/layout.h"

#include "controls/kinds.h"
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

constexpr int pixel = 15;             // twips
constexpr int letter = 7 * pixel;     // a character of the one font, on the average
constexpr int fixed_cell = 8 * pixel; // a character of the fixed font

/// The controls of one kind in a frame.
struct expected_controls {
    const char* frame; ///< empty: the window itself
    std::string_view kind;
    std::vector<std::string> controls; ///< "name=caption"; only the name if the caption is set later or does not exist
};

const expected_controls all_controls[] = {
    {"",
     "button",
     {"cmd_timing=Timing Select", "cmd_pattern=Pattern Select", "cmd_fav_timing=Favorite Timing",
      "cmd_fav_pattern=Favorite Pattern", "cmd_edid=EDID Read/Write", "cmd_auto=Autorun Config",
      "cmd_setup=Panel Control", "cmd_conn=Connect", "cmd_disconn=Disconnect", "cmd_about=About", "cmd_run=SET",
      "cmd_download=Download"}},
    {"", "label", {"lab_com=  RS232 Port", "lab_desk"}},
    {"", "combo_box", {"cbo_com"}},
    {"", "line", {"line_rs232"}},
    {"", "picture", {"img_logo"}},
    {"",
     "frame",
     {"fra_status=VELOTRACE OUT Status", "fra_desk", "fra_setup=Panel Control", "fra_auto=Autorun Config",
      "fra_edid=EDID Read / Write", "fra_about=Software / Firmware Versions"}},
    {"fra_status", "button", {"cmd_refresh=Refresh"}},
    {"fra_status",
     "label",
     {"lab_timing_lab=Timing : ", "lab_timing=", "lab_pattern_lab=Pattern :", "lab_pattern=",
      "lab_out_lab=Output Format :", "lab_out=", "lab_hdcp_lab=HDCP :", "lab_hdcp="}},
    {"", "list_view", {"lstv_timing", "lstv_timing_sub", "lstv_pattern"}},
    {"fra_desk",
     "label",
     {"lab_desk_note", "lab_pix_clock=Pixel Clock:         MHz", "lab_color_setting(0)", "lab_color_setting(1)",
      "lab_color_setting(2)", "lab_color_setting(3)", "lab_motion_str=Custom String"}},
    {"fra_desk", "frame", {"fra_hori=Horizontal", "fra_vert=Vertical"}},
    {"fra_hori", "label", {"lab_hori"}},
    {"fra_hori",
     "text_box",
     {"txt_htotal_pix", "txt_hactive_pix", "txt_hdelay_pix", "txt_hsw_pix", "txt_htotal_us", "txt_hactive_us",
      "txt_hdelay_us", "txt_hsw_us", "txt_hpol", "txt_hf"}},
    {"fra_vert", "label", {"lab_vert"}},
    {"fra_vert",
     "text_box",
     {"txt_vtotal_line", "txt_vactive_line", "txt_vdelay_line", "txt_vsw_line", "txt_vtotal_ms", "txt_vactive_ms",
      "txt_vdelay_ms", "txt_vsw_ms", "txt_vpol", "txt_vf"}},
    {"fra_desk",
     "text_box",
     {"txt_pix_f", "txt_color_setting(0)", "txt_color_setting(1)", "txt_color_setting(2)", "txt_color_setting(3)",
      "txt_motion_str"}},
    {"fra_desk",
     "slider",
     {"hsr_color_setting(0)", "hsr_color_setting(1)", "hsr_color_setting(2)", "hsr_color_setting(3)"}},
    {"fra_desk", "button", {"cmd_upload=Upload", "cmd_check_all=Check All", "cmd_check_none=Check None"}},
    {"fra_setup", "label", {"lab_setup"}},
    {"fra_setup", "button", {"cmd_out(0)=PC",       "cmd_out(1)=HD",      "cmd_out(2)=DVI",       "cmd_out(3)=HDMI",
                             "cmd_hdcp(0)=OFF",     "cmd_hdcp(1)=ON",     "cmd_asc(0)=EXT 7.1CH", "cmd_asc(1)=EXT OPT",
                             "cmd_asc(2)=INT SINE", "cmd_lpcm(0)=2 CH",   "cmd_lpcm(1)=5.1 CH",   "cmd_lpcm(2)=7.1 CH",
                             "cmd_csc(0)=RGB444",   "cmd_csc(1)=YUV444",  "cmd_csc(2)=YUV422",    "cmd_deep(0)=8 BIT",
                             "cmd_deep(1)=10 BIT",  "cmd_deep(2)=12 BIT", "cmd_auto_go(0)=OFF",   "cmd_auto_go(1)=ON",
                             "cmd_fav(0)=OFF",      "cmd_fav(1)=ON",      "cmd_reset=Reset"}},
    {"fra_auto", "label", {"lab_auto"}},
    {"fra_auto", "list_view", {"lstv_auto"}},
    {"fra_auto", "combo_box", {"cbo_timing", "cbo_pattern", "cbo_interval"}},
    {"fra_auto", "button", {"cmd_replace=Add / Replace", "cmd_delete=Delete"}},
    {"fra_edid",
     "label",
     {"lab_read=  READ", "lab_write=WRITE", "lab_edid_src=Source :", "lab_r_checksum=Checksum",
      "lab_read_checksum(0)=BK0", "lab_read_checksum(1)=BK1", "lab_w_checksum=Checksum", "lab_write_checksum(0)=BK0",
      "lab_write_checksum(1)=BK1"}},
    {"fra_edid", "text_box", {"txt_read", "txt_write"}},
    {"fra_edid",
     "button",
     {"cmd_read=READ", "cmd_compare=COMP", "cmd_clear_read=CLEAR", "cmd_save_read=SAVE", "cmd_read_translate=TRANS",
      "cmd_sum_read=SUM", "cmd_recover(0)=R", "cmd_recover(1)=R", "cmd_load=OPEN", "cmd_pre_f=Pre-F",
      "cmd_clear_file=CLEAR", "cmd_save_write=SAVE", "cmd_verify=VERIFY", "cmd_write=WRITE", "cmd_w_auto=AUTO",
      "cmd_erase=ERASE", "cmd_write_translate=TRANS", "cmd_sum_write=SUM"}},
    {"fra_edid",
     "option_button",
     {"opt_edid_src(1)=HDMI/DVI  OUT", "opt_edid_src(2)=HDMI/DVI  IN", "opt_edid_src(3)=VGA  OUT"}},
    {"fra_edid", "frame", {"fra_pre_f=Previuos Files", "fra_compare=COMPARE", "fra_edid_edit=Translate [ Read ] EDID"}},
    {"fra_pre_f",
     "label",
     {"lab_pre_f(0)", "lab_pre_f(1)", "lab_pre_f(2)", "lab_pre_f(3)", "lab_pre_f(4)", "lab_pre_f(5)", "lab_pre_f(6)",
      "lab_pre_f(7)", "lab_pre_f(8)", "lab_pre_f(9)"}},
    {"fra_compare", "text_box", {"txt_msg"}},
    {"fra_compare", "label", {"lab_pass"}},
    {"fra_compare", "button", {"cmd_ok=OK"}},
    {"fra_edid_edit", "tree_view", {"tree_edid"}},
    {"fra_edid_edit", "text_box", {"txt_edid"}},
    {"fra_edid_edit",
     "check_box",
     {"chk_established(0)", "chk_established(1)", "chk_established(2)", "chk_established(3)", "chk_established(4)",
      "chk_established(5)", "chk_established(6)", "chk_established(7)", "chk_established(8)", "chk_established(9)",
      "chk_established(10)", "chk_established(11)", "chk_established(12)", "chk_established(13)", "chk_established(14)",
      "chk_established(15)", "chk_established(16)"}},
    {"fra_edid_edit",
     "picture",
     {"pic_speaker_fl", "pic_speaker_flc", "pic_speaker_fc", "pic_speaker_frc", "pic_speaker_fr", "pic_speaker_lfe",
      "pic_speaker_rl", "pic_speaker_rlc", "pic_speaker_rc", "pic_speaker_rrc", "pic_speaker_rr"}},
    {"fra_edid_edit", "button", {"cmd_edid_report=Report", "cmd_edid_back=Back to [EDID Read/Write]"}},
    {"fra_about", "label", {"lab_about", "lab_ver"}},
    {"fra_about", "button", {"cmd_about_ok=OK"}},
    {"", "timer", {"tim_rx"}},
};

std::string name_of(const std::string& entry) { return entry.substr(0, entry.find('=')); }

std::optional<std::string> caption_of(const control& c) {
    return visit(c, [](const auto& self) -> std::optional<std::string> {
        if constexpr (requires { self.caption; }) return self.caption.get();
        return std::nullopt;
    });
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
            if (c->shown() && !is<timer>(*c)) shown.push_back(c);
        return shown;
    }
};

TEST_F(main_window_layout, has_every_control_in_its_frame_with_its_kind_and_caption) {
    for (const auto& [frame_name, kind, controls] : all_controls) {
        for (const std::string& entry : controls) {
            const std::string name = name_of(entry);
            const control& c = named(name);
            EXPECT_EQ(kind_name(c), kind) << name;
            EXPECT_EQ(c.parent == nullptr ? "" : c.parent->full_name(), frame_name) << name;
            if (name != entry) {
                EXPECT_EQ(caption_of(c), entry.substr(name.size() + 1)) << name;
            }
        }
    }
}

TEST_F(main_window_layout, has_no_other_controls) {
    std::set<std::string> expected;
    for (const expected_controls& group : all_controls)
        for (const std::string& entry : group.controls)
            expected.insert(name_of(entry));
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
    struct {
        const char* speaker;
        int left, top;
        bool corner; ///< wide; the others are high
    } const speakers[] = {{"fl", 4350, 1230, true},   {"flc", 5040, 1170, false}, {"fc", 5670, 1170, false},
                          {"frc", 6300, 1170, false}, {"fr", 6930, 1230, true},   {"lfe", 7200, 1740, false},
                          {"rl", 4350, 2640, true},   {"rlc", 5040, 2640, false}, {"rc", 5670, 2640, false},
                          {"rrc", 6300, 2640, false}, {"rr", 6930, 2640, false}};
    for (const auto& [speaker, left, top, corner] : speakers)
        expect_place(std::string("pic_speaker_") + speaker, left, top, corner ? 450 : 375, corner ? 375 : 450);
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
        if (is<timer>(*c)) continue;
        const area around = c->parent == nullptr ? whole : place_of(*c->parent);
        EXPECT_TRUE(around.holds(place_of(*c))) << c->full_name();
        EXPECT_GT(c->width, 0) << c->full_name();
        EXPECT_TRUE(c->height > 0 || is<line>(*c)) << c->full_name();
    }
}

TEST_F(main_window_layout, has_buttons_as_wide_as_their_captions) {
    for (const control* c : desk.form.controls()) {
        if (!is<button>(*c)) continue;
        const std::string caption = *caption_of(*c);
        EXPECT_GE(c->width, static_cast<int>(caption.size()) * letter) << c->full_name() << " " << caption;
    }
}

TEST_F(main_window_layout, has_fixed_pitch_fonts_for_texts_in_columns) {
    EXPECT_EQ(desk.about.lab_about.font, text_font::fixed);
    EXPECT_EQ(desk.workbench.txt_read.font, text_font::fixed);
    EXPECT_EQ(desk.workbench.txt_write.font, text_font::fixed);
    EXPECT_EQ(desk.translation_frame.txt_edid.font, text_font::fixed);
    EXPECT_EQ(desk.desk_frame.lab_hori.font, text_font::fixed);
    EXPECT_EQ(desk.desk_frame.lab_vert.font, text_font::fixed);
}

TEST_F(main_window_layout, locks_the_text_boxes_that_only_show) {
    for (const text_box* t : {&desk.workbench.txt_read, &desk.workbench.txt_write, &desk.workbench.txt_msg,
                              &desk.translation_frame.txt_edid, &desk.desk_frame.txt_hf, &desk.desk_frame.txt_pix_f})
        EXPECT_TRUE(t->locked) << t->name;
    for (const text_box* t : {&desk.desk_frame.txt_motion_str, &desk.desk_frame.txt_color_setting[0]})
        EXPECT_FALSE(t->locked) << t->name;
    for (const text_box* t : {&desk.workbench.txt_read, &desk.workbench.txt_write, &desk.translation_frame.txt_edid})
        EXPECT_TRUE(t->multi_line) << t->name;
}

TEST_F(main_window_layout, disables_the_buttons_that_need_an_edid_at_the_start) {
    for (const char* name : {"cmd_read_translate", "cmd_sum_read", "cmd_write", "cmd_verify", "cmd_w_auto",
                             "cmd_write_translate", "cmd_sum_write"})
        EXPECT_FALSE(named(name).enabled) << name;
    for (const char* name : {"cmd_read", "cmd_load", "cmd_erase", "cmd_compare", "cmd_run", "cmd_about"})
        EXPECT_TRUE(named(name).enabled) << name;
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
            if (box->parent != &around || !is<text_box>(*box)) continue;
            const int middle = box->top + box->height / 2 - titles.top;
            const int line = middle / titles.line_pitch;
            ASSERT_LT(static_cast<std::size_t>(line), lines.size()) << box->name;
            const std::string& title = lines.at(static_cast<std::size_t>(line));
            EXPECT_FALSE(title.empty()) << box->name << " is between two titles";
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
    EXPECT_GE(box.left, title.left + 12 * fixed_cell) << "after \"Pixel Clock:\"";
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
    /// Whether `upper`, the later one in the window, covers `lower` on purpose.
    static bool covers(const control& upper, const control& lower) {
        static const std::set<std::string> overlays = {"fra_about", "fra_pre_f", "fra_compare", "fra_edid_edit"};
        static const std::set<std::string> titles = {"lab_hori", "lab_vert", "lab_setup"};
        if (overlays.contains(upper.name) || lower.name == "lab_desk") return true;
        if (titles.contains(lower.name)) return !is<label>(upper);
        if (upper.name == "txt_pix_f") return lower.name == "lab_pix_clock";
        if (upper.name == "chk_established" || upper.name.starts_with("pic_speaker_")) return lower.name == "txt_edid";
        if (upper.name == "cmd_download" || upper.name == "cmd_run") return is<frame>(lower);
        return false;
    }
};

TEST_P(in_each_state, nothing_overlaps_except_intended_overlays) {
    const auto shown = on_show();
    for (std::size_t i = 0; i < shown.size(); ++i) {
        for (std::size_t k = i + 1; k < shown.size(); ++k) {
            const control& lower = *shown[i];
            const control& upper = *shown[k];
            if (lower.parent != upper.parent || covers(upper, lower)) continue;
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
        const auto* b = as<button>(c);
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
