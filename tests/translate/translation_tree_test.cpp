#include "translate/translation_tree.h"

#include "support/translation_fixture.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace desk {
namespace {

using test::cea_edid;
using test::edid_of;
using test::failure_of;
using test::full_hd;
using test::monitor_descriptor;
using test::usual_edid;
using test::vga;
using strings = std::vector<std::string>;

// tests/golden has whole trees; these tests cover what one translation leaves to the next, and what it accepts.
class translation_tree_test : public test::translation_fixture {
protected:
    /// The nodes below one, or the roots (0), with their keys and titles.
    strings below(int parent) const {
        strings found;
        for (const tree_node& n : view.tree_edid.nodes())
            if (n.parent == parent) found.push_back(n.key + ": " + n.title);
        return found;
    }
    strings below(const std::string& key) const { return below(number_of(key)); }
    strings keys_from(int number) const {
        strings keys;
        for (int i = number; i <= view.tree_edid.node_count(); ++i)
            keys.push_back(view.tree_edid.node(i).key);
        return keys;
    }
    strings expanded() const { return keys_that(&tree_node::expanded); }
    strings bold() const { return keys_that(&tree_node::bold); }
    std::optional<failure> failure_for(const edid_buffer& edid) {
        return failure_of([&] { translate(edid); });
    }

private:
    strings keys_that(bool tree_node::*property) const {
        strings keys;
        for (const tree_node& n : view.tree_edid.nodes())
            if (n.*property) keys.push_back(n.key);
        return keys;
    }
};

TEST_F(translation_tree_test, looks_at_all_eight_bytes_of_the_header) {
    for (std::size_t i = 0; i < 8; ++i) {
        translate(edid_of({{i, {0x5A}}}, cea_edid(4)));
        EXPECT_EQ(keys_from(1), strings{"block0_root_false"}) << i;
    }
}

TEST_F(translation_tree_test, leaves_the_tables_as_they_are_for_a_bad_header) {
    translate(cea_edid(6, {{132, {0x21, 1}}}));
    const translation_tables before = tables;
    translate({});
    EXPECT_EQ(tables.descriptor_map, before.descriptor_map);
    EXPECT_EQ(tables.descriptor_start, before.descriptor_start);
    EXPECT_EQ(tables.data_block_addr, before.data_block_addr);
    EXPECT_EQ(tables.cea_dtd_offset, 6);
    EXPECT_TRUE(tables.is_cea_block1);
}

TEST_F(translation_tree_test, does_not_look_at_checksum_version_and_extension_flag) {
    for (const std::size_t place : {18U, 19U, 126U, 127U, 255U}) {
        translate(edid_of({{place, {0x5A}}}, cea_edid(0)));
        EXPECT_EQ(below(0).size(), 2U) << place;
    }
}

using block_1 = translation_tree_test;

TEST_F(block_1, has_detail_timings_and_no_data_blocks_for_offset_4) {
    tables.data_block_addr.fill(132);
    translate(cea_edid(4, {{132, full_hd}, {150, vga}}));
    EXPECT_EQ(below(2), (strings{"block1_binary: Binary List", "block1_dtv: DTV Monitor Support",
                                 "block1_db: Data Block Collection", "block1_detail: Detail Timings Extended"}));
    EXPECT_EQ(below("block1_db"), strings{});
    EXPECT_EQ(below("block1_detail"), (strings{"block1_detail1: Detail Timing1", "block1_detail2: Detail Timing2"}));
    EXPECT_EQ(expanded(), (strings{"block0_root_true", "block1_root_true"}));
}

TEST_F(block_1, has_no_data_blocks_for_an_offset_below_4) {
    for (const int d : {1, 2, 3}) {
        tables.data_block_addr.fill(132);
        translate(cea_edid(d, {{132, {0x21, 1}}}));
        EXPECT_EQ(below("block1_db"), strings{});
        EXPECT_NE(number_of("block1_detail"), 0);
        EXPECT_EQ(expanded(), (strings{"block0_root_true", "block1_root_true"}));
    }
}

using failing_tree = translation_tree_test;

TEST_F(failing_tree, accepts_only_the_seven_other_tags) {
    for (int tag = 0; tag < 256; ++tag) {
        const bool known =
            tag <= 2 || tag == 0x20 || tag == 0x30 || tag == 0x40 || tag == 0x50 || tag == 0xF0 || tag == 0xFF;
        const auto ended_by = failure_for(edid_of({{128, {tag}}}, usual_edid()));
        if (tag == 0 || !known)
            EXPECT_EQ(ended_by, failure::index_out_of_bounds) << tag;
        else
            EXPECT_EQ(ended_by, std::nullopt) << tag;
    }
}

TEST_F(failing_tree, accepts_no_second_descriptor_of_a_class_without_number) {
    const std::vector<std::pair<int, strings>> nodes_of_class = {
        {0xFF, {"block0_sn"}},        {0xFE, {"block0_ascii"}},
        {0xFD, {"block0_limit"}},     {0xFA, {"block0_std_timing", "block0_std_t1", "block0_std_t2"}},
        {0x10, {"block0_t_unknown"}},
    };
    for (const auto& [tag, keys] : nodes_of_class) {
        const auto twice = monitor_descriptor(tag, {});
        EXPECT_EQ(failure_for(edid_of({{54, twice}, {72, full_hd}, {90, twice}, {108, vga}}, usual_edid())),
                  failure::key_not_unique);
        strings expected = keys;
        expected.emplace_back("block0_detail1");
        EXPECT_EQ(keys_from(13), expected) << "the nodes added before stay";
    }
}

TEST_F(failing_tree, does_not_see_an_offset_in_another_block) {
    EXPECT_EQ(failure_for(edid_of({{128, {0xFF, 3, 255}}}, usual_edid())), std::nullopt);
}

using trans_buttons = translation_tree_test;

TEST_F(trans_buttons, open_the_panel_with_the_buffer_of_their_side) {
    buffers.write_buff = usual_edid();
    buffers.read_buff = cea_edid(4);
    workbench.cmd_write_translate.on_click();
    EXPECT_TRUE(view.fra_edid_edit.visible);
    EXPECT_EQ(view.fra_edid_edit.caption, "Translate [ Write ] EDID");
    EXPECT_EQ(buffers.trans_buff, usual_edid());
    EXPECT_NE(number_of("block1_root_false"), 0);

    view.fra_edid_edit.visible = false;
    workbench.cmd_read_translate.on_click();
    EXPECT_TRUE(view.fra_edid_edit.visible);
    EXPECT_EQ(view.fra_edid_edit.caption, "Translate [ Read ] EDID");
    EXPECT_EQ(buffers.trans_buff, cea_edid(4));
    EXPECT_NE(number_of("block1_root_true"), 0);
}

TEST_F(trans_buttons, use_the_read_side_for_any_number_but_1) {
    buffers.write_buff = usual_edid();
    buffers.read_buff = cea_edid(4);
    for (const std::uint8_t buff_type : test::byte_list{0, 2, 3, 255}) {
        tree.translate_edid(buff_type);
        EXPECT_EQ(view.fra_edid_edit.caption, "Translate [ Read ] EDID");
        EXPECT_EQ(buffers.trans_buff, cea_edid(4));
    }
    tree.translate_edid(1);
    EXPECT_EQ(buffers.trans_buff, usual_edid());
}

TEST_F(trans_buttons, rebuild_the_tree) {
    translate(cea_edid(6, {{132, {0x21, 1}}}));
    click("block1_db_audio");
    translate(usual_edid());
    EXPECT_EQ(view.tree_edid.node_count(), 16);
    EXPECT_EQ(bold(), strings{"block0_root_true"});
    EXPECT_FALSE(tables.is_cea_block1);
    translate({});
    EXPECT_EQ(view.tree_edid.node_count(), 1);
}

TEST_F(trans_buttons, begin_with_node_1_also_after_a_longer_tree) {
    translate(cea_edid(4, {{132, full_hd}}));
    click("block1_detail1");
    EXPECT_EQ(dispatch.tree_sel_index, number_of("block1_detail1"));
    EXPECT_EQ(failure_for({}), std::nullopt) << "node 1 is there to lose its bold";
    EXPECT_EQ(bold(), strings{"block0_root_false"});
}

TEST_F(trans_buttons, leave_everything_unchanged_on_the_way_back) {
    translate(usual_edid());
    click("block0_basic");
    const std::string text = view.txt_edid.text;
    view.cmd_edid_back.on_click();
    EXPECT_FALSE(view.fra_edid_edit.visible);
    EXPECT_EQ(view.tree_edid.node_count(), 16);
    EXPECT_EQ(view.txt_edid.text.get(), text);
    EXPECT_EQ(buffers.trans_buff, usual_edid());
    EXPECT_EQ(bold(), strings{"block0_basic"});
}

} // namespace
} // namespace desk
