#include "controls/operator_actions.h"

#include "controls/window.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace desk {
namespace {

class operator_actions : public testing::Test {
protected:
    template <class Control>
    Control& added(Control& c) {
        form.add(c);
        return c;
    }
    event note(const std::string& what) {
        return [this, what] { noted.push_back(what); };
    }

    window form;
    std::vector<std::string> noted;
};

TEST_F(operator_actions, a_click_on_a_button_gives_it_the_focus_and_raises_click) {
    button b;
    added(b).on_click = note("click");
    click(b);
    EXPECT_TRUE(b.has_focus());
    EXPECT_EQ(noted, std::vector<std::string>{"click"});
}

TEST_F(operator_actions, a_click_on_a_label_moves_no_focus) {
    label l;
    added(l).on_click = note("click");
    click(l);
    EXPECT_FALSE(l.has_focus());
    EXPECT_EQ(noted, std::vector<std::string>{"click"});
}

TEST_F(operator_actions, a_check_box_changes_its_value_before_its_click) {
    check_box c;
    std::vector<int> seen;
    added(c).on_click = [&] { seen.push_back(c.value); };
    click(c);
    click(c);
    EXPECT_EQ(seen, (std::vector<int>{1, 0}));
}

TEST_F(operator_actions, an_option_button_is_selected_before_its_click) {
    option_button a;
    option_button b;
    bool seen = false;
    added(a).value = true;
    added(b).on_click = [&] { seen = b.value && !a.value; };
    click(b);
    EXPECT_TRUE(seen);
}

TEST_F(operator_actions, an_option_button_that_was_selected_is_clicked_all_the_same) {
    option_button a;
    added(a).on_click = note("click");
    a.value = true;
    click(a);
    EXPECT_EQ(noted, std::vector<std::string>{"click"});
    EXPECT_TRUE(a.value);
}

TEST_F(operator_actions, choosing_an_item_raises_click_after_it) {
    combo_box c;
    std::vector<int> seen;
    added(c).add_item("one", 0);
    c.add_item("two", 1);
    c.on_click = [&] { seen.push_back(c.list_index()); };
    choose_item(c, 1);
    choose_item(c, 1);
    EXPECT_EQ(seen, (std::vector<int>{1, 1}));
}

TEST_F(operator_actions, choosing_a_row_selects_it_and_raises_click) {
    list_view l;
    std::vector<int> seen;
    added(l).add_row("one");
    l.add_row("two");
    l.on_click = [&] { seen.push_back(l.selected()); };
    choose_row(l, 2);
    EXPECT_EQ(seen, std::vector<int>{2});
    EXPECT_TRUE(l.has_focus());
}

TEST_F(operator_actions, a_list_view_takes_double_clicks_and_keys) {
    list_view l;
    added(l).on_double_click = note("double");
    l.on_key_up = note("key up");
    double_click(l);
    key_up(l);
    EXPECT_EQ(noted, (std::vector<std::string>{"double", "key up"}));
}

TEST_F(operator_actions, a_row_is_checked_without_an_event) {
    list_view l;
    added(l).add_row("one");
    l.on_click = note("click");
    set_check(l, 1, true);
    EXPECT_TRUE(l.row(1).checked);
    set_check(l, 1, false);
    EXPECT_FALSE(l.row(1).checked);
    EXPECT_TRUE(noted.empty());
}

TEST_F(operator_actions, a_slider_raises_change_when_moved_and_scroll_when_dragged) {
    slider s;
    added(s).on_change = [&] { noted.push_back("change " + std::to_string(s.value())); };
    s.on_scroll = [&] { noted.push_back("scroll " + std::to_string(s.value())); };
    move_slider(s, 20);
    drag_slider(s, 21);
    EXPECT_EQ(noted, (std::vector<std::string>{"change 20", "scroll 21"}));
}

TEST_F(operator_actions, typing_replaces_the_text_after_the_focus_came) {
    text_box t;
    std::string at_focus = "none";
    added(t).text = "old";
    t.on_got_focus = [&] { at_focus = t.text.get(); };
    t.on_key_press = [&](int) { noted.emplace_back("key"); };
    type_text(t, "n\u00e9w");
    EXPECT_EQ(t.text, "n\u00e9w");
    EXPECT_EQ(t.sel_start(), 3) << "the cursor is after the last character";
    EXPECT_EQ(t.sel_length(), 0);
    EXPECT_EQ(at_focus, "old");
    EXPECT_TRUE(noted.empty()) << "typing a whole text raises no KeyPress";
}

TEST_F(operator_actions, a_key_has_its_code) {
    text_box t;
    int seen = 0;
    added(t).text = "kept";
    t.on_key_press = [&](int code) { seen = code; };
    press_key(t, 13);
    EXPECT_EQ(seen, 13);
    EXPECT_EQ(t.text, "kept");
}

TEST_F(operator_actions, a_node_is_clicked_by_its_number) {
    tree_view t;
    int seen = 0;
    added(t).add(0, "a", "a");
    t.add(1, "b", "b");
    t.on_node_click = [&](int node) { seen = node; };
    click_node(t, 2);
    EXPECT_EQ(seen, 2);
    EXPECT_TRUE(t.has_focus());
}

TEST_F(operator_actions, hovering_raises_mouse_move) {
    label l;
    added(l).on_mouse_move = note("move");
    hover(l);
    EXPECT_EQ(noted, std::vector<std::string>{"move"});
}

TEST_F(operator_actions, work_without_handlers) {
    button b;
    label l;
    text_box t;
    list_view v;
    click(added(b));
    click(added(l));
    hover(l);
    press_key(added(t), 65);
    double_click(added(v));
    key_up(v);
    EXPECT_TRUE(b.has_focus());
}

} // namespace
} // namespace desk
