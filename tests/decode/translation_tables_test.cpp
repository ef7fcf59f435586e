#include "translate/decode/translation_tables.h"

#include "support/translation_fixture.h"

#include <gtest/gtest.h>

#include <array>
#include <initializer_list>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace desk {
namespace {

using test::bytes_at;
using test::edid_of;
using test::failure_of;
using descriptor_rows = std::array<descriptor_row, 7>;
using addresses = decltype(translation_tables::data_block_addr);

/// As they are left by something else.
const descriptor_rows rows_before = {
    {{11, 0xE0}, {12, 0xE0}, {13, 0xE0}, {14, 0xE0}, {15, 0xE0}, {16, 0xE0}, {17, 0xE0}}};
const addresses old_addresses = [] {
    addresses all{};
    all.fill(201);
    return all;
}();

const descriptor_rows all_unknown = {{{1, 0xE3}, {2, 0xE3}, {3, 0xE3}, {4, 0xE3}, {5, 0xE3}, {6, 0xE3}, {7, 0xE3}}};

class translation_tables_test : public testing::Test {
protected:
    translation_tables_test() {
        tables.descriptor_map = rows_before;
        tables.descriptor_start = 99;
        tables.data_block_addr = old_addresses;
        tables.cea_dtd_offset = 77;
        tables.is_cea_block1 = true;
    }
    const descriptor_rows& rows_of(std::uint8_t block, std::initializer_list<bytes_at> places) {
        tables.arrange_descriptor(edid_of(places), block);
        return tables.descriptor_map;
    }
    /// The classes of the first `count` rows.
    std::vector<int> kinds(std::size_t count) const {
        std::vector<int> found;
        for (std::size_t i = 0; i < count; ++i)
            found.push_back(tables.descriptor_map.at(i).kind);
        return found;
    }
    translation_tables tables;
};

using descriptors_of_block_0 = translation_tables_test;

TEST_F(descriptors_of_block_0, have_the_class_of_their_tag) {
    for (const int tag : {0xFF, 0xFE, 0xFD, 0xFC, 0xFA}) {
        tables.arrange_descriptor(edid_of({{57, {tag}}}), 0);
        EXPECT_EQ(kinds(4), (std::vector<int>{tag, 0xE3, 0xE3, 0xE3}));
    }
}

TEST_F(descriptors_of_block_0, are_unknown_for_any_other_tag) {
    for (int tag = 0; tag < 256; ++tag) {
        const bool known = tag == 0xFA || tag >= 0xFC;
        tables.arrange_descriptor(edid_of({{111, {tag}}}), 0);
        EXPECT_EQ(kinds(4), (std::vector<int>{0xE3, 0xE3, 0xE3, known ? tag : 0xE3})) << tag;
    }
}

TEST_F(descriptors_of_block_0, are_detail_timings_if_either_byte_of_the_clock_is_not_0) {
    tables.arrange_descriptor(edid_of({{54, {1, 0, 0, 0xFC}}, {72, {0, 1, 0, 0xFF}}, {90, {0x80, 0x80}}}), 0);
    EXPECT_EQ(kinds(4), (std::vector<int>{0xE0, 0xE0, 0xE0, 0xE3}));
}

TEST_F(descriptors_of_block_0, do_not_look_at_the_bytes_beside_the_tag) {
    tables.arrange_descriptor(edid_of({{54, {0, 0, 0xFF, 0xFC, 0xFF}}, {72, {0, 0, 0xFC, 0x10, 0xFC}}}), 0);
    EXPECT_EQ(kinds(2), (std::vector<int>{0xFC, 0xE3}));
}

TEST_F(descriptors_of_block_0, have_their_positions_and_an_end_row) {
    EXPECT_EQ(
        rows_of(0, {{57, {0xFC}}, {72, {1}}, {93, {0xFA}}, {111, {0xFD}}}),
        (descriptor_rows{{{1, 0xFC}, {2, 0xE0}, {3, 0xFA}, {4, 0xFD}, {5, 0xE3}, rows_before[5], rows_before[6]}}));
    EXPECT_EQ(tables.descriptor_start, 54);
}

TEST_F(descriptors_of_block_0, leave_the_data_blocks_as_they_are) {
    rows_of(0, {});
    EXPECT_EQ(tables.data_block_addr, old_addresses);
    EXPECT_EQ(tables.cea_dtd_offset, 77);
    EXPECT_TRUE(tables.is_cea_block1);
}

using descriptors_of_block_1 = translation_tables_test;

TEST_F(descriptors_of_block_1, are_all_unknown_for_offset_0_and_keep_their_start) {
    EXPECT_EQ(rows_of(1, {{99, {1}}, {128, {2, 3, 0, 0, 1, 1, 1}}}), all_unknown);
    EXPECT_EQ(tables.descriptor_start, 99);
}

TEST_F(descriptors_of_block_1, start_at_the_offset) {
    EXPECT_EQ(rows_of(1, {{130, {4}}, {132, {1}}, {150, {0, 1}}, {171, {0xFC}}, {189, {0x10}}, {207, {0xFA}}}),
              (descriptor_rows{{{1, 0xE0}, {2, 0xE0}, {3, 0xFC}, {4, 0xE3}, {5, 0xFA}, {6, 0xE3}, {7, 0xE3}}}));
    EXPECT_EQ(tables.descriptor_start, 132);
}

TEST_F(descriptors_of_block_1, are_six_and_an_end_row_at_most) {
    edid_buffer edid{};
    edid.fill(0x55);
    edid[130] = 4;
    tables.arrange_descriptor(edid, 1);
    EXPECT_EQ(kinds(7), (std::vector<int>{0xE0, 0xE0, 0xE0, 0xE0, 0xE0, 0xE0, 0xE3}));
    EXPECT_EQ(tables.descriptor_map[6].position, 7);
}

TEST_F(descriptors_of_block_1, do_not_start_above_236) {
    edid_buffer edid{};
    edid.fill(0x55);
    for (int d = 1; d < 128; ++d) {
        edid[130] = static_cast<std::uint8_t>(d);
        tables.arrange_descriptor(edid, 1);
        std::vector<int> expected(7, 0xE3);
        for (int i = 0; i < 6; ++i)
            if (128 + d + 18 * i <= 236) expected.at(static_cast<std::size_t>(i)) = 0xE0;
        EXPECT_EQ(kinds(7), expected) << d;
        EXPECT_EQ(tables.descriptor_start, d + 128);
        for (std::size_t i = 0; i < 7; ++i)
            EXPECT_EQ(tables.descriptor_map.at(i).position, i + 1) << d;
    }
}

TEST_F(descriptors_of_block_1, are_those_of_any_block_number_but_0) {
    const edid_buffer edid = edid_of({{130, {4}}, {132, {1}}});
    for (const std::uint8_t block : test::byte_list{1, 2, 255}) {
        tables.descriptor_map = rows_before;
        tables.arrange_descriptor(edid, block);
        EXPECT_EQ(tables.descriptor_map[0], (descriptor_row{1, 0xE0}));
        EXPECT_EQ(tables.descriptor_map[6], (descriptor_row{7, 0xE3}));
    }
}

TEST_F(descriptors_of_block_1, fail_for_an_offset_of_128_or_more_and_stay_as_they_were) {
    for (const int d : {128, 129, 200, 255}) {
        EXPECT_EQ(failure_of([&] { rows_of(1, {{130, {d}}}); }), failure::overflow);
        EXPECT_EQ(tables.descriptor_map, rows_before);
        EXPECT_EQ(tables.descriptor_start, 99);
    }
}

class data_blocks : public translation_tables_test {
protected:
    /// The blocks found in these bytes from byte 132 on: "audio 132, video 135"; of a kind that is not there nothing.
    std::string found(int d, const std::vector<int>& from_byte_132) {
        tables.arrange_data_block(edid_of({{130, {d}}, {132, from_byte_132}}));
        return found();
    }
    std::string found() const {
        const std::map<std::string_view, std::string> names = {
            {"block1_db_audio", "audio"},     {"block1_db_video", "video"},     {"block1_db_vsdb", "vendor"},
            {"block1_db_speaker", "speaker"}, {"block1_db_vcap", "capability"}, {"block1_db_color", "colorimetry"},
            {"block1_db_unknown", "unknown"},
        };
        std::string text;
        for (std::size_t kind = 0; kind < data_block_rows.size(); ++kind) {
            const int address = tables.data_block_addr.at(kind);
            if (address == 0) continue;
            text += (text.empty() ? "" : ", ") + names.at(data_block_rows.at(kind).key) + " " + std::to_string(address);
        }
        return text;
    }
};

TEST_F(data_blocks, have_a_kind_by_their_top_bits) {
    EXPECT_EQ(found(6, {0x21, 0xE0}), "audio 132");
    EXPECT_EQ(found(6, {0x41, 0}), "video 132");
    EXPECT_EQ(found(6, {0x61, 0}), "vendor 132");
    EXPECT_EQ(found(6, {0x81, 0}), "speaker 132");
    EXPECT_EQ(found(6, {0xE1, 0}), "capability 132");
    EXPECT_EQ(found(6, {0xE1, 5}), "colorimetry 132");
    for (const int extended_tag : {1, 4, 6, 255})
        EXPECT_EQ(found(6, {0xE1, extended_tag}), "unknown 132") << extended_tag;
    for (const int header : {0x01, 0xA1, 0xC1})
        EXPECT_EQ(found(6, {header, 0}), "unknown 132") << header;
}

TEST_F(data_blocks, follow_each_other_by_their_lengths) {
    // video of 2, audio of 3, speakers of 3, vendor of 5, capability of 2, colorimetry of 3, unknown of 0
    EXPECT_EQ(
        found(29, {0x42, 1, 2, 0x23, 1, 2, 3, 0x83, 1, 0, 0, 0x65, 3, 12, 0, 16, 0, 0xE2, 0, 1, 0xE3, 5, 1, 0, 0}),
        "audio 135, video 132, vendor 143, speaker 139, capability 149, colorimetry 152, unknown 156");
    EXPECT_EQ(tables.cea_dtd_offset, 29);
}

TEST_F(data_blocks, are_not_looked_for_from_the_offset_on) {
    EXPECT_EQ(found(7, {0x42, 1, 2, 0x21, 1}), "video 132");
    EXPECT_EQ(found(8, {0x42, 1, 2, 0x21, 1}), "audio 135, video 132");
    EXPECT_EQ(found(5, {0x42, 1, 2, 0x21, 1}), "video 132");
    EXPECT_EQ(found(10, {0x5F, 0x21, 0x21, 0x21}), "video 132") << "one that runs past the offset ends the walk";
    EXPECT_EQ(found(5, {0xE0, 5}), "colorimetry 132") << "the extended tag is read past the offset";
}

TEST_F(data_blocks, keep_the_last_of_a_kind) {
    EXPECT_EQ(found(10, {0x21, 1, 0x21, 2, 0x21, 3}), "audio 136");
    EXPECT_EQ(found(9, {0x01, 1, 0xA0, 0xC1, 3}), "unknown 135");
}

TEST_F(data_blocks, are_cleared_before_they_are_looked_for) {
    for (const int d : {1, 2, 3}) {
        tables.data_block_addr = old_addresses;
        EXPECT_EQ(found(d, {0x21, 1}), "") << "the walk begins after the offset";
        EXPECT_EQ(tables.cea_dtd_offset, d);
    }
}

TEST_F(data_blocks, stay_as_they_were_for_offsets_0_and_4) {
    for (const int d : {0, 4}) {
        found(d, {0x21, 1});
        EXPECT_EQ(tables.data_block_addr, old_addresses);
        EXPECT_EQ(tables.cea_dtd_offset, d);
    }
}

TEST_F(data_blocks, do_not_touch_the_descriptors) {
    found(20, {0x21, 1});
    EXPECT_EQ(tables.descriptor_map, rows_before);
    EXPECT_EQ(tables.descriptor_start, 99);
    EXPECT_TRUE(tables.is_cea_block1);
}

TEST_F(data_blocks, never_fail_for_an_offset_below_128) {
    for (int d = 0; d < 128; ++d) {
        for (const int byte : {0x00, 0x1F, 0x20, 0x5F, 0xE0, 0xFF}) {
            edid_buffer edid{};
            edid.fill(static_cast<std::uint8_t>(byte));
            edid[130] = static_cast<std::uint8_t>(d);
            EXPECT_EQ(failure_of([&] { tables.arrange_data_block(edid); }), std::nullopt) << d << ' ' << byte;
        }
    }
}

TEST_F(data_blocks, fail_beyond_the_edid_with_those_found_before) {
    EXPECT_EQ(failure_of([&] { found(200, {0x21, 1, 0x5F}); }), failure::subscript_out_of_range);
    EXPECT_EQ(found(), "audio 132, video 134, unknown 255");
    EXPECT_EQ(tables.cea_dtd_offset, 200);
}

TEST_F(data_blocks, fail_if_the_extended_tag_is_beyond_the_edid) {
    const edid_buffer edid =
        edid_of({{130, {128}}, {132, {0x1F}}, {164, {0x1F}}, {196, {0x1F}}, {228, {0x1A}}, {255, {0xE0}}});
    EXPECT_EQ(failure_of([&] { tables.arrange_data_block(edid); }), failure::subscript_out_of_range);
    EXPECT_EQ(found(), "unknown 228");
}

TEST_F(data_blocks, can_pass_byte_255_in_one_step) {
    // the walk ends past the limit without having looked there
    EXPECT_EQ(found(128, std::vector<int>(124, 0x3F)), "audio 228");
}

using a_descriptor = translation_tables_test;

TEST_F(a_descriptor, is_found_by_its_class_and_count) {
    tables.arrange_descriptor(edid_of({{57, {0xFC}}, {72, {1}}, {93, {0xFC}}, {108, {1}}}), 0);
    EXPECT_EQ(tables.find_descriptor(0xFC, 1, 4), &tables.descriptor_map[0]);
    EXPECT_EQ(tables.find_descriptor(0xE0, 1, 4), &tables.descriptor_map[1]);
    EXPECT_EQ(tables.find_descriptor(0xFC, 2, 4), &tables.descriptor_map[2]);
    EXPECT_EQ(tables.find_descriptor(0xE0, 2, 4), &tables.descriptor_map[3]);
    EXPECT_EQ(tables.find_descriptor(0xFC, 3, 4), nullptr);
    EXPECT_EQ(tables.find_descriptor(0xFD, 1, 4), nullptr);
}

TEST_F(a_descriptor, is_looked_for_among_the_first_rows_alone) {
    tables.arrange_descriptor(edid_of({{54, {1}}, {72, {1}}, {90, {1}}, {108, {1}}}), 0);
    EXPECT_EQ(tables.find_descriptor(0xE3, 1, 4), nullptr);
    EXPECT_EQ(tables.find_descriptor(0xE3, 1, 7), &tables.descriptor_map[4]);
    EXPECT_EQ(tables.find_descriptor(0xE0, 4, 4), &tables.descriptor_map[3]);
    EXPECT_EQ(tables.find_descriptor(0xE0, 4, 3), nullptr);
}

TEST(translation_tables, are_empty_at_first) {
    const translation_tables tables;
    EXPECT_EQ(tables.descriptor_map, descriptor_rows{});
    EXPECT_EQ(tables.descriptor_start, 0);
    EXPECT_EQ(tables.data_block_addr, addresses{});
    EXPECT_EQ(tables.cea_dtd_offset, 0);
    EXPECT_FALSE(tables.is_cea_block1);
}

} // namespace
} // namespace desk
