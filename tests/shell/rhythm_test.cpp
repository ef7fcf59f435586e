// Even distances on the plan of the main window: what belongs together lines up, and nothing touches a frame.

#include "controls/kinds.h"
#include "support/desk_fixture.h"

#include <algorithm>
#include <string>
#include <vector>

namespace desk {
namespace {

constexpr int twips_of_pixel = 15;

class plan : public test::desk_fixture {
protected:
    const control& named(const std::string& name) const {
        const control* c = desk.form.find(name);
        if (c == nullptr) throw std::runtime_error("no control " + name);
        return *c;
    }
    static int right(const control& c) { return c.left + c.width; }
    static int bottom(const control& c) { return c.top + c.height; }
    static int twice_middle(const control& c) { return 2 * c.top + c.height; }

    void expect_one_middle(const std::vector<std::string>& names) const {
        for (const std::string& name : names)
            EXPECT_NEAR(twice_middle(named(name)), twice_middle(named(names.front())), twips_of_pixel) << name;
    }
};

TEST_F(plan, keeps_a_distance_from_every_frame) {
    for (const control* c : desk.form.controls()) {
        const frame* const around = c->parent;
        // a page covers its frame
        if (around == nullptr || c == &desk.translation_frame.fra_edid_edit ||
            around == &desk.translation_frame.fra_edid_edit)
            continue;
        for (const int distance :
             std::initializer_list<int>{c->left, c->top, around->width - right(*c), around->height - bottom(*c)})
            EXPECT_GE(distance, 4 * twips_of_pixel) << c->full_name() << " in " << around->name;
    }
}

TEST_F(plan, has_buttons_28_pixels_high) {
    for (const control* c : desk.form.controls()) {
        if (is<button>(*c)) {
            EXPECT_GE(c->height, 28 * twips_of_pixel) << c->full_name();
        }
    }
}

TEST_F(plan, has_the_buttons_of_the_views_close_below_each_other) {
    const std::vector<std::string> column = {"cmd_timing", "cmd_pattern", "cmd_fav_timing", "cmd_fav_pattern",
                                             "cmd_edid",   "cmd_auto",    "cmd_setup"};
    for (std::size_t i = 1; i < column.size(); ++i) {
        const int between = named(column[i]).top - bottom(named(column[i - 1]));
        EXPECT_GE(between, 0) << column[i];
        EXPECT_LE(between, 4 * twips_of_pixel) << column[i];
    }
    EXPECT_EQ(named("cmd_timing").top, named("img_logo").top);
    EXPECT_EQ(bottom(named("fra_status")), bottom(named("img_logo")));
}

TEST_F(plan, has_the_lists_of_a_step_below_their_columns) {
    const auto& list = desk.autorun.lstv_auto;
    int edge = list.left;
    std::vector<int> edges;
    for (const list_column& column : list.columns)
        edges.push_back(std::exchange(edge, edge + column.width));
    // the frame of the list is 2 pixels wide
    EXPECT_NEAR(named("cbo_timing").left, edges.at(1), 2 * twips_of_pixel);
    EXPECT_NEAR(named("cbo_pattern").left, edges.at(2), 2 * twips_of_pixel);
    EXPECT_NEAR(named("cbo_interval").left, edges.at(3), 2 * twips_of_pixel);
    EXPECT_LE(right(named("cbo_timing")), named("cbo_pattern").left);
    EXPECT_LE(right(named("cbo_pattern")), named("cbo_interval").left);
    EXPECT_EQ(right(named("cbo_interval")), right(list));
    for (const char* name : {"cbo_timing", "cbo_pattern", "cbo_interval"}) {
        EXPECT_GT(named(name).top, bottom(list)) << name;
        EXPECT_LE(named(name).top - bottom(list), 12 * twips_of_pixel) << name;
    }
    EXPECT_LE(desk.autorun.fra_auto.height - bottom(named("cmd_replace")), 16 * twips_of_pixel)
        << "no height is left over";
}

TEST_F(plan, aligns_controls_that_are_side_by_side) {
    for (int i = 0; i < 4; ++i) {
        const std::string n = "(" + std::to_string(i) + ")";
        expect_one_middle({"hsr_color_setting" + n, "txt_color_setting" + n, "lab_color_setting" + n});
    }
    expect_one_middle({"cmd_about", "lab_com", "cbo_com", "cmd_conn", "cmd_disconn"});
    expect_one_middle({"txt_motion_str", "lab_motion_str", "cmd_upload"});
    expect_one_middle({"cmd_ok", "lab_pass"});
    expect_one_middle({"cmd_about_ok", "lab_ver"});
    expect_one_middle({"lab_edid_src", "opt_edid_src(1)", "opt_edid_src(2)", "opt_edid_src(3)"});
    for (const char* n : {"(0)", "(1)"})
        expect_one_middle({std::string("lab_write_checksum") + n, std::string("cmd_recover") + n,
                           std::string("lab_read_checksum") + n});
    desk.load();
    desk.favorites.cmd_fav_timing.on_click();
    expect_one_middle({"cmd_run", "cmd_download"});
}

TEST_F(plan, has_both_sides_of_the_workbench_alike) {
    const int across = named("txt_read").left - named("txt_write").left;
    const std::vector<std::pair<std::string, std::string>> alike = {{"txt_write", "txt_read"},
                                                                    {"lab_w_checksum", "lab_r_checksum"},
                                                                    {"lab_write_checksum(0)", "lab_read_checksum(0)"},
                                                                    {"lab_write_checksum(1)", "lab_read_checksum(1)"},
                                                                    {"cmd_load", "cmd_read"},
                                                                    {"cmd_clear_file", "cmd_clear_read"},
                                                                    {"cmd_save_write", "cmd_save_read"}};
    for (const auto& [write, read] : alike) {
        EXPECT_EQ(named(read).left - named(write).left, across) << read;
        EXPECT_EQ(named(read).top, named(write).top) << read;
    }
    EXPECT_EQ(named("lab_read").top, named("lab_write").top);
    EXPECT_EQ(named("lab_write").left, named("txt_write").left);
    EXPECT_EQ(named("lab_read").left + 105, named("txt_read").left)
        << "its caption begins with two spaces of 3.6 pixels";
    EXPECT_EQ(right(named("cmd_save_write")), right(named("txt_write")));
    EXPECT_EQ(right(named("cmd_save_read")), right(named("txt_read")));
}

} // namespace
} // namespace desk
