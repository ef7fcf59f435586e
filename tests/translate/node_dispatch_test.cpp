#include "translate/node_dispatch.h"

#include "support/translation_fixture.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

namespace desk {
namespace {

using test::bytes_at;
using test::cea_edid;
using test::edid_of;
using test::failure_of;
using test::full_hd;
using test::full_hd_lines;
using test::text_descriptor;
using test::usual_edid;
using test::vga;
using test::vga_lines;
using numbers = std::vector<int>;
using strings = std::vector<std::string>;

class node_dispatch_test : public test::translation_fixture {
protected:
    void translate_usual(std::initializer_list<bytes_at> places) { translate(edid_of(places, usual_edid())); }
    void translate_cea(int d, std::initializer_list<bytes_at> places) { translate(cea_edid(d, places)); }
    strings bold() const {
        strings keys;
        for (const tree_node& n : view.tree_edid.nodes())
            if (n.bold) keys.push_back(n.key);
        return keys;
    }
};

TEST_F(node_dispatch_test, has_one_bold_node_the_last_clicked) {
    translate_usual({});
    EXPECT_EQ(bold(), strings{"block0_root_true"});
    for (const char* key : {"block0_basic", "block1_root_false", "block0_basic", "block0_basic", "block0_root_true"}) {
        click(key);
        EXPECT_EQ(bold(), strings{key});
        EXPECT_EQ(dispatch.tree_sel_index, number_of(key));
    }
}

TEST_F(node_dispatch_test, does_not_change_the_tree) {
    translate_cea(24, {{132, {0x21, 1, 0x41, 1}}, {152, full_hd}});
    const int count = view.tree_edid.node_count();
    for (int i = 1; i <= count; ++i) {
        const bool expanded = view.tree_edid.node(i).expanded;
        view.tree_edid.on_node_click(i);
        EXPECT_EQ(view.tree_edid.node_count(), count);
        EXPECT_EQ(view.tree_edid.node(i).expanded, expanded);
    }
    EXPECT_EQ(buffers.trans_buff, buffers.read_buff);
}

TEST_F(node_dispatch_test, empties_the_box_before_each_node) {
    translate_usual({});
    for (const char* key : {"block0_standard", "block0_dt_mon"}) {
        view.txt_edid.text = "before";
        EXPECT_EQ(text_of_node(key), "") << key;
    }
    view.txt_edid.text = "before";
    EXPECT_EQ(text_of_node("block0_root_true"), "Block 0 is VESA Basic Block\r\nHeader = 00 FF FF FF FF FF FF 00 ");
}

TEST_F(node_dispatch_test, leaves_the_box_empty_for_a_key_that_it_does_not_know) {
    translate_usual({{54, text_descriptor(0xFC, "A")},
                     {72, text_descriptor(0xFC, "B")},
                     {90, text_descriptor(0xFC, "C")},
                     {108, text_descriptor(0xFC, "D")}});
    for (const char* key : {"block0_name3", "block0_name4"}) {
        view.txt_edid.text = "before";
        EXPECT_EQ(text_of_node(key), "") << key;
        EXPECT_EQ(bold(), strings{key});
    }
    view.tree_edid.add(0, "BLOCK0_BASIC", "another case");
    EXPECT_EQ(text_of_node("BLOCK0_BASIC"), "");
}

TEST_F(node_dispatch_test, recomputes_its_text_each_time) {
    translate_usual({});
    EXPECT_EQ(text_of_node("block0_name1"), "Monitor Name = VELO");
    buffers.trans_buff.at(77) = 'C';
    EXPECT_EQ(text_of_node("block0_name1"), "Monitor Name = CELO");
}

TEST_F(node_dispatch_test, shows_what_it_has_when_a_decoder_fails) {
    translate_usual({{23, {200}}});
    EXPECT_EQ(failure_of([&] { click("block0_basic"); }), failure::overflow);
    EXPECT_TRUE(view.txt_edid.text.get().ends_with("\r\nGamma Value = "));
    EXPECT_EQ(bold(), strings{"block0_basic"});
    EXPECT_EQ(dispatch.tree_sel_index, 1) << "it is set when all is done";
}

using nodes_of_block_0 = node_dispatch_test;

TEST_F(nodes_of_block_0, read_the_serial_number_of_the_translated_edid) {
    fields.sn_value = 7;
    buffers.write_buff = edid_of({{12, {1, 1, 1, 1}}});
    translate_usual({{12, {0xFF, 0xFF, 0xFF, 0xFF}}});
    EXPECT_EQ(fields.sn_value, 7);
    EXPECT_EQ(test::value_after("Serial Number =", text_of_node("block0_vendor")), " 4294967295");
    EXPECT_EQ(fields.sn_value, 4294967295);
}

TEST_F(nodes_of_block_0, find_their_descriptors_again_after_block_1) {
    translate_cea(4, {{132, vga}});
    EXPECT_EQ(tables.descriptor_start, 132);
    EXPECT_EQ(text_of_node("block0_detail1"), full_hd_lines);
    EXPECT_EQ(text_of_node("block1_detail1"), vga_lines);
    EXPECT_EQ(text_of_node("block0_name1"), "Monitor Name = VELO");
    EXPECT_EQ(text_of_node("block1_detail1"), vga_lines);
    EXPECT_EQ(tables.descriptor_start, 132);
}

TEST_F(nodes_of_block_0, leave_a_lowered_position_after_a_detail_timing) {
    translate_usual({});
    click("block0_detail1");
    EXPECT_EQ(tables.descriptor_map[0], (descriptor_row{0, 0xE0}));
    click("block0_name1");
    EXPECT_EQ(tables.descriptor_map[0], (descriptor_row{1, 0xE0}));
}

using established_boxes = node_dispatch_test;

TEST_F(established_boxes, have_a_bit_each) {
    for (int box = 0; box < 17; ++box) {
        translate_usual({{static_cast<std::size_t>(35 + box / 8), {0x80 >> box % 8}}});
        click("block0_established");
        EXPECT_EQ(ticked_boxes(), numbers{box});
    }
}

TEST_F(established_boxes, lose_the_operators_ticks) {
    translate_usual({{35, {0x80}}});
    for (check_box& box : view.chk_established)
        box.value = 1;
    click("block0_established");
    EXPECT_EQ(ticked_boxes(), numbers{0});
}

TEST_F(established_boxes, are_hidden_by_a_click_on_any_other_node) {
    translate_cea(24, {{132, {0x21, 1, 0x81, 1}}, {152, full_hd}});
    for (int i = 1; i <= view.tree_edid.node_count(); ++i) {
        if (i == number_of("block0_established")) continue;
        click("block0_established");
        EXPECT_EQ(visible_boxes().size(), 17U);
        view.tree_edid.on_node_click(i);
        EXPECT_EQ(visible_boxes(), numbers{}) << view.tree_edid.node(i).key;
    }
}

TEST_F(established_boxes, are_hidden_by_the_next_translation) {
    translate_usual({});
    click("block0_established");
    translate_usual({});
    EXPECT_EQ(visible_boxes(), numbers{});
}

using nodes_of_block_1 = node_dispatch_test;

TEST_F(nodes_of_block_1, report_that_there_are_no_data_blocks) {
    for (const int d : {0, 1, 2, 3, 4, 5, 6}) {
        translate_cea(d, {{132, {0x21, 1}}});
        EXPECT_EQ(text_of_node("block1_db"), d == 0 || d == 4 ? "There are no data blocks." : "") << d;
    }
}

TEST_F(nodes_of_block_1, have_six_detail_timings) {
    translate_cea(4, {{132, full_hd}, {150, full_hd}, {168, full_hd}, {186, full_hd}, {204, full_hd}, {222, vga}});
    EXPECT_EQ(text_of_node("block1_detail6"), vga_lines);
    view.tree_edid.add(0, "block1_detail7", "a seventh");
    view.txt_edid.text = "before";
    EXPECT_EQ(text_of_node("block1_detail7"), "");
}

using speaker_pictures = node_dispatch_test;

TEST_F(speaker_pictures, are_shown_by_their_bits) {
    const std::pair<int, strings> rows[] = {
        {0x00, {}},           {0x80, {}},     {0x01, {"fl", "fr"}},   {0x02, {"lfe"}},        {0x04, {"fc"}},
        {0x08, {"rl", "rr"}}, {0x10, {"rc"}}, {0x20, {"flc", "frc"}}, {0x40, {"rlc", "rrc"}},
    };
    for (const auto& [bits, pictures] : rows) {
        translate_cea(8, {{132, {0x83, bits, 0xFF, 0xFF}}});
        click("block1_db_speaker");
        EXPECT_EQ(visible_pictures(), pictures) << bits;
    }
}

TEST_F(speaker_pictures, are_hidden_by_a_click_on_any_other_node) {
    translate_cea(24, {{132, {0x21, 1, 0x81, 0x7F}}, {152, full_hd}});
    for (int i = 1; i <= view.tree_edid.node_count(); ++i) {
        if (i == number_of("block1_db_speaker")) continue;
        click("block1_db_speaker");
        EXPECT_EQ(visible_pictures().size(), 11U);
        view.tree_edid.on_node_click(i);
        EXPECT_EQ(visible_pictures(), strings{}) << view.tree_edid.node(i).key;
    }
}

TEST_F(speaker_pictures, are_hidden_by_the_next_translation) {
    translate_cea(6, {{132, {0x81, 0x7F}}});
    click("block1_db_speaker");
    translate({});
    EXPECT_EQ(visible_pictures(), strings{});
}

} // namespace
} // namespace desk
