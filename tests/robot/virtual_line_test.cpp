#include "robot/virtual_calendar.h"
#include "robot/virtual_line.h"

#include "controls/window.h"
#include "link/exchange.h"
#include "robot/open_windows.h"
#include "robot/queued_dialogs.h"
#include "robot/tokens.h"
#include "robot/virtual_events.h"
#include "support/expect_failure.h"
#include "support/fake_machine.h"

#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <vector>

namespace desk::robot {
namespace {

using namespace std::chrono_literals;

using test::failure_of;
using strings = std::vector<std::string>;
using state = virtual_line::port_state;

class cable : public testing::Test {
protected:
    cable() { line.open(1); }
    void write(std::string_view text) { line.write(bytes_of(text)); }
    std::string read_at(std::int64_t ms) {
        events.now = ms;
        return string_of(line.read());
    }
    void reply(const std::string& command, const std::string& parts) {
        line.script.add(command, scripted_answer_of(tokens_of(parts).value(), 0).value());
    }
    test::scripted_events events;
    virtual_line line{events};
};

TEST(ports_of_the_cable, can_be_opened_from_1_to_8) {
    test::scripted_events events;
    virtual_line line(events);
    for (int port = 1; port <= 8; ++port)
        EXPECT_EQ(failure_of([&] { line.open(port); }), std::nullopt) << port;
    for (const int port : {0, 9, -1})
        EXPECT_EQ(failure_of([&] { line.open(port); }), failure::path_file_access_error) << port;
}

TEST(ports_of_the_cable, can_be_missing_gone_or_stuck) {
    test::scripted_events events;
    virtual_line line(events);
    for (const state unusable : {state::missing, state::gone}) {
        line.set_port(3, unusable);
        EXPECT_EQ(failure_of([&] { line.open(3); }), failure::path_file_access_error);
        EXPECT_EQ(failure_of([&] { line.open(2); }), std::nullopt);
        line.set_port(3, state::ok);
        EXPECT_EQ(failure_of([&] { line.open(3); }), std::nullopt);
    }
    line.set_port(3, state::stuck);
    EXPECT_EQ(failure_of([&] { line.open(3); }), std::nullopt);
}

TEST_F(cable, takes_ten_bit_times_for_a_byte_in_each_direction) {
    // 6 bytes are 60 bits: 3.125 ms at 19200 baud
    reply("TIM007", "echo");
    write("TIM007");
    EXPECT_EQ(line.in_count(), 0U);
    EXPECT_EQ(read_at(3), "") << "the command is not through yet";
    EXPECT_EQ(read_at(4), "T") << "3.125 and 0.521 ms";
    EXPECT_EQ(read_at(5), "IM") << "three characters have come by 4.688 ms";
    EXPECT_EQ(read_at(6), "00");
    EXPECT_EQ(read_at(7), "7");
    EXPECT_EQ(read_at(100), "");
}

TEST_F(cable, keeps_the_pauses_of_an_answer) {
    reply("TIM007", "+60 \"TIM\" +40 \"007\"");
    write("TIM007");
    EXPECT_EQ(read_at(63), "");
    EXPECT_EQ(read_at(65), "TIM");
    EXPECT_EQ(read_at(104), "");
    EXPECT_EQ(read_at(107), "007");
}

TEST_F(cable, gives_all_that_waits_and_counts_it) {
    reply("TIM007", "\"TIM007more\"");
    write("TIM007");
    events.now = 50;
    EXPECT_EQ(line.in_count(), 10U);
    EXPECT_EQ(string_of(line.read()), "TIM007more");
    EXPECT_EQ(line.in_count(), 0U);
}

TEST_F(cable, discards_what_waits_and_not_what_is_to_come) {
    reply("TIM007", "\"early\" +50 \"late\"");
    write("TIM007");
    events.now = 20;
    line.discard_input();
    EXPECT_EQ(line.in_count(), 0U);
    EXPECT_EQ(read_at(100), "late");
}

TEST_F(cable, lets_the_pause_of_one_answer_hold_up_no_other) {
    reply("TIM001", "+1000 echo");
    reply("TIM002", "echo");
    write("TIM001");
    events.now = 100;
    write("TIM002");
    EXPECT_EQ(read_at(110), "TIM002");
    EXPECT_EQ(read_at(1010), "TIM001");
}

TEST_F(cable, is_silent_if_nothing_is_scripted) {
    write("TIM007");
    EXPECT_EQ(read_at(10000), "");
}

TEST_F(cable, lets_the_simulated_generator_answer_the_rest) {
    line.simulated_answers = true;
    reply("TIM007", "\"scripted\"");
    reply("TIM008", "none");
    write("TIM007");
    EXPECT_EQ(read_at(100), "scripted");
    write("TIM008");
    EXPECT_EQ(read_at(200), "");
    write("TIM009");
    EXPECT_EQ(read_at(300), "TIM009");
    write("TIM999");
    EXPECT_EQ(read_at(400), "TIM009");
}

TEST_F(cable, is_unplugged_for_a_while_by_a_random_fault) {
    line.simulated_answers = true;
    line.faulty.follow({100, 1, {fault::unplug}});
    write("TIM007");
    line.faulty.follow({});
    EXPECT_EQ(failure_of([&] { line.open(1); }), failure::path_file_access_error);
    EXPECT_EQ(failure_of([&] { line.open(2); }), std::nullopt) << "another port";
    // it is unplugged for 200 to 5000 ms
    events.now = 199;
    EXPECT_EQ(failure_of([&] { line.open(1); }), failure::path_file_access_error);
    events.now = 5000;
    EXPECT_EQ(failure_of([&] { line.open(1); }), std::nullopt);
    write("TIM999");
    EXPECT_EQ(read_at(5100), "TIM007") << "the command was executed";
}

TEST_F(cable, can_be_plugged_in_after_a_random_fault) {
    line.simulated_answers = true;
    line.faulty.follow({100, 1, {fault::unplug}});
    write("TIM007");
    line.set_port(1, state::ok);
    EXPECT_EQ(failure_of([&] { line.open(1); }), std::nullopt);
}

TEST_F(cable, never_drains_if_it_is_stuck) {
    line.set_port(1, state::stuck);
    EXPECT_EQ(line.out_count(), 0U);
    reply("TIM007", "echo");
    write("TIM007");
    EXPECT_EQ(line.out_count(), 6U);
    EXPECT_EQ(read_at(10000), "");
    EXPECT_EQ(line.out_count(), 6U);
    line.discard_output();
    EXPECT_EQ(line.out_count(), 0U);
}

TEST_F(cable, loses_what_is_on_the_line_if_the_device_vanishes) {
    reply("TIM007", "echo +50 \"more\"");
    write("TIM007");
    events.now = 20;
    EXPECT_EQ(line.in_count(), 6U);
    line.set_port(1, state::gone);
    EXPECT_EQ(line.in_count(), 0U);
    EXPECT_EQ(read_at(200), "");
    write("TIM007");
    EXPECT_EQ(line.out_count(), 0U) << "nothing is seen unsent";
    EXPECT_EQ(read_at(400), "");
}

TEST_F(cable, must_be_reopened_after_the_device_is_back) {
    reply("TIM007", "echo");
    line.set_port(1, state::gone);
    line.set_port(1, state::ok);
    write("TIM007");
    EXPECT_EQ(read_at(100), "");
    line.open(1);
    write("TIM007");
    EXPECT_EQ(read_at(200), "TIM007");
}

TEST_F(cable, carries_nothing_over_to_another_port) {
    reply("TIM007", "+50 echo");
    write("TIM007");
    line.open(2);
    EXPECT_EQ(read_at(200), "");
}

TEST_F(cable, takes_nothing_while_it_is_closed) {
    reply("TIM007", "echo");
    line.close();
    write("TIM007");
    line.open(1);
    EXPECT_EQ(read_at(100), "");
    EXPECT_EQ(line.take_log(), strings{});
}

TEST_F(cable, is_not_touched_if_another_port_goes) {
    reply("TIM007", "echo");
    write("TIM007");
    line.set_port(2, state::gone);
    EXPECT_EQ(read_at(100), "TIM007");
}

TEST_F(cable, hears_a_generator_that_speaks_by_itself) {
    line.say({{20ms, bytes_of("hello")}});
    EXPECT_EQ(read_at(20), "");
    EXPECT_EQ(read_at(25), "hello");
}

TEST_F(cable, hears_nothing_while_it_is_closed) {
    line.close();
    line.say({{0ms, bytes_of("hello")}});
    line.open(1);
    EXPECT_EQ(read_at(100), "");
}

TEST_F(cable, reports_its_traffic_once) {
    reply("TIM007", "echo");
    write("TIM007");
    EXPECT_EQ(line.take_log(), strings{"> TIM007"});
    events.now = 6;
    EXPECT_EQ(line.take_log(), strings{}) << "the answer's last byte has not arrived";
    events.now = 7;
    EXPECT_EQ(line.take_log(), strings{"< TIM007"});
    EXPECT_EQ(line.take_log(), strings{});
}

TEST_F(cable, reports_each_part_of_an_answer_read_or_not) {
    reply("TIM007", "\"TI\" +60 \"M007\"");
    write("TIM007");
    events.now = 100;
    line.discard_input();
    EXPECT_EQ(line.take_log(), (strings{"> TIM007", "< TI", "< M007"}));
}

TEST_F(cable, reports_unprintable_bytes_in_hexadecimal) {
    reply("TIM007", "\"a b\" hex:41FF \"\\u007e \" \"\\u007f\"");
    write("TIM007");
    events.now = 100;
    EXPECT_EQ(line.take_log(), (strings{"> TIM007", "< a b", "< hex:41FF", "< ~ ", "< hex:7F"}));
    write(std::string("ab\0", 3));
    EXPECT_EQ(line.take_log(), strings{"> hex:616200"});
}

TEST_F(cable, joins_single_bytes_until_a_longer_write_or_an_answer) {
    for (const char* byte : {"a", "b", "c"})
        write(byte);
    write("TIM007");
    write("d");
    EXPECT_EQ(line.take_log(), (strings{"> abc", "> TIM007", "> d"}));
    line.say({{0ms, bytes_of("x")}});
    write("e");
    write("f");
    events.now = 10;
    write("g");
    EXPECT_EQ(line.take_log(), (strings{"> ef", "< x", "> g"}));
}

TEST_F(cable, answers_the_raw_block_after_an_answered_mot001) {
    reply("MOT001", "echo");
    line.script.add_raw(scripted_answer_of(tokens_of("\"taken\"").value(), 0).value());
    write("MOT001");
    EXPECT_EQ(read_at(50), "MOT001");
    write(std::string("VELO\0\0\0\0\0\0\0\0", 12));
    EXPECT_EQ(read_at(100), "taken");
}

TEST_F(cable, answers_the_256_bytes_after_an_answered_ewr001_when_they_are_complete) {
    reply("EWR001", "echo");
    line.script.add_raw(scripted_answer_of(tokens_of("\"EWR002\"").value(), 0).value());
    write("EWR001");
    EXPECT_EQ(read_at(50), "EWR001");
    for (int i = 0; i < 255; ++i)
        write(std::string(1, static_cast<char>(i)));
    EXPECT_EQ(read_at(1000), "");
    write("x");
    EXPECT_EQ(read_at(2000), "EWR002");
    write("y");
    EXPECT_EQ(read_at(3000), "") << "the block is over";
}

TEST_F(cable, answers_no_raw_block_after_a_command_that_was_not_answered) {
    line.script.add_raw(scripted_answer_of(tokens_of("\"taken\"").value(), 0).value());
    for (const char* no_data : {"none", "+10"}) {
        reply("MOT001", no_data);
        write("MOT001");
        write(std::string(12, 'x'));
        EXPECT_EQ(read_at(events.now + 1000), "") << no_data;
    }
    EXPECT_EQ(line.out_count(), 0U);
}

TEST_F(cable, answers_no_raw_block_with_nothing_queued) {
    reply("MOT001", "echo");
    write("MOT001");
    EXPECT_EQ(read_at(50), "MOT001");
    write(std::string(12, 'x'));
    EXPECT_EQ(read_at(1000), "");
}

/// The cable with the desk's exchange at its end, on the virtual clock.
class cable_in_use : public testing::Test {
protected:
    cable_in_use() {
        form.add(link.tim_rx);
        events.start({&form});
        link.com_port = 1;
        link.set_comm();
        line.script.add("TIM*", scripted_answer_of(tokens_of("+300 echo").value(), 0).value());
    }
    virtual_events events;
    virtual_line line{events};
    queued_message_box boxes;
    queued_file_dialog files;
    open_windows windows{events};
    virtual_calendar dates{events};
    machine host{line, events, boxes, files, windows, dates, {}};
    exchange link{host};
    window form;
};

TEST_F(cable_in_use, carries_an_exchange) {
    link.tx_cmd("TIM007");
    EXPECT_TRUE(link.rx_done);
    EXPECT_EQ(line.take_log(), (strings{"> TIM007", "< TIM007"}));
}

TEST_F(cable_in_use, is_silent_if_the_device_vanishes_in_the_middle_of_an_exchange) {
    const std::chrono::milliseconds start = events.clock_time();
    events.later(100ms, [&] { line.set_port(1, state::gone); });
    link.tx_cmd("TIM007");
    EXPECT_FALSE(link.rx_done);
    EXPECT_GE(events.clock_time() - start, 2 * 151 * clock_step);
    EXPECT_TRUE(link.rs232_connected) << "the desk does not know";
    EXPECT_EQ(json_text(boxes.take_shown()), "[]");
    EXPECT_EQ(line.take_log(), (strings{"> TIM007", "> TIM007"}));
}

TEST_F(cable_in_use, stays_silent_if_the_device_comes_back_in_the_middle_of_an_exchange) {
    events.later(100ms, [&] { line.set_port(1, state::gone); });
    events.later(200ms, [&] { line.set_port(1, state::ok); });
    link.tx_cmd("TIM007");
    EXPECT_FALSE(link.rx_done) << "it must be opened again";
    link.set_comm();
    link.tx_cmd("TIM007");
    EXPECT_TRUE(link.rx_done);
}

TEST_F(cable_in_use, works_again_if_reopened_in_the_middle_of_an_exchange) {
    events.later(100ms, [&] {
        line.set_port(1, state::gone);
        line.set_port(1, state::ok);
        link.set_comm();
    });
    link.tx_cmd("TIM007");
    EXPECT_TRUE(link.rx_done) << "the second try";
    EXPECT_EQ(line.take_log(), (strings{"> TIM007", "> TIM007", "< TIM007"}));
}

TEST_F(cable_in_use, blocks_the_desk_forever_if_it_gets_stuck) {
    line.set_port(1, state::stuck);
    events.run_event([&] { link.tx_cmd("TIM007"); });
    ASSERT_TRUE(events.ended_by());
    EXPECT_EQ(events.ended_by()->code(), failure::does_not_return);
    EXPECT_EQ(line.take_log(), strings{"> TIM007"});
}

} // namespace
} // namespace desk::robot
