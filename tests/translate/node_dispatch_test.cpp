#include "translate/node_dispatch.h"

#include "support/translation_fixture.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <numeric>
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
using test::lines;
using test::monitor_descriptor;
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
    /// What the box holds when a click on a node has failed.
    std::string text_till(failure expected, std::string_view key) {
        EXPECT_EQ(failure_of([&] { click(key); }), expected) << key;
        return view.txt_edid.text;
    }
    strings bold() const {
        strings keys;
        for (const tree_node& n : view.tree_edid.nodes())
            if (n.bold) keys.push_back(n.key);
        return keys;
    }
};

numbers all_boxes() {
    numbers all(17);
    std::iota(all.begin(), all.end(), 0);
    return all;
}

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

TEST_F(node_dispatch_test, computes_its_text_anew_each_time) {
    translate_usual({});
    EXPECT_EQ(text_of_node("block0_name1"), "Monitor Name = VELO");
    buffers.trans_buff.at(77) = 'C';
    EXPECT_EQ(text_of_node("block0_name1"), "Monitor Name = CELO");
}

TEST_F(node_dispatch_test, shows_what_it_has_when_a_decoder_fails) {
    translate_usual({{23, {200}}});
    EXPECT_EQ(text_till(failure::overflow, "block0_basic"),
              lines({"--- Basic Display Parameters ---", "Max Horizontal Size(cm) = 0", "Max Vertical Size(cm) = 0"}) +
                  "Gamma Value = ");
    EXPECT_EQ(bold(), strings{"block0_basic"});
    EXPECT_EQ(dispatch.tree_sel_index, 1) << "it is set when all is done";
}

using nodes_of_block_0 = node_dispatch_test;

TEST_F(nodes_of_block_0, have_the_header_at_their_root) {
    translate(edid_of({{0, {0x0A, 1, 2, 3, 0xFF, 0xFF, 0xAB, 0}}}));
    EXPECT_EQ(text_of_node("block0_root_false"),
              "Block 0 is not VESA Basic Block\r\nHeader = 0A 01 02 03 FF FF AB 00 ");
}

TEST_F(nodes_of_block_0, have_a_binary_list) {
    translate_usual({});
    const std::string text = text_of_node("block0_binary");
    EXPECT_TRUE(text.starts_with("00 FF FF FF FF FF FF 00 //7\r\n00 00 00 00 00 00 00 00 //F\r\n"));
    EXPECT_TRUE(text.ends_with("//7F\r\n"));
}

TEST_F(nodes_of_block_0, have_vendor_and_basic_and_color) {
    translate_usual({{8, {0x04, 0x72, 0xAD, 0xDE}}, {20, {0x80}}});
    EXPECT_EQ(text_of_node("block0_vendor"), lines({
                                                 "--- Vendor/Product Identification ---",
                                                 "Manufacturer Name = ACR",
                                                 "Product Code = 57005",
                                                 "Serial Number = 0",
                                                 "Week of Manufacture = 0",
                                                 "Year of Manufacture = 1990",
                                                 "EDID Version = 0.0",
                                                 "",
                                                 "--- Video Input Definition ---",
                                                 "Signal Type = Digital",
                                                 "DFP 1.x = Not Compatible",
                                             }));
    EXPECT_EQ(text_of_node("block0_basic"), test::basic_lines_of_zeros);
    EXPECT_EQ(text_of_node("block0_color"), test::color_lines_of_zeros);
}

TEST_F(nodes_of_block_0, read_the_serial_number_of_the_translated_edid) {
    fields.sn_value = 7;
    buffers.write_buff = edid_of({{12, {1, 1, 1, 1}}});
    translate_usual({{12, {0xFF, 0xFF, 0xFF, 0xFF}}});
    EXPECT_EQ(fields.sn_value, 7);
    EXPECT_EQ(test::behind("Serial Number =", text_of_node("block0_vendor")), " 4294967295");
    EXPECT_EQ(fields.sn_value, 4294967295);
}

TEST_F(nodes_of_block_0, have_standard_timings_three_three_and_two) {
    translate_usual({{38, {0xD1, 0xC0, 0x81, 0x80, 0x71, 0x80, 0x61, 0x40, 0x31, 0x59, 0xA9, 0xC0, 0xB3, 0x00, 1, 1}}});
    const auto timing = [](const char* number, const char* width, const char* height, const char* ratio,
                           const char* rate) {
        return "--- Standard Timing " + std::string(number) + " ---\r\nHorizontal Active Pixel = " + width +
               "\r\nVertical Active Pixel = " + height + "\r\nImage Aspect Ratio = " + ratio +
               "\r\nRefresh Rate = " + rate;
    };
    const std::string between = "\r\n\r\n";
    EXPECT_EQ(text_of_node("block0_standard1"), timing("1", "1920", "1080", "16:9", "60") + between +
                                                    timing("2", "1280", "1024", "5:4", "60") + between +
                                                    timing("3", "1152", "921.6", "5:4", "60"));
    EXPECT_EQ(text_of_node("block0_standard2"), timing("4", "1024", "768", "4:3", "60") + between +
                                                    timing("5", "640", "480", "4:3", "85") + between +
                                                    timing("6", "1600", "900", "16:9", "60"));
    EXPECT_EQ(text_of_node("block0_standard3"),
              timing("7", "1680", "1050", "16:10", "60") + between + timing("8", "256", "160", "16:10", "61"));
}

TEST_F(nodes_of_block_0, have_what_the_monitor_descriptors_tell) {
    translate_usual({{54, text_descriptor(0xFE, "TEXT")}});
    EXPECT_EQ(text_of_node("block0_ascii"), "Monitor ASCII String = TEXT");
    EXPECT_EQ(text_of_node("block0_name1"), "Monitor Name = VELO");
    EXPECT_EQ(text_of_node("block0_limit"), lines({
                                                "--- Monitor Range Limits ---",
                                                "Min Vertical Rate = 50 Hz",
                                                "Max Vertical Rate = 75 Hz",
                                                "",
                                                "Min Horizontal Rate = 30 KHz",
                                                "Max Horizontal Rate = 80 KHz",
                                                "",
                                                "Max Pixel Clock Rate = 150 MHz",
                                            }) + "2nd Timing Formula = Not supported");
    EXPECT_EQ(text_of_node("block0_sn"), "Monitor Serial Number = 0042");
}

TEST_F(nodes_of_block_0, have_the_first_and_the_second_name) {
    translate_usual({{54, text_descriptor(0xFC, "FIRST")}, {90, text_descriptor(0xFC, "THIRD")}});
    EXPECT_EQ(text_of_node("block0_name2"), "Monitor Name = VELO");
    EXPECT_EQ(text_of_node("block0_name1"), "Monitor Name = FIRST");
}

TEST_F(nodes_of_block_0, have_additional_standard_timings) {
    translate_usual(
        {{90, monitor_descriptor(0xFA, {0xD1, 0xC0, 0x81, 0x80, 0x71, 0x80, 0x61, 0x40, 0x31, 0x59, 1, 1})}});
    EXPECT_EQ(text_of_node("block0_std_timing"), "Additional Standard Timings 9 ~ 14");
    const std::string first = text_of_node("block0_std_t1");
    EXPECT_TRUE(first.starts_with("--- Standard Timing 9 ---\r\nHorizontal Active Pixel = 2248\r\n"
                                  "Vertical Active Pixel = 1405\r\nImage Aspect Ratio = 16:10\r\n"
                                  "Refresh Rate = 60\r\n\r\n--- Standard Timing 10 ---\r\n"
                                  "Horizontal Active Pixel = 1920\r\n"));
    EXPECT_TRUE(first.ends_with("--- Standard Timing 11 ---\r\nHorizontal Active Pixel = 1280\r\n"
                                "Vertical Active Pixel = 1024\r\nImage Aspect Ratio = 5:4\r\nRefresh Rate = 60"));
    const std::string second = text_of_node("block0_std_t2");
    EXPECT_TRUE(second.starts_with("--- Standard Timing 12 ---\r\nHorizontal Active Pixel = 1152\r\n"));
    EXPECT_TRUE(second.ends_with("--- Standard Timing 14 ---\r\nHorizontal Active Pixel = 640\r\n"
                                 "Vertical Active Pixel = 480\r\nImage Aspect Ratio = 4:3\r\nRefresh Rate = 85"));
}

TEST_F(nodes_of_block_0, have_the_tag_of_an_unknown_descriptor) {
    const std::pair<std::size_t, const char*> places[] = {{54, "39"}, {72, "4B"}, {90, "5D"}, {108, "6F"}};
    for (const auto& [place, address] : places) {
        translate_usual({{place, monitor_descriptor(0x10, {})}});
        EXPECT_EQ(text_of_node("block0_t_unknown"), "Unknown detail-timing or monitor descriptor.\r\nTag address = 0x" +
                                                        std::string(address) + "\r\nTag data = 0x10");
    }
}

TEST_F(nodes_of_block_0, have_up_to_four_detail_timings) {
    translate_usual({{54, full_hd}, {72, vga}, {90, vga}, {108, full_hd}});
    for (int twice = 0; twice < 2; ++twice) {
        EXPECT_EQ(text_of_node("block0_detail1"), full_hd_lines);
        EXPECT_EQ(text_of_node("block0_detail2"), vga_lines);
        EXPECT_EQ(text_of_node("block0_detail3"), vga_lines);
        EXPECT_EQ(text_of_node("block0_detail4"), full_hd_lines);
        EXPECT_EQ(text_of_node("block0_detail4"), full_hd_lines);
    }
}

TEST_F(nodes_of_block_0, find_their_descriptors_again_behind_block_1) {
    translate_cea(4, {{132, vga}});
    EXPECT_EQ(tables.descriptor_start, 132);
    EXPECT_EQ(text_of_node("block0_detail1"), full_hd_lines);
    EXPECT_EQ(text_of_node("block1_detail1"), vga_lines);
    EXPECT_EQ(text_of_node("block0_name1"), "Monitor Name = VELO");
    EXPECT_EQ(text_of_node("block1_detail1"), vga_lines);
    EXPECT_EQ(tables.descriptor_start, 132);
}

TEST_F(nodes_of_block_0, leave_a_lowered_position_behind_a_detail_timing) {
    translate_usual({});
    click("block0_detail1");
    EXPECT_EQ(tables.descriptor_map[0], (descriptor_row{0, 0xE0}));
    click("block0_name1");
    EXPECT_EQ(tables.descriptor_map[0], (descriptor_row{1, 0xE0}));
}

TEST_F(nodes_of_block_0, end_in_a_pixel_clock_too_large) {
    translate_usual({{54, {0x4D, 0xD0}}});
    EXPECT_EQ(text_till(failure::overflow, "block0_detail1"), "Pixel Clock(MHz) = ");
}

TEST_F(nodes_of_block_0, tell_which_pixel_clock_is_too_large) {
    translate_usual({{54, {0x4D, 0xD0}}});
    try {
        click("block0_detail1");
        FAIL() << "nothing was thrown";
    } catch (const runtime_failure& f) {
        EXPECT_EQ(f.sentence(), "Decoding detailed timing 1: a pixel clock of 533.25 MHz does not fit.");
    }
}

using established_boxes = node_dispatch_test;

TEST_F(established_boxes, are_ticked_by_their_bits) {
    struct row {
        std::size_t byte;
        int bits;
        numbers ticked;
    };
    const row rows[] = {
        {35, 0x00, {}},
        {35, 0xFF, {0, 1, 2, 3, 4, 5, 6, 7}},
        {36, 0xFF, {8, 9, 10, 11, 12, 13, 14, 15}},
        {37, 0xFF, {16}},
        {37, 0x80, {16}},
        {37, 0x7F, {}},
        {35, 0xA1, {0, 2, 7}},
        {36, 0x8C, {8, 12, 13}},
    };
    for (const row& r : rows) {
        translate_usual({{r.byte, {r.bits}}});
        click("block0_established");
        EXPECT_EQ(visible_boxes(), all_boxes());
        EXPECT_EQ(ticked_boxes(), r.ticked);
    }
}

TEST_F(established_boxes, have_a_bit_each) {
    for (int box = 0; box < 17; ++box) {
        translate_usual({{static_cast<std::size_t>(35 + box / 8), {0x80 >> box % 8}}});
        click("block0_established");
        EXPECT_EQ(ticked_boxes(), numbers{box});
    }
}

TEST_F(established_boxes, stand_between_headings) {
    translate_usual({{35, {0xFF, 0xFF, 0xFF}}});
    EXPECT_EQ(text_of_node("block0_established"), "--- Established Timing I ---"
                                                  "\r\n\r\n\r\n\r\n\r\n\r\n\r\n\r\n\r\n\r\n\r\n"
                                                  "--- Established Timing II ---"
                                                  "\r\n\r\n\r\n\r\n\r\n\r\n\r\n\r\n\r\n\r\n"
                                                  "\r\n--- Manufacturer Timing ---\r\n");
}

TEST_F(established_boxes, lose_the_ticks_that_the_operator_gave) {
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
        EXPECT_EQ(visible_boxes(), all_boxes());
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

TEST_F(nodes_of_block_1, have_the_tag_at_their_root) {
    translate_cea(0, {});
    EXPECT_EQ(text_of_node("block1_root_true"), "Block 1 is CEA 861 Extension Block\r\nBlock Tag = 2");
    const std::pair<int, const char*> tags[] = {{0x01, "01"}, {0x20, "20"}, {0xF0, "F0"}, {0xFF, "FF"}};
    for (const auto& [tag, digits] : tags) {
        translate_usual({{128, {tag}}});
        EXPECT_EQ(text_of_node("block1_root_false"),
                  "Block 1 is not CEA 861 Extension Block\r\nBlock Tag = 0x" + std::string(digits));
    }
}

TEST_F(nodes_of_block_1, have_a_binary_list) {
    translate_cea(6, {{255, {0x3C}}});
    const std::string text = text_of_node("block1_binary");
    EXPECT_TRUE(text.starts_with("02 03 06 F1 00 00 00 00 //87\r\n"));
    EXPECT_TRUE(text.ends_with("00 00 00 00 00 00 00 3C //FF\r\n"));
}

TEST_F(nodes_of_block_1, have_the_dtv_lines) {
    translate_cea(0, {});
    EXPECT_EQ(text_of_node("block1_dtv"), lines({
                                              "Block Tag = 2, CEA 861 Extension",
                                              "Revision = 3",
                                              "Underscan = Supported",
                                              "Basic Audio = Supported",
                                              "RGB/YCbCr444 = Supported",
                                              "RGB/YCbCr422 = Supported",
                                          }) + "Native Format Number = 1");
}

TEST_F(nodes_of_block_1, tell_where_there_are_no_data_blocks) {
    const std::pair<int, const char*> offsets[] = {{0, "There are no data blocks."},
                                                   {4, "There are no data blocks."},
                                                   {1, ""},
                                                   {2, ""},
                                                   {3, ""},
                                                   {5, ""},
                                                   {6, ""}};
    for (const auto& [d, text] : offsets) {
        translate_cea(d, {{132, {0x21, 1}}});
        EXPECT_EQ(text_of_node("block1_db"), text) << d;
    }
}

TEST_F(nodes_of_block_1, have_what_the_data_blocks_tell) {
    translate_cea(30, {{132, {0x23, 0x09, 0x07, 0x07, 0x41, 0x84, 0x65, 3,    12, 0, 0x10, 0x00,
                              0xE2, 0,    0x7F, 0xE3, 5,    3,    0,    0xA3, 1,  2, 3}}});
    EXPECT_EQ(text_of_node("block1_db_audio"), lines({
                                                   "Audio Format = Linear PCM",
                                                   "Sampling Rate(KHz) = 32/44.1/48",
                                                   "Max number of channels = 2",
                                                   "Bit per Sample(bit) = 16/20/24",
                                                   "",
                                               }));
    EXPECT_EQ(text_of_node("block1_db_video"), " 4 1280x720p  59/60 16:9 is Native\r\n");
    EXPECT_EQ(text_of_node("block1_db_vsdb"), lines({
                                                  "VSDB block size = 5",
                                                  "IEEE Registration Id = 0x000C03",
                                                  "CEC Physical Address A.B.C.D =",
                                                  "    1 . 0 . 0 . 0",
                                              }));
    EXPECT_EQ(text_of_node("block1_db_vcap"), lines({
                                                  "CE Scan Behavior=Both Over/Underscan",
                                                  "IT Scan Behavior=Both Over/Underscan",
                                                  "PT Scan Behavior=Both Over/Underscan",
                                                  "",
                                              }) + "Quantization Range = Selectable");
    EXPECT_EQ(text_of_node("block1_db_color"), "Colorimetry Support=xvYCC601/xvYCC709");
}

TEST_F(nodes_of_block_1, have_the_tag_of_the_last_unknown_data_block) {
    translate_cea(20, {{132, {0xA1, 1, 0x01, 2, 0x4C}}});
    EXPECT_EQ(text_of_node("block1_db_unknown"), "Unknwon Data Block\r\nTag address = 0x86\r\nTag data = 0x01");
}

TEST_F(nodes_of_block_1, have_the_last_of_two_data_blocks_of_a_kind) {
    translate_cea(8, {{132, {0x41, 0x10, 0x41, 60}}});
    EXPECT_EQ(text_of_node("block1_db_video"), "60 Reserved\r\n");
}

TEST_F(nodes_of_block_1, have_detail_timings_by_their_count) {
    translate_cea(
        4, {{132, full_hd}, {150, text_descriptor(0xFC, "A")}, {168, vga}, {186, full_hd}, {204, vga}, {222, vga}});
    EXPECT_EQ(text_of_node("block1_detail"), "");
    const char* const expected[] = {"", "148.500", "25.170", "148.500", "25.170", "25.170"};
    for (int twice = 0; twice < 2; ++twice) {
        for (int n = 1; n <= 5; ++n)
            EXPECT_EQ(test::behind("Pixel Clock(MHz) = ", text_of_node("block1_detail" + std::to_string(n))),
                      expected[n]);
    }
    EXPECT_EQ(text_of_node("block1_detail1"), full_hd_lines);
    EXPECT_EQ(text_of_node("block1_detail2"), vga_lines);
}

TEST_F(nodes_of_block_1, have_a_sixth_detail_timing_and_nothing_for_a_seventh) {
    translate_cea(4, {{132, full_hd}, {150, full_hd}, {168, full_hd}, {186, full_hd}, {204, full_hd}, {222, vga}});
    EXPECT_EQ(text_of_node("block1_detail6"), vga_lines);
    view.tree_edid.add(0, "block1_detail7", "a seventh");
    view.txt_edid.text = "before";
    EXPECT_EQ(text_of_node("block1_detail7"), "");
}

TEST_F(nodes_of_block_1, end_in_what_a_decoder_can_not_tell) {
    translate_cea(30, {{132, {0x42, 60, 100, 0x63, 1, 2, 3}}, {158, {0, 0x80}}});
    EXPECT_EQ(text_till(failure::invalid_procedure_call, "block1_db_video"), "60 Reserved\r\n");
    EXPECT_EQ(text_till(failure::overflow, "block1_db_vsdb"),
              lines({"VSDB block size = 3", "IEEE Registration Id = 0x030201", "Payload ="}));
    EXPECT_EQ(text_till(failure::overflow, "block1_detail1"), "Pixel Clock(MHz) = ");
}

TEST_F(nodes_of_block_1, end_beyond_the_edid) {
    // three long blocks, and the one to be looked at as the last one
    const auto translate_last = [this](std::size_t address, const numbers& bytes) {
        const int rest = static_cast<int>(address) - 132 - 96 - 1;
        translate_cea(127, {{132, {0x1F}}, {164, {0x1F}}, {196, {0x1F}}, {228, {rest}}, {address, bytes}});
    };
    translate_last(254, {0xE1, 0});
    EXPECT_EQ(text_till(failure::subscript_out_of_range, "block1_db_vcap"), "CE Scan Behavior=");
    translate_last(254, {0xE1, 5});
    EXPECT_EQ(text_till(failure::subscript_out_of_range, "block1_db_color"), "Colorimetry Support=");
    translate_last(254, {0x42, 60});
    EXPECT_EQ(text_till(failure::subscript_out_of_range, "block1_db_video"), "60 Reserved\r\n");
    translate_last(254, {0x23, 9});
    EXPECT_EQ(text_till(failure::subscript_out_of_range, "block1_db_audio"),
              "Audio Format = Linear PCM\r\nSampling Rate(KHz) = ");
    translate_last(254, {0x65, 3});
    EXPECT_EQ(text_till(failure::subscript_out_of_range, "block1_db_vsdb"),
              "VSDB block size = 5\r\nIEEE Registration Id = 0x");
}

using speaker_pictures = node_dispatch_test;

TEST_F(speaker_pictures, are_shown_by_their_bits) {
    struct row {
        int byte;
        const char* names;
        strings pictures;
    };
    const row rows[] = {
        {0x00, "", {}},
        {0x80, "", {}},
        {0x01, "FL/FR  ", {"fl", "fr"}},
        {0x02, "LFE  ", {"lfe"}},
        {0x04, "FC  ", {"fc"}},
        {0x08, "RL/RR  ", {"rl", "rr"}},
        {0x10, "RC  ", {"rc"}},
        {0x20, "FLC/FRC  ", {"flc", "frc"}},
        {0x40, "RLC/RRC  ", {"rlc", "rrc"}},
        {0x4F, "FL/FR  LFE  FC  RL/RR  RLC/RRC  ", {"fl", "fc", "fr", "lfe", "rl", "rlc", "rrc", "rr"}},
        {0xFF,
         "FL/FR  LFE  FC  RL/RR  RC  FLC/FRC  RLC/RRC  ",
         {"fl", "flc", "fc", "frc", "fr", "lfe", "rl", "rlc", "rc", "rrc", "rr"}},
    };
    for (const row& r : rows) {
        translate_cea(8, {{132, {0x83, r.byte, 0xFF, 0xFF}}});
        const std::string text = text_of_node("block1_db_speaker");
        EXPECT_TRUE(text.starts_with("     FL   FLC   FC   FRC   FR\r\n\r\n\r\n\r\n"));
        EXPECT_TRUE(text.ends_with("\r\n\r\n\r\nSpeaker Allocation =\r\n " + std::string(r.names)));
        EXPECT_EQ(visible_pictures(), r.pictures) << r.byte;
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

TEST_F(speaker_pictures, follow_the_block_at_the_next_click) {
    translate_cea(6, {{132, {0x81, 0x7F}}});
    click("block1_db_speaker");
    buffers.trans_buff[133] = 0x02;
    click("block1_db_speaker");
    EXPECT_EQ(visible_pictures(), strings{"lfe"});
}

TEST_F(speaker_pictures, are_hidden_all_at_once) {
    for (const auto& [name, shown] : all_pictures())
        shown->visible = true;
    dispatch.hide_speakers();
    EXPECT_EQ(visible_pictures(), strings{});
}

} // namespace
} // namespace desk
