#include "generator/terminal_link.h"

#include "runtime/failure.h"
#include "runtime/files.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <optional>
#include <string>

namespace desk {
namespace {

namespace fs = std::filesystem;

class terminal_link_test : public testing::Test {
protected:
    void SetUp() override {
        const std::string test = testing::UnitTest::GetInstance()->current_test_info()->name();
        directory = fs::temp_directory_path() / ("velotrace_" + test);
        fs::remove_all(directory);
        fs::create_directory(directory);
    }
    void TearDown() override { fs::remove_all(directory); }

    bool there(const std::string& name) const { return fs::exists(fs::symlink_status(directory / name)); }

    fs::path directory;
};

TEST_F(terminal_link_test, lasts_as_long_as_the_object) {
    {
        const terminal_link link(directory / "com1", "/dev/pts/90");
        EXPECT_EQ(fs::read_symlink(directory / "com1"), "/dev/pts/90");
    }
    EXPECT_FALSE(there("com1"));
}

TEST_F(terminal_link_test, replaces_an_older_link) {
    fs::create_symlink("/nowhere", directory / "com1");
    const terminal_link link(directory / "com1", "/dev/pts/90");
    EXPECT_EQ(fs::read_symlink(directory / "com1"), "/dev/pts/90");
}

TEST_F(terminal_link_test, leaves_a_link_that_leads_elsewhere_now) {
    std::optional<terminal_link> first;
    first.emplace(directory / "com1", "/dev/pts/90");
    const terminal_link second(directory / "com1", "/dev/pts/91");
    first.reset();
    EXPECT_EQ(fs::read_symlink(directory / "com1"), "/dev/pts/91");
}

TEST_F(terminal_link_test, replaces_nothing_but_links) {
    replace_whole_file(directory / "com1", "keep me");
    EXPECT_THROW(terminal_link(directory / "com1", "/dev/pts/90"), runtime_failure);
    EXPECT_EQ(read_whole_file(directory / "com1"), "keep me");
    fs::create_directory(directory / "com2");
    EXPECT_THROW(terminal_link(directory / "com2", "/dev/pts/90"), runtime_failure);
    EXPECT_THROW(terminal_link(directory / "no" / "com3", "/dev/pts/90"), runtime_failure);
}

TEST_F(terminal_link_test, knows_what_leads_to_hardware) {
    EXPECT_NO_THROW(expect_no_hardware(directory / "com1"));
    // what a simulator left that was killed
    fs::create_symlink("/dev/pts/90", directory / "com1");
    EXPECT_NO_THROW(expect_no_hardware(directory / "com1"));
    // also an adapter that is not plugged in just now
    for (const char* device : {"/dev/ttyS0", "/dev/ttyUSB90", "/dev/serial/by-id/adapter"}) {
        fs::remove(directory / "com1");
        fs::create_symlink(device, directory / "com1");
        EXPECT_THROW(expect_no_hardware(directory / "com1"), runtime_failure) << device;
    }
}

} // namespace
} // namespace desk
