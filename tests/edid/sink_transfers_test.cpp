#include "edid/sink_transfers.h"

#include "support/edid_fixture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace desk {
namespace {

using test::boxes;
using test::buffer_of;
using test::checksum_text;
using test::good_edid;
using test::look_of;
using test::some_bytes;
using test::strings;
using test::window_text_of;

const std::string reading_hdmi_out = "Reading HDMI/DVI-OUT's edid ...";

class sink_test : public test::edid_fixture {
protected:
    sink_test() {
        for (button* b : {&view.cmd_write, &view.cmd_verify, &view.cmd_read_translate, &view.cmd_sum_read})
            b->enabled = true;
        buffers.write_buff = buffer_of(good_edid());
        buffers.read_buff.fill(0x33);
        view.txt_msg.text = "old";
        view.lab_pass.caption = "PASS";
        fields.read_ok = true;
    }

    /// The bytes of a WRITE, one by one as they went out.
    static strings bytes_one_by_one(const std::string& data) {
        strings all;
        for (const char byte : data)
            all.emplace_back(1, byte);
        return all;
    }
    static strings joined(strings all, const strings& more) {
        all.insert(all.end(), more.begin(), more.end());
        return all;
    }
    /// Does something in the first pump after a command's answer that waits for the next answer.
    void after_command(const std::string& command, const std::function<void()>& work) {
        m.events.on_pump = [this, command, work, answered = false, begun = false]() mutable {
            if (!last_written(command) || begun) return;
            answered = answered || link.rx_done;
            begun = answered && !link.rx_done;
            if (begun) work();
        };
    }
    bool last_written(const std::string& command) const {
        const auto last = std::find_if(m.port.done.rbegin(), m.port.done.rend(),
                                       [](const std::string& done) { return done.starts_with("write "); });
        return last != m.port.done.rend() && *last == "write " + command;
    }

    /// The frame's caption, its text with "|" for each line's end, and its mark with the state of OK: "WRITE: a|b PASS
    /// enabled".
    std::string frame_text() const {
        std::string text = view.txt_msg.text;
        for (std::size_t at = 0; (at = text.find("\r\n", at)) != std::string::npos;)
            text.replace(at, 2, "|");
        return view.fra_compare.caption.get() + ": " + text + " " + view.lab_pass.caption.get() +
               (view.cmd_ok.enabled ? " enabled" : " disabled") + (view.fra_compare.visible ? "" : " hidden");
    }
    void expect_mark(bool pass) {
        EXPECT_EQ(view.lab_pass.fore_color, pass ? 65280U : 255U);
        EXPECT_EQ(view.lab_pass.caption, pass ? "PASS" : "FAIL");
    }
    /// Tries a transfer with the answers to its two commands missing, one after the other, and with the port closed.
    void try_link_failures(const std::string& command, const std::function<void(const strings& written)>& expect) {
        for (const std::string& missing : {std::string("ESC001"), command}) {
            answers = {{missing, ""}};
            m.port.take_written();
            expect(missing == "ESC001" ? strings{"ESC001", "ESC001"} : strings{"ESC001", command, command});
        }
        answers.clear();
        link.cmd_disconn_click();
        m.port.take_written();
        expect({});
        EXPECT_EQ(m.boxes.all.back(), test::box_disconnected);
    }
};

TEST_F(sink_test, is_chosen_by_the_options) {
    EXPECT_EQ(fields.edid_src, 1);
    for (const std::size_t place : {2U, 1U, 0U}) {
        remember();
        view.opt_edid_src.at(place).on_click();
        EXPECT_EQ(fields.edid_src, place + 1);
        EXPECT_EQ(changed(), strings{"edid_src"});
    }
    EXPECT_TRUE(m.port.take_written().empty());
}

TEST_F(sink_test, is_named_to_the_generator_before_each_transfer) {
    const strings names{"ESC001", "ESC002", "ESC003"};
    for (std::size_t place = 0; place < 3; ++place) {
        view.opt_edid_src.at(place).on_click();
        view.cmd_read.on_click();
        EXPECT_EQ(m.port.take_written(), (strings{names[place], "ERD001"}));
        view.cmd_verify.on_click();
        EXPECT_EQ(m.port.take_written(), (strings{names[place], "ERD001"}));
        view.cmd_write.on_click();
        EXPECT_EQ(m.port.take_written(), joined({names[place], "EWR001"}, bytes_one_by_one(good_edid())));
        m.boxes.answers = {box_answer::yes};
        view.cmd_erase.on_click();
        EXPECT_EQ(m.port.take_written(), (strings{names[place], "ERS001"}));
    }
}

TEST_F(sink_test, without_a_name_is_not_named) {
    fields.edid_src = 4;
    link.rx_done = true;
    view.cmd_verify.on_click();
    EXPECT_EQ(m.port.take_written(), strings{"ERD001"});
    link.rx_done = false;
    view.cmd_verify.on_click();
    EXPECT_TRUE(m.port.take_written().empty()) << "the exchange before it decides";
    EXPECT_FALSE(fields.read_ok);
}

TEST_F(sink_test, is_used_with_any_number_in_the_answers) {
    answers = {{"ESC001", "ESC777"}, {"ERD001", "ERD000"}};
    transfers.read_sink();
    EXPECT_TRUE(fields.read_ok);
}

class sink_read : public sink_test {
protected:
    static constexpr int limit = 150;

    /// From now on does something in one of the waits for bytes, counted from 1, and counts them.
    void in_round(int round, const std::function<void()>& work) {
        rounds = -1; // the pump at the end of the command itself
        m.events.on_pump = [this, round, work] {
            if (!last_written("ERD001") || !link.rx_done || link.tim_rx.enabled) return;
            if (++rounds == round) work();
        };
    }
    /// The sink sends its EDID in pieces, `ms_between` milliseconds apart.
    void bring_in_pieces(std::size_t size, std::int64_t ms_between) {
        sink = "";
        piece_size = size;
        piece_ms = ms_between;
    }
    void take(const std::string& written) override {
        sink_test::take(written);
        if (written != "ERD001" || piece_size == 0) return;
        std::int64_t ms = 60;
        for (std::size_t at = 0; at < 256; at += piece_size, ms += piece_ms)
            m.events.in(ms, [this, at] { m.port.arrive(good_edid().substr(at, piece_size)); });
    }
    void expect_good_read() {
        EXPECT_TRUE(fields.read_ok);
        EXPECT_EQ(buffers.read_buff, buffer_of(good_edid()));
    }
    void expect_failed_read(const std::string& line) {
        EXPECT_FALSE(fields.read_ok);
        EXPECT_EQ(buffers.read_buff, buffer_of("", 0x33));
        EXPECT_EQ(view.txt_read.text, line);
    }
    int rounds = -1;
    std::size_t piece_size = 0;
    std::int64_t piece_ms = 0;
};

TEST_F(sink_read, takes_256_bytes_in_any_pieces_at_any_rate_and_shows_none) {
    remember();
    transfers.read_sink();
    expect_good_read();
    EXPECT_EQ(changed(), strings{"read_buff"});
    const std::pair<std::size_t, std::int64_t> pieces[] = {{1, 15}, {1, 700}, {7, 15}, {100, 15}, {128, 15}, {255, 15}};
    for (const auto& [size, ms_between] : pieces) {
        bring_in_pieces(size, ms_between);
        buffers.read_buff.fill(0x33);
        transfers.read_sink();
        expect_good_read();
    }
}

TEST_F(sink_read, discards_bytes_that_come_with_the_last_one) {
    sink = good_edid().substr(0, 200);
    in_round(40, [this] { m.port.arrive(good_edid().substr(200) + "more"); });
    transfers.read_sink();
    expect_good_read();
    EXPECT_TRUE(m.port.waiting.empty());
}

TEST_F(sink_read, leaves_later_bytes_to_others) {
    in_round(1, [this] { m.events.in(100, [this] { m.port.arrive("later"); }); });
    transfers.read_sink();
    expect_good_read();
    for (int i = 0; i < 40; ++i)
        m.events.pump();
    EXPECT_EQ(string_of(m.port.waiting), "later");
}

TEST_F(sink_read, fails_after_150_waits_without_a_byte) {
    sink = "";
    view.txt_read.text = "before";
    in_round(0, [] {});
    const auto started = m.events.now;
    transfers.read_sink();
    expect_failed_read("before\r\nTimeout ! Read fail !");
    EXPECT_EQ(rounds, limit);
    EXPECT_GE(m.events.now - started, limit * m.events.step);
}

TEST_F(sink_read, waits_for_the_first_clock_step_above_1_ms_each_time) {
    sink = "";
    m.events.step = 1;
    std::int64_t started = 0;
    m.events.on_pump = [this, &started] {
        const bool waiting = last_written("ERD001") && link.rx_done && !link.tim_rx.enabled;
        if (waiting && started == 0) started = m.events.now + 1;
    };
    transfers.read_sink();
    expect_failed_read("\r\nTimeout ! Read fail !");
    EXPECT_EQ(m.events.now - started, limit * 2);
}

TEST_F(sink_read, restarts_its_waits_after_each_piece) {
    sink = "";
    in_round(limit - 1, [this] { m.port.arrive(good_edid().substr(0, 255)); });
    transfers.read_sink();
    expect_failed_read("\r\nTimeout ! Read fail !");
    EXPECT_EQ(rounds, limit - 1 + limit);
}

TEST_F(sink_read, is_good_with_bytes_in_the_149th_wait_and_fails_with_them_in_the_150th) {
    sink = "";
    in_round(limit, [this] { m.port.arrive(good_edid()); });
    transfers.read_sink();
    expect_failed_read("\r\nTimeout ! Read fail !");
    m.port.waiting.clear();
    in_round(limit - 1, [this] { m.port.arrive(good_edid()); });
    transfers.read_sink();
    expect_good_read();
}

TEST_F(sink_read, takes_its_bytes_without_the_receiver) {
    sink = "";
    bool ticking = false;
    in_round(100, [this] { m.port.arrive(good_edid()); });
    m.events.on_pump = [&, usual = m.events.on_pump] {
        usual();
        if (rounds > 0) ticking |= link.tim_rx.enabled;
    };
    transfers.read_sink();
    expect_good_read();
    EXPECT_FALSE(ticking);
    EXPECT_EQ(link.rx_text, "ERD001");
}

TEST_F(sink_read, reports_in_a_box_that_another_read_failed_during_it) {
    view.txt_read.text = "before";
    in_round(1, [this] { fields.read_ok = false; });
    transfers.read_sink();
    expect_failed_read("before");
    EXPECT_EQ(m.boxes.all, boxes{(test::noted_boxes::shown{"Wrong response!", box_icon::critical, box_buttons::ok})});
}

TEST_F(sink_read, reports_its_own_timeout_after_the_failure_of_another) {
    sink = "";
    in_round(1, [this] { fields.read_ok = false; });
    transfers.read_sink();
    expect_failed_read("\r\nTimeout ! Read fail !");
    EXPECT_TRUE(m.boxes.all.empty());
}

TEST_F(sink_read, reports_a_failed_link_below_the_text_of_the_window) {
    try_link_failures("ERD001", [this](const strings& written) {
        fields.read_ok = true;
        view.txt_read.text = "before";
        transfers.read_sink();
        expect_failed_read("before\r\nLink Error !\r\n");
        EXPECT_EQ(m.port.take_written(), written);
    });
}

class read_button : public sink_test {
protected:
    std::string look() const {
        const std::string text = view.txt_read.text;
        return look_of(view.cmd_read) + ", " + (view.cmd_read_translate.enabled ? "" : "no ") + "translation, " +
               (view.cmd_sum_read.enabled ? "" : "no ") + "sum, " + (link.download_mode ? "downloading, " : "") +
               text.substr(0, text.find("\r\n"));
    }
};

TEST_F(read_button, shows_the_edid_of_the_sink_with_its_checksums) {
    sink = some_bytes(256);
    remember();
    view.cmd_read.on_click();
    EXPECT_EQ(m.port.take_written(), (strings{"ESC001", "ERD001"}));
    EXPECT_EQ(view.txt_read.text.get(), window_text_of(sink));
    EXPECT_EQ(buffers.read_buff, buffer_of(sink));
    EXPECT_EQ(view.lab_read_checksum[0].caption, checksum_text(sink, 0));
    EXPECT_EQ(view.lab_read_checksum[1].caption, checksum_text(sink, 1));
    EXPECT_EQ(changed(), (strings{"lab_read_checksum(0).caption", "lab_read_checksum(0).fore_color",
                                  "lab_read_checksum(1).caption", "lab_read_checksum(1).fore_color", "read_buff",
                                  "txt_read.text"}));
    EXPECT_TRUE(m.boxes.all.empty());
}

TEST_F(read_button, is_red_and_disabled_from_its_first_pump_to_its_last) {
    view.txt_read.text = "old";
    link.download_mode = true;
    film([this] { return look(); });
    view.cmd_read.on_click();
    const std::string reading = "red disabled, no translation, no sum, " + reading_hdmi_out;
    EXPECT_EQ(frames,
              (strings{"red disabled, no translation, no sum, downloading, old", "ESC001: " + reading, reading,
                       "ERD001: " + reading, reading, "grey enabled, translation, sum, 00 FF FF FF FF FF FF 00 //7"}));
}

TEST_F(read_button, pumps_once_after_a_failure_too) {
    sink = "";
    film([this] { return look(); });
    view.cmd_read.on_click();
    const std::string reading = "no translation, no sum, " + reading_hdmi_out;
    EXPECT_EQ(frames.back(), "grey enabled, " + reading);
    EXPECT_EQ(frames.at(frames.size() - 2), "red disabled, " + reading);
}

TEST_F(read_button, names_what_it_reads) {
    const strings words{reading_hdmi_out, "Reading HDMI/DVI-IN's edid ...", "Reading VGA(PC/HD-OUT)'s edid ..."};
    unplugged = true;
    for (std::size_t place = 0; place < 3; ++place) {
        view.opt_edid_src.at(place).on_click();
        view.cmd_read.on_click();
        EXPECT_EQ(view.txt_read.text.get(), words[place] + "\r\nLink Error !\r\n");
    }
}

TEST_F(read_button, disables_the_side_that_it_could_not_fill) {
    for (const bool link_fails : {false, true}) {
        sink = "";
        unplugged = link_fails;
        view.txt_read.text = "old";
        view.cmd_read_translate.enabled = true;
        view.cmd_sum_read.enabled = true;
        fields.read_ok = true;
        remember();
        view.cmd_read.on_click();
        EXPECT_EQ(view.txt_read.text.get(),
                  reading_hdmi_out + (link_fails ? "\r\nLink Error !\r\n" : "\r\nTimeout ! Read fail !"));
        EXPECT_EQ(changed(),
                  (strings{"cmd_read_translate.enabled", "cmd_sum_read.enabled", "read_ok", "txt_read.text"}));
        EXPECT_EQ(look_of(view.cmd_read), "grey enabled");
    }
}

class sink_write : public sink_test {
protected:
    static constexpr int limit = 150;
    static constexpr int round_ms = 15; ///< 10 ms and a bit

    void take(const std::string& written) override {
        sink_test::take(written);
        if (written.size() != 1 || bytes_written != 256) return;
        last_byte = m.events.now;
        if (after_last_byte) after_last_byte();
    }
    /// The answer is there in one of the waits, counted from 1.
    void answer_in_round(int round, const std::string& answer) {
        write_result = "";
        after_last_byte = [this, round, answer] {
            m.events.in(round * round_ms - m.events.step, [this, answer] {
                link.rx_text = answer;
                link.rx_done = true;
            });
        };
    }
    std::function<void()> after_last_byte;
    std::int64_t last_byte = 0; ///< when it went out
};

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

/// WRITE and VERIFY as steps of the automatic run.
class step_of_run : public sink_write {
protected:
    step_of_run() {
        txt_auto_msg.name = "txt_auto_msg";
        cmd_ok.name = "run_ok_button";
        form.add(txt_auto_msg);
        form.add(cmd_ok);
        transfers.frm_diag = {&txt_auto_msg, &cmd_ok};
        fields.diag_mode = 2;
        txt_auto_msg.text = "old";
    }
    void write_with(const std::string& result_of_sink, bool run_ok_before) {
        fields.run_ok = run_ok_before;
        write_result = result_of_sink;
        view.cmd_write.on_click();
    }
    void verify_with(const std::string& data_of_sink, bool run_ok_before) {
        fields.run_ok = run_ok_before;
        sink = data_of_sink;
        txt_auto_msg.text = "wrote|";
        view.cmd_verify.on_click();
    }
    text_box txt_auto_msg;
    button cmd_ok;
};

TEST_F(step_of_run, writes_and_reports_in_the_window_of_the_run) {
    remember();
    write_with("EWR002", false);
    EXPECT_EQ(m.port.take_written(), joined({"ESC001", "EWR001"}, bytes_one_by_one(good_edid())));
    EXPECT_EQ(txt_auto_msg.text, "Writing WRITE data ...\r\nEWR002 Write completely .\r\n");
    EXPECT_TRUE(fields.run_ok);
    EXPECT_EQ(changed(), (strings{"cmd_write.back_color", "cmd_write.enabled", "run_ok", "txt_auto_msg.text"}));
    EXPECT_EQ(look_of(view.cmd_write), "red disabled");
    EXPECT_FALSE(link.tim_rx.enabled);
}

TEST_F(step_of_run, reports_the_sink_s_answer_and_keeps_the_last_result_for_an_unknown_one) {
    for (const bool before : {false, true}) {
        write_with("EWR003", before);
        EXPECT_EQ(txt_auto_msg.text, "Writing WRITE data ...\r\nEWR003 DDC Error,Write Fail !\r\n");
        EXPECT_FALSE(fields.run_ok);
        write_with("", before);
        EXPECT_EQ(txt_auto_msg.text, "Writing WRITE data ...\r\nWRITE timeout error !\r\n");
        EXPECT_FALSE(fields.run_ok);
        write_with("EWR009", before);
        EXPECT_EQ(txt_auto_msg.text, "Writing WRITE data ...\r\n");
        EXPECT_EQ(fields.run_ok, before);
    }
}

TEST_F(step_of_run, takes_an_answer_in_the_149th_round_and_none_in_the_150th) {
    for (const int round : {limit - 1, limit}) {
        answer_in_round(round, "EWR002");
        view.cmd_write.on_click();
        EXPECT_EQ(fields.run_ok, round < limit);
    }
}

TEST_F(step_of_run, reports_a_failed_link_and_leaves_its_button_red_and_disabled) {
    try_link_failures("EWR001", [this](const strings& written) {
        remember();
        write_with("EWR002", true);
        EXPECT_EQ(txt_auto_msg.text, "Writing WRITE data ...\r\nLink Error !\r\n");
        EXPECT_FALSE(fields.run_ok);
        EXPECT_EQ(look_of(view.cmd_write), "red disabled");
        EXPECT_EQ(m.port.take_written(), written);
        EXPECT_FALSE(view.fra_compare.visible);
    });
}

TEST_F(step_of_run, verifies_and_reports_below_the_write) {
    remember();
    verify_with(good_edid(), false);
    EXPECT_EQ(txt_auto_msg.text, "wrote|Reading sink's edid ...\r\nComparing ...\r\nMatch entirely .");
    EXPECT_TRUE(fields.run_ok);
    EXPECT_EQ(changed(), (strings{"read_buff", "run_ok", "run_ok_button.enabled", "txt_auto_msg.text"}));
    EXPECT_FALSE(cmd_ok.enabled);
}

TEST_F(step_of_run, fails_with_the_count_of_the_bytes_that_differ) {
    std::string other = good_edid();
    other[255] = static_cast<char>(other[255] + 1);
    verify_with(other, true);
    EXPECT_EQ(txt_auto_msg.text, "wrote|Reading sink's edid ...\r\nComparing ...\r\nThere are 1 wrong data !");
    EXPECT_FALSE(fields.run_ok);
}

TEST_F(step_of_run, leaves_the_run_unchanged_if_the_read_fails) {
    for (const bool before : {false, true}) {
        view.txt_read.text = "r";
        verify_with("", before);
        EXPECT_EQ(txt_auto_msg.text, "wrote|Reading sink's edid ...\r\nRead sink's edid fail !\r\n");
        EXPECT_EQ(view.txt_read.text, "r\r\nTimeout ! Read fail !");
        EXPECT_EQ(fields.run_ok, before);
        EXPECT_FALSE(fields.read_ok);
    }
}

TEST_F(step_of_run, disables_the_window_s_ok_before_it_reads) {
    film([this] { return (cmd_ok.enabled ? "enabled " : "disabled ") + txt_auto_msg.text.get(); });
    verify_with(good_edid(), true);
    EXPECT_EQ(frames.front(), "ESC001: disabled wrote|Reading sink's edid ...\r\n");
    EXPECT_EQ(look_of(view.cmd_verify), "grey enabled");
}

} // namespace
} // namespace desk
