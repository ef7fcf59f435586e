#include "controls/list_view.h"

#include "controls/window.h"
#include "support/expect_failure.h"

#include <gtest/gtest.h>

#include <vector>

namespace desk {
namespace {

using test::failure_of;

class three_rows : public testing::Test {
protected:
    three_rows() {
        for (const char* text : {"one", "two", "three"})
            rows.add_row(text);
    }
    list_view rows;
};

TEST(empty_list_view, has_no_selected_row) {
    const list_view rows;
    EXPECT_EQ(rows.selected(), 0);
    EXPECT_EQ(rows.row_count(), 0);
}

TEST_F(three_rows, start_with_the_first_selected) { EXPECT_EQ(rows.selected(), 1); }

TEST_F(three_rows, count_from_1) {
    EXPECT_EQ(rows.row_count(), 3);
    EXPECT_EQ(rows.text(1), "one");
    EXPECT_EQ(rows.text(3), "three");
}

TEST_F(three_rows, can_be_selected) {
    rows.select(3);
    EXPECT_EQ(rows.selected(), 3);
}

TEST_F(three_rows, reject_other_row_numbers) {
    EXPECT_EQ(failure_of([&] { rows.text(0); }), failure::index_out_of_bounds);
    EXPECT_EQ(failure_of([&] { rows.text(4); }), failure::index_out_of_bounds);
    EXPECT_EQ(failure_of([&] { rows.select(4); }), failure::index_out_of_bounds);
    EXPECT_EQ(failure_of([&] { rows.select(0); }), failure::index_out_of_bounds);
    EXPECT_EQ(failure_of([&] { rows.set_checked(4, true); }), failure::index_out_of_bounds);
    EXPECT_EQ(failure_of([&] { rows.set_sub_item(4, 1, "x"); }), failure::index_out_of_bounds);
    EXPECT_EQ(failure_of([&] { static_cast<void>(rows.sub_item(0, 1)); }), failure::index_out_of_bounds);
    EXPECT_EQ(rows.selected(), 1);
}

TEST_F(three_rows, have_sub_items_from_1) {
    rows.set_sub_item(2, 3, "third");
    rows.set_sub_item(2, 1, "first");
    EXPECT_EQ(rows.sub_item(2, 1), "first");
    EXPECT_EQ(rows.sub_item(2, 2), "") << "never set";
    EXPECT_EQ(rows.sub_item(2, 3), "third");
    EXPECT_EQ(rows.sub_item(2, 4), "");
    EXPECT_EQ(rows.sub_item(1, 1), "") << "another row";
    EXPECT_EQ(failure_of([&] { rows.set_sub_item(2, 0, "x"); }), failure::invalid_property_value);
    EXPECT_EQ(failure_of([&] { static_cast<void>(rows.sub_item(2, 0)); }), failure::invalid_property_value);
}

TEST_F(three_rows, keep_their_checks_while_the_boxes_are_hidden) {
    EXPECT_FALSE(rows.check_boxes);
    rows.set_checked(2, true);
    rows.check_boxes = true;
    rows.check_boxes = false;
    EXPECT_FALSE(rows.row(1).checked);
    EXPECT_TRUE(rows.row(2).checked);
    rows.set_checked(2, false);
    EXPECT_FALSE(rows.row(2).checked);
}

TEST_F(three_rows, lose_their_selection_when_cleared) {
    rows.select(2);
    rows.clear();
    EXPECT_EQ(rows.row_count(), 0);
    EXPECT_EQ(rows.selected(), 0);
    rows.add_row("new");
    EXPECT_EQ(rows.selected(), 1);
    EXPECT_FALSE(rows.row(1).checked);
}

TEST_F(three_rows, report_every_change_to_their_window) {
    window form;
    form.add(rows);
    const std::vector<control*> expected{&rows};
    form.take_changed();
    rows.add_row("four");
    EXPECT_EQ(form.take_changed(), expected);
    rows.select(2);
    EXPECT_EQ(form.take_changed(), expected);
    rows.set_checked(1, true);
    EXPECT_EQ(form.take_changed(), expected);
    rows.set_sub_item(1, 1, "x");
    EXPECT_EQ(form.take_changed(), expected);
    rows.clear();
    EXPECT_EQ(form.take_changed(), expected);
}

} // namespace
} // namespace desk
