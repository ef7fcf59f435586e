#pragma once

#ifndef _WIN32

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <thread>

#include <fcntl.h>
#include <termios.h>
#include <unistd.h>

namespace desk::test {

/// A terminal that records its output.
class terminal {
public:
    terminal() : keyboard_(::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC)) {
        EXPECT_EQ(::grantpt(keyboard_), 0);
        EXPECT_EQ(::unlockpt(keyboard_), 0);
        name_ = ::ptsname(keyboard_);
        line_ = ::open(name_.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC);
        termios settings{};
        EXPECT_EQ(::tcgetattr(line_, &settings), 0);
        ::cfmakeraw(&settings);
        EXPECT_EQ(::tcsetattr(line_, TCSANOW, &settings), 0);
        reader_ = std::thread([this] {
            char piece[1024];
            for (ssize_t got = 0; (got = ::read(keyboard_, piece, sizeof piece)) > 0;)
                written_.append(piece, static_cast<std::size_t>(got));
        });
    }
    terminal(const terminal&) = delete;
    terminal& operator=(const terminal&) = delete;
    ~terminal() {
        hang_up();
        ::close(keyboard_);
    }
    const std::string& name() const { return name_; }
    /// Everything written; call it after the last write.
    const std::string& written() {
        hang_up();
        return written_;
    }

private:
    void hang_up() {
        if (!reader_.joinable()) return;
        ::close(line_);
        reader_.join();
    }

    int keyboard_;
    int line_ = -1;
    std::string name_;
    std::string written_;
    std::thread reader_;
};

} // namespace desk::test

#endif
