#include "report/text/report_text.h"

#include "support/built_report.h"
#include "support/translation_fixture.h"

#include <gtest/gtest.h>

#include <string>

namespace desk {
namespace {

using test::cea_edid;
using test::edid_of;
using test::failure_of;
using test::full_hd;
using test::monitor_descriptor;
using test::usual_edid;

// tests/golden has whole reports; these tests cover what a report finds, keeps and leaves.
class report_text_test : public test::translation_fixture {
protected:
    std::string report_of(const edid_buffer& edid) {
        buffers.trans_buff = edid;
        builder.report_build("DATE", "TIME");
        return builder.report_text;
    }

    test::built_report builder{buffers, tables, fields};
};

TEST_F(report_text_test, reports_whether_it_is_complete) {
    buffers.trans_buff = usual_edid();
    EXPECT_TRUE(builder.report_build("", ""));
    buffers.trans_buff = {};
    EXPECT_FALSE(builder.report_build("", ""));
}

TEST_F(report_text_test, starts_from_nothing_each_time) {
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
    EXPECT_EQ(test::value_after("Serial Number =", report), " 305419896");
    EXPECT_EQ(fields.sn_value, 305419896);
}

TEST_F(report_text_test, reports_what_was_being_decoded_when_it_fails) {
    const auto sentence_of = [this](const edid_buffer& edid) { return test::sentence_of([&] { report_of(edid); }); };
    EXPECT_EQ(sentence_of(edid_of({{54, {0x4D, 0xD0}}}, usual_edid())),
              "Building the EDID report: Decoding detailed timing 1: a pixel clock of 533.25 MHz does not fit.");
    EXPECT_EQ(
        sentence_of(cea_edid(4, {{132, full_hd}, {150, {0x4D, 0xD0}}})),
        "Building the EDID report: Decoding detailed timing 2 of block 1: a pixel clock of 533.25 MHz does not fit.");
}

TEST_F(report_text_test, reports_on_an_edid_whose_tree_can_not_be_built) {
    const auto unknown = monitor_descriptor(0x10, {});
    const edid_buffer edid = edid_of({{54, unknown}, {72, unknown}, {128, {0}}}, usual_edid());
    EXPECT_EQ(failure_of([&] { report_of(edid); }), std::nullopt);
    EXPECT_TRUE(builder.report_text.ends_with("\r\n\r\nEND."));
}

TEST_F(report_text_test, finds_out_whether_block_1_is_a_cea_861_block) {
    report_of(cea_edid(0));
    EXPECT_TRUE(tables.is_cea_block1);
    report_of(usual_edid());
    EXPECT_FALSE(tables.is_cea_block1);
}

TEST_F(report_text_test, leaves_the_descriptors_of_block_0_arranged_for_offset_0) {
    report_of(cea_edid(0));
    EXPECT_EQ(tables.descriptor_map.at(0), (descriptor_row{1, descriptor_class::detail_timing}));
    EXPECT_EQ(tables.descriptor_map.at(1), (descriptor_row{2, descriptor_class::monitor_name}));
    EXPECT_EQ(tables.descriptor_start, 54);
}

TEST_F(report_text_test, ignores_the_addresses_of_an_earlier_translation) {
    for (const int d : {0, 1, 2, 3, 4}) {
        tables.data_block_addr.fill(132);
        const std::string report = report_of(cea_edid(d, {{131, {0x01}}, {132, full_hd}}));
        EXPECT_EQ(report.find("There are no data blocks.") != std::string::npos, d == 0 || d == 4) << d;
        EXPECT_EQ(report.find(" Data Block ---"), std::string::npos) << d;
    }
}

} // namespace
} // namespace desk
