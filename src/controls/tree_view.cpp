#include "controls/tree_view.h"

#include "runtime/failure.h"

#include <algorithm>

namespace desk {

void tree_view::clear() {
    nodes_.clear();
    ++clearings_;
    mark_changed(*this);
}

void tree_view::add(int parent, std::string key, std::string title) {
    if (parent < 0 || parent > node_count()) {
        throw runtime_failure(failure::index_out_of_bounds,
                              full_name() + " has no node " + std::to_string(parent) + " to put " + key + " under");
    }
    if (std::any_of(nodes_.begin(), nodes_.end(), [&](const tree_node& n) { return n.key == key; }))
        throw runtime_failure(failure::key_not_unique, full_name() + " already has a node " + key);
    nodes_.push_back({std::move(key), std::move(title), parent});
    mark_changed(*this);
}

const tree_node& tree_view::node(int number) const {
    if (number < 1 || number > node_count())
        throw runtime_failure(failure::index_out_of_bounds, full_name() + " has no node " + std::to_string(number));
    return nodes_.at(static_cast<std::size_t>(number - 1));
}

tree_node& tree_view::node_at(int number) {
    node(number);
    mark_changed(*this);
    return nodes_.at(static_cast<std::size_t>(number - 1));
}

void tree_view::set_expanded(int number, bool expanded) { node_at(number).expanded = expanded; }

void tree_view::set_bold(int number, bool bold) { node_at(number).bold = bold; }

} // namespace desk
