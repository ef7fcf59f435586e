#include "controls/operator_actions.h"

#include "runtime/windows_1252.h"

namespace desk {

namespace {

void raise(const event& e) {
    if (e) e();
}

} // namespace

void click(button& b) {
    b.set_focus();
    raise(b.on_click);
}

void click(label& l) { raise(l.on_click); }

void click(check_box& c) {
    c.set_focus();
    c.value = c.value == 0 ? 1 : 0;
    raise(c.on_click);
}

void click(option_button& o) {
    o.set_focus();
    o.choose();
    raise(o.on_click);
}

void choose_item(combo_box& c, int list_index) {
    c.set_focus();
    c.set_list_index(list_index);
}

void choose_row(list_view& l, int row) {
    l.set_focus();
    l.select(row);
    raise(l.on_click);
}

void double_click(list_view& l) { raise(l.on_double_click); }

void key_up(list_view& l) { raise(l.on_key_up); }

void set_check(list_view& l, int row, bool checked) { l.set_checked(row, checked); }

void move_slider(slider& s, int value) {
    s.set_focus();
    s.place(value);
    raise(s.on_change);
}

void drag_slider(slider& s, int value) {
    s.set_focus();
    s.place(value);
    raise(s.on_scroll);
}

void type_text(text_box& t, std::string text) {
    t.set_focus();
    t.text = std::move(text);
    t.select(static_cast<int>(character_count(t.text.get())), 0);
}

void press_key(text_box& t, int code) {
    if (t.on_key_press) t.on_key_press(code);
}

void click_node(tree_view& t, int node) {
    t.set_focus();
    if (t.on_node_click) t.on_node_click(node);
}

void hover(label& l) { raise(l.on_mouse_move); }

} // namespace desk
