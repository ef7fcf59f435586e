#include "edid/sink_transfers.h"

#include "support/sink_fixture.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

namespace desk {
namespace {

using test::boxes;
using test::buffer_of;
using test::checksum_text;
using test::good_edid;
using test::look_of;
using test::sink_test;
using test::some_bytes;
using test::strings;
using test::window_text_of;

const std::string reading_hdmi_out = "Reading HDMI/DVI-OUT's edid ...";

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

} // namespace
} // namespace desk
