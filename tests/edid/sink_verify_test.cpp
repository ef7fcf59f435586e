#include "edid/sink_transfers.h"

#include "support/sink_fixture.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace desk {
namespace {

using test::buffer_of;
using test::good_edid;
using test::look_of;
using test::sink_test;
using test::strings;

class verify_button : public sink_test {
protected:
    std::string look() const { return look_of(view.cmd_verify) + ", " + frame_text(); }
};

TEST_F(verify_button, passes_if_the_sink_holds_what_was_written) {
    view.txt_read.text = "an older read";
    remember();
    view.cmd_verify.on_click();
    EXPECT_EQ(m.port.take_written(), (strings{"ESC001", "ERD001"}));
    EXPECT_EQ(look(), "grey enabled, VERIFY: Reading sink's edid ...|Comparing ...|Match entirely. PASS enabled");
    expect_mark(true);
    EXPECT_EQ(buffers.read_buff, buffer_of(good_edid()));
    EXPECT_EQ(changed(), (strings{"fra_compare.caption", "fra_compare.visible", "lab_pass.fore_color", "read_buff",
                                  "txt_msg.text"}))
        << "the READ window and its labels do not follow";
}

TEST_F(verify_button, fails_with_the_count_of_the_bytes_that_differ) {
    const std::vector<std::pair<int, std::string>> cases = {{1, " 1"}, {3, " 3"}, {256, " 256"}};
    for (const auto& [count, text] : cases) {
        sink = good_edid();
        for (int i = 0; i < count; ++i)
            sink[static_cast<std::size_t>(i)] = static_cast<char>(sink[static_cast<std::size_t>(i)] + 1);
        view.cmd_verify.on_click();
        EXPECT_EQ(look(), "grey enabled, VERIFY: Reading sink's edid ...|Comparing ...|There are" + text +
                              " wrong data ! FAIL enabled");
        expect_mark(false);
    }
}

TEST_F(verify_button, notes_the_bytes_that_differ) {
    sink[0x12] = static_cast<char>(sink[0x12] + 1);
    sink[0x80] = static_cast<char>(sink[0x80] + 1);
    view.cmd_verify.on_click();
    EXPECT_EQ(result.differing.bytes(), (std::vector<std::size_t>{0x12, 0x80}));
    sink = good_edid();
    view.cmd_verify.on_click();
    EXPECT_TRUE(result.differing.bytes().empty());
}

TEST_F(verify_button, is_red_and_disabled_before_its_frame_appears_and_pumps_at_its_end) {
    film([this] { return look(); });
    view.cmd_verify.on_click();
    const std::string reading = "red disabled, VERIFY: Reading sink's edid ...|  disabled";
    EXPECT_EQ(frames, (strings{"red disabled, : old PASS enabled hidden", "ESC001: " + reading, reading,
                               "ERD001: " + reading, reading, look()}));
}

TEST_F(verify_button, reports_a_failed_read_and_its_reason_in_the_read_window) {
    sink = "";
    view.txt_read.text = "before";
    view.cmd_verify.on_click();
    EXPECT_EQ(look(), "grey enabled, VERIFY: Reading sink's edid ...|Read sink's edid fail !| FAIL enabled");
    expect_mark(false);
    EXPECT_EQ(view.txt_read.text, "before\r\nTimeout ! Read fail !");
    EXPECT_EQ(buffers.read_buff, buffer_of("", 0x33)) << "a later COMP compares old bytes";
}

TEST_F(verify_button, reports_a_failed_link_in_both_places) {
    try_link_failures("ERD001", [this](const strings& written) {
        view.txt_read.text = "";
        view.cmd_verify.on_click();
        EXPECT_EQ(look(), "grey enabled, VERIFY: Reading sink's edid ...|Read sink's edid fail !| FAIL enabled");
        EXPECT_EQ(view.txt_read.text, "\r\nLink Error !\r\n");
        EXPECT_EQ(m.port.take_written(), written);
    });
}

} // namespace
} // namespace desk
