// The guard that ctest preloads into every test.

#include <gtest/gtest.h>

#include <cerrno>
#include <cstdlib>
#include <fstream>
#include <string>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

const bool guarded = std::getenv("LD_PRELOAD") != nullptr &&
                     std::string(std::getenv("LD_PRELOAD")).find("device_guard") != std::string::npos;

class device_guard : public ::testing::Test {
protected:
    void SetUp() override {
        if (!guarded) GTEST_SKIP() << "the guard is not loaded: start this test with ctest";
    }
};

using device_guard_death = device_guard;

TEST_F(device_guard_death, ends_a_test_that_opens_a_device_of_the_machine) {
    // no machine has this one: if the guard fails, nothing is opened
    const char* const port = "/dev/ttyS_of_the_machine";
    EXPECT_DEATH(::open(port, O_RDWR | O_NOCTTY), "opens /dev/ttyS_of_the_machine");
    EXPECT_DEATH(::openat(AT_FDCWD, port, O_RDWR), "opens /dev/ttyS_of_the_machine");
    EXPECT_DEATH(std::ifstream(port).get(), "opens /dev/ttyS_of_the_machine");
}

TEST_F(device_guard_death, follows_a_link_to_the_device) {
    const std::string link = ::testing::TempDir() + "guard_test_" + std::to_string(::getpid());
    ASSERT_EQ(::symlink("/dev/mem", link.c_str()), 0);
    if (::access("/dev/mem", F_OK) == 0) {
        EXPECT_DEATH(::open(link.c_str(), O_RDONLY), "\\(/dev/mem\\)");
    }
    ::unlink(link.c_str());
}

TEST_F(device_guard, ends_a_program_that_a_test_starts) {
    const int status = std::system("cat /dev/ttyS_of_the_machine 2>/dev/null");
    // the shell reports the signal of its last command either way
    EXPECT_TRUE(WIFSIGNALED(status) || WEXITSTATUS(status) == 128 + SIGABRT) << status;
}

TEST_F(device_guard, denies_a_test_a_controlling_terminal) {
    EXPECT_EQ(::open("/dev/tty", O_RDWR), -1);
    EXPECT_EQ(errno, ENXIO);
}

TEST_F(device_guard, allows_files_and_harmless_devices) {
    for (const char* path : {"/dev/null", "/dev/urandom", "/dev/ptmx", "/proc/self/status"}) {
        const int file = ::open(path, O_RDONLY | O_NOCTTY);
        EXPECT_GE(file, 0) << path;
        ::close(file);
    }
}

TEST_F(device_guard, comes_without_a_display) {
    EXPECT_EQ(std::getenv("DISPLAY"), nullptr);
    EXPECT_EQ(std::getenv("WAYLAND_DISPLAY"), nullptr);
    EXPECT_STREQ(std::getenv("QT_QPA_PLATFORM"), "offscreen");
}

} // namespace
