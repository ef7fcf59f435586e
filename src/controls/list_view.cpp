#include "controls/list_view.h"

#include "runtime/failure.h"

namespace desk {

void list_view::add_row(std::string text) {
    rows_.push_back({std::move(text), {}, false});
    if (selected_ == 0) selected_ = 1;
    mark_changed(*this);
}

void list_view::clear() {
    rows_.clear();
    selected_ = 0;
    mark_changed(*this);
}

const list_row& list_view::row(int number) const {
    if (number < 1 || number > row_count())
        throw runtime_failure(failure::index_out_of_bounds, full_name() + " has no row " + std::to_string(number));
    return rows_.at(static_cast<std::size_t>(number - 1));
}

list_row& list_view::row_at(int number) {
    row(number);
    mark_changed(*this);
    return rows_.at(static_cast<std::size_t>(number - 1));
}

std::string list_view::sub_item(int number, int sub) const {
    const list_row& r = row(number);
    if (sub < 1) {
        throw runtime_failure(failure::invalid_property_value, full_name() + " has no sub-item " + std::to_string(sub));
    }
    const auto place = static_cast<std::size_t>(sub - 1);
    return place < r.sub.size() ? r.sub[place] : "";
}

void list_view::set_sub_item(int number, int sub, std::string text) {
    sub_item(number, sub);
    list_row& r = row_at(number);
    const auto place = static_cast<std::size_t>(sub - 1);
    if (place >= r.sub.size()) r.sub.resize(place + 1);
    r.sub[place] = std::move(text);
}

void list_view::set_checked(int number, bool checked) { row_at(number).checked = checked; }

void list_view::select(int number) {
    row(number);
    selected_ = number;
    ++selections_;
    mark_changed(*this);
}

} // namespace desk
