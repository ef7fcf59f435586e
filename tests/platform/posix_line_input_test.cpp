#ifndef _WIN32

#include "platform/line_input.h"

#include "platform/end_request.h"

#include <gtest/gtest.h>

#include <csignal>
#include <string>
#include <string_view>
#include <thread>

#include <fcntl.h>
#include <unistd.h>

namespace desk {
namespace {

/// A pipe in place of standard input.
class line_input_test : public testing::Test {
protected:
    line_input_test() {
        int ends[2] = {-1, -1};
        EXPECT_EQ(::pipe2(ends, O_CLOEXEC), 0);
        EXPECT_GE(::dup2(ends[0], STDIN_FILENO), 0);
        ::close(ends[0]);
        keyboard_ = ends[1];
    }
    ~line_input_test() override {
        end();
        ::dup2(before_, STDIN_FILENO);
        ::close(before_);
    }
    void type(std::string_view text) const {
        EXPECT_EQ(::write(keyboard_, text.data(), text.size()), static_cast<ssize_t>(text.size()));
    }
    void end() {
        if (keyboard_ >= 0) ::close(keyboard_);
        keyboard_ = -1;
    }

    end_request request;
    line_input lines{request};

private:
    int before_ = ::fcntl(STDIN_FILENO, F_DUPFD_CLOEXEC, 3);
    int keyboard_ = -1;
};

TEST_F(line_input_test, gives_whole_lines) {
    type("one\ntwo\r\n\nthr");
    EXPECT_EQ(lines.next(), "one");
    EXPECT_EQ(lines.next(), "two");
    EXPECT_EQ(lines.next(), "");
    type("ee");
    end();
    EXPECT_EQ(lines.next(), "three");
    EXPECT_EQ(lines.next(), std::nullopt);
    EXPECT_EQ(lines.next(), std::nullopt);
}

TEST_F(line_input_test, gives_a_line_as_soon_as_it_is_whole) {
    type("one\ntw");
    EXPECT_EQ(lines.next(), "one");
    type("o\n");
    EXPECT_EQ(lines.next(), "two");
}

TEST_F(line_input_test, keeps_other_bytes) {
    type(std::string_view("a\0b\rc\xFF\n", 7));
    EXPECT_EQ(lines.next(), std::string("a\0b\rc\xFF", 6));
}

TEST_F(line_input_test, cuts_a_line_that_is_too_long) {
    std::thread typist([this] {
        for (int i = 0; i < 100; ++i)
            type(std::string(1000, 'x'));
        type("\nnext\n");
        end();
    });
    EXPECT_EQ(lines.next(), std::string(line_input::longest + 1, 'x'));
    EXPECT_EQ(lines.next(), "next");
    EXPECT_EQ(lines.next(), std::nullopt);
    typist.join();
}

TEST_F(line_input_test, accepts_the_longest_line) {
    type(std::string(line_input::longest, 'x') + "\n");
    EXPECT_EQ(lines.next(), std::string(line_input::longest, 'x'));
}

TEST_F(line_input_test, ends_with_a_signal_while_it_waits) {
    std::thread signaller([] { ::kill(::getpid(), SIGINT); });
    EXPECT_EQ(lines.next(), std::nullopt);
    signaller.join();
}

TEST_F(line_input_test, gives_no_line_after_a_signal) {
    type("one\ntwo\n");
    EXPECT_EQ(lines.next(), "one");
    ::raise(SIGINT);
    EXPECT_EQ(lines.next(), std::nullopt);
}

TEST_F(line_input_test, ends_if_standard_input_is_closed) {
    ::close(STDIN_FILENO);
    EXPECT_EQ(lines.next(), std::nullopt);
}

} // namespace
} // namespace desk

#endif
