// The desk is killed while saving: each file has its complete old or new content.

#include "crash/robot_process.h"
#include "crash/saving_desk.h"
#include "support/access_list.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <iostream>
#include <random>
#include <regex>
#include <string>
#include <thread>

namespace desk::test {
namespace {

/// Number of kills at random moments, and their seed; a thorough run sets both.
unsigned from_environment(const char* name, unsigned otherwise) {
    const char* const text = std::getenv(name);
    return text == nullptr ? otherwise : static_cast<unsigned>(std::stoul(text));
}

std::chrono::microseconds time_of_whole_run(const saving_desk& desk) {
    desk.begin_again();
    const auto start = std::chrono::steady_clock::now();
    robot_process(desk).wait();
    return std::chrono::duration_cast<std::chrono::microseconds>(std::chrono::steady_clock::now() - start);
}

TEST(a_killed_desk, leaves_whole_files_at_random_moments) {
    const saving_desk desk(3);
    const unsigned kills = from_environment("CRASH_KILLS", 30);
    const unsigned seed = from_environment("CRASH_SEED", 1);
    std::mt19937 random(seed);
    std::uniform_int_distribution<std::int64_t> moment(0, time_of_whole_run(desk).count());
    unsigned in_the_middle = 0;
    unsigned left_behind = 0;
    for (unsigned i = 0; i < kills; ++i) {
        desk.begin_again();
        robot_process robot(desk);
        std::this_thread::sleep_for(std::chrono::microseconds(moment(random)));
        robot.kill();
        ASSERT_EQ(desk.fault_after(robot.answered()), "") << "kill " << i << " of seed " << seed;
        if (robot.answered() < desk.script().size()) ++in_the_middle;
        if (desk.left_behind() > 0) ++left_behind;
    }
    std::cout << kills << " kills: " << in_the_middle << " before the end of the script, " << left_behind
              << " between the creation of a file and its renaming\n";
    EXPECT_GT(in_the_middle, 0U);
}

TEST(a_killed_desk, leaves_whole_files_before_each_call_that_changes_one) {
    const saving_desk desk(1);
    unsigned left_behind = 0;
    unsigned calls = 0;
    for (bool ended = false; !ended; ++calls) {
        desk.begin_again();
        robot_process robot(desk, true);
        for (unsigned i = 0; i <= calls && !ended; ++i)
            ended = robot.run_to_call().empty();
        robot.kill();
        ASSERT_EQ(desk.fault_after(robot.answered()), "") << "killed before call " << calls;
        if (desk.left_behind() > 0) ++left_behind;
    }
    EXPECT_GT(left_behind, 0U);
}

TEST(a_saved_file, is_flushed_before_its_rename_and_the_name_after_it) {
    const saving_desk desk(1);
    desk.begin_again();
    robot_process robot(desk, true);
    std::string calls;
    for (std::string call = robot.run_to_call(); !call.empty(); call = robot.run_to_call())
        calls += call + ' ';
    // the HEX file, the report and the settings
    EXPECT_TRUE(std::regex_match(calls, std::regex("(create (write )+(protect )+flush rename flush ){3}"))) << calls;
}

#ifdef __linux__
TEST(a_saved_file, is_never_open_to_anybody_new) {
    const saving_desk desk(1);
    desk.begin_again();
    constexpr auto owner_alone = std::filesystem::perms::owner_read | std::filesystem::perms::owner_write;
    for (const auto& file : std::filesystem::directory_iterator(desk.folder()))
        std::filesystem::permissions(file, owner_alone);
    // new files in this folder are open to everybody
    if (!set_access_list(desk.folder(), default_list_name,
                         {{access_entry::owner, 7}, {access_entry::group, 7}, {access_entry::others, 7}}))
        GTEST_SKIP() << "this file system has no access lists";
    robot_process robot(desk, true);
    unsigned looks = 0;
    for (std::string call = robot.run_to_call(); !call.empty(); call = robot.run_to_call(), ++looks) {
        for (const auto& file : std::filesystem::directory_iterator(desk.folder()))
            ASSERT_EQ(file.status().permissions(), owner_alone) << file.path() << " before " << call;
    }
    EXPECT_GT(looks, 0U);
}
#endif

TEST(a_killed_desk, leaves_nothing_that_the_next_one_does_not_remove) {
    const saving_desk desk(1);
    desk.begin_again();
    {
        robot_process robot(desk, true);
        std::string call;
        while (call != "rename") {
            call = robot.run_to_call();
            ASSERT_NE(call, "") << "the program ends before it renames a file";
        }
    }
    ASSERT_EQ(desk.left_behind(), 1U);
    for (const auto& file : std::filesystem::directory_iterator(desk.folder()))
        std::filesystem::last_write_time(file, std::filesystem::file_time_type::clock::now() - std::chrono::minutes(2));
    robot_process(desk).wait();
    EXPECT_EQ(desk.left_behind(), 0U);
}

} // namespace
} // namespace desk::test
