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

TEST(window, tells_each_changed_control_once) {
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

TEST(window, is_among_the_changed_where_its_caption_changes) {
    window form;
    form.take_changed();
    form.caption = "VELOTRACE ";
    EXPECT_EQ(form.take_changed(), std::vector<control*>{&form});
}

} // namespace
} // namespace desk
