#include "platform/posix_port_problem.h"

#include "support/temporary_directory.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <filesystem>

namespace desk {
namespace {

TEST(port_problem, names_the_group_that_has_the_device) {
    const device_rights rights{.owner = "root", .group = "dialout", .group_may = true};
    EXPECT_EQ(problem_of_rights(rights), "add your user to the group dialout");
}

TEST(port_problem, asks_a_new_member_of_the_group_to_log_in_again) {
    const device_rights rights{.owner = "root", .group = "dialout", .group_may = true, .listed = true};
    EXPECT_EQ(problem_of_rights(rights), "your user was added to the group dialout: log out and in again");
}

TEST(port_problem, suggests_no_useless_group) {
    EXPECT_EQ(problem_of_rights({.owner = "bob", .group = "tty"}), "the device is for the user bob alone");
    EXPECT_EQ(problem_of_rights({.owner = "root", .group = "root", .group_may = true, .group_is_root = true}),
              "the device is for the user root alone");
    EXPECT_EQ(problem_of_rights({.owner = "root", .group = "dialout", .group_may = true, .in_group = true}),
              "the device's group dialout is yours, but something else denies access");
}

TEST(port_problem, names_the_holder_of_the_port_if_known) {
    EXPECT_EQ(problem_of_holder("/dev/none", process_info{.id = 1234, .name = "velotrace", .user = "alice"}),
              "/dev/none is in use by velotrace (process 1234, user alice): close the port there");
    EXPECT_EQ(problem_of_holder("/dev/none", std::nullopt),
              "/dev/none is in use by another program: close the port there");
    const test::temporary_directory nothing_told;
    EXPECT_EQ(problem_of_opening("/dev/null", EBUSY, process_table(nothing_told.path())),
              "/dev/null is in use by another program: close the port there");
}

TEST(port_problem, names_the_user_of_the_terminal) {
    EXPECT_EQ(problem_of_terminal("/dev/none", process_info{.id = 12, .name = "bash", .user = "bob"}),
              "/dev/none is a terminal that bash (process 12, user bob) works at: choose another port");
    EXPECT_EQ(problem_of_terminal("/dev/none", std::nullopt),
              "/dev/none is the terminal that the desk was started from: choose another port");
}

TEST(port_problem, shows_no_control_characters_of_a_link) {
    const test::temporary_directory folder;
    std::filesystem::create_symlink("/dev/\x1B[31m", folder / "com1");
    EXPECT_EQ(problem_of_opening(folder / "com1", ENOENT),
              (folder / "com1").string() +
                  " leads to /dev/?[31m, which is not there: plug it in, or point the link to another device");
}

TEST(port_problem, gives_a_remedy_if_nothing_is_plugged_in) {
    EXPECT_EQ(problem_of_opening("/dev/none", ENOENT),
              "/dev/none is not there: plug the adapter in, or make a com link to it");
}

TEST(port_problem, gives_a_remedy_if_the_device_is_no_serial_port) {
    EXPECT_EQ(problem_of_use("/dev/none", "used as a serial port", EIO),
              "/dev/none can't be used as a serial port: Input/output error: choose another port");
    EXPECT_EQ(problem_of_use("/dev/none", "set to 19200,N,8,1", EINVAL),
              "/dev/none can't be set to 19200,N,8,1: Invalid argument");
    EXPECT_EQ(problem_of_file("/dev/none"), "/dev/none is not a serial port: choose another port");
}

TEST(port_problem, gives_the_systems_reason_otherwise) {
    EXPECT_EQ(problem_of_opening("/dev/none", EIO), "/dev/none can't be opened: Input/output error");
}

} // namespace
} // namespace desk
