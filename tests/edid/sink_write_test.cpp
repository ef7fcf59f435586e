#include "edid/sink_transfers.h"

#include "support/sink_fixture.h"

#include <gtest/gtest.h>

#include <string>

namespace desk {
namespace {

using test::boxes;
using test::buffer_of;
using test::good_edid;
using test::look_of;
using test::sink_write;
using test::some_bytes;
using test::strings;
using test::window_text_of;

class write_button : public sink_write {
protected:
    std::string look() const { return look_of(view.cmd_write) + ", " + frame_text(); }
};

TEST_F(write_button, sends_what_the_buffer_holds_byte_by_byte) {
    buffers.write_buff = buffer_of(some_bytes(256));
    view.txt_write.text = window_text_of(good_edid());
    remember();
    view.cmd_write.on_click();
    EXPECT_EQ(m.port.take_written(), joined({"ESC001", "EWR001"}, bytes_one_by_one(some_bytes(256))));
    EXPECT_EQ(look(), "grey enabled, WRITE: Writing WRITE data ...|EWR002 Write completely . PASS enabled");
    expect_mark(true);
    EXPECT_EQ(changed(),
              (strings{"fra_compare.caption", "fra_compare.visible", "lab_pass.fore_color", "txt_msg.text"}));
    EXPECT_TRUE(m.boxes.all.empty());
}

TEST_F(write_button, sends_what_the_events_of_its_last_pump_have_left_in_the_buffer) {
    after_command("EWR001", [this] { buffers.write_buff = buffer_of(some_bytes(256)); });
    view.cmd_write.on_click();
    EXPECT_EQ(m.port.take_written(), joined({"ESC001", "EWR001"}, bytes_one_by_one(some_bytes(256))));
}

TEST_F(write_button, is_red_and_disabled_from_its_click_to_its_result) {
    film([this] { return look(); });
    view.cmd_write.on_click();
    const std::string writing = "red disabled, WRITE: Writing WRITE data ...|  disabled";
    strings expected{"ESC001: " + writing, writing, "EWR001: " + writing, writing};
    for (const std::string& byte : bytes_one_by_one(good_edid())) {
        std::string frame = byte + ": " + writing;
        if (frame != expected.back()) expected.push_back(frame);
    }
    expected.push_back(writing);
    EXPECT_EQ(frames, expected);
}

TEST_F(write_button, drains_the_output_then_discards_the_input_then_sends) {
    m.port.done.clear();
    m.port.on_write = [this, usual = m.port.on_write](const std::string& written) {
        usual(written);
        if (written == "EWR001") m.events.in(15, [this] { m.port.unsent = 5; });
    };
    int turns = 0;
    m.events.on_turn = [&] {
        if (++turns < 3) return;
        m.port.done.emplace_back("drained, " + std::to_string(link.rx_count) + " [" + link.rx_text + "]" +
                                 (link.rx_done ? " done" : "") + (link.tim_rx.enabled ? " ticking" : ""));
        m.port.unsent = 0;
    };
    view.cmd_write.on_click();
    strings expected{"discard input", "write ESC001",  "discard input",
                     "write EWR001",  "drained, 0 []", "discard input"};
    for (const std::string& byte : bytes_one_by_one(good_edid()))
        expected.push_back("write " + byte);
    EXPECT_EQ(m.port.done, expected);
    EXPECT_EQ(m.events.turns, 3);
}

TEST_F(write_button, waits_before_each_byte_until_the_one_before_is_sent) {
    m.port.on_write = [this, usual = m.port.on_write](const std::string& written) {
        usual(written);
        EXPECT_EQ(m.port.unsent, 0U);
        if (written.size() == 1) m.port.unsent = 1;
    };
    m.events.on_turn = [this] { m.port.unsent = 0; };
    view.cmd_write.on_click();
    EXPECT_EQ(m.events.turns, 255);
    expect_mark(true);
}

TEST_F(write_button, pumps_with_the_receiver_on_before_the_first_byte_and_not_between_the_bytes) {
    film([this] {
        return std::string(link.tim_rx.enabled ? "on" : "off") + (link.rx_done ? ", done, " : ", ") +
               std::to_string(bytes_written);
    });
    buffers.write_buff.fill(7);
    view.cmd_write.on_click();
    const auto begin = std::find(frames.rbegin(), frames.rend(), "on, 0").base() - 1;
    ASSERT_GT(begin, frames.begin());
    EXPECT_EQ(*(begin - 1), "off, done, 0") << "the end of the command";
    ASSERT_GT(frames.end() - begin, 257);
    for (int i = 1; i <= 256; ++i)
        EXPECT_EQ(*(begin + i), "\a: on, " + std::to_string(i - 1));
    EXPECT_EQ(frames.back(), "off, done, 256");
    EXPECT_FALSE(link.tim_rx.enabled);
}

TEST_F(write_button, reports_an_error_of_the_sink) {
    write_result = "EWR003";
    view.cmd_write.on_click();
    EXPECT_EQ(look(), "grey enabled, WRITE: Writing WRITE data ...|EWR003 DDC Error,Write Fail ! FAIL enabled");
    expect_mark(false);
}

TEST_F(write_button, leaves_its_frame_without_a_mark_for_any_other_answer) {
    for (const char* other : {"EWR001", "EWR004", "ERS002", "ewr002", "EWR0020", "XEWR002", "EWR0022"}) {
        answer_in_round(3, other);
        view.cmd_write.on_click();
        EXPECT_EQ(look(), "grey enabled, WRITE: Writing WRITE data ...|  disabled") << other;
    }
}

TEST_F(write_button, waits_150_rounds_of_the_first_clock_step_above_10_ms) {
    write_result = "";
    m.events.step = 1;
    view.cmd_write.on_click();
    EXPECT_EQ(look(), "grey enabled, WRITE: Writing WRITE data ...|WRITE timeout error !| FAIL enabled");
    expect_mark(false);
    EXPECT_EQ(m.events.now - last_byte, limit * 11 + 1) << "and a last pump";
    EXPECT_FALSE(link.tim_rx.enabled);
}

TEST_F(write_button, takes_an_answer_in_the_149th_round_and_none_in_the_150th) {
    answer_in_round(limit - 1, "EWR002");
    view.cmd_write.on_click();
    EXPECT_EQ(frame_text(), "WRITE: Writing WRITE data ...|EWR002 Write completely . PASS enabled");
    answer_in_round(limit, "EWR002");
    view.cmd_write.on_click();
    EXPECT_EQ(frame_text(), "WRITE: Writing WRITE data ...|WRITE timeout error !| FAIL enabled");
}

TEST_F(write_button, reports_a_failed_link_and_sends_no_byte) {
    try_link_failures("EWR001", [this](const strings& written) {
        view.cmd_write.on_click();
        EXPECT_EQ(look(), "grey enabled, WRITE: Writing WRITE data ...|Link Error ! FAIL enabled");
        expect_mark(false);
        EXPECT_EQ(m.port.take_written(), written);
    });
}

} // namespace
} // namespace desk
