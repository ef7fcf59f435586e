#include "edid/difference.h"

#include "support/edid_fixture.h"

#include <gtest/gtest.h>

namespace desk {
namespace {

using places = std::vector<std::size_t>;

std::vector<std::string> pairs_at(const std::string& text, const places& all) {
    std::vector<std::string> pairs;
    for (const std::size_t at : all)
        pairs.push_back(text.substr(at, 2));
    return pairs;
}

TEST(places_of_bytes, are_those_of_the_window_text) {
    const std::string text = test::window_text_of(test::good_edid());
    const places all = places_of_bytes(text);
    ASSERT_EQ(all.size(), 256U);
    EXPECT_EQ(all[0], 0U);
    EXPECT_EQ(all[7], 21U);
    EXPECT_EQ(all[8], 29U) << "8 bytes of 3 characters, //7 and the line's end";
    EXPECT_EQ(text.substr(all[128] - 4, 4), "\r\n\r\n");
    EXPECT_EQ(text.substr(all[255], 7), text.substr(text.size() - 9, 7));
}

TEST(places_of_bytes, end_with_the_text) {
    EXPECT_EQ(places_of_bytes(""), places{});
    EXPECT_EQ(places_of_bytes("00 F"), places{0});
    EXPECT_EQ(places_of_bytes("00 FF //1\r\n"), (places{0, 3}));
}

TEST(places_of_bytes, are_not_found_in_words) {
    EXPECT_EQ(places_of_bytes("Reading HDMI/DVI-OUT's edid ...\r\nTimeout ! Read fail !"), places{});
    const std::string text = "00 FF //1\r\n\r\nLink Error !\r\n";
    EXPECT_EQ(pairs_at(text, places_of_bytes(text)), (std::vector<std::string>{"00", "FF"}));
}

TEST(places_of_bytes, are_at_most_256) {
    std::string text = test::window_text_of(test::good_edid());
    text += text;
    EXPECT_EQ(places_of_bytes(text).size(), 256U);
}

class edid_difference : public testing::Test {
protected:
    edid_difference() {
        view.txt_write.text = "00";
        view.txt_read.text = "01";
        buffers.read_buff[0x12] = 1;
        buffers.write_buff[0x80] = 2;
        buffers.read_buff[0xFF] = 3;
        found.compare(buffers);
    }

    workbench_frame view;
    edid_buffers buffers;
    difference found{view};
};

TEST_F(edid_difference, names_the_bytes_that_differ) { EXPECT_EQ(found.bytes(), (places{0x12, 0x80, 0xFF})); }

TEST_F(edid_difference, is_discarded_when_either_text_changes) {
    view.txt_write.text = "";
    EXPECT_EQ(found.bytes(), places{});
    found.compare(buffers);
    EXPECT_EQ(found.bytes().size(), 3U);
    view.txt_read.text += "more";
    EXPECT_EQ(found.bytes(), places{});
}

class compared_sides : public test::edid_fixture {};

TEST_F(compared_sides, are_compared_by_comp) {
    view.txt_write.text = "00";
    view.txt_read.text = "00";
    buffers.write_buff[5] = 1;
    view.cmd_compare.on_click();
    EXPECT_EQ(result.differing.bytes(), places{5});
    view.cmd_clear_read.on_click();
    EXPECT_EQ(result.differing.bytes(), places{});
}

} // namespace
} // namespace desk
