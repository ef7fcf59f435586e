// The simulator's control socket, as its clients use it.

#include "generator/control_socket.h"

#include "generator/control_address.h"
#include "support/expect_failure.h"
#include "support/shell_run.h"

#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <string>
#include <vector>

#include <fcntl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

namespace desk {
namespace {

namespace fs = std::filesystem;
using test::failure_of;
using test::sentence_of;

class control_socket_test : public testing::Test {
protected:
    /// A program that has connected; it reads without waiting.
    class client {
    public:
        explicit client(const fs::path& path) : socket_(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
            const sockaddr_un address = *control_address(path);
            connected = ::connect(socket_, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
        }
        ~client() { ::close(socket_); }
        client(const client&) = delete;
        client& operator=(const client&) = delete;

        void send(const std::string& text) const {
            EXPECT_EQ(::send(socket_, text.data(), text.size(), MSG_NOSIGNAL), static_cast<ssize_t>(text.size()));
        }
        void end_sending() const { ::shutdown(socket_, SHUT_WR); }
        std::string received() const {
            std::string all(1 << 20, 0);
            const ssize_t got = ::recv(socket_, all.data(), all.size(), MSG_DONTWAIT);
            all.resize(got > 0 ? static_cast<std::size_t>(got) : 0);
            return all;
        }
        bool is_closed() const {
            char one = 0;
            return ::recv(socket_, &one, 1, MSG_DONTWAIT) == 0;
        }
        int descriptor() const { return socket_; }

        bool connected = false;

    private:
        int socket_;
    };

    /// Serves until nothing is left to do.
    void serve(control_socket& control) {
        for (int i = 0; i < 1000; ++i) {
            control.serve([this](std::string_view line) {
                heard.emplace_back(line);
                return "reply to " + std::string(line);
            });
        }
    }

    test::temporary_directory folder;
    fs::path path = folder / "control";
    std::vector<std::string> heard;
};

TEST_F(control_socket_test, gives_each_program_the_reply_to_its_own_lines) {
    control_socket control(path);
    const client one(path);
    const client other(path);
    one.send("state\nhelp\n");
    other.send("drop 2");
    other.end_sending();
    serve(control);
    EXPECT_EQ(one.received(), "reply to state\nreply to help\n");
    EXPECT_EQ(other.received(), "reply to drop 2\n");
    EXPECT_TRUE(other.is_closed());
    EXPECT_FALSE(one.is_closed());
}

TEST_F(control_socket_test, runs_one_line_of_a_program_at_a_time) {
    control_socket control(path);
    const client one(path);
    one.send("1\n2\n3\n");
    int count = 0;
    const auto reply = [&](std::string_view) { return std::to_string(++count); };
    while (count == 0)
        control.serve(reply);
    EXPECT_EQ(count, 1);
    EXPECT_TRUE(control.has_line());
    control.serve(reply);
    EXPECT_EQ(count, 2);
}

TEST_F(control_socket_test, is_accessible_only_to_the_user) {
    const control_socket control(path);
    struct stat status {};
    ASSERT_EQ(::lstat(path.c_str(), &status), 0);
    EXPECT_TRUE(S_ISSOCK(status.st_mode));
    EXPECT_EQ(status.st_mode & 0777, 0600U);
}

TEST_F(control_socket_test, does_not_wait_for_a_program_that_does_not_read_its_replies) {
    control_socket control(path);
    const client hanging(path);
    ::fcntl(hanging.descriptor(), F_SETFL, O_NONBLOCK);
    // more replies than the system holds for it
    const std::string lines(500, '\n');
    int served = 0;
    const auto long_reply = [&](std::string_view) {
        ++served;
        return std::string(100000, 'x');
    };
    for (int i = 0; i < 100; ++i) {
        ::send(hanging.descriptor(), lines.data(), lines.size(), MSG_NOSIGNAL);
        control.serve(long_reply);
    }
    EXPECT_LT(served, 50) << "a program that does not read its replies is not served";
    const client other(path);
    other.send("state\n");
    serve(control);
    EXPECT_EQ(other.received(), "reply to state\n");
}

TEST_F(control_socket_test, drops_the_quietest_of_too_many_programs) {
    control_socket control(path);
    std::vector<std::unique_ptr<client>> many;
    for (int i = 0; i < 40; ++i) {
        many.push_back(std::make_unique<client>(path));
        serve(control);
    }
    many.back()->send("state\n");
    serve(control);
    EXPECT_TRUE(many.front()->is_closed());
    EXPECT_EQ(many.back()->received(), "reply to state\n");
}

TEST_F(control_socket_test, is_removed_with_the_simulator) {
    { const control_socket control(path); }
    EXPECT_FALSE(fs::exists(fs::symlink_status(path)));
    EXPECT_EQ(folder.file_count(), 0U);
}

TEST_F(control_socket_test, stays_if_another_program_has_taken_the_name_over) {
    {
        const control_socket control(path);
        fs::remove(path);
        folder.put("control", "mine");
    }
    EXPECT_EQ(folder.content("control"), "mine");
    EXPECT_EQ(folder.file_count(), 1U);
}

TEST_F(control_socket_test, replaces_only_the_socket_of_a_simulator) {
    folder.put("control", "mine");
    EXPECT_EQ(failure_of([&] { control_socket{path}; }), failure::path_file_access_error);
    EXPECT_EQ(folder.content("control"), "mine");
    fs::remove(path);
    fs::create_symlink("/nowhere", path);
    EXPECT_EQ(failure_of([&] { control_socket{path}; }), failure::path_file_access_error);
    EXPECT_EQ(fs::read_symlink(path), "/nowhere");
    fs::remove(path);
    const control_socket first(path);
    EXPECT_NE(sentence_of([&] { control_socket{path}; }).find("another simulator listens there"), std::string::npos);
    EXPECT_TRUE(client(path).connected);
    EXPECT_EQ(folder.file_count(), 1U);
}

TEST_F(control_socket_test, replaces_what_a_killed_simulator_left) {
    const int left = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const sockaddr_un address = *control_address(path);
    ASSERT_EQ(::bind(left, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    ASSERT_EQ(::chmod(path.c_str(), 0600), 0);
    ::close(left);
    const control_socket control(path);
    EXPECT_TRUE(client(path).connected);
    EXPECT_EQ(folder.file_count(), 1U);
}

TEST_F(control_socket_test, refuses_a_path_that_is_too_long_for_a_socket) {
    EXPECT_NE(sentence_of([&] { control_socket{folder / std::string(120, 'x')}; }).find("too long"), std::string::npos);
}

/// The program at both ends of the socket.
class simulator_control : public testing::Test {
protected:
    std::string in_folder(const std::string& name) const { return "\"" + (folder / name).string() + "\""; }

    /// Runs a script beside a simulator that is ended afterwards; $sim is its process, $control its socket.
    test::shell_run beside_simulator(const std::string& script) const {
        return test::run_in_shell("{ control=" + in_folder("control") +
                                      "; simulator=\"" VELOTRACE_SIM "\"; timeout 60 \"$simulator\" --control "
                                      "\"$control\" " +
                                      in_folder("com1") + " </dev/null >" + in_folder("log") +
                                      " & sim=$!; while [ ! -L " + in_folder("com1") +
                                      " ] && kill -0 $sim; do :; done; " + script + "; kill -TERM $sim; wait $sim; }",
                                  folder);
    }

    test::temporary_directory folder;
};

TEST_F(simulator_control, takes_the_words_of_the_command_line_as_one_line) {
    const auto ended =
        beside_simulator("\"$simulator\" --send \"$control\" sink 1 none; \"$simulator\" --send \"$control\" 'sink 1'");
    EXPECT_EQ(ended.out, "Sink 1 is removed.\nnone\n");
    EXPECT_EQ(ended.status, 0);
    EXPECT_FALSE(folder.has("control"));
}

TEST_F(simulator_control, takes_the_lines_of_standard_input) {
    const auto ended = beside_simulator("printf 'silent\\ndrop 2\\nspeak' | \"$simulator\" --send \"$control\"");
    EXPECT_EQ(ended.out, "The generator answers nothing.\nThe next 2 answers are dropped.\nThe generator answers.\n");
    EXPECT_EQ(ended.err, "");
}

TEST_F(simulator_control, refuses_a_line_that_is_too_long) {
    const auto ended = beside_simulator("{ head -c 5000 /dev/zero | tr '\\0' x; echo; echo speak; } | \"$simulator\" "
                                        "--send \"$control\"");
    EXPECT_EQ(ended.out, "A line has at most 4096 bytes.\nThe generator answers.\n");
}

TEST_F(simulator_control, ends_the_simulator) {
    const auto ended = beside_simulator("\"$simulator\" --send \"$control\" quit; wait $sim; echo $?");
    EXPECT_EQ(ended.out, "Good-bye.\n0\n");
}

TEST_F(simulator_control, reports_that_no_simulator_is_there) {
    const auto ended = test::run_in_shell("\"" VELOTRACE_SIM "\" --send " + in_folder("none") + " state", folder);
    EXPECT_EQ(ended.status, 1);
    EXPECT_NE(ended.err.find("no simulator listens at "), std::string::npos) << ended.err;
}

} // namespace
} // namespace desk
