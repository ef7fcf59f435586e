#include "report/text/report_text.h"

#include "support/built_report.h"
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
using test::lines;
using test::list_of;
using test::monitor_descriptor;
using test::text_descriptor;
using test::usual_edid;
using test::vga;
using test::vga_lines;

const std::string detail_heading = "*** Detail Timings/Monitor Descriptors ***\r\n";

class report_text_test : public test::translation_fixture {
protected:
    std::string report_of(const edid_buffer& edid) {
        buffers.trans_buff = edid;
        builder.report_build("DATE", "TIME");
        return builder.report_text;
    }
    /// The report as it stands when a decoder fails.
    std::string report_till(failure expected, const edid_buffer& edid) {
        EXPECT_EQ(failure_of([&] { report_of(edid); }), expected);
        return builder.report_text;
    }
    /// What stands behind the heading of block 0's descriptors, up to block 1.
    std::string descriptors_of(std::initializer_list<bytes_at> places) {
        const std::string report = report_of(edid_of(places, usual_edid()));
        const std::size_t from = report.find(detail_heading) + detail_heading.size();
        return report.substr(from, report.find("\r\n\r\nBlock 1: ") - from);
    }
    /// What stands behind the bytes of block 1.
    std::string behind_lists(const edid_buffer& edid) {
        const std::string report = report_of(edid);
        const std::string last_address = "//FF\r\n";
        return report.substr(report.find(last_address) + last_address.size());
    }

    test::built_report builder{buffers, tables, fields};
};

const std::string title = "EDID Analysis Report \r\nDATE TIME\r\n\r\n";

std::string unused_standard_timing(int number) {
    return "\r\n--- Standard Timing " + std::to_string(number) +
           " ---\r\n"
           "Horizontal Active Pixel = 248\r\nVertical Active Pixel = 155\r\nImage Aspect Ratio = 16:10\r\n"
           "Refresh Rate = 60\r\n";
}
std::string unused_standard_timings() {
    std::string text;
    for (int number = 1; number <= 8; ++number)
        text += unused_standard_timing(number);
    return text;
}
std::string name_lines(const std::string& name) { return "\r\nMonitor Name = " + name; }
std::string detail_section(int number, const std::string& timing) {
    return "\r\n--- BK0.Detail Timing" + std::to_string(number) + " ---\r\n" + timing + "\r\n";
}

const std::string analog_lines = lines({
    "--- Vendor/Product Identification ---",
    "Manufacturer Name = @@@",
    "Product Code = 0",
    "Serial Number = 0",
    "Week of Manufacture = 0",
    "Year of Manufacture = 1990",
    "EDID Version = 0.0",
    "",
    "--- Video Input Definition ---",
    "Signal Type = Analog",
    "Signal Level (Video/Sync)= 0.700/0.300",
    "Pedestal Setup = NO",
    "Seperate Sync = Not Supported",
    "Composite Sync = Not Supported",
    "Sync On Green = Not Supported",
    "Vs Serration = Not Required",
});
const std::string basic_lines = test::basic_lines_of_zeros + "\r\n";
const std::string color_lines = "--- Color Characteristics ---\r\n" + test::color_lines_of_zeros;
const std::string& established_lines = test::established_lines_of_zeros;
const std::string limits_lines = lines({
                                     "",
                                     "",
                                     "--- Monitor Range Limits ---",
                                     "Min Vertical Rate = 50 Hz",
                                     "Max Vertical Rate = 75 Hz",
                                     "",
                                     "Min Horizontal Rate = 30 KHz",
                                     "Max Horizontal Rate = 80 KHz",
                                     "",
                                     "Max Pixel Clock Rate = 150 MHz",
                                 }) +
                                 "2nd Timing Formula = Not supported";
const std::string serial_lines = "\r\nMonitor Serial Number = 0042";

TEST_F(report_text_test, runs_through_all_in_a_fixed_order) {
    const edid_buffer edid = usual_edid();
    EXPECT_EQ(report_of(edid), title + "______ Block 0: VESA Basic Block ______\r\n" + list_of(edid, 0) + "\r\n" +
                                   analog_lines + "\r\n" + basic_lines + "\r\n" + color_lines + "\r\n" +
                                   established_lines + unused_standard_timings() + "\r\n" + detail_heading +
                                   detail_section(1, full_hd_lines) + name_lines("VELO") + limits_lines + serial_lines +
                                   "\r\n\r\nBlock 1: NOT CEA 861 Block\r\nBlock Tag = 0xFF\r\n"
                                   "Block 1: Manufacturer Defined Block\r\n" +
                                   list_of(edid, 1) + "\r\n\r\nEND.");
}

TEST_F(report_text_test, tells_that_it_ran_to_its_end) {
    buffers.trans_buff = usual_edid();
    EXPECT_TRUE(builder.report_build("", ""));
    buffers.trans_buff = {};
    EXPECT_FALSE(builder.report_build("", ""));
}

TEST_F(report_text_test, begins_anew_each_time) {
    const std::string first = report_of(usual_edid());
    EXPECT_EQ(report_of(usual_edid()), first);
    report_of({});
    EXPECT_EQ(report_of(usual_edid()), first);
}

TEST_F(report_text_test, changes_no_buffer) {
    const edid_buffer edid = cea_edid(4, {{132, full_hd}});
    report_of(edid);
    EXPECT_EQ(buffers.trans_buff, edid);
    EXPECT_EQ(buffers.read_buff, edid_buffer{});
    EXPECT_EQ(buffers.write_buff, edid_buffer{});
}

TEST_F(report_text_test, ends_at_a_bad_header) {
    EXPECT_EQ(report_of({}), title + "Block 0: NOT VESA Basic Block\r\nHeader = 00 00 00 00 00 00 00 00 ");
    for (std::size_t i = 0; i < 8; ++i) {
        std::vector<std::string> bytes = {"00", "FF", "FF", "FF", "FF", "FF", "FF", "00"};
        bytes.at(i) = "0A";
        std::string header = "Header = ";
        for (const std::string& byte : bytes)
            header += byte + " ";
        EXPECT_EQ(report_of(edid_of({{i, {0x0A}}}, usual_edid())),
                  title + "Block 0: NOT VESA Basic Block\r\n" + header);
    }
}

TEST_F(report_text_test, leaves_tables_and_serial_number_at_a_bad_header) {
    fields.sn_value = 7;
    tables.is_cea_block1 = true;
    tables.data_block_addr = {132, 133, 134, 135, 136, 137, 138};
    report_of(edid_of({{0, {1}}}, usual_edid()));
    EXPECT_EQ(fields.sn_value, 7);
    EXPECT_TRUE(tables.is_cea_block1);
    EXPECT_EQ(tables.data_block_addr[6], 138);
}

TEST_F(report_text_test, reads_the_serial_number_of_the_edid) {
    fields.sn_value = 7;
    const std::string report = report_of(edid_of({{12, {0x78, 0x56, 0x34, 0x12}}}, usual_edid()));
    EXPECT_EQ(test::behind("Serial Number =", report), " 305419896");
    EXPECT_EQ(fields.sn_value, 305419896);
}

TEST_F(report_text_test, has_an_empty_line_behind_a_digital_input_too) {
    EXPECT_NE(report_of(edid_of({{20, {0x81}}}, usual_edid()))
                  .find("Signal Type = Digital\r\nDFP 1.x = Compatible\r\n\r\n--- Basic Display Parameters ---\r\n"),
              std::string::npos);
}

TEST_F(report_text_test, has_the_eight_standard_timings_under_their_numbers) {
    const std::string report = report_of(
        edid_of({{38, {0xD1, 0xC0, 0x81, 0x80, 0x71, 0x80, 0x61, 0x40, 0x31, 0x59, 0xA9, 0xC0, 0xB3, 0x00, 1, 1}}},
                usual_edid()));
    const char* const widths[] = {"1920", "1280", "1152", "1024", "640", "1600", "1680", "256"};
    for (int number = 1; number <= 8; ++number)
        EXPECT_NE(report.find("\r\n\r\n--- Standard Timing " + std::to_string(number) +
                              " ---\r\nHorizontal Active Pixel = " + widths[number - 1] + "\r\n"),
                  std::string::npos)
            << number;
}

TEST_F(report_text_test, ends_in_a_gamma_that_does_not_fit) {
    const std::string report = report_till(failure::overflow, edid_of({{23, {156}}}, usual_edid()));
    EXPECT_TRUE(report.starts_with(title + "______ Block 0: VESA Basic Block ______\r\n"));
    EXPECT_TRUE(report.ends_with("Max Vertical Size(cm) = 0\r\nGamma Value = "));
}

using report_of_block_0 = report_text_test;

TEST_F(report_of_block_0, has_each_kind_of_descriptor) {
    EXPECT_EQ(descriptors_of({{54, text_descriptor(0xFE, "TEXT")}, {72, monitor_descriptor(0x10, {})}}),
              "\r\nMonitor ASCII String = TEXT"
              "\r\nUnknown detail-timing or monitor descriptor.\r\nTag address = 0x4B\r\nTag data = 0x10" +
                  limits_lines + serial_lines);
}

TEST_F(report_of_block_0, has_timings_9_to_11_and_12_to_14_on_one_line_where_they_meet) {
    const std::string expected = lines({
                                     "",
                                     "*** Additional Standard Timings 9 ~ 14 ***",
                                     "--- Standard Timing 9 ---",
                                     "Horizontal Active Pixel = 2248",
                                     "Vertical Active Pixel = 1405",
                                     "Image Aspect Ratio = 16:10",
                                     "Refresh Rate = 60",
                                     "",
                                     "--- Standard Timing 10 ---",
                                     "Horizontal Active Pixel = 1920",
                                     "Vertical Active Pixel = 1080",
                                     "Image Aspect Ratio = 16:9",
                                     "Refresh Rate = 60",
                                     "",
                                     "--- Standard Timing 11 ---",
                                     "Horizontal Active Pixel = 1280",
                                     "Vertical Active Pixel = 1024",
                                     "Image Aspect Ratio = 5:4",
                                     "Refresh Rate = 60--- Standard Timing 12 ---",
                                     "Horizontal Active Pixel = 1152",
                                     "Vertical Active Pixel = 921.6",
                                     "Image Aspect Ratio = 5:4",
                                     "Refresh Rate = 60",
                                     "",
                                     "--- Standard Timing 13 ---",
                                     "Horizontal Active Pixel = 1024",
                                     "Vertical Active Pixel = 768",
                                     "Image Aspect Ratio = 4:3",
                                     "Refresh Rate = 60",
                                     "",
                                     "--- Standard Timing 14 ---",
                                     "Horizontal Active Pixel = 640",
                                     "Vertical Active Pixel = 480",
                                     "Image Aspect Ratio = 4:3",
                                 }) +
                                 "Refresh Rate = 85";
    const auto timings =
        monitor_descriptor(0xFA, {0xD1, 0xC0, 0x81, 0x80, 0x71, 0x80, 0x61, 0x40, 0x31, 0x59, 0xA9, 0xC0});
    EXPECT_EQ(descriptors_of({{54, timings}}), expected + name_lines("VELO") + limits_lines + serial_lines);
    const auto others = monitor_descriptor(0xFA, {1, 1});
    EXPECT_EQ(descriptors_of({{54, timings}, {90, others}}), expected + name_lines("VELO") + expected + serial_lines)
        << "the first one twice";
}

TEST_F(report_of_block_0, has_the_first_of_a_class_twice) {
    EXPECT_EQ(descriptors_of({{54, text_descriptor(0xFF, "FIRST")}}), "\r\nMonitor Serial Number = FIRST" +
                                                                          name_lines("VELO") + limits_lines +
                                                                          "\r\nMonitor Serial Number = FIRST");
    EXPECT_EQ(descriptors_of({{54, text_descriptor(0xFE, "FIRST")}, {108, text_descriptor(0xFE, "SECOND")}}),
              "\r\nMonitor ASCII String = FIRST" + name_lines("VELO") + limits_lines +
                  "\r\nMonitor ASCII String = FIRST");
    EXPECT_EQ(descriptors_of({{108, monitor_descriptor(0xFD, {1, 2, 3, 4, 5, 6})}}),
              detail_section(1, full_hd_lines) + name_lines("VELO") + limits_lines + limits_lines);
    const std::string unknown =
        "\r\nUnknown detail-timing or monitor descriptor.\r\nTag address = 0x39\r\nTag data = 0xFB";
    EXPECT_EQ(descriptors_of({{54, monitor_descriptor(0xFB, {})}, {108, monitor_descriptor(0x10, {})}}),
              unknown + name_lines("VELO") + limits_lines + unknown);
}

TEST_F(report_of_block_0, has_two_names_and_a_line_end_for_each_further_one) {
    const auto name = [](const char* text) { return text_descriptor(0xFC, text); };
    EXPECT_EQ(descriptors_of({{54, name("A")}, {90, name("C")}, {108, name("D")}}),
              name_lines("A") + name_lines("VELO") + "\r\n\r\n");
    EXPECT_EQ(descriptors_of({{90, name("C")}}),
              detail_section(1, full_hd_lines) + name_lines("VELO") + name_lines("C") + serial_lines);
}

TEST_F(report_of_block_0, has_up_to_four_detail_timings) {
    EXPECT_EQ(descriptors_of({{72, vga}, {90, full_hd}, {108, vga}}),
              detail_section(1, full_hd_lines) + detail_section(2, vga_lines) + detail_section(3, full_hd_lines) +
                  detail_section(4, vga_lines));
}

TEST_F(report_of_block_0, mixes_names_and_timings_as_they_lie) {
    EXPECT_EQ(
        descriptors_of({{54, text_descriptor(0xFC, "A")}, {72, vga}, {90, text_descriptor(0xFC, "B")}, {108, full_hd}}),
        name_lines("A") + detail_section(1, vga_lines) + name_lines("B") + detail_section(2, full_hd_lines));
}

TEST_F(report_of_block_0, ends_in_a_pixel_clock_too_large) {
    EXPECT_TRUE(report_till(failure::overflow, edid_of({{72, {0x4D, 0xD0}}}, usual_edid()))
                    .ends_with(detail_heading + detail_section(1, full_hd_lines) +
                               "\r\n--- BK0.Detail Timing2 ---\r\nPixel Clock(MHz) = "));
}

TEST_F(report_text_test, tells_what_was_being_decoded_when_it_fails) {
    const auto sentence_of = [this](const edid_buffer& edid) -> std::string {
        try {
            report_of(edid);
        } catch (const runtime_failure& f) {
            return f.sentence();
        }
        return "(no failure)";
    };
    EXPECT_EQ(sentence_of(edid_of({{54, {0x4D, 0xD0}}}, usual_edid())),
              "Building the EDID report: Decoding detailed timing 1: a pixel clock of 533.25 MHz does not fit.");
    EXPECT_EQ(
        sentence_of(cea_edid(4, {{132, full_hd}, {150, {0x4D, 0xD0}}})),
        "Building the EDID report: Decoding detailed timing 2 of block 1: a pixel clock of 533.25 MHz does not fit.");
}

TEST_F(report_of_block_0, takes_an_edid_whose_tree_can_not_be_built) {
    const auto unknown = monitor_descriptor(0x10, {});
    const edid_buffer edid = edid_of({{54, unknown}, {72, unknown}, {128, {0}}}, usual_edid());
    EXPECT_EQ(failure_of([&] { report_of(edid); }), std::nullopt);
    EXPECT_TRUE(builder.report_text.ends_with("\r\n\r\nEND."));
}

using report_of_block_1 = report_text_test;

TEST_F(report_of_block_1, has_a_name_for_each_known_tag) {
    const std::vector<std::pair<int, std::string>> names = {
        {0x01, "0x01\r\nBlock 1: LCD Timings Block"},
        {0x20, "0x20\r\nBlock 1: EDID 2.0 Extension Block"},
        {0x30, "0x30\r\nBlock 1: Color Infomation Type 0 Block"},
        {0x40, "0x40\r\nBlock 1: DVI Feature Data Block"},
        {0x50, "0x50\r\nBlock 1: Touch Screen Data Block"},
        {0xF0, "0xF0\r\nBlock 1: Block Map Block"},
        {0xFF, "0xFF\r\nBlock 1: Manufacturer Defined Block"},
    };
    for (const auto& [tag, name] : names) {
        const edid_buffer edid = edid_of({{128, {tag}}}, usual_edid());
        tables.is_cea_block1 = true;
        EXPECT_TRUE(report_of(edid).ends_with("\r\n\r\nBlock 1: NOT CEA 861 Block\r\nBlock Tag = " + name + "\r\n" +
                                              list_of(edid, 1) + "\r\n\r\nEND."))
            << tag;
        EXPECT_FALSE(tables.is_cea_block1);
    }
}

TEST_F(report_of_block_1, has_its_bytes_on_the_line_of_a_tag_without_name) {
    const std::pair<int, const char*> tags[] = {{0x70, "70"}, {0x00, "00"}, {0x03, "03"}, {0xEF, "EF"}};
    for (const auto& [tag, digits] : tags) {
        const edid_buffer edid = edid_of({{128, {tag}}}, usual_edid());
        EXPECT_TRUE(report_of(edid).ends_with("\r\n\r\nBlock 1: NOT CEA 861 Block\r\nBlock Tag = 0x" +
                                              std::string(digits) + list_of(edid, 1) + "\r\n\r\nEND."))
            << tag;
    }
}

const std::string dtv_lines = lines({
                                  "",
                                  "--- DTV Monitor Support ---",
                                  "Block Tag = 2, CEA 861 Extension",
                                  "Revision = 3",
                                  "Underscan = Supported",
                                  "Basic Audio = Supported",
                                  "RGB/YCbCr444 = Supported",
                                  "RGB/YCbCr422 = Supported",
                              }) +
                              "Native Format Number = 1";
const std::string no_data_blocks = "\r\nThere are no data blocks.\r\n";
const std::string data_blocks_heading = "\r\n*** Data Block Collections ***\r\n";
const std::string end_line = "\r\n\r\nEND.";

std::string detail_section_1(int number, const std::string& timing) {
    return "\r\n\r\n--- BK1.Detail Timing" + std::to_string(number) + " ---\r\n" + timing;
}

TEST_F(report_of_block_1, tells_a_cea_861_block) {
    const edid_buffer edid = cea_edid(0);
    EXPECT_TRUE(report_of(edid).ends_with("Monitor Serial Number = 0042\r\n\r\n______ Block 1: CEA 861 Block ______\r\n"
                                          "Block Tag = 2\r\n" +
                                          list_of(edid, 1) + dtv_lines + no_data_blocks + end_line));
    EXPECT_TRUE(tables.is_cea_block1);
}

TEST_F(report_of_block_1, has_neither_data_blocks_nor_timings_for_offset_0) {
    EXPECT_EQ(behind_lists(cea_edid(0, {{132, {0x21, 1}}})), dtv_lines + no_data_blocks + end_line);
}

TEST_F(report_of_block_1, leaves_the_descriptors_of_block_0_arranged_for_offset_0) {
    report_of(cea_edid(0));
    EXPECT_EQ(tables.descriptor_map.at(0), (descriptor_row{1, descriptor_class::detail_timing}));
    EXPECT_EQ(tables.descriptor_map.at(1), (descriptor_row{2, descriptor_class::monitor_name}));
    EXPECT_EQ(tables.descriptor_start, 54);
}

TEST_F(report_of_block_1, has_timings_alone_for_offset_4) {
    tables.data_block_addr = {132, 132, 132, 132, 132, 132, 132};
    EXPECT_EQ(behind_lists(cea_edid(4, {{132, full_hd}, {150, text_descriptor(0xFC, "A")}, {168, vga}})),
              dtv_lines + no_data_blocks + detail_section_1(1, full_hd_lines) + detail_section_1(2, vga_lines) +
                  end_line);
}

TEST_F(report_of_block_1, has_an_empty_collection_for_an_offset_below_4) {
    tables.data_block_addr = {132, 132, 132, 132, 132, 132, 132};
    // the descriptors begin with the header's own bytes
    for (const int d : {1, 2, 3}) {
        EXPECT_NE(behind_lists(cea_edid(d, {{131, {0x01}}}))
                      .find(data_blocks_heading + "\r\n\r\n--- BK1.Detail Timing1 ---\r\n"),
                  std::string::npos)
            << d;
    }
}

TEST_F(report_of_block_1, has_the_data_blocks_in_the_order_of_their_kinds) {
    EXPECT_EQ(behind_lists(cea_edid(33, {{132, {0xA1, 1,                                    // unknown
                                                0xE3, 5,    3,    0,                        // colorimetry
                                                0xE2, 0,    0x40,                           // video capability
                                                0x83, 0x4F, 0,    0,                        // speakers
                                                0x65, 3,    12,   0, 0x10, 0x00,            // HDMI
                                                0x42, 0x84, 60,                             // video
                                                0x26, 9,    7,    7, 0x50, 1,    0x00}}})), // audio
              dtv_lines + data_blocks_heading +
                  lines({
                      "",
                      "--- Audio Data Block ---",
                      "Audio Format = Linear PCM",
                      "Sampling Rate(KHz) = 32/44.1/48",
                      "Max number of channels = 2",
                      "Bit per Sample(bit) = 16/20/24",
                      "",
                      "Audio Format = Dolby Digital+",
                      "Sampling Rate(KHz) = 32",
                      "Max number of channels = 1",
                      "",
                      "",
                      "--- Video Data Block ---",
                      " 4 1280x720p  59/60 16:9 is Native",
                      "60 Reserved",
                      "",
                      "--- Vendor Specific Data Block ---",
                      "VSDB block size = 5",
                      "IEEE Registration Id = 0x000C03",
                      "CEC Physical Address A.B.C.D =",
                      "    1 . 0 . 0 . 0",
                      "",
                      "--- Speaker Allocation Data Block ---",
                      "Speaker Allocation =",
                      " FL/FR  LFE  FC  RL/RR  RLC/RRC  ",
                      "",
                      "--- Video Capability Data Block ---",
                      "CE Scan Behavior=Not Supported",
                      "IT Scan Behavior=Not Supported",
                      "PT Scan Behavior=Not Supported",
                      "",
                      "Quantization Range = Selectable",
                      "--- Colorimetry Data Block ---",
                      "Colorimetry Support=xvYCC601/xvYCC709",
                      "--- Unknwon Data Block ---",
                      "Tag address = 0x84",
                  }) +
                  "Tag data = 0xA1" + end_line);
}

TEST_F(report_of_block_1, has_each_data_block_alone) {
    const std::vector<std::pair<std::vector<int>, std::string>> blocks = {
        {{0x20, 0}, "\r\n--- Audio Data Block ---\r\n"},
        {{0x40, 0}, "\r\n--- Video Data Block ---\r\n"},
        {{0x64, 1, 2, 3, 0x0A},
         "\r\n--- Vendor Specific Data Block ---\r\nVSDB block size = 4\r\nIEEE Registration Id = 0x030201\r\n"
         "Payload =\r\n0A \r\n"},
        {{0x81, 0}, "\r\n--- Speaker Allocation Data Block ---\r\nSpeaker Allocation =\r\n \r\n"},
        {{0xE2, 0, 0x01},
         "\r\n--- Video Capability Data Block ---\r\nCE Scan Behavior=Always Overscan\r\n"
         "IT Scan Behavior=Not Supported\r\nPT Scan Behavior=Not Supported\r\n\r\nQuantization Range = No Data"},
        {{0xE2, 5, 0x02}, "\r\n--- Colorimetry Data Block ---\r\nColorimetry Support=/xvYCC709"},
        {{0x00, 0}, "\r\n--- Unknwon Data Block ---\r\nTag address = 0x84\r\nTag data = 0x00"},
    };
    for (const auto& [bytes, text] : blocks) {
        const int d = 4 + (bytes[0] & 0x1F) + 1;
        EXPECT_EQ(behind_lists(cea_edid(d, {{132, bytes}})).substr(dtv_lines.size()),
                  data_blocks_heading + text + end_line);
    }
}

TEST_F(report_of_block_1, has_the_timings_behind_the_data_blocks) {
    EXPECT_EQ(behind_lists(cea_edid(6, {{132, {0x41, 60}}, {134, vga}})),
              dtv_lines + data_blocks_heading + "\r\n--- Video Data Block ---\r\n60 Reserved\r\n" +
                  detail_section_1(1, vga_lines) + end_line);
}

TEST_F(report_of_block_1, has_up_to_six_detail_timings) {
    EXPECT_EQ(
        behind_lists(cea_edid(4, {{132, full_hd}, {150, vga}, {168, full_hd}, {186, vga}, {204, full_hd}, {222, vga}})),
        dtv_lines + no_data_blocks + detail_section_1(1, full_hd_lines) + detail_section_1(2, vga_lines) +
            detail_section_1(3, full_hd_lines) + detail_section_1(4, vga_lines) + detail_section_1(5, full_hd_lines) +
            detail_section_1(6, vga_lines) + end_line);
}

TEST_F(report_of_block_1, ends_in_what_a_decoder_can_not_tell) {
    const auto report_ends = [this](failure expected, const edid_buffer& edid, const std::string& text) {
        EXPECT_TRUE(report_till(expected, edid).ends_with(dtv_lines + text)) << builder.report_text;
    };
    report_ends(failure::invalid_procedure_call, cea_edid(7, {{132, {0x42, 60, 100}}}),
                data_blocks_heading + "\r\n--- Video Data Block ---\r\n60 Reserved\r\n");
    report_ends(failure::overflow, cea_edid(8, {{132, {0x63, 1, 2, 3}}}),
                data_blocks_heading + "\r\n--- Vendor Specific Data Block ---\r\nVSDB block size = 3\r\n"
                                      "IEEE Registration Id = 0x030201\r\nPayload =\r\n");
    report_ends(failure::overflow, cea_edid(4, {{132, full_hd}, {150, {0, 0x80}}}),
                no_data_blocks + detail_section_1(1, full_hd_lines) + detail_section_1(2, "Pixel Clock(MHz) = "));
    report_ends(failure::subscript_out_of_range, cea_edid(255), "");
    std::string reserved;
    for (int i = 0; i < 31; ++i)
        reserved += "60 Reserved\r\n";
    report_ends(
        failure::overflow,
        cea_edid(128, {{132, {0x5F}}, {133, std::vector<int>(31, 60)}, {164, {0x1F}}, {196, {0x1F}}, {228, {0x1B}}}),
        data_blocks_heading + "\r\n--- Video Data Block ---\r\n" + reserved +
            "\r\n--- Unknwon Data Block ---\r\nTag address = 0xE4\r\nTag data = 0x1B");
}

} // namespace
} // namespace desk
