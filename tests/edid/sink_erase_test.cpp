#include "edid/sink_transfers.h"

#include "support/sink_fixture.h"

#include <gtest/gtest.h>

#include <string>

namespace desk {
namespace {

using test::boxes;
using test::look_of;
using test::sink_test;
using test::strings;

const test::noted_boxes::shown box_erase{"Are you sure to erase sink's EDID ?", box_icon::question,
                                         box_buttons::yes_no};

class erase_button : public sink_test {
protected:
    static constexpr int limit = 3001;
    static constexpr int round_ms = 55; ///< 50 ms and a bit

    std::string look() const { return look_of(view.cmd_erase) + ", " + frame_text(); }
    void press_and_answer(box_answer answer) {
        m.boxes.answers = {answer};
        view.cmd_erase.on_click();
    }
    void erase() { press_and_answer(box_answer::yes); }
    /// The sink says nothing. Does something in the pump that comes before the first wait; `started` is when that wait
    /// begins.
    void before_the_wait(const std::function<void()>& work) {
        erase_result = "";
        after_command("ERS001", [this, work] {
            started = m.events.now + m.events.step;
            work();
        });
    }
    void answer_in_round(int round, const std::string& answer) {
        before_the_wait([this, round, answer] {
            m.events.in(round * round_ms, [this, answer] {
                link.rx_text = answer;
                link.rx_done = true;
            });
        });
    }
    std::int64_t started = 0;
};

TEST_F(erase_button, asks_first_and_does_nothing_without_a_yes) {
    for (const box_answer answer : {box_answer::no, box_answer::cancel, box_answer::ok}) {
        m.boxes.all.clear();
        remember();
        press_and_answer(answer);
        EXPECT_EQ(m.boxes.all, boxes{box_erase});
        EXPECT_EQ(changed(), strings{"boxes"});
        EXPECT_TRUE(m.port.take_written().empty());
    }
}

TEST_F(erase_button, passes_with_the_answer_of_the_sink) {
    view.txt_read.text = "r";
    view.txt_write.text = "w";
    remember();
    erase();
    EXPECT_EQ(m.port.take_written(), (strings{"ESC001", "ERS001"}));
    EXPECT_EQ(m.boxes.all, boxes{box_erase});
    EXPECT_EQ(look(), "grey enabled, ERASE: Erasing sink's edid ...|ERS002 ERASE complete. PASS enabled");
    expect_mark(true);
    EXPECT_EQ(changed(),
              (strings{"boxes", "fra_compare.caption", "fra_compare.visible", "lab_pass.fore_color", "txt_msg.text"}));
}

TEST_F(erase_button, is_red_and_enabled_while_it_waits) {
    film([this] { return look(); });
    erase();
    const std::string erasing = "red enabled, ERASE: Erasing sink's edid ...|  disabled";
    EXPECT_EQ(frames, (strings{"box: grey enabled, : old PASS enabled hidden", "ESC001: " + erasing, erasing,
                               "ERS001: " + erasing, erasing}));
}

TEST_F(erase_button, waits_with_the_receiver_on_and_leaves_it_on) {
    film([this] {
        return std::to_string(link.rx_count) + " [" + link.rx_text + "]" + (link.rx_done ? " done" : "") +
               (link.tim_rx.enabled ? " ticking" : "");
    });
    erase();
    const auto command = std::find(frames.begin(), frames.end(), "ERS001: 0 []");
    EXPECT_EQ(strings(command, frames.end()),
              (strings{"ERS001: 0 []", "0 [] ticking", "0 []", "6 [ERS001] done ticking", "6 [ERS001] done",
                       "0 [] ticking", "0 []", "6 [ERS002] done ticking"}));
    EXPECT_TRUE(link.tim_rx.enabled);
    EXPECT_EQ(m.port.done.back(), "write ERS001") << "nothing is discarded after the command";
}

TEST_F(erase_button, reports_an_error_of_the_sink) {
    erase_result = "ERS003";
    erase();
    EXPECT_EQ(look(), "grey enabled, ERASE: Erasing sink's edid ...|ERS003 DDC Error,Erase fail ! FAIL enabled");
    expect_mark(false);
}

TEST_F(erase_button, treats_any_other_answer_as_none) {
    for (const char* other : {"ERS001", "ERS004", "EWR002", "ers002", "ERS0020"}) {
        answer_in_round(3, other);
        erase();
        EXPECT_EQ(look(), "grey enabled, ERASE: Erasing sink's edid ...|Timeout Error ! FAIL enabled") << other;
    }
}

TEST_F(erase_button, waits_3001_rounds_of_the_first_clock_step_above_50_ms) {
    m.events.step = 1;
    before_the_wait([] {});
    erase();
    EXPECT_EQ(look(), "grey enabled, ERASE: Erasing sink's edid ...|Timeout Error ! FAIL enabled");
    expect_mark(false);
    EXPECT_EQ(m.events.now - started, limit * 51);
    EXPECT_TRUE(link.tim_rx.enabled);
}

TEST_F(erase_button, takes_an_answer_in_the_last_round) {
    answer_in_round(limit, "ERS002");
    erase();
    EXPECT_EQ(frame_text(), "ERASE: Erasing sink's edid ...|ERS002 ERASE complete. PASS enabled");
    answer_in_round(limit + 1, "ERS002");
    erase();
    EXPECT_EQ(frame_text(), "ERASE: Erasing sink's edid ...|Timeout Error ! FAIL enabled");
}

TEST_F(erase_button, takes_no_answer_that_is_not_complete) {
    for (const char* answer : {"ERS002", "ERS003"}) {
        before_the_wait([this, answer] { m.events.in(100, [this, answer] { link.rx_text = answer; }); });
        erase();
        EXPECT_EQ(frame_text(), "ERASE: Erasing sink's edid ...|Timeout Error ! FAIL enabled");
    }
}

TEST_F(erase_button, reports_a_failed_link) {
    try_link_failures("ERS001", [this](const strings& written) {
        erase();
        EXPECT_EQ(look(), "grey enabled, ERASE: Erasing sink's edid ...|Link Error !| FAIL enabled");
        expect_mark(false);
        EXPECT_EQ(m.port.take_written(), written);
        EXPECT_FALSE(link.tim_rx.enabled);
    });
}

} // namespace
} // namespace desk
