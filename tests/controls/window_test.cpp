#include "controls/window.h"

#include "controls/controls.h"

#include <gtest/gtest.h>

#include <vector>

namespace desk {
namespace {

TEST(window, is_grey) {
    const window form;
    EXPECT_EQ(form.back_color, 0xC0C0C0U);
}

TEST(window, owns_what_is_added_in_this_order) {
    window form;
    button b;
    label l;
    form.add(b);
    form.add(l);
    EXPECT_EQ(form.controls(), (std::vector<control*>{&b, &l}));
    EXPECT_EQ(b.owner, &form);
}

TEST(window, knows_its_timers) {
    window form;
    button b;
    timer t;
    form.add(b);
    form.add(t);
    EXPECT_EQ(form.timers(), std::vector<timer*>{&t});
}

TEST(window, finds_a_control_by_its_full_name) {
    window form;
    button first;
    button second;
    first.name = second.name = "cmd_out";
    first.index = 0;
    second.index = 1;
    form.add(first);
    form.add(second);
    EXPECT_EQ(form.find("cmd_out(1)"), &second);
    EXPECT_EQ(form.find("cmd_out"), nullptr);
    EXPECT_EQ(form.find("cmd_out(2)"), nullptr);
}

TEST(window, is_not_on_show_until_it_is_opened) {
    const window form;
    EXPECT_FALSE(form.visible);
}

class settling_focus : public testing::Test {
protected:
    settling_focus() {
        form.add(first);
        form.add(second);
        first.on_got_focus = [this] { ++first_got_it; };
        first.set_focus();
        first_got_it = 0;
    }
    window form;
    text_box first;
    text_box second;
    int first_got_it = 0;
};

TEST_F(settling_focus, leaves_a_control_that_can_be_used) {
    form.settle_focus();
    EXPECT_TRUE(first.has_focus());
}

TEST_F(settling_focus, takes_it_from_a_control_that_is_hidden_for_good) {
    first.visible = false;
    form.settle_focus();
    EXPECT_EQ(form.focused, nullptr);
    first.visible = true;
    form.settle_focus();
    EXPECT_EQ(form.focused, nullptr);
}

TEST_F(settling_focus, gives_it_back_to_a_control_that_was_only_disabled) {
    first.enabled = false;
    form.settle_focus();
    EXPECT_EQ(form.focused, nullptr);
    first.enabled = true;
    form.settle_focus();
    EXPECT_TRUE(first.has_focus());
    EXPECT_EQ(first_got_it, 0) << "in silence";
}

TEST_F(settling_focus, leaves_it_if_another_has_taken_it) {
    first.enabled = false;
    form.settle_focus();
    second.set_focus();
    form.settle_focus();
    first.enabled = true;
    form.settle_focus();
    EXPECT_TRUE(second.has_focus());
}

TEST(window, does_not_give_the_focus_back_to_a_control_that_was_hidden_meanwhile) {
    window form;
    button b;
    form.add(b);
    form.visible = true;
    b.set_focus();
    b.enabled = false;
    form.settle_focus();
    b.visible = false;
    form.settle_focus();
    b.visible = true;
    b.enabled = true;
    form.settle_focus();
    EXPECT_FALSE(b.has_focus());
}

TEST(window, reports_each_changed_control_once) {
    window form;
    label a;
    label b;
    form.add(a);
    form.add(b);
    form.take_changed();
    b.caption = "1";
    a.caption = "2";
    b.caption = "3";
    EXPECT_EQ(form.take_changed(), (std::vector<control*>{&b, &a}));
    EXPECT_TRUE(form.take_changed().empty());
    b.caption = "4";
    EXPECT_EQ(form.take_changed(), std::vector<control*>{&b});
}

TEST(window, counts_what_was_added_as_changed) {
    window form;
    label a;
    form.take_changed();
    form.add(a);
    EXPECT_EQ(form.take_changed(), std::vector<control*>{&a});
}

TEST(window, is_among_the_changed_if_its_caption_changes) {
    window form;
    form.take_changed();
    form.caption = "VELOTRACE ";
    EXPECT_EQ(form.take_changed(), std::vector<control*>{&form});
}

} // namespace
} // namespace desk
