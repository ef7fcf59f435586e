#include "signal/upload.h"

#include "support/signal_fixture.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace desk {
namespace {

using test::boxes;
using test::look_of;
using test::strings;

const test::noted_boxes::shown box_without_mark{"Link Error", box_icon::critical, box_buttons::ok};

class upload_test : public test::signal_fixture {
protected:
    upload_test() {
        enter(1);
        rows.lstv_pattern.select(41);
    }
    void upload_text(const std::string& text) {
        desk_area.txt_motion_str.text = text;
        desk_area.cmd_upload.on_click();
    }
    /// A text as the twelve bytes that go out.
    static std::string block(std::string bytes) {
        bytes.resize(12, '\0');
        return bytes;
    }
};

TEST_F(upload_test, sends_twelve_bytes_in_one_go_after_its_command) {
    upload_text("Hello");
    EXPECT_EQ(m.port.take_written(), (strings{"MOT001", block("Hello")}));
    EXPECT_TRUE(m.boxes.all.empty());
}

TEST_F(upload_test, sends_a_full_box_with_no_zero) {
    upload_text("ABCDEFGHIJKL");
    EXPECT_EQ(m.port.take_written(), (strings{"MOT001", "ABCDEFGHIJKL"}));
    EXPECT_EQ(desk_area.txt_motion_str.max_length, 12);
}

TEST_F(upload_test, sends_only_zeros_for_an_empty_box) {
    for (const char* text : {"", "    "}) {
        upload_text(text);
        EXPECT_EQ(m.port.take_written(), (strings{"MOT001", block("")}));
        EXPECT_EQ(desk_area.txt_motion_str.text.get(), "");
    }
}

TEST_F(upload_test, trims_the_text_and_writes_it_back) {
    upload_text("  a b  ");
    EXPECT_EQ(m.port.take_written(), (strings{"MOT001", block("a b")}));
    EXPECT_EQ(desk_area.txt_motion_str.text.get(), "a b");
}

TEST_F(upload_test, sends_the_codes_of_characters_above_7f) {
    const std::vector<std::pair<std::string, std::string>> cases = {
        {"é", "\xE9"}, {"ÿ", "\xFF"}, {"€", "\x80"}, {"Grün", "Gr\xFCn"}, {"12345678901é", "12345678901\xE9"}};
    for (const auto& [text, bytes] : cases) {
        upload_text(text);
        EXPECT_EQ(m.port.take_written(), (strings{"MOT001", block(bytes)})) << text;
        EXPECT_EQ(desk_area.txt_motion_str.text.get(), text);
    }
}

TEST_F(upload_test, sends_one_byte_for_a_character_that_the_set_does_not_have) {
    upload_text("a漢b");
    EXPECT_EQ(m.port.take_written(), (strings{"MOT001", block("a?b")}));
    EXPECT_EQ(desk_area.txt_motion_str.text.get(), "a漢b");
}

TEST_F(upload_test, is_disabled_first_and_red_after_the_pump) {
    film([this] { return look_of(desk_area.cmd_upload); });
    upload_text("x");
    EXPECT_EQ(frames,
              (strings{"grey disabled", "MOT001: red disabled", "red disabled", block("x") + ": red disabled"}));
    EXPECT_EQ(look_of(desk_area.cmd_upload), "grey enabled");
}

TEST_F(upload_test, trims_after_the_answer) {
    desk_area.txt_motion_str.text = " x ";
    film([this] { return desk_area.txt_motion_str.text.get(); });
    desk_area.cmd_upload.on_click();
    EXPECT_EQ(frames, (strings{" x ", "MOT001:  x ", " x ", block("x") + ": x"}));
}

TEST_F(upload_test, drains_the_output_discards_the_input_and_then_writes) {
    m.port.done.clear();
    m.events.in(10, [this] { m.port.unsent = 5; });
    int turns = 0;
    m.events.on_turn = [&] {
        if (++turns < 3) return;
        m.port.done.emplace_back("drained with [" + desk_area.txt_motion_str.text.get() + "]");
        m.port.unsent = 0;
    };
    upload_text(" x ");
    EXPECT_EQ(m.port.done,
              (strings{"discard input", "write MOT001", "drained with [x]", "discard input", "write " + block("x")}));
}

TEST_F(upload_test, waits_for_no_answer_to_the_bytes) {
    int pumps_at_block = 0;
    m.port.on_write = [&, answer = m.port.on_write](const std::string& written) {
        if (written == block("x")) pumps_at_block = m.events.pumps;
        answer(written);
    };
    upload_text("x");
    EXPECT_GT(pumps_at_block, 0);
    EXPECT_EQ(m.events.pumps, pumps_at_block);
    EXPECT_FALSE(link.tim_rx.enabled);
}

TEST_F(upload_test, sends_no_bytes_if_its_command_fails) {
    answers["MOT001"] = "";
    upload_text(" x ");
    EXPECT_EQ(m.port.take_written(), (strings{"MOT001", "MOT001"}));
    EXPECT_EQ(m.boxes.all, boxes{box_without_mark});
    EXPECT_EQ(desk_area.txt_motion_str.text.get(), " x ");
}

TEST_F(upload_test, stays_red_and_disabled_after_a_failure) {
    film([this] { return look_of(desk_area.cmd_upload); });
    unplugged = true;
    upload_text("x");
    EXPECT_EQ(frames.back(), "box: red disabled");
    EXPECT_EQ(look_of(desk_area.cmd_upload), "red disabled");
}

TEST_F(upload_test, fails_for_an_answer_with_other_letters) {
    answers["MOT001"] = "PAT001";
    upload_text("x");
    EXPECT_EQ(m.boxes.all, boxes{box_without_mark});
    EXPECT_EQ(look_of(desk_area.cmd_upload), "red disabled");
}

TEST_F(upload_test, reports_a_closed_port_twice) {
    link.cmd_disconn_click();
    upload_text("x");
    EXPECT_EQ(m.boxes.all, (boxes{test::box_disconnected, box_without_mark}));
    EXPECT_TRUE(m.port.take_written().empty());
    EXPECT_EQ(look_of(desk_area.cmd_upload), "red disabled");
}

TEST_F(upload_test, can_be_pressed_again_after_a_success) {
    upload_text("x");
    m.port.take_written();
    upload_text("y");
    EXPECT_EQ(m.port.take_written(), (strings{"MOT001", block("y")}));
}

} // namespace
} // namespace desk
