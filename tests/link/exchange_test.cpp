#include "link/exchange.h"

#include "support/expect_failure.h"
#include "support/link_fixture.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

namespace desk {
namespace {

using test::box_disconnected;
using test::failure_of;
using test::link_test;
using strings = std::vector<std::string>;

class ports : public link_test {};

TEST_F(ports, are_opened_and_cleared_in_order) {
    link.com_port = 3;
    link.set_comm();
    EXPECT_EQ(m.port.done, (strings{"open 3", "discard input", "discard output"}));
    expect_connected_look();
    EXPECT_EQ(m.events.pumps, 1);
    EXPECT_TRUE(m.boxes.all.empty());
}

TEST_F(ports, are_closed_first_if_one_is_open) {
    connect();
    link.set_comm();
    EXPECT_EQ(m.port.done, (strings{"close", "open 1", "discard input", "discard output"}));
}

TEST_F(ports, that_cannot_be_opened_are_reported_in_a_box) {
    m.port.missing = {3};
    link.com_port = 3;
    link.set_comm();
    ASSERT_EQ(m.boxes.all.size(), 1U);
    EXPECT_EQ(m.boxes.all[0].text, "RS232 can not work on COM 3: !");
    EXPECT_EQ(m.boxes.all[0].icon, box_icon::none);
    EXPECT_EQ(m.boxes.all[0].buttons, box_buttons::ok);
    expect_disconnected_look();
    EXPECT_EQ(m.events.pumps, 1);
    EXPECT_EQ(m.port.done, strings{"open 3"}) << "no retry is made";
}

TEST_F(ports, change_the_display_after_the_box) {
    connect();
    m.port.missing = {1};
    color seen = 0;
    m.boxes.on_show = [&] { seen = link.cmd_conn.back_color; };
    link.set_comm();
    EXPECT_EQ(seen, 0x00FF00U);
    expect_disconnected_look();
}

TEST_F(ports, are_lost_if_the_new_one_cannot_be_opened) {
    connect();
    m.port.missing = {2};
    link.com_port = 2;
    link.set_comm();
    EXPECT_EQ(m.port.done, (strings{"close", "open 2"}));
    expect_disconnected_look();
}

TEST_F(ports, have_no_number_0) {
    link.com_port = 0;
    link.set_comm();
    ASSERT_EQ(m.boxes.all.size(), 1U);
    EXPECT_EQ(m.boxes.all[0].text, "RS232 can not work on COM 0: !");
    expect_disconnected_look();
}

TEST_F(ports, are_chosen_and_opened_at_once) {
    link.cbo_com.set_list_index(4);
    EXPECT_EQ(link.com_port, 5);
    EXPECT_EQ(m.port.done.front(), "open 5");
    expect_connected_look();
}

TEST_F(ports, are_opened_by_connect_with_the_present_number) {
    link.com_port = 6;
    link.cmd_conn.on_click();
    EXPECT_EQ(m.port.done.front(), "open 6");
    expect_connected_look();
}

TEST_F(ports, are_closed_by_disconnect) {
    connect();
    link.cmd_disconn.on_click();
    EXPECT_EQ(m.port.done, strings{"close"});
    expect_disconnected_look();
}

TEST_F(ports, are_not_touched_by_disconnect_if_none_is_open) {
    link.cmd_disconn.on_click();
    EXPECT_TRUE(m.port.done.empty());
    EXPECT_EQ(link.cmd_disconn.back_color, 0x8000000FU);
}

class exchanges : public link_test {
protected:
    exchanges() { connect(); }
    /// Runs an exchange and takes note of the times of its writes and of its end, from its beginning.
    void exchange_of(const std::string& cmd) {
        const std::int64_t start = m.events.now;
        m.port.on_write = [this, start, then = m.port.on_write](const std::string& text) {
            write_times.push_back(m.events.now - start);
            if (then) then(text);
        };
        link.tx_cmd(cmd);
        end_time = m.events.now - start;
    }
    std::vector<std::int64_t> write_times;
    std::int64_t end_time = 0;
};

TEST_F(exchanges, send_the_command_and_accept_its_answer) {
    m.echo_all();
    exchange_of("TIM007");
    EXPECT_EQ(m.port.take_written(), strings{"TIM007"});
    EXPECT_TRUE(link.rx_done);
    EXPECT_EQ(link.rx_text, "TIM007");
    EXPECT_EQ(link.rx_count, 6);
    EXPECT_FALSE(link.tim_rx.enabled);
    EXPECT_LE(end_time, 40) << "the next tick of the receiver ends it";
    EXPECT_TRUE(m.boxes.all.empty());
}

TEST_F(exchanges, clear_the_input_right_before_they_send) {
    m.port.arrive("TIM007");
    exchange_of("TIM007");
    EXPECT_FALSE(link.rx_done) << "what waited before is no answer";
    EXPECT_EQ(link.rx_text, "");
    EXPECT_EQ(m.port.done, (strings{"discard input", "write TIM007", "discard input", "write TIM007"}));
}

TEST_F(exchanges, enable_the_receiver_while_they_wait) {
    bool enabled = false;
    m.events.in(5, [&] { enabled = link.tim_rx.enabled; });
    exchange_of("TIM007");
    EXPECT_TRUE(enabled);
    EXPECT_FALSE(link.tim_rx.enabled);
}

TEST_F(exchanges, wait_151_rounds_for_each_of_two_tries) {
    exchange_of("TIM007");
    EXPECT_EQ(write_times, (std::vector<std::int64_t>{0, 151 * 5}));
    EXPECT_EQ(end_time, 2 * 151 * 5 + 5) << "one pump at the end";
    EXPECT_FALSE(link.rx_done);
    EXPECT_FALSE(link.tim_rx.enabled);
    EXPECT_TRUE(m.boxes.all.empty()) << "the caller reports it";
}

TEST_F(exchanges, wait_801_rounds_for_the_reset) {
    exchange_of("RST001");
    EXPECT_EQ(write_times, (std::vector<std::int64_t>{0, 801 * 5}));
    EXPECT_EQ(end_time, 2 * 801 * 5 + 5);
}

TEST_F(exchanges, wait_long_only_for_the_exact_command_rst001) {
    exchange_of("RST002");
    EXPECT_EQ(write_times, (std::vector<std::int64_t>{0, 151 * 5}));
}

TEST_F(exchanges, take_302_milliseconds_a_try_with_a_clock_of_single_milliseconds) {
    m.events.step = 1;
    exchange_of("TIM007");
    EXPECT_EQ(write_times, (std::vector<std::int64_t>{0, 302}));
}

TEST_F(exchanges, succeed_in_the_second_try) {
    int writes = 0;
    m.port.on_write = [&](const std::string& cmd) {
        if (++writes == 2) m.events.in(10, [this, cmd] { m.port.arrive(cmd); });
    };
    exchange_of("TIM007");
    EXPECT_TRUE(link.rx_done);
    EXPECT_EQ(link.rx_text, "TIM007");
    EXPECT_EQ(writes, 2);
}

TEST_F(exchanges, collect_an_answer_in_pieces) {
    m.port.on_write = [&](const std::string&) {
        m.events.in(50, [&] { m.port.arrive("TI"); });
        m.events.in(200, [&] { m.port.arrive("M00"); });
        m.events.in(400, [&] { m.port.arrive("7"); });
    };
    exchange_of("TIM007");
    EXPECT_TRUE(link.rx_done);
    EXPECT_EQ(link.rx_text, "TIM007");
    EXPECT_EQ(write_times.size(), 1U);
    EXPECT_GE(end_time, 400);
}

TEST_F(exchanges, accept_all_of_a_longer_answer) {
    m.answer_all("TIM007xyz");
    exchange_of("TIM007");
    EXPECT_TRUE(link.rx_done);
    EXPECT_EQ(link.rx_text, "TIM007xyz");
    EXPECT_EQ(link.rx_count, 9);
}

TEST_F(exchanges, reject_non_digits_in_places_4_to_6) {
    for (const char* answer : {"TIMA01", "TIM0A1", "TIM00A", "TIM 07", "TIM0/1", "TIM0:1"}) {
        m.answer_all(answer);
        write_times.clear();
        exchange_of("TIM007");
        EXPECT_FALSE(link.rx_done) << answer;
        EXPECT_EQ(link.rx_text, answer);
        EXPECT_EQ(link.rx_count, 6) << "of the last try";
        EXPECT_EQ(write_times.size(), 2U) << answer;
        EXPECT_GE(write_times.at(1), 151 * 5) << "such a try ends by its wait alone: " << answer;
    }
}

TEST_F(exchanges, check_the_same_six_characters_again_when_more_arrive) {
    m.answer_all("TIM0A1TIM007");
    exchange_of("TIM007");
    EXPECT_FALSE(link.rx_done);
    EXPECT_EQ(link.rx_text, "TIM0A1TIM007");
}

TEST_F(exchanges, end_their_wait_at_once_for_wrong_letters_and_send_again) {
    m.answer_all("PAT001");
    exchange_of("TIM001");
    EXPECT_EQ(m.port.take_written(), (strings{"TIM001", "TIM001"}));
    EXPECT_FALSE(link.rx_done);
    EXPECT_EQ(link.rx_text, "PAT001");
    EXPECT_LE(write_times.at(1), 40);
    EXPECT_LE(end_time, 80);
}

TEST_F(exchanges, accept_a_correct_echo_after_a_wrong_one) {
    int writes = 0;
    m.port.on_write = [&](const std::string&) {
        const std::string answer = ++writes == 1 ? "PAT001" : "TIM001";
        m.events.in(10, [this, answer] { m.port.arrive(answer); });
    };
    exchange_of("TIM001");
    EXPECT_TRUE(link.rx_done);
    EXPECT_EQ(link.rx_text, "TIM001");
}

TEST_F(exchanges, compare_only_three_letters) {
    m.answer_all("TIM254");
    exchange_of("TIM999");
    EXPECT_TRUE(link.rx_done);
    EXPECT_EQ(link.rx_text, "TIM254");
}

TEST_F(exchanges, compare_no_letters_in_download_mode) {
    link.download_mode = true;
    m.answer_all("PAT001");
    exchange_of("TIM001");
    EXPECT_TRUE(link.rx_done);
    EXPECT_EQ(write_times.size(), 1U);
}

TEST_F(exchanges, wait_without_a_limit_and_without_a_pump_until_nothing_is_unsent) {
    m.port.unsent = 3;
    m.echo_all();
    const int pumps = m.events.pumps;
    int pumps_while_draining = -1;
    m.events.on_turn = [&] {
        pumps_while_draining = m.events.pumps - pumps;
        if (m.events.turns == 5000) m.port.unsent = 0;
    };
    exchange_of("TIM001");
    EXPECT_EQ(m.events.turns, 5000);
    EXPECT_EQ(pumps_while_draining, 0);
    EXPECT_EQ(write_times.at(0), 0);
    EXPECT_TRUE(link.rx_done);
}

TEST_F(exchanges, can_have_any_length) {
    m.answer_all("X12345");
    exchange_of("X");
    EXPECT_EQ(m.port.take_written(), (strings{"X", "X"})) << "one letter is not the same as three";
    link.download_mode = true;
    exchange_of("A command of many characters");
    EXPECT_EQ(m.port.take_written(), strings{"A command of many characters"});
    EXPECT_TRUE(link.rx_done);
}

TEST_F(exchanges, show_one_box_if_the_port_is_closed) {
    m.echo_all();
    link.tx_cmd("TIM001");
    link.cmd_disconn_click();
    m.port.take_written();
    const std::int64_t now = m.events.now;
    link.tx_cmd("PAT002");
    EXPECT_EQ(m.boxes.all, std::vector{box_disconnected});
    EXPECT_TRUE(m.port.take_written().empty());
    EXPECT_FALSE(link.rx_done);
    EXPECT_EQ(link.rx_text, "TIM001") << "the last exchange's";
    EXPECT_EQ(m.events.now, now);
    link.tx_cmd("PAT002");
    EXPECT_EQ(m.boxes.all.size(), 2U) << "once for each call";
}

TEST_F(exchanges, pass_the_answer_of_a_nested_one_with_the_same_letters_to_the_outer_one) {
    m.port.on_write = [&](const std::string& cmd) {
        if (cmd == "TIM002") m.events.in(10, [&] { m.port.arrive("TIM002"); });
    };
    m.events.in(100, [&] { link.tx_cmd("TIM002"); });
    link.tx_cmd("TIM001");
    EXPECT_EQ(m.port.take_written(), (strings{"TIM001", "TIM002"}));
    EXPECT_TRUE(link.rx_done);
    EXPECT_EQ(link.rx_text, "TIM002");
}

TEST_F(exchanges, send_again_after_a_nested_one_with_other_letters) {
    m.port.on_write = [&](const std::string& cmd) {
        if (cmd == "VER001") m.events.in(10, [&] { m.port.arrive("VER012"); });
    };
    bool nested_done = false;
    m.events.in(100, [&] {
        link.tx_cmd("VER001");
        nested_done = link.rx_done;
    });
    link.tx_cmd("TIM001");
    EXPECT_TRUE(nested_done);
    EXPECT_EQ(m.port.take_written(), (strings{"TIM001", "VER001", "TIM001"}));
    EXPECT_FALSE(link.rx_done);
}

class sent_without_an_answer : public link_test {};

TEST_F(sent_without_an_answer, are_six_characters) {
    connect();
    m.port.arrive("old");
    link.tx_str("CRR128more");
    EXPECT_EQ(m.port.done, (strings{"discard input", "write CRR128"}));
    EXPECT_FALSE(link.tim_rx.enabled);
    link.tim_rx.enabled = true;
    link.tx_str("CRG001");
    EXPECT_TRUE(link.tim_rx.enabled) << "it stays as it is";
}

TEST_F(sent_without_an_answer, take_no_time) {
    connect();
    const std::int64_t now = m.events.now;
    const int pumps = m.events.pumps;
    link.tx_str("CRR128");
    EXPECT_EQ(m.events.now, now);
    EXPECT_EQ(m.events.pumps, pumps);
}

TEST_F(sent_without_an_answer, show_a_box_if_the_port_is_closed) {
    link.tx_str("CRR128");
    EXPECT_EQ(m.boxes.all, std::vector{box_disconnected});
    EXPECT_TRUE(m.port.take_written().empty());
}

TEST_F(sent_without_an_answer, wait_until_nothing_is_unsent) {
    connect();
    m.port.unsent = 1;
    m.events.on_turn = [&] {
        if (m.events.turns == 100) m.port.unsent = 0;
    };
    link.tx_str("CRR128");
    EXPECT_EQ(m.events.turns, 100);
    EXPECT_EQ(m.port.take_written(), strings{"CRR128"});
}

TEST_F(sent_without_an_answer, fail_for_fewer_than_six_characters) {
    connect();
    EXPECT_TRUE(failure_of([&] { link.tx_str("CRR"); }).has_value());
    EXPECT_TRUE(m.port.take_written().empty());
}

class raw_bytes : public link_test {};

TEST_F(raw_bytes, are_sent_one_by_one_after_all_unsent_ones) {
    connect();
    strings order;
    m.port.on_write = [&](const std::string& text) {
        order.push_back(text);
        m.port.unsent = 1;
    };
    m.events.on_turn = [&] {
        order.emplace_back("turn");
        m.port.unsent = 0;
    };
    link.tx_byte('A');
    link.tx_byte(0xFF);
    EXPECT_EQ(order, (strings{"A", "turn", "\xFF"}));
}

TEST_F(raw_bytes, need_no_connection_and_clear_nothing) {
    link.tx_byte('A');
    EXPECT_EQ(m.port.done, strings{"write A"});
    EXPECT_TRUE(m.boxes.all.empty());
}

TEST_F(link_test, reports_a_failed_exchange_in_a_box_on_request) {
    connect();
    EXPECT_FALSE(link.tx_cmd_or_box("OUT001"));
    const std::vector one_box{test::noted_boxes::shown{"Link Error !", box_icon::critical, box_buttons::ok}};
    EXPECT_EQ(m.boxes.all, one_box);
    m.echo_all();
    EXPECT_TRUE(link.tx_cmd_or_box("OUT001"));
    EXPECT_EQ(m.boxes.all.size(), 1U);
}

TEST(characters_of_an_answer, count_from_1) {
    EXPECT_EQ(character_of_answer("VER123", 5), "2");
    EXPECT_EQ(character_of_answer("VER123", 1), "V");
    EXPECT_EQ(character_of_answer("VER123", 7), "");
    EXPECT_EQ(character_of_answer("VER", 5), "");
    EXPECT_EQ(character_of_answer("", 1), "");
}

TEST(characters_of_an_answer, can_be_taken_from_its_end) {
    EXPECT_EQ(last_of_answer("VER123", 1), "3");
    EXPECT_EQ(last_of_answer("TIM007x", 3), "07x");
    EXPECT_EQ(last_of_answer("V", 3), "V");
    EXPECT_EQ(last_of_answer("", 1), "");
}

TEST(characters_of_an_answer, can_be_a_part_of_it) {
    EXPECT_EQ(part_of_answer("FT+007FT-012", 7, 6), "FT-012");
    EXPECT_EQ(part_of_answer("FT+007FT-", 7, 6), "FT-");
    EXPECT_EQ(part_of_answer("FT+007", 7, 6), "");
    EXPECT_EQ(part_of_answer("FT+007", 8, 6), "");
}

TEST(a_number_of_an_answer, ends_at_the_first_non_digit) {
    for (const auto& [given, expected] : std::initializer_list<std::pair<const char*, int>>{
             {"254", 254}, {"007", 7}, {"3", 3}, {"12x", 12}, {"1.9", 1}, {"1E2", 1}, {" 12", 12}, {"1 2", 1}})
        EXPECT_EQ(as_number(given), expected) << given;
}

TEST(a_number_of_an_answer, is_0_without_a_leading_digit) {
    for (const char* part : {"", "x12", "-12", "+12", ".5", "   ", "- 1"})
        EXPECT_EQ(as_number(part), 0) << part;
}

} // namespace
} // namespace desk
