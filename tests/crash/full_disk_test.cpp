// Saving on a full disk leaves the old file unchanged, and the operator can continue.

#include "crash/saving_desk.h"
#include "support/file_size_limit.h"
#include "support/robot_at_hand.h"

#include <gtest/gtest.h>

#include <string>

namespace desk::test {
namespace {

TEST(a_full_disk, leaves_the_old_files_whole) {
    const saving_desk desk(1);
    desk.begin_again();
    const file_size_limit disk_is_full(5);
    robot_at_hand robot(desk.folder());
    for (const std::string& line : desk.script()) {
        EXPECT_EQ(robot.answer(line).substr(0, 2), "ok") << line;
        ASSERT_EQ(desk.fault_after(0), "") << line;
        ASSERT_EQ(desk.left_behind(), 0U) << line;
    }
    EXPECT_EQ(robot.answer("boxes").find("critical"), std::string::npos) << "a failed save is not reported";
}

} // namespace
} // namespace desk::test
