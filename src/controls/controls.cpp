#include "controls/controls.h"

#include "controls/kinds.h"
#include "runtime/failure.h"
#include "runtime/windows_1252.h"

namespace desk {

std::string control::full_name() const { return index < 0 ? name : name + "(" + std::to_string(index) + ")"; }

bool control::shown() const { return visible && (parent == nullptr || parent->shown()); }

bool control::usable() const { return visible && enabled && (parent == nullptr || parent->usable()); }

void control::set_focus() {
    if (owner == nullptr || !usable()) return;
    const bool had_it = owner->focused == this;
    owner->focused = this;
    mark_changed(*owner);
    if (!had_it && on_got_focus) on_got_focus();
}

bool control::has_focus() const { return owner != nullptr && owner->focused == this; }

void text_box::select(int start, int length) {
    sel_start_ = start;
    sel_length_ = length;
    ++selections_;
    mark_changed(*this);
}

void text_box::select_all() { select(0, static_cast<int>(character_count(text.get()))); }

void combo_box::add_item(std::string item, int at) {
    if (at < 0 || at > list_count())
        throw runtime_failure(failure::invalid_procedure_call, full_name() + " has no place " + std::to_string(at));
    items_.insert(items_.begin() + at, std::move(item));
    mark_changed(*this);
}

const std::string& combo_box::item(int list_index) const {
    if (list_index < 0 || list_index >= list_count()) {
        throw runtime_failure(failure::invalid_property_value,
                              full_name() + " has no list index " + std::to_string(list_index));
    }
    return items_.at(static_cast<std::size_t>(list_index));
}

void combo_box::set_list_index(int list_index) {
    if (list_index != -1) item(list_index);
    list_index_ = list_index;
    mark_changed(*this);
    if (list_index != -1 && on_click) on_click();
}

void check_box::set_value(int new_value) {
    if (new_value != 0 && new_value != 1) {
        throw runtime_failure(failure::invalid_property_value,
                              full_name() + " can't have the value " + std::to_string(new_value));
    }
    value = new_value;
}

void option_button::choose() {
    if (owner != nullptr) {
        for (control* c : owner->controls()) {
            if (auto* const other = as<option_button>(c); other != nullptr && other->parent == parent)
                other->value = false;
        }
    }
    value = true;
}

void slider::place(int value) {
    if (value < minimum || value > maximum) {
        throw runtime_failure(failure::invalid_property_value,
                              full_name() + " can't be moved to " + std::to_string(value));
    }
    value_ = value;
    mark_changed(*this);
}

void slider::set_value(int value) {
    const bool moves = value != value_;
    place(value);
    if (moves && on_change) on_change();
}

} // namespace desk
