#include "platform/native_serial_port.h"

#include "support/expect_failure.h"
#include "support/own_pipe.h"
#include "support/temporary_directory.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace desk {
namespace {

using test::failure_of;
using test::sentence_of;
using test::wait_until;

class closed_port : public testing::Test {
protected:
    std::string sentence_of_opening(int number) {
        return sentence_of([&] { port->open(number); });
    }

    test::temporary_directory folder;
    std::unique_ptr<serial_port> port = make_native_serial_port(folder.path());
};

TEST_F(closed_port, has_a_device_for_each_number) {
    EXPECT_EQ(device_of_port(folder.path(), 3), "COM3");
    folder.put("port3.txt", "com12\r\n");
    EXPECT_EQ(device_of_port(folder.path(), 3), "COM12");
    EXPECT_EQ(device_of_port(folder.path(), 4), "COM4");
    EXPECT_EQ(failure_of([&] { device_of_port(folder.path(), 0); }), failure::path_file_access_error);
}

TEST_F(closed_port, cannot_be_opened_without_a_number) {
    folder.put("port0.txt", "COM1");
    EXPECT_EQ(sentence_of_opening(0), "there is no port 0.");
}

TEST_F(closed_port, names_a_device_that_is_not_there) {
    folder.put("port1.txt", "COM4095");
    EXPECT_EQ(sentence_of_opening(1), "COM4095 is not there: plug the adapter in, or choose another port.");
    folder.put("port1.txt", "\\\\.\\pipe\\desk_test_that_nobody_serves");
    EXPECT_EQ(sentence_of_opening(1), "\\\\.\\pipe\\desk_test_that_nobody_serves is not there: start the simulated "
                                      "generator, or name another device in the port's file.");
}

TEST_F(closed_port, cannot_be_opened_if_its_file_names_no_device) {
    folder.put("port1.txt", "the adapter");
    EXPECT_EQ(sentence_of_opening(1), "the file " + (folder / "port1.txt").string() +
                                          " names no device: \"the adapter\" is neither a COM port, such as COM12, "
                                          "nor a pipe, \\\\.\\pipe\\NAME.");
    EXPECT_EQ(failure_of([] { make_serial_port_of("C:\\")->open(1); }), failure::path_file_access_error);
}

TEST_F(closed_port, has_no_input_and_accepts_no_output) {
    port->write(bytes_of("TIM001"));
    port->discard_input();
    port->discard_output();
    EXPECT_EQ(port->in_count(), 0U);
    EXPECT_EQ(port->out_count(), 0U);
    EXPECT_TRUE(port->read().empty());
    EXPECT_FALSE(port->vanished());
}

/// Port 1 leads to a pipe of the test's own.
class port_at_pipe : public closed_port {
protected:
    port_at_pipe() { folder.put("port1.txt", line.name()); }

    /// Waits until so many bytes can be read from the port.
    bool has_waiting(std::size_t count) {
        return wait_until([&] { return port->in_count() == count; });
    }
    bool has_sent_all() {
        return wait_until([&] { return port->out_count() == 0; });
    }
    /// More than the pipe holds.
    static std::string much() {
        std::string text;
        while (text.size() < 5 * test::own_pipe::buffer)
            text += "TIM001";
        return text;
    }

    test::own_pipe line;
};

TEST_F(port_at_pipe, passes_bytes_unchanged) {
    port->open(1);
    const std::string all_bytes{"TIM001\r\n\x00\x03\x1A\xFF", 12};
    port->write(bytes_of(all_bytes));
    EXPECT_EQ(line.shown(12), all_bytes);
    line.type(all_bytes);
    ASSERT_TRUE(has_waiting(12));
    EXPECT_EQ(string_of(port->read()), all_bytes);
    EXPECT_EQ(port->in_count(), 0U);
    EXPECT_TRUE(port->read().empty());
}

TEST_F(port_at_pipe, can_be_chosen_by_its_name_alone) {
    const auto other = make_serial_port_of(line.name());
    other->open(1);
    other->write(bytes_of("TIM001"));
    EXPECT_EQ(line.shown(6), "TIM001");
}

TEST_F(port_at_pipe, returns_from_a_write_that_nobody_reads) {
    port->open(1);
    const std::string text = much();
    port->write(bytes_of(text));
    EXPECT_GT(port->out_count(), 0U);
    port->write(bytes_of("TIM002"));
    EXPECT_GT(port->out_count(), 6U);
    // in order, and nothing is lost
    EXPECT_EQ(line.shown(100), text.substr(0, 100));
    std::string rest;
    EXPECT_TRUE(wait_until([&] {
        rest += line.take(text.size());
        return port->out_count() == 0;
    }));
    rest += line.shown(text.size() + 6 - 100 - rest.size());
    EXPECT_EQ(rest, text.substr(100) + "TIM002");
}

TEST_F(port_at_pipe, counts_what_is_unsent_until_it_is_read) {
    port->open(1);
    port->write(bytes_of(much()));
    const std::size_t all = port->out_count();
    EXPECT_LE(all, much().size());
    EXPECT_GT(all, 0U) << "the pipe holds less";
    line.shown(much().size());
    EXPECT_TRUE(has_sent_all());
}

TEST_F(port_at_pipe, waits_with_each_byte_until_it_is_taken) {
    test::own_pipe stuck(0);
    const auto other = make_serial_port_of(stuck.name());
    other->open(1);
    other->write(bytes_of("TIM001"));
    EXPECT_EQ(other->out_count(), 6U);
    EXPECT_EQ(stuck.take(6), "TIM001");
    EXPECT_TRUE(wait_until([&] { return other->out_count() == 0; }));
}

TEST_F(port_at_pipe, forgets_unsent_output_on_request) {
    port->open(1);
    port->write(bytes_of(much()));
    port->discard_output();
    EXPECT_EQ(port->out_count(), 0U);
    while (!line.take(much().size()).empty()) {
    }
    port->write(bytes_of("TIM002"));
    EXPECT_EQ(line.shown(6), "TIM002");
}

TEST_F(port_at_pipe, forgets_unread_input_on_request) {
    port->open(1);
    line.type("TIM001");
    ASSERT_TRUE(has_waiting(6));
    port->discard_input();
    EXPECT_EQ(port->in_count(), 0U);
    EXPECT_TRUE(port->read().empty());
    line.type("TIM002");
    ASSERT_TRUE(has_waiting(6));
    EXPECT_EQ(string_of(port->read()), "TIM002");
}

TEST_F(port_at_pipe, is_held_by_one_desk_at_a_time) {
    const auto other = make_native_serial_port(folder.path());
    other->open(1);
    EXPECT_EQ(sentence_of_opening(1), line.name() + " is in use by another program: close the port there.");
    other->write(bytes_of("TIM001"));
    EXPECT_EQ(line.shown(6), "TIM001") << "nothing was done to the line";
    other->close();
    line.serve();
    EXPECT_EQ(sentence_of_opening(1), "");
}

TEST_F(port_at_pipe, can_be_closed_with_unsent_output) {
    port->open(1);
    port->write(bytes_of(much()));
    port->close();
    EXPECT_EQ(port->out_count(), 0U);
    line.serve();
    port->open(1);
    EXPECT_EQ(port->out_count(), 0U);
    port->write(bytes_of("TIM001"));
    EXPECT_EQ(line.shown(6), "TIM001");
}

enum class hang_up { closed, disconnected };

/// What goes on when the cable is pulled.
enum class moment { idle, unread_input, unsent_output, both, before_a_write };

struct pulled_cable {
    const char* name;
    moment when;
    hang_up how;
};

class a_pipe_that_hangs_up : public port_at_pipe, public testing::WithParamInterface<pulled_cable> {
protected:
    void act() {
        const moment when = GetParam().when;
        if (when == moment::unread_input || when == moment::both) {
            line.type("TIM001");
            ASSERT_TRUE(has_waiting(6));
        }
        if (when == moment::unsent_output || when == moment::both) {
            port->write(bytes_of(much()));
            port->write(bytes_of("TIM001")); // waits for the first
            ASSERT_GT(port->out_count(), 6U);
        }
    }
    void pull() {
        if (GetParam().how == hang_up::closed)
            line.hang_up();
        else
            line.disconnect();
    }
};

TEST_P(a_pipe_that_hangs_up, drops_everything_and_holds_nothing_up) {
    port->open(1);
    act();
    pull();
    if (GetParam().when == moment::before_a_write) port->write(bytes_of("TIM001"));
    EXPECT_TRUE(has_sent_all());
    port->write(bytes_of(much()));
    EXPECT_EQ(port->out_count(), 0U);
    // what came before may still be read
    EXPECT_LE(port->read().size(), 6U);
    EXPECT_EQ(port->in_count(), 0U);
    EXPECT_TRUE(port->read().empty());
    port->discard_input();
    port->discard_output();
    EXPECT_EQ(port->in_count() + port->out_count(), 0U);
    EXPECT_TRUE(port->vanished());
}

TEST_P(a_pipe_that_hangs_up, works_again_when_it_is_opened_again) {
    port->open(1);
    act();
    pull();
    port->write(bytes_of("lost"));
    port->close();
    line.serve();
    port->open(1);
    EXPECT_EQ(port->in_count(), 0U);
    EXPECT_EQ(port->out_count(), 0U);
    EXPECT_FALSE(port->vanished());
    port->write(bytes_of("TIM002"));
    EXPECT_EQ(line.shown(6), "TIM002");
    line.type("TIM002");
    ASSERT_TRUE(has_waiting(6));
    EXPECT_EQ(string_of(port->read()), "TIM002");
}

TEST_P(a_pipe_that_hangs_up, is_not_there_until_it_is_back) {
    port->open(1);
    act();
    pull();
    line.hang_up();
    EXPECT_EQ(sentence_of_opening(1), line.name() + " is not there: start the simulated generator, or name another "
                                                    "device in the port's file.");
    port->write(bytes_of("TIM001"));
    EXPECT_EQ(port->out_count(), 0U);
    line.serve();
    EXPECT_EQ(sentence_of_opening(1), "");
}

INSTANTIATE_TEST_SUITE_P(
    at, a_pipe_that_hangs_up,
    testing::Values(pulled_cable{"rest_closed", moment::idle, hang_up::closed},
                    pulled_cable{"rest_disconnected", moment::idle, hang_up::disconnected},
                    pulled_cable{"unread_input_closed", moment::unread_input, hang_up::closed},
                    pulled_cable{"unread_input_disconnected", moment::unread_input, hang_up::disconnected},
                    pulled_cable{"unsent_output_closed", moment::unsent_output, hang_up::closed},
                    pulled_cable{"unsent_output_disconnected", moment::unsent_output, hang_up::disconnected},
                    pulled_cable{"both_closed", moment::both, hang_up::closed},
                    pulled_cable{"both_disconnected", moment::both, hang_up::disconnected},
                    pulled_cable{"before_a_write_closed", moment::before_a_write, hang_up::closed},
                    pulled_cable{"before_a_write_disconnected", moment::before_a_write, hang_up::disconnected}),
    [](const auto& test) { return std::string(test.param.name); });

} // namespace
} // namespace desk
