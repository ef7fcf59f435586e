#include "platform/native_serial_port.h"

#include "platform/posix_processes.h"
#include "support/expect_failure.h"
#include "support/own_terminal.h"
#include "support/temporary_directory.h"

#include <gtest/gtest.h>

#include <csignal>
#include <cstring>
#include <filesystem>
#include <memory>
#include <string>

#include <sys/file.h>
#include <sys/ioctl.h>
#include <sys/stat.h>

namespace desk {
namespace {

using test::failure_of;

class closed_port : public testing::Test {
protected:
    test::temporary_directory folder;
    std::unique_ptr<serial_port> port = make_native_serial_port(folder.path());
};

TEST_F(closed_port, cannot_be_opened_without_a_number) {
    // not even if a link of that name leads to a terminal
    std::error_code ignored;
    std::filesystem::create_symlink("/dev/ptmx", folder / "com0", ignored);
    EXPECT_EQ(failure_of([&] { port->open(0); }), failure::path_file_access_error);
}

TEST_F(closed_port, cannot_be_opened_if_its_link_leads_to_no_device) {
    std::filesystem::create_symlink("no_device", folder / "com7");
    EXPECT_EQ(failure_of([&] { port->open(7); }), failure::path_file_access_error);
}

TEST_F(closed_port, names_the_target_of_a_dangling_link) {
    std::filesystem::create_symlink("/dev/serial/by-id/adapter", folder / "com1");
    std::filesystem::create_symlink("com1", folder / "com2");
    const std::string com1 = (folder / "com1").string();
    const std::string com2 = (folder / "com2").string();
    EXPECT_EQ(test::sentence_of([&] { port->open(1); }),
              com1 + " leads to /dev/serial/by-id/adapter, which is not there: plug it in, or point the link to "
                     "another device.");
    EXPECT_EQ(test::sentence_of([&] { port->open(2); }),
              com2 + " leads to com1, which leads to /dev/serial/by-id/adapter, which is not there: plug it in, or "
                     "point the link to another device.");
    EXPECT_EQ(test::sentence_of([&] { port->open(987); }),
              "/dev/ttyS986 is not there: plug the adapter in, or make a com link to it.");
}

TEST_F(closed_port, opens_only_devices) {
    folder.put("com1", "keep me");
    EXPECT_EQ(test::sentence_of([&] { port->open(1); }),
              (folder / "com1").string() + " is not a serial port: choose another port.");
    std::filesystem::create_symlink("/dev/null", folder / "com2");
    EXPECT_NE(test::sentence_of([&] { port->open(2); }).find("/dev/null can't be used as a serial port"),
              std::string::npos);
}

TEST_F(closed_port, has_no_input_and_accepts_no_output) {
    port->write(bytes_of("TIM001"));
    EXPECT_EQ(port->in_count(), 0U);
    EXPECT_EQ(port->out_count(), 0U);
    EXPECT_TRUE(port->read().empty());
}

bool same(const termios& a, const termios& b) {
    return a.c_iflag == b.c_iflag && a.c_oflag == b.c_oflag && a.c_cflag == b.c_cflag && a.c_lflag == b.c_lflag &&
           std::memcmp(a.c_cc, b.c_cc, sizeof a.c_cc) == 0 && ::cfgetospeed(&a) == ::cfgetospeed(&b);
}

/// Port 1 leads to a pseudo terminal of the test's own.
class port_at_terminal : public testing::Test {
protected:
    port_at_terminal() { std::filesystem::create_symlink(line.name(), folder / "com1"); }

    std::unique_ptr<serial_port> new_port() const { return make_native_serial_port(folder.path()); }
    std::string sentence_of_opening() {
        return test::sentence_of([&] { port->open(1); });
    }
    static std::string me(int process) {
        return "(process " + std::to_string(process) + ", user " + user_name(::geteuid()) + ")";
    }

    test::temporary_directory folder;
    test::own_terminal line;
    const termios found = line.settings();
    std::unique_ptr<serial_port> port = new_port();
};

TEST_F(port_at_terminal, passes_bytes_unchanged) {
    port->open(1);
    EXPECT_FALSE(same(line.settings(), found)) << "a cooked line would change the bytes";
    port->write(bytes_of("TIM001\n\x03"));
    EXPECT_EQ(line.shown(), "TIM001\n\x03");
    line.type("TIM001\r\x03");
    ASSERT_TRUE(line.has_waiting(8));
    EXPECT_EQ(string_of(port->read()), "TIM001\r\x03");
}

TEST_F(port_at_terminal, has_its_settings_restored_when_closed) {
    port->open(1);
    port->close();
    EXPECT_TRUE(same(line.settings(), found));
    EXPECT_FALSE(line.is_exclusive());
    port->open(1);
    port.reset();
    EXPECT_TRUE(same(line.settings(), found)) << "at the end of the program";
    EXPECT_FALSE(line.is_exclusive());
}

TEST_F(port_at_terminal, has_its_settings_restored_when_reopened) {
    port->open(1);
    port->open(1);
    port->close();
    EXPECT_TRUE(same(line.settings(), found));
}

TEST_F(port_at_terminal, can_be_closed_after_the_device_is_gone) {
    port->open(1);
    line.hang_up();
    port->write(bytes_of("TIM001"));
    port->close();
    EXPECT_EQ(port->out_count(), 0U);
}

TEST_F(port_at_terminal, has_vanished_when_the_device_has_hung_up) {
    EXPECT_FALSE(port->vanished());
    port->open(1);
    EXPECT_FALSE(port->vanished());
    line.hang_up();
    EXPECT_TRUE(port->vanished());
    port->close();
    EXPECT_FALSE(port->vanished());
}

TEST_F(port_at_terminal, does_not_become_the_controlling_terminal) {
    test::child_process desk([&] {
        ::setsid();
        port->open(1);
        if (::tcgetsid(line.slave()) >= 0) ::_exit(1);
    });
    EXPECT_TRUE(desk.works());
    desk.end(SIGTERM);
}

/// A shell of this user's works at the terminal.
class port_at_work_place : public port_at_terminal {
protected:
    test::child_process shell{[this] {
        ::setsid();
        ::ioctl(line.slave(), TIOCSCTTY, 0);
    }};
};

TEST_F(port_at_work_place, is_refused_and_the_terminal_is_unchanged) {
    line.type("typed ahead\n");
    ASSERT_TRUE(line.has_waiting(12));
    EXPECT_EQ(sentence_of_opening(),
              line.name() + " is a terminal that test_platform " + me(shell.id()) + " works at: choose another port.");
    EXPECT_TRUE(same(line.settings(), found));
    EXPECT_FALSE(line.is_exclusive());
    EXPECT_TRUE(line.has_waiting(12)) << "what was typed is still there";
    EXPECT_EQ(line.shown(), "typed ahead\r\n") << "nothing but the echo was written";
    line.type("\x03");
    EXPECT_EQ(shell.wait(), SIGINT) << "Ctrl+C works";
}

TEST_F(port_at_work_place, is_free_when_the_shell_has_ended) {
    shell.end(SIGKILL);
    EXPECT_EQ(sentence_of_opening(), "");
}

TEST_F(port_at_terminal, is_refused_if_the_desk_was_started_from_it) {
    test::child_process desk([&] {
        ::setsid();
        ::ioctl(line.slave(), TIOCSCTTY, 0);
        if (sentence_of_opening().find(" is a terminal that test_platform ") == std::string::npos) ::_exit(1);
    });
    EXPECT_TRUE(desk.works());
    desk.end(SIGKILL);
    EXPECT_TRUE(same(line.settings(), found));
}

TEST_F(port_at_terminal, is_held_by_one_desk_at_a_time) {
    const std::unique_ptr<serial_port> other = new_port();
    other->open(1);
    const termios in_use = line.settings();
    line.type("TIM001");
    ASSERT_TRUE(line.has_waiting(6));
    EXPECT_EQ(sentence_of_opening(),
              line.name() + " is in use by test_platform " + me(::getpid()) + ": close the port there.");
    EXPECT_EQ(string_of(other->read()), "TIM001") << "nothing was done to the line";
    EXPECT_TRUE(same(line.settings(), in_use));
    EXPECT_TRUE(line.is_exclusive());
    other->close();
    EXPECT_EQ(sentence_of_opening(), "");
}

TEST_F(port_at_terminal, is_not_touched_if_another_program_has_locked_it) {
    test::child_process other([&] { ::flock(::open(line.name().c_str(), O_RDWR | O_NOCTTY), LOCK_EX); });
    line.type("typed ahead\n");
    ASSERT_TRUE(line.has_waiting(12));
    EXPECT_EQ(sentence_of_opening(),
              line.name() + " is in use by test_platform " + me(other.id()) + ": close the port there.");
    EXPECT_TRUE(same(line.settings(), found));
    EXPECT_FALSE(line.is_exclusive());
    EXPECT_TRUE(line.has_waiting(12));
}

TEST_F(port_at_terminal, says_who_has_access_if_permission_is_denied) {
    if (::geteuid() == 0) GTEST_SKIP() << "root may use every device";
    ASSERT_EQ(::chmod(line.name().c_str(), 0), 0);
    EXPECT_EQ(sentence_of_opening(), line.name() + " can't be opened: Permission denied: the device is for the user " +
                                         user_name(::geteuid()) + " alone.");
}

TEST_F(port_at_terminal, is_free_after_a_desk_that_was_killed) {
    test::child_process desk([&] { port->open(1); });
    EXPECT_TRUE(line.is_exclusive());
    EXPECT_NE(sentence_of_opening().find(" is in use by test_platform " + me(desk.id())), std::string::npos);
    desk.end(SIGKILL);
    // as the program at the other end does
    line.end_exclusive_mode();
    EXPECT_EQ(sentence_of_opening(), "");
}

} // namespace
} // namespace desk
