#pragma once

#include "controls/control.h"

#include <functional>
#include <string>
#include <vector>

namespace desk {

/// A node of a tree view.
struct tree_node {
    std::string key;
    std::string title;
    int parent = 0; ///< number of the parent node; 0: a root
    bool expanded = false;
    bool bold = false;
};

/// A tree view. Nodes are numbered from 1 in the order in which they are added.
class tree_view : public control {
public:
    tree_view() : control(this) { back_color = color_white; }

    void clear();
    /// How often the tree was cleared: rebuilt nodes can look the same.
    int clearings() const { return clearings_; }
    /// Adds a node as the last child of `parent` (0: as a root). Throws failure::index_out_of_bounds if there is no
    /// such parent and failure::key_not_unique if another node has the key.
    void add(int parent, std::string key, std::string title);
    int node_count() const { return static_cast<int>(nodes_.size()); }
    /// Throws failure::index_out_of_bounds.
    const tree_node& node(int number) const;
    void set_expanded(int number, bool expanded);
    void set_bold(int number, bool bold);
    const std::vector<tree_node>& nodes() const { return nodes_; }

    std::function<void(int)> on_node_click; ///< with the number of the node

private:
    tree_node& node_at(int number);
    std::vector<tree_node> nodes_;
    int clearings_ = 0;
};

} // namespace desk
