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
using test::text_descriptor;
using test::usual_edid;
using test::vga;
using strings = std::vector<std::string>;

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

const strings fixed_keys = {"block0_binary",      "block0_vendor",   "block0_basic",     "block0_color",
                            "block0_established", "block0_standard", "block0_standard1", "block0_standard2",
                            "block0_standard3",   "block0_dt_mon"};

TEST_F(translation_tree_test, has_a_root_for_each_block) {
    translate(usual_edid());
    EXPECT_EQ(below(0), (strings{"block0_root_true: Block 0: VESA Basic Block",
                                 "block1_root_false: Block 1: Manufacturer Defined Block"}));
    EXPECT_EQ(number_of("block0_root_true"), 1);
    EXPECT_EQ(number_of("block1_root_false"), 2);
}

TEST_F(translation_tree_test, has_ten_fixed_nodes_in_block_0) {
    translate(usual_edid());
    EXPECT_EQ(below(1), (strings{"block0_binary: Binary List", "block0_vendor: Vendor/Product Id",
                                 "block0_basic: Basic Display Parameters", "block0_color: Color Characteristics",
                                 "block0_established: Established Timings", "block0_standard: Standard Timings",
                                 "block0_dt_mon: Detail Timings/Monitor Descriptors"}));
    EXPECT_EQ(below("block0_standard"),
              (strings{"block0_standard1: Standard Timings 1,2,3", "block0_standard2: Standard Timings 4,5,6",
                       "block0_standard3: Standard Timings 7,8"}));
    strings first_twelve = keys_from(3);
    first_twelve.resize(10);
    EXPECT_EQ(first_twelve, fixed_keys);
}

TEST_F(translation_tree_test, has_a_node_for_each_descriptor_of_block_0) {
    translate(usual_edid());
    EXPECT_EQ(below(12), (strings{"block0_detail1: Detail Timing1", "block0_name1: Monitor Name1",
                                  "block0_limit: Monitor Range Limits", "block0_sn: Monitor Serial Number"}));
    translate(edid_of({{54, text_descriptor(0xFE, "TEXT")}, {72, monitor_descriptor(0x10, {})}}, usual_edid()));
    EXPECT_EQ(below(12), (strings{"block0_ascii: Monitor ASCII String", "block0_t_unknown: Unknown Tag",
                                  "block0_limit: Monitor Range Limits", "block0_sn: Monitor Serial Number"}));
}

TEST_F(translation_tree_test, numbers_names_and_timings_in_their_order) {
    translate(edid_of({{54, text_descriptor(0xFC, "A")}, {72, full_hd}, {90, text_descriptor(0xFC, "B")}, {108, vga}},
                      usual_edid()));
    EXPECT_EQ(below(12), (strings{"block0_name1: Monitor Name1", "block0_detail1: Detail Timing1",
                                  "block0_name2: Monitor Name2", "block0_detail2: Detail Timing2"}));
    translate(edid_of({{54, full_hd}, {72, full_hd}, {90, vga}, {108, vga}}, usual_edid()));
    EXPECT_EQ(below(12), (strings{"block0_detail1: Detail Timing1", "block0_detail2: Detail Timing2",
                                  "block0_detail3: Detail Timing3", "block0_detail4: Detail Timing4"}));
    const auto name = text_descriptor(0xFC, "A");
    translate(edid_of({{54, name}, {72, name}, {90, name}, {108, name}}, usual_edid()));
    EXPECT_EQ(below(12), (strings{"block0_name1: Monitor Name1", "block0_name2: Monitor Name2",
                                  "block0_name3: Monitor Name3", "block0_name4: Monitor Name4"}));
}

TEST_F(translation_tree_test, has_timings_12_to_14_below_9_to_11) {
    for (const std::size_t place : {54U, 72U, 90U, 108U}) {
        translate(edid_of({{place, monitor_descriptor(0xFA, {})}}, usual_edid()));
        ASSERT_NE(number_of("block0_std_timing"), 0);
        EXPECT_EQ(view.tree_edid.node(number_of("block0_std_timing")).parent, 12);
        EXPECT_EQ(view.tree_edid.node(number_of("block0_std_timing")).title, "Monitor Standard Timing");
        EXPECT_EQ(below("block0_std_timing"), strings{"block0_std_t1: Standard Timings 9,10,11"});
        EXPECT_EQ(below("block0_std_t1"), strings{"block0_std_t2: Standard Timings 12,13,14"});
        EXPECT_EQ(below("block0_std_t2"), strings{});
        EXPECT_EQ(below(12).size(), 4U);
    }
}

TEST_F(translation_tree_test, opens_on_the_root_of_block_0) {
    translate(usual_edid());
    EXPECT_EQ(view.txt_edid.text, "Block 0 is VESA Basic Block\r\nHeader = 00 FF FF FF FF FF FF 00 ");
    EXPECT_EQ(bold(), strings{"block0_root_true"});
    EXPECT_EQ(expanded(), strings{"block0_root_true"});
    EXPECT_EQ(dispatch.tree_sel_index, 1);
}

TEST_F(translation_tree_test, has_one_node_for_a_bad_header) {
    translate({});
    EXPECT_EQ(below(0), strings{"block0_root_false: Block 0: NOT VESA Basic Block"});
    EXPECT_EQ(view.tree_edid.node_count(), 1);
    EXPECT_EQ(view.txt_edid.text, "Block 0 is not VESA Basic Block\r\nHeader = 00 00 00 00 00 00 00 00 ");
    EXPECT_EQ(bold(), strings{"block0_root_false"});
    EXPECT_EQ(expanded(), strings{});
    EXPECT_EQ(dispatch.tree_sel_index, 1);
}

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

TEST_F(block_1, has_a_title_for_each_known_tag) {
    const std::vector<std::pair<int, std::string>> titles = {
        {0x01, "Block 1: LCD Timings Block"},
        {0x20, "Block 1: EDID 2.0 Extension Block"},
        {0x30, "Block 1: Color Infomation Type 0 Block"},
        {0x40, "Block 1: DVI Feature Data Block"},
        {0x50, "Block 1: Touch Screen Data Block"},
        {0xF0, "Block 1: Block Map Block"},
        {0xFF, "Block 1: Manufacturer Defined Block"},
    };
    for (const auto& [tag, title] : titles) {
        tables.is_cea_block1 = true;
        translate(edid_of({{128, {tag, 3, 4, 0}}}, usual_edid()));
        EXPECT_EQ(below(0).at(1), "block1_root_false: " + title);
        EXPECT_EQ(below(2), strings{});
        EXPECT_FALSE(tables.is_cea_block1);
    }
}

TEST_F(block_1, is_a_cea_861_block_by_its_tag) {
    translate(cea_edid(0));
    EXPECT_EQ(below(0).at(1), "block1_root_true: Block 1: CEA 861 Block");
    EXPECT_TRUE(tables.is_cea_block1);
}

TEST_F(block_1, has_three_nodes_and_stays_folded_for_offset_0) {
    translate(cea_edid(0, {{132, {0x21, 1}}}));
    EXPECT_EQ(below(2), (strings{"block1_binary: Binary List", "block1_dtv: DTV Monitor Support",
                                 "block1_db: Data Block Collection"}));
    EXPECT_EQ(below("block1_db"), strings{});
    EXPECT_EQ(expanded(), strings{"block0_root_true"});
}

TEST_F(block_1, has_detail_timings_and_no_data_blocks_for_offset_4) {
    tables.data_block_addr = {132, 133, 134, 135, 136, 137, 138};
    translate(cea_edid(4, {{132, full_hd}, {150, vga}}));
    EXPECT_EQ(below(2), (strings{"block1_binary: Binary List", "block1_dtv: DTV Monitor Support",
                                 "block1_db: Data Block Collection", "block1_detail: Detail Timings Extended"}));
    EXPECT_EQ(below("block1_db"), strings{});
    EXPECT_EQ(below("block1_detail"), (strings{"block1_detail1: Detail Timing1", "block1_detail2: Detail Timing2"}));
    EXPECT_EQ(expanded(), (strings{"block0_root_true", "block1_root_true"}));
}

TEST_F(block_1, has_no_data_blocks_for_an_offset_below_4) {
    for (const int d : {1, 2, 3}) {
        tables.data_block_addr = {132, 133, 134, 135, 136, 137, 138};
        translate(cea_edid(d, {{132, {0x21, 1}}}));
        EXPECT_EQ(below("block1_db"), strings{});
        EXPECT_NE(number_of("block1_detail"), 0);
        EXPECT_EQ(expanded(), (strings{"block0_root_true", "block1_root_true"}));
    }
}

TEST_F(block_1, has_its_data_blocks_in_the_order_of_their_kinds) {
    translate(cea_edid(20, {{132, {0xE1, 7, 0xE1, 5, 0xE1, 0, 0x81, 1, 0x61, 3, 0x41, 1, 0x21, 1}}}));
    EXPECT_EQ(below("block1_db"),
              (strings{"block1_db_audio: Audio Data Block", "block1_db_video: Video Data Block",
                       "block1_db_vsdb: Vendor Specific Data Block", "block1_db_speaker: Speaker Allocation Data Block",
                       "block1_db_vcap: Video Capability Data Block", "block1_db_color: Colorimetry Data Block",
                       "block1_db_unknown: Unknown Data Block"}));
}

TEST_F(block_1, has_a_node_for_each_kind_that_is_there) {
    const std::vector<std::pair<std::vector<int>, std::string>> kinds = {
        {{0x21, 1}, "block1_db_audio: Audio Data Block"},
        {{0x41, 1}, "block1_db_video: Video Data Block"},
        {{0x61, 1}, "block1_db_vsdb: Vendor Specific Data Block"},
        {{0x81, 1}, "block1_db_speaker: Speaker Allocation Data Block"},
        {{0xE1, 0}, "block1_db_vcap: Video Capability Data Block"},
        {{0xE1, 5}, "block1_db_color: Colorimetry Data Block"},
        {{0xA1, 5}, "block1_db_unknown: Unknown Data Block"},
    };
    for (const auto& [bytes, node] : kinds) {
        translate(cea_edid(6, {{132, bytes}}));
        EXPECT_EQ(below("block1_db"), strings{node});
    }
}

TEST_F(block_1, has_one_node_for_two_data_blocks_of_a_kind) {
    translate(cea_edid(8, {{132, {0x21, 1, 0x21, 2}}}));
    EXPECT_EQ(below("block1_db"), strings{"block1_db_audio: Audio Data Block"});
    EXPECT_EQ(tables.data_block_addr[0], 134);
}

TEST_F(block_1, has_no_node_for_its_monitor_descriptors) {
    translate(cea_edid(
        4, {{132, text_descriptor(0xFC, "A")}, {150, full_hd}, {168, text_descriptor(0xFF, "B")}, {186, vga}}));
    EXPECT_EQ(below("block1_detail"), (strings{"block1_detail1: Detail Timing1", "block1_detail2: Detail Timing2"}));
}

TEST_F(block_1, has_up_to_six_detail_timings) {
    translate(cea_edid(4, {{132, std::vector<int>(124, 1)}}));
    EXPECT_EQ(below("block1_detail").size(), 6U);
    EXPECT_EQ(below("block1_detail").back(), "block1_detail6: Detail Timing6");
}

TEST_F(block_1, has_detail_timings_without_number_of_those_in_block_0) {
    translate(edid_of({{72, vga}, {90, vga}}, cea_edid(4, {{132, full_hd}})));
    EXPECT_EQ(below("block1_detail"), strings{"block1_detail1: Detail Timing1"});
}

TEST_F(block_1, has_its_nodes_behind_those_of_block_0) {
    translate(cea_edid(24, {{132, {0x21, 1, 0x41, 1}}, {152, full_hd}}));
    EXPECT_EQ(keys_from(17), (strings{"block1_binary", "block1_dtv", "block1_db", "block1_db_audio", "block1_db_video",
                                      "block1_db_unknown", "block1_detail", "block1_detail1"}));
}

using failing_tree = translation_tree_test;

TEST_F(failing_tree, knows_the_seven_other_tags_alone) {
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

TEST_F(failing_tree, keeps_the_nodes_before_the_one_whose_parent_is_missing) {
    EXPECT_EQ(failure_for(edid_of({{128, {0}}}, usual_edid())), failure::index_out_of_bounds);
    EXPECT_EQ(keys_from(1), (strings{"block0_root_true", "block0_binary", "block0_vendor", "block0_basic",
                                     "block0_color", "block0_established", "block0_standard"}));
    EXPECT_EQ(expanded(), strings{});
    EXPECT_EQ(bold(), strings{});
}

TEST_F(failing_tree, takes_no_second_descriptor_of_a_class_without_number) {
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

TEST_F(failing_tree, takes_two_different_unknown_tags_as_one_class) {
    EXPECT_EQ(
        failure_for(edid_of({{54, monitor_descriptor(0x10, {})}, {72, monitor_descriptor(0xFB, {})}}, usual_edid())),
        failure::key_not_unique);
}

TEST_F(failing_tree, has_no_room_for_an_offset_of_128) {
    EXPECT_EQ(failure_for(cea_edid(128, {{132, {0x9F}}, {164, {0x9F}}, {196, {0x9F}}, {228, {0x9B}}})),
              failure::overflow);
    EXPECT_EQ(keys_from(17),
              (strings{"block1_binary", "block1_dtv", "block1_db", "block1_db_speaker", "block1_detail"}));
    EXPECT_EQ(expanded(), strings{});
}

TEST_F(failing_tree, looks_for_data_blocks_beyond_the_edid) {
    EXPECT_EQ(failure_for(cea_edid(255)), failure::subscript_out_of_range);
    EXPECT_EQ(keys_from(17), (strings{"block1_binary", "block1_dtv", "block1_db"}));
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

TEST_F(trans_buttons, change_neither_of_the_two_buffers) {
    buffers.write_buff = usual_edid();
    buffers.read_buff = cea_edid(4);
    workbench.cmd_write_translate.on_click();
    workbench.cmd_read_translate.on_click();
    EXPECT_EQ(buffers.write_buff, usual_edid());
    EXPECT_EQ(buffers.read_buff, cea_edid(4));
}

TEST_F(trans_buttons, take_the_read_side_for_any_number_but_1) {
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

TEST_F(trans_buttons, do_not_read_the_text_of_the_windows) {
    buffers.read_buff = usual_edid();
    workbench.txt_read.text = "00 00 00 00";
    workbench.cmd_read_translate.on_click();
    EXPECT_EQ(buffers.trans_buff, usual_edid());
    EXPECT_EQ(workbench.txt_read.text, "00 00 00 00");
}

TEST_F(trans_buttons, build_the_tree_anew) {
    translate(cea_edid(6, {{132, {0x21, 1}}}));
    click("block1_db_audio");
    translate(usual_edid());
    EXPECT_EQ(view.tree_edid.node_count(), 16);
    EXPECT_EQ(bold(), strings{"block0_root_true"});
    translate({});
    EXPECT_EQ(view.tree_edid.node_count(), 1);
}

TEST_F(trans_buttons, begin_with_node_1_also_behind_a_longer_tree) {
    translate(cea_edid(4, {{132, full_hd}}));
    click("block1_detail1");
    EXPECT_EQ(dispatch.tree_sel_index, number_of("block1_detail1"));
    EXPECT_EQ(failure_for({}), std::nullopt) << "node 1 is there to lose its bold";
    EXPECT_EQ(bold(), strings{"block0_root_false"});
}

TEST_F(trans_buttons, see_a_buffer_that_has_changed_when_they_are_pressed_again) {
    translate(usual_edid());
    buffers.read_buff = {};
    EXPECT_EQ(buffers.trans_buff, usual_edid());
    EXPECT_EQ(text_of_node("block0_root_true"), "Block 0 is VESA Basic Block\r\nHeader = 00 FF FF FF FF FF FF 00 ");
    workbench.cmd_read_translate.on_click();
    EXPECT_EQ(keys_from(1), strings{"block0_root_false"});
}

TEST_F(trans_buttons, show_the_panel_before_they_fail) {
    EXPECT_EQ(failure_for(edid_of({{128, {0}}}, usual_edid())), failure::index_out_of_bounds);
    EXPECT_TRUE(view.fra_edid_edit.visible);
    EXPECT_EQ(view.fra_edid_edit.caption, "Translate [ Read ] EDID");
}

TEST_F(trans_buttons, have_a_way_back_that_leaves_all_as_it_is) {
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
