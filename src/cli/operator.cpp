#include "cli/operator.h"

#include "cli/answer.h"
#include "controls/operator_actions.h"

namespace desk::cli {

namespace {

void expect_usable(const control& c) {
    if (!c.usable()) throw command_failure(outcome::failed, "the desk does not accept this now: " + c.full_name());
}

} // namespace

void press(button& b) {
    expect_usable(b);
    click(b);
}

void select(list_view& l, int row) {
    expect_usable(l);
    choose_row(l, row);
}

void select(combo_box& c, int list_index) {
    expect_usable(c);
    choose_item(c, list_index);
}

void select(option_button& o) {
    expect_usable(o);
    click(o);
}

void check(list_view& l, int row, bool checked) {
    expect_usable(l);
    set_check(l, row, checked);
}

void check(check_box& c, bool checked) {
    expect_usable(c);
    if ((c.value == 1) != checked) click(c);
}

void type(text_box& t, const std::string& text) {
    expect_usable(t);
    type_text(t, text);
}

void drag(slider& s, int value) {
    expect_usable(s);
    if (s.value() != value) move_slider(s, value);
}

} // namespace desk::cli
