#include "controls/controls.h"

#include "controls/kinds.h"
#include "support/expect_failure.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

namespace desk {
namespace {

using test::failure_of;

TEST(kind_of_control, is_its_class) {
    list_view l;
    control& c = l;
    EXPECT_EQ(kind_name(c), "list_view");
    EXPECT_EQ(as<list_view>(&c), &l);
    EXPECT_EQ(as<tree_view>(&c), nullptr);
    EXPECT_EQ(as<list_view>(static_cast<control*>(nullptr)), nullptr);
    EXPECT_TRUE((is<button, list_view>(c)));
    EXPECT_FALSE(is<button>(c));
    EXPECT_TRUE(same_kind(c, list_view()));
    EXPECT_FALSE(same_kind(c, tree_view()));
}

TEST(kind_of_control, has_its_own_name) {
    std::set<std::string_view> names;
    const auto add = [&](const auto&... controls) { (names.insert(kind_name(controls)), ...); };
    add(window(), frame(), button(), label(), text_box(), combo_box(), check_box(), option_button(), slider(),
        picture(), line(), list_view(), tree_view(), timer());
    EXPECT_EQ(names.size(), 14U);
    EXPECT_EQ(names.count(""), 0U);
}

TEST(control, starts_visible_and_enabled) {
    const button b;
    EXPECT_TRUE(b.visible);
    EXPECT_TRUE(b.enabled);
    EXPECT_EQ(b.back_color, 0x8000000FU) << "the system button face";
}

TEST(control, has_its_index_in_its_full_name) {
    button b;
    b.name = "cmd_out";
    EXPECT_EQ(b.full_name(), "cmd_out");
    b.index = 0;
    EXPECT_EQ(b.full_name(), "cmd_out(0)");
    b.index = 16;
    EXPECT_EQ(b.full_name(), "cmd_out(16)");
}

TEST(control, is_shown_if_every_frame_around_it_is) {
    frame outer;
    frame inner;
    label l;
    inner.parent = &outer;
    l.parent = &inner;
    EXPECT_TRUE(l.shown());
    outer.visible = false;
    EXPECT_FALSE(l.shown());
    outer.visible = true;
    inner.visible = false;
    EXPECT_FALSE(l.shown());
    inner.visible = true;
    l.visible = false;
    EXPECT_FALSE(l.shown());
}

TEST(control, is_usable_if_it_and_every_frame_is_visible_and_enabled) {
    frame outer;
    button b;
    b.parent = &outer;
    EXPECT_TRUE(b.usable());
    outer.enabled = false;
    EXPECT_FALSE(b.usable());
    EXPECT_TRUE(b.shown()) << "a disabled frame is still shown";
    outer.enabled = true;
    outer.visible = false;
    EXPECT_FALSE(b.usable());
    outer.visible = true;
    b.enabled = false;
    EXPECT_FALSE(b.usable());
    b.enabled = true;
    b.visible = false;
    EXPECT_FALSE(b.usable());
}

class focus : public testing::Test {
protected:
    focus() {
        form.add(first);
        form.add(second);
        first.on_got_focus = [this] { ++first_got_it; };
    }
    window form;
    text_box first;
    text_box second;
    int first_got_it = 0;
};

TEST_F(focus, is_with_one_control) {
    EXPECT_FALSE(first.has_focus());
    first.set_focus();
    EXPECT_TRUE(first.has_focus());
    second.set_focus();
    EXPECT_FALSE(first.has_focus());
    EXPECT_TRUE(second.has_focus());
}

TEST_F(focus, raises_got_focus_if_it_was_not_there) {
    first.set_focus();
    first.set_focus();
    EXPECT_EQ(first_got_it, 1);
    second.set_focus();
    first.set_focus();
    EXPECT_EQ(first_got_it, 2);
}

TEST_F(focus, stays_away_from_what_is_hidden_or_disabled) {
    second.set_focus();
    first.visible = false;
    first.set_focus();
    EXPECT_TRUE(second.has_focus());
    first.visible = true;
    first.enabled = false;
    first.set_focus();
    EXPECT_TRUE(second.has_focus());
    EXPECT_EQ(first_got_it, 0);
}

TEST(property, converts_to_its_value) {
    label l;
    l.caption = "Timing";
    l.caption += " :";
    const std::string& text = l.caption;
    EXPECT_EQ(text, "Timing :");
    EXPECT_EQ(l.caption.get().size(), 8U);
    EXPECT_EQ(l.caption.get(), "Timing :");
}

TEST(property, marks_its_control_if_it_takes_another_value) {
    window form;
    label l;
    form.add(l);
    form.take_changed();
    l.caption = "";
    EXPECT_TRUE(form.take_changed().empty());
    l.caption = "x";
    EXPECT_EQ(form.take_changed(), std::vector<control*>{&l});
    l.visible = true;
    EXPECT_TRUE(form.take_changed().empty());
    l.visible = false;
    EXPECT_EQ(form.take_changed(), std::vector<control*>{&l});
}

TEST(property, marks_its_control_if_its_text_grows) {
    window form;
    text_box t;
    form.add(t);
    form.take_changed();
    t.text += "";
    EXPECT_TRUE(form.take_changed().empty());
    t.text += "a";
    EXPECT_EQ(form.take_changed(), std::vector<control*>{&t});
    t.text += "b";
    t.text += std::string("\r\nc");
    EXPECT_EQ(form.take_changed(), std::vector<control*>{&t});
    EXPECT_EQ(t.text, "ab\r\nc");
}

TEST(property, distinguishes_an_appended_text_from_a_new_one) {
    text_box t;
    t.text = "a";
    const int replacements = t.text.replacements();
    t.text += "b";
    t.text = "ab";
    EXPECT_EQ(t.text.replacements(), replacements);
    t.text = "abc";
    EXPECT_EQ(t.text.replacements(), replacements + 1);
}

TEST(property, gives_the_memory_of_a_long_text_back) {
    text_box t;
    t.text = std::string(1'000'000, 'x');
    t.text = "";
    EXPECT_LT(t.text.get().capacity(), 1000U);
}

TEST(property, takes_the_value_of_another) {
    label from;
    label to;
    from.caption = "x";
    to.caption = from.caption;
    EXPECT_EQ(to.caption, "x");
}

TEST(text_box, selects_its_whole_text_in_characters) {
    text_box t;
    t.text = "äb€";
    t.select(2, 1);
    EXPECT_EQ(t.sel_start(), 2);
    EXPECT_EQ(t.sel_length(), 1);
    t.select_all();
    EXPECT_EQ(t.sel_start(), 0);
    EXPECT_EQ(t.sel_length(), 3);
}

class filled_combo_box : public testing::Test {
protected:
    filled_combo_box() {
        for (const char* item : {"COM1:", "COM2:", "COM3:"})
            box.add_item(item, box.list_count());
        box.on_click = [this] { clicks.push_back(box.list_index()); };
    }
    combo_box box;
    std::vector<int> clicks;
};

TEST_F(filled_combo_box, has_no_item_chosen_at_first) {
    EXPECT_EQ(box.list_index(), -1);
    EXPECT_EQ(box.text(), "");
    EXPECT_EQ(box.list_count(), 3);
}

TEST_F(filled_combo_box, takes_an_item_at_an_index) {
    box.add_item("new", 1);
    EXPECT_EQ(box.items(), (std::vector<std::string>{"COM1:", "new", "COM2:", "COM3:"}));
}

TEST_F(filled_combo_box, has_no_place_outside_its_list) {
    EXPECT_EQ(failure_of([&] { box.add_item("x", 4); }), failure::invalid_procedure_call);
    EXPECT_EQ(failure_of([&] { box.add_item("x", -1); }), failure::invalid_procedure_call);
    EXPECT_EQ(box.list_count(), 3);
}

TEST_F(filled_combo_box, raises_click_if_the_program_sets_its_index) {
    box.set_list_index(2);
    EXPECT_EQ(box.text(), "COM3:");
    box.set_list_index(2);
    box.set_list_index(-1);
    EXPECT_EQ(box.list_index(), -1);
    EXPECT_EQ(clicks, (std::vector<int>{2, 2})) << "once for each choice, the index being set already";
}

TEST_F(filled_combo_box, refuses_an_index_outside_its_list) {
    box.set_list_index(0);
    clicks.clear();
    EXPECT_EQ(failure_of([&] { box.set_list_index(3); }), failure::invalid_property_value);
    EXPECT_EQ(failure_of([&] { box.set_list_index(-2); }), failure::invalid_property_value);
    EXPECT_EQ(failure_of([&] { box.item(3); }), failure::invalid_property_value);
    EXPECT_EQ(box.list_index(), 0);
    EXPECT_TRUE(clicks.empty());
}

TEST(check_box, takes_0_and_1_and_raises_nothing) {
    check_box c;
    bool clicked = false;
    c.on_click = [&] { clicked = true; };
    c.value = 1;
    EXPECT_EQ(c.value, 1);
    c.value = 0;
    c.set_value(1);
    EXPECT_EQ(c.value, 1);
    for (const int wrong : {-1, 2, 255})
        EXPECT_EQ(failure_of([&] { c.set_value(wrong); }), failure::invalid_property_value) << wrong;
    EXPECT_EQ(c.value, 1);
    c.set_value(0);
    EXPECT_EQ(c.value, 0);
    EXPECT_FALSE(clicked);
}

TEST(option_button, takes_the_choice_from_the_others_in_its_frame) {
    window form;
    frame sources;
    option_button a;
    option_button b;
    option_button elsewhere;
    a.parent = &sources;
    b.parent = &sources;
    for (control* c : std::vector<control*>{&sources, &a, &b, &elsewhere})
        form.add(*c);
    elsewhere.value = true;
    a.choose();
    EXPECT_TRUE(a.value);
    b.choose();
    EXPECT_FALSE(a.value);
    EXPECT_TRUE(b.value);
    EXPECT_TRUE(elsewhere.value) << "it is in no frame";
}

class watched_slider : public testing::Test {
protected:
    watched_slider() {
        s.on_change = [this] { ++changes; };
        s.on_scroll = [this] { ++scrolls; };
    }
    slider s;
    int changes = 0;
    int scrolls = 0;
};

TEST_F(watched_slider, runs_from_0_to_255_with_a_large_step_of_20) {
    EXPECT_EQ(s.minimum, 0);
    EXPECT_EQ(s.maximum, 255);
    EXPECT_EQ(s.large_step, 20);
    EXPECT_EQ(s.value(), 0);
}

TEST_F(watched_slider, raises_change_if_the_program_moves_it) {
    s.set_value(100);
    EXPECT_EQ(s.value(), 100);
    EXPECT_EQ(changes, 1);
    s.set_value(100);
    EXPECT_EQ(changes, 1) << "it did not move";
    EXPECT_EQ(scrolls, 0);
}

TEST_F(watched_slider, can_be_placed_in_silence) {
    s.place(7);
    EXPECT_EQ(s.value(), 7);
    EXPECT_EQ(changes, 0);
}

TEST_F(watched_slider, refuses_a_value_outside_its_range) {
    s.set_value(255);
    EXPECT_EQ(failure_of([&] { s.set_value(256); }), failure::invalid_property_value);
    EXPECT_EQ(failure_of([&] { s.place(-1); }), failure::invalid_property_value);
    EXPECT_EQ(s.value(), 255);
    EXPECT_EQ(changes, 1);
}

TEST(timer, is_off_and_nothing_to_see_at_first) {
    const timer t;
    EXPECT_FALSE(t.enabled);
    EXPECT_FALSE(t.visible);
}

} // namespace
} // namespace desk
