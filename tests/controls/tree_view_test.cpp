#include "controls/tree_view.h"

#include "controls/window.h"
#include "support/expect_failure.h"

#include <gtest/gtest.h>

#include <vector>

namespace desk {
namespace {

using test::failure_of;

class small_tree : public testing::Test {
protected:
    small_tree() {
        tree.add(0, "root", "EDID");
        tree.add(1, "block0", "Block 0");
        tree.add(2, "vendor", "Vendor");
    }
    tree_view tree;
};

TEST_F(small_tree, numbers_its_nodes_in_order_of_adding) {
    EXPECT_EQ(tree.node_count(), 3);
    EXPECT_EQ(tree.node(1).key, "root");
    EXPECT_EQ(tree.node(1).parent, 0);
    EXPECT_EQ(tree.node(3).title, "Vendor");
    EXPECT_EQ(tree.node(3).parent, 2);
}

TEST_F(small_tree, starts_folded_and_plain) {
    for (const tree_node& n : tree.nodes()) {
        EXPECT_FALSE(n.expanded);
        EXPECT_FALSE(n.bold);
    }
    tree.set_expanded(1, true);
    tree.set_bold(2, true);
    EXPECT_TRUE(tree.node(1).expanded);
    EXPECT_FALSE(tree.node(1).bold);
    EXPECT_TRUE(tree.node(2).bold);
}

TEST_F(small_tree, wants_every_key_once) {
    EXPECT_EQ(failure_of([&] { tree.add(1, "vendor", "again"); }), failure::key_not_unique);
    EXPECT_EQ(tree.node_count(), 3);
}

TEST_F(small_tree, has_no_node_outside) {
    EXPECT_EQ(failure_of([&] { tree.add(4, "x", "x"); }), failure::index_out_of_bounds);
    EXPECT_EQ(failure_of([&] { tree.add(-1, "x", "x"); }), failure::index_out_of_bounds);
    EXPECT_EQ(failure_of([&] { static_cast<void>(tree.node(0)); }), failure::index_out_of_bounds);
    EXPECT_EQ(failure_of([&] { static_cast<void>(tree.node(4)); }), failure::index_out_of_bounds);
    EXPECT_EQ(failure_of([&] { tree.set_bold(4, true); }), failure::index_out_of_bounds);
    EXPECT_EQ(failure_of([&] { tree.set_expanded(0, true); }), failure::index_out_of_bounds);
}

TEST_F(small_tree, can_be_emptied_and_filled_again) {
    tree.clear();
    EXPECT_EQ(tree.node_count(), 0);
    tree.add(0, "root", "again");
    EXPECT_EQ(tree.node(1).title, "again");
}

TEST_F(small_tree, reports_every_change_to_its_window) {
    window form;
    form.add(tree);
    const std::vector<control*> changed{&tree};
    form.take_changed();
    tree.add(0, "second", "x");
    EXPECT_EQ(form.take_changed(), changed);
    tree.set_bold(1, true);
    EXPECT_EQ(form.take_changed(), changed);
    tree.set_expanded(1, true);
    EXPECT_EQ(form.take_changed(), changed);
    tree.clear();
    EXPECT_EQ(form.take_changed(), changed);
}

TEST_F(small_tree, reports_that_it_was_cleared_if_the_same_nodes_come_again) {
    const int before = tree.clearings();
    tree.clear();
    tree.add(0, "root", "EDID");
    EXPECT_NE(tree.clearings(), before);
}

} // namespace
} // namespace desk
