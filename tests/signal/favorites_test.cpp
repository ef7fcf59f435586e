#include "signal/favorites.h"

#include "support/signal_fixture.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <ostream>
#include <string>
#include <vector>

namespace desk {
namespace {

using test::strings;

struct favorite_view {
    const char* name;
    int view_mode;
    button favorites::*entry;
    list_view catalogue::*list;
    list_view catalogue::*other_list;
    const char* caption;
    const char* note;
};

void PrintTo(const favorite_view& view, std::ostream* out) { *out << view.name; }

class favorite_views_test : public test::signal_fixture, public testing::WithParamInterface<favorite_view> {
protected:
    favorite_views_test() {
        for (control* c : all_that_can_be_shown())
            c->visible = false;
        rows.change_view = [this](int view) {
            views.push_back(view);
            enter(view);
        };
    }
    std::vector<control*> all_that_can_be_shown() {
        return {&desk_area.fra_desk,       &desk_area.cmd_run,        &desk_area.cmd_download,
                &desk_area.lab_desk_note,  &rows.lstv_timing,         &rows.lstv_pattern,
                &desk_area.cmd_check_all,  &desk_area.cmd_check_none, &desk_area.fra_hori,
                &desk_area.fra_vert,       &desk_area.lab_pix_clock,  &desk_area.txt_pix_f,
                &steps.fra_auto,           &switches.fra_setup,       &desk_area.txt_motion_str,
                &desk_area.lab_motion_str, &desk_area.cmd_upload,     &desk_area.txt_color_setting[0]};
    }
    std::vector<control*> shown() {
        std::vector<control*> all;
        for (control* c : all_that_can_be_shown()) {
            if (c->visible) all.push_back(c);
        }
        return all;
    }
    void press() { (favorite_views.*GetParam().entry).on_click(); }
    list_view& list() { return rows.*GetParam().list; }
    list_view& other_list() { return rows.*GetParam().other_list; }

    std::vector<int> views;
};

INSTANTIATE_TEST_SUITE_P(favorites, favorite_views_test,
                         testing::Values(favorite_view{"timing", 2, &favorites::cmd_fav_timing, &catalogue::lstv_timing,
                                                       &catalogue::lstv_pattern, "Favorite Timing",
                                                       "Press [Download] to download VELOTRACE favorite timings.\r\n"
                                                       "Check your favorite timings in timing table.\r\n"
                                                       "Press [SET] to upload favorite timings to VELOTRACE."},
                                         favorite_view{"pattern", 3, &favorites::cmd_fav_pattern,
                                                       &catalogue::lstv_pattern, &catalogue::lstv_timing,
                                                       "Favorite Pattern",
                                                       "Press [Download] to download VELOTRACE favorite patterns.\r\n"
                                                       "Check your favorite patterns in pattern table.\r\n"
                                                       "Press [SET] to upload favorite patterns to VELOTRACE."}),
                         [](const auto& view) { return std::string(view.param.name); });

TEST_P(favorite_views_test, change_the_view_before_they_show_anything) {
    std::size_t shown_before = 99;
    std::string caption_before = "?";
    desk_area.fra_desk.caption = "as before";
    rows.change_view = [&](int) {
        shown_before = shown().size();
        caption_before = desk_area.fra_desk.caption;
    };
    press();
    EXPECT_EQ(shown_before, 0U);
    EXPECT_EQ(caption_before, "as before");
}

TEST_P(favorite_views_test, have_these_texts_and_places) {
    press();
    EXPECT_EQ(views, std::vector{GetParam().view_mode});
    EXPECT_EQ(desk_area.fra_desk.caption, GetParam().caption);
    EXPECT_EQ(desk_area.lab_desk_note.caption, GetParam().note);
    EXPECT_TRUE(list().check_boxes);
    EXPECT_FALSE(other_list().check_boxes);
    EXPECT_EQ(desk_area.cmd_download.left, 5640);
    EXPECT_EQ(desk_area.cmd_download.top, 2250);
}

TEST_P(favorite_views_test, show_these_controls_and_no_other) {
    press();
    std::vector<control*> expected;
    for (control* c : all_that_can_be_shown()) {
        for (const control* e : std::initializer_list<const control*>{
                 &desk_area.fra_desk, &desk_area.cmd_run, &desk_area.cmd_download, &list(), &desk_area.lab_desk_note,
                 &desk_area.cmd_check_all, &desk_area.cmd_check_none})
            if (c == e) expected.push_back(c);
    }
    EXPECT_EQ(shown(), expected);
}

TEST_P(favorite_views_test, pump_with_all_on_show_and_give_the_focus_after_it) {
    film([this] {
        return desk_area.fra_desk.caption.get() + (shown().size() == 7 ? ", all shown" : ", not yet") +
               (list().has_focus() ? ", focus" : "");
    });
    press();
    EXPECT_EQ(frames, strings{std::string(GetParam().caption) + ", all shown"});
    EXPECT_TRUE(list().has_focus());
}

TEST_P(favorite_views_test, send_nothing_and_leave_the_checks) {
    list().set_checked(4, true);
    press();
    EXPECT_TRUE(m.port.take_written().empty());
    EXPECT_EQ(test::checked_rows(list()), std::vector{4});
}

TEST_P(favorite_views_test, find_their_checks_again_after_the_select_views) {
    press();
    list().set_checked(4, true);
    rows.cmd_timing_click();
    rows.cmd_pattern_click();
    EXPECT_FALSE(list().check_boxes);
    EXPECT_EQ(test::checked_rows(list()), std::vector{4});
    press();
    EXPECT_TRUE(list().check_boxes);
    EXPECT_EQ(test::checked_rows(list()), std::vector{4});
}

} // namespace
} // namespace desk
