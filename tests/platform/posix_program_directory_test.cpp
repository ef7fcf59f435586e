#include "platform/posix_program_directory.h"

#include "platform/program_directory.h"
#include "runtime/failure.h"
#include "support/expect_failure.h"
#include "support/file_size_limit.h"
#include "support/other_user.h"
#include "support/temporary_directory.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>

#include <sys/stat.h>
#include <unistd.h>

namespace desk {
namespace {

namespace fs = std::filesystem;

TEST(own_directory_of, is_in_the_users_home) {
    EXPECT_EQ(own_directory_of({.data_home = "", .home = "/home/ann"}), "/home/ann/.local/share/velotrace-desk");
}

TEST(own_directory_of, is_in_the_users_data_home) {
    EXPECT_EQ(own_directory_of({.data_home = "/data/ann", .home = "/home/ann"}), "/data/ann/velotrace-desk");
    EXPECT_EQ(own_directory_of({.data_home = "/data/ann", .home = ""}), "/data/ann/velotrace-desk");
}

TEST(own_directory_of, ignores_a_relative_data_home) {
    for (const char* data_home : {"data", "./data", "../ann", "~/data"})
        EXPECT_EQ(own_directory_of({.data_home = data_home, .home = "/home/ann"}),
                  "/home/ann/.local/share/velotrace-desk")
            << data_home;
}

TEST(user_data_directory, is_created_for_this_user_only) {
    const test::temporary_directory home;
    const char* const before = std::getenv("XDG_DATA_HOME");
    const std::string kept = before == nullptr ? "" : before;
    ::setenv("XDG_DATA_HOME", (home / "data").c_str(), 1);
    EXPECT_EQ(user_data_directory(), home / "data/velotrace-desk");
    EXPECT_EQ(fs::status(home / "data/velotrace-desk").permissions(), fs::perms::owner_all);
    if (before == nullptr)
        ::unsetenv("XDG_DATA_HOME");
    else
        ::setenv("XDG_DATA_HOME", kept.c_str(), 1);
}

TEST(own_directory_of, needs_a_home) {
    for (const char* home : {"", "home/ann"})
        EXPECT_EQ(test::failure_of([&] { own_directory_of({.data_home = "", .home = home}); }),
                  failure::path_file_access_error);
}

class installed_program : public testing::Test {
protected:
    installed_program() {
        fs::create_directories(bin());
        fs::create_directories(first_files());
        root.put("usr/share/velotrace-desk/marlo_rs232.ini", "first settings");
        root.put("usr/share/velotrace-desk/timing_pattern.ini", "first catalogue");
    }

    fs::path bin() const { return root / "usr/bin"; }
    fs::path first_files() const { return root / "usr/share/velotrace-desk"; }
    fs::path own() const { return root / "home/data/velotrace-desk"; }
    std::string own_content(const std::string& name) const { return root.content("home/data/velotrace-desk/" + name); }

    test::temporary_directory root;
};

TEST_F(installed_program, is_recognized_by_the_initial_files_beside_its_folder) {
    EXPECT_EQ(first_files_of(bin()), first_files());
    fs::rename(root / "usr/share/velotrace-desk", root / "usr/share/velotrace");
    EXPECT_EQ(first_files_of(bin()), std::nullopt);
}

TEST_F(installed_program, is_not_assumed_if_its_files_are_beside_it) {
    for (const std::string name : {"marlo_rs232.ini", "timing_pattern.ini"}) {
        root.put("usr/bin/" + name, "portable");
        EXPECT_EQ(first_files_of(bin()), std::nullopt) << name;
        fs::remove(bin() / name);
    }
    EXPECT_NE(first_files_of(bin()), std::nullopt);
}

TEST_F(installed_program, gets_a_folder_for_this_user_only_with_both_files) {
    prepare_own_directory(own(), first_files());
    EXPECT_EQ(own_content("marlo_rs232.ini"), "first settings");
    EXPECT_EQ(own_content("timing_pattern.ini"), "first catalogue");
    for (const char* folder : {"home", "home/data", "home/data/velotrace-desk"})
        EXPECT_EQ(fs::status(root / folder).permissions(), fs::perms::owner_all) << folder;
}

TEST_F(installed_program, gives_the_user_what_root_creates) {
    if (!test::can_be_others()) GTEST_SKIP() << "only root can be other users";
    fs::create_directory(root / "home");
    ASSERT_EQ(::chown((root / "home").c_str(), test::alice.number, test::alice.group), 0);
    prepare_own_directory(own(), first_files());
    for (const fs::path& created :
         {own().parent_path(), own(), own() / "marlo_rs232.ini", own() / "timing_pattern.ini"}) {
        struct stat status {};
        ASSERT_EQ(::lstat(created.c_str(), &status), 0);
        EXPECT_EQ(status.st_uid, test::alice.number) << created;
        EXPECT_EQ(status.st_gid, test::alice.group) << created;
    }
}

TEST_F(installed_program, keeps_the_users_files) {
    prepare_own_directory(own(), first_files());
    root.put("home/data/velotrace-desk/marlo_rs232.ini", "my settings");
    fs::remove(own() / "timing_pattern.ini");
    prepare_own_directory(own(), first_files());
    EXPECT_EQ(own_content("marlo_rs232.ini"), "my settings");
    EXPECT_EQ(own_content("timing_pattern.ini"), "first catalogue");
}

TEST_F(installed_program, keeps_a_dangling_link) {
    fs::create_directories(own());
    fs::create_symlink(root / "disk/catalogue.ini", own() / "timing_pattern.ini");
    prepare_own_directory(own(), first_files());
    EXPECT_TRUE(fs::is_symlink(own() / "timing_pattern.ini"));
    EXPECT_FALSE(root.has("disk"));
}

TEST_F(installed_program, can_have_its_initial_files_in_the_users_data_home) {
    prepare_own_directory(first_files(), first_files());
    EXPECT_EQ(root.content("usr/share/velotrace-desk/marlo_rs232.ini"), "first settings");
}

TEST_F(installed_program, reports_a_folder_that_cannot_be_created) {
    for (const std::string in_the_way : {"home", "home/data", "home/data/velotrace-desk"}) {
        fs::remove_all(root / "home");
        fs::create_directories((root / in_the_way).parent_path());
        root.put(in_the_way, "a file");
        EXPECT_EQ(test::failure_of([&] { prepare_own_directory(own(), first_files()); }),
                  failure::path_file_access_error)
            << in_the_way;
        EXPECT_EQ(root.content(in_the_way), "a file");
    }
}

TEST_F(installed_program, leaves_no_partial_file_on_a_full_disk) {
    {
        const test::file_size_limit full(4);
        EXPECT_EQ(test::failure_of([&] { prepare_own_directory(own(), first_files()); }),
                  failure::path_file_access_error);
    }
    EXPECT_TRUE(fs::is_empty(own()));
    prepare_own_directory(own(), first_files());
    EXPECT_EQ(own_content("marlo_rs232.ini"), "first settings");
}

TEST_F(installed_program, reports_a_missing_initial_file) {
    fs::remove(first_files() / "timing_pattern.ini");
    EXPECT_EQ(test::failure_of([&] { prepare_own_directory(own(), first_files()); }), failure::file_not_found);
}

} // namespace
} // namespace desk
