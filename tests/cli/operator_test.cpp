#include "cli/operator.h"

#include "cli/answer.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

namespace desk::cli {
namespace {

/// A window with one control of each kind that the commands use.
class operator_test : public testing::Test {
protected:
    operator_test() {
        form.visible = true;
        around.name = "fra_around";
        form.add(around);
        const std::vector<std::pair<control*, const char*>> all{
            {&a_button, "a_button"}, {&a_list, "a_list"}, {&a_combo, "a_combo"},  {&an_option, "an_option"},
            {&a_check, "a_check"},   {&a_text, "a_text"}, {&a_slider, "a_slider"}};
        for (const auto& [c, name] : all) {
            c->name = name;
            c->parent = &around;
            form.add(*c);
        }
        for (const char* const row : {"one", "two", "three"})
            a_list.add_row(row);
        for (int i = 0; i < 3; ++i)
            a_combo.add_item("item", i);
        a_button.on_click = [this] { ++events; };
        a_list.on_click = [this] { ++events; };
        a_combo.on_click = [this] { ++events; };
        an_option.on_click = [this] { ++events; };
        a_check.on_click = [this] { ++events; };
        a_slider.on_change = [this] { ++events; };
    }

    void act_on_everything(const std::function<void(const std::function<void()>&, const std::string&)>& attempt) {
        attempt([this] { press(a_button); }, "a_button");
        attempt([this] { select(a_list, 2); }, "a_list");
        attempt([this] { check(a_list, 2, true); }, "a_list");
        attempt([this] { select(a_combo, 1); }, "a_combo");
        attempt([this] { select(an_option); }, "an_option");
        attempt([this] { check(a_check, true); }, "a_check");
        attempt([this] { type(a_text, "text"); }, "a_text");
        attempt([this] { drag(a_slider, 7); }, "a_slider");
    }

    void expect_everything_refused() {
        act_on_everything([](const std::function<void()>& act, const std::string& name) {
            try {
                act();
                ADD_FAILURE() << name << " accepts it";
            } catch (const command_failure& f) {
                EXPECT_EQ(f.status(), outcome::failed);
                EXPECT_EQ(std::string(f.what()), "the desk does not accept this now: " + name);
            }
        });
        EXPECT_EQ(events, 0);
        EXPECT_EQ(a_list.selected(), 1);
        EXPECT_FALSE(a_list.row(2).checked);
        EXPECT_EQ(a_combo.list_index(), -1);
        EXPECT_EQ(a_check.value.get(), 0);
        EXPECT_EQ(a_text.text.get(), "");
        EXPECT_EQ(a_slider.value(), 0);
    }

    window form;
    frame around;
    button a_button;
    list_view a_list;
    combo_box a_combo;
    option_button an_option;
    check_box a_check;
    text_box a_text;
    slider a_slider;
    int events = 0;
};

TEST_F(operator_test, uses_what_is_usable) {
    act_on_everything(
        [](const std::function<void()>& act, const std::string& name) { EXPECT_NO_THROW(act()) << name; });
    EXPECT_EQ(events, 6) << "clicks on button, list, combo box, option and check box, and a change of the slider";
    EXPECT_EQ(a_list.selected(), 2);
    EXPECT_TRUE(a_list.row(2).checked);
    EXPECT_EQ(a_check.value.get(), 1);
    EXPECT_EQ(a_text.text.get(), "text");
    EXPECT_EQ(a_slider.value(), 7);
}

TEST_F(operator_test, uses_nothing_that_is_disabled) {
    for (control* const c :
         std::vector<control*>{&a_button, &a_list, &a_combo, &an_option, &a_check, &a_text, &a_slider})
        c->enabled = false;
    expect_everything_refused();
}

TEST_F(operator_test, uses_nothing_that_is_hidden) {
    for (control* const c :
         std::vector<control*>{&a_button, &a_list, &a_combo, &an_option, &a_check, &a_text, &a_slider})
        c->visible = false;
    expect_everything_refused();
}

TEST_F(operator_test, uses_nothing_in_a_disabled_or_hidden_frame) {
    around.enabled = false;
    expect_everything_refused();
    around.enabled = true;
    around.visible = false;
    expect_everything_refused();
}

TEST_F(operator_test, changes_only_what_is_different) {
    a_check.value = 1;
    check(a_check, true);
    EXPECT_EQ(events, 0);
    check(a_check, false);
    EXPECT_EQ(events, 1);
    a_slider.set_value(7);
    events = 0;
    drag(a_slider, 7);
    EXPECT_EQ(events, 0);
}

TEST_F(operator_test, finds_a_control_by_its_full_name) {
    EXPECT_EQ(&control_in<button>(form, "a_button"), &a_button);
    an_option.index = 3;
    EXPECT_EQ(&control_in<option_button>(form, "an_option(3)"), &an_option);
}

} // namespace
} // namespace desk::cli
