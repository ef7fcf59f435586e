#include "generator/terminal_link.h"

#include "runtime/failure.h"
#include "runtime/files.h"
#include "support/expect_failure.h"
#include "support/temporary_directory.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <optional>
#include <string>
#include <system_error>
#include <thread>

namespace desk {
namespace {

namespace fs = std::filesystem;

class terminal_link_test : public testing::Test {
protected:
    bool there(const std::string& name) const { return fs::exists(fs::symlink_status(folder / name)); }

    test::temporary_directory folder;
    fs::path link = folder / "com1";
};

TEST_F(terminal_link_test, lasts_as_long_as_the_object) {
    {
        const terminal_link mine(link, "/dev/pts/90");
        EXPECT_EQ(fs::read_symlink(link), "/dev/pts/90");
    }
    EXPECT_FALSE(there("com1"));
}

TEST_F(terminal_link_test, replaces_what_a_killed_simulator_left) {
    fs::create_symlink("/dev/pts/89", link);
    const terminal_link mine(link, "/dev/pts/90");
    EXPECT_EQ(fs::read_symlink(link), "/dev/pts/90");
    EXPECT_EQ(folder.file_count(), 1U);
}

TEST_F(terminal_link_test, leaves_a_link_that_leads_elsewhere_now) {
    std::optional<terminal_link> first;
    first.emplace(link, "/dev/pts/90");
    const terminal_link second(link, "/dev/pts/91");
    first.reset();
    EXPECT_EQ(fs::read_symlink(link), "/dev/pts/91");
}

TEST_F(terminal_link_test, replaces_nothing_but_links) {
    replace_whole_file(link, "keep me");
    EXPECT_THROW(terminal_link(link, "/dev/pts/90"), runtime_failure);
    EXPECT_EQ(read_whole_file(link), "keep me");
    fs::create_directory(folder / "com2");
    EXPECT_THROW(terminal_link(folder / "com2", "/dev/pts/90"), runtime_failure);
    EXPECT_THROW(terminal_link(folder / "no" / "com3", "/dev/pts/90"), runtime_failure);
}

TEST_F(terminal_link_test, replaces_no_link_of_the_operator) {
    fs::create_directory(folder / "lab");
    fs::create_symlink("/dev/pts/90", folder / "lab" / "generator");
    // also an adapter that is not plugged in just now, and a chain that ends at a pseudo terminal
    for (const fs::path& target :
         {fs::path("/dev/ttyS90"), fs::path("/dev/serial/by-id/adapter"), fs::path("/nowhere"), fs::path("lab"),
          folder / "lab", folder / "lab" / "generator", fs::path("lab/generator"), fs::path("/dev/pts"),
          fs::path("/dev/pts/"), fs::path("/dev/pts/ptmx"), fs::path("/dev/pts/../ttyS90"), fs::path("dev/pts/3")}) {
        fs::remove(link);
        fs::create_symlink(target, link);
        const std::string sentence = test::sentence_of([&] { terminal_link(link, "/dev/pts/90"); });
        EXPECT_NE(sentence.find("leads to " + target.string() + " "), std::string::npos) << sentence;
        EXPECT_EQ(fs::read_symlink(link), target);
        EXPECT_EQ(folder.file_count(), 2U) << target;
    }
}

TEST_F(terminal_link_test, leaves_a_link_that_the_operator_puts_there_at_any_moment) {
    for (int i = 0; i < 300; ++i) {
        fs::remove(link);
        std::thread simulator([&] {
            for (int again = 0; again < 5; ++again) {
                try {
                    const terminal_link mine(link, "/dev/pts/90");
                } catch (const runtime_failure&) {
                    return; // the operator was quicker
                }
            }
        });
        std::this_thread::sleep_for(std::chrono::microseconds(i));
        fs::create_symlink("/dev/ttyS90", folder / "operator");
        fs::rename(folder / "operator", link);
        simulator.join();
        std::error_code error;
        ASSERT_EQ(fs::read_symlink(link, error), "/dev/ttyS90") << i;
        ASSERT_EQ(folder.file_count(), 1U) << i;
    }
}

TEST_F(terminal_link_test, belongs_to_one_of_two_simulators_that_start_at_once) {
    for (int i = 0; i < 300; ++i) {
        std::optional<terminal_link> first;
        std::optional<terminal_link> second;
        std::thread other([&] { second.emplace(link, "/dev/pts/91"); });
        first.emplace(link, "/dev/pts/90");
        other.join();
        const bool mine = fs::read_symlink(link) == "/dev/pts/90";
        (mine ? second : first).reset();
        ASSERT_EQ(fs::read_symlink(link), mine ? "/dev/pts/90" : "/dev/pts/91");
        ASSERT_EQ(folder.file_count(), 1U);
        (mine ? first : second).reset();
        ASSERT_EQ(folder.file_count(), 0U);
    }
}

} // namespace
} // namespace desk
