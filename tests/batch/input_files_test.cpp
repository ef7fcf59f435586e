#include "batch/input_files.h"

#include "runtime/files.h"
#include "support/temporary_directory.h"

#include <gtest/gtest.h>

#ifndef _WIN32
#include <sys/resource.h>
#endif

#include <filesystem>
#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

namespace desk::batch {
namespace {

using strings = std::vector<std::string>;

class input_files_test : public testing::Test {
protected:
    void put(std::initializer_list<const char*> names) {
        for (const char* name : names) {
            std::filesystem::create_directories((directory / name).parent_path());
            directory.put(name, "x");
        }
    }
    std::string path(const std::string& name) const { return utf8_from_path(directory / name); }
    const input_files& find(const strings& names) {
        strings paths;
        for (const std::string& name : names)
            paths.push_back(path(name));
        found = find_input_files(paths);
        return found;
    }
    /// The files found, without the test's directory, with the same separator on all systems.
    strings paths_found() const {
        strings paths;
        for (const input_file& file : found.files) {
            const std::u8string name = path_from_utf8(found.path_of(file)).generic_u8string();
            paths.push_back(std::string(name.begin(), name.end()).substr(path("").size()));
        }
        return paths;
    }
    strings report_names() const {
        strings names;
        for (const input_file& file : found.files)
            names.push_back((file.shares_name ? "shared: " : "") + found.report_name(file));
        return names;
    }

    test::temporary_directory directory;
    input_files found;
};

TEST_F(input_files_test, are_those_named_in_their_order) {
    put({"b.hex", "a.bin"});
    find({"b.hex", "a.bin", "missing.ddc", "a.txt"});
    EXPECT_EQ(paths_found(), (strings{"b.hex", "a.bin", "missing.ddc", "a.txt"}));
    EXPECT_TRUE(found.problems.empty());
}

TEST_F(input_files_test, can_be_in_the_current_folder) {
    found = find_input_files({"a.hex"});
    EXPECT_EQ(found.path_of(found.files.at(0)), "a.hex");
}

TEST_F(input_files_test, are_those_of_known_kinds_in_a_folder_in_the_order_of_their_names) {
    put({"in/c.ddc", "in/B.hex", "in/a.bin", "in/edid", "in/a.txt", "in/.hidden", "in/.hidden.hex", "in/deeper/d.hex",
         "other.hex"});
    find({"in"});
    EXPECT_EQ(paths_found(), (strings{"in/B.hex", "in/a.bin", "in/c.ddc", "in/edid"}));
    EXPECT_TRUE(found.problems.empty());
}

TEST_F(input_files_test, keep_their_first_place_if_a_folder_is_named_again) {
    find({"x/1.hex", "y/2.hex", "y/3.hex", "x/4.hex", "y/5.hex"});
    EXPECT_EQ(paths_found(), (strings{"x/1.hex", "y/2.hex", "y/3.hex", "x/4.hex", "y/5.hex"}));
}

TEST_F(input_files_test, keep_the_name_of_a_folder_once) {
    put({"in/a.hex", "in/b.hex", "in/c.hex"});
    find({"in"});
    EXPECT_EQ(found.folders.size(), 1U);
    find({"in/a.hex", "in/b.hex", "in/c.hex"});
    EXPECT_EQ(found.folders.size(), 1U);
    EXPECT_EQ(paths_found(), (strings{"in/a.hex", "in/b.hex", "in/c.hex"}));
}

TEST_F(input_files_test, are_reported_missing_in_a_folder_without_any) {
    put({"empty/a.txt", "in/a.hex"});
    find({"empty", "in"});
    EXPECT_EQ(paths_found(), strings{"in/a.hex"});
    EXPECT_EQ(found.problems, strings{path("empty") + ": there is no EDID file in this folder."});
}

#ifndef _WIN32
TEST_F(input_files_test, can_be_links_in_a_folder) {
    put({"in/a.hex", "deep/b.hex"});
    std::filesystem::create_symlink(directory / "in/a.hex", directory / "in/link.hex");
    std::filesystem::create_symlink(directory / "nowhere", directory / "in/lost.hex");
    std::filesystem::create_directory_symlink(directory / "deep", directory / "in/deep");
    find({"in"});
    EXPECT_EQ(paths_found(), (strings{"in/a.hex", "in/link.hex", "in/lost.hex"}));
}

TEST_F(input_files_test, are_reported_missing_in_an_unreadable_folder) {
    put({"in/a.hex"});
    rlimit before{};
    getrlimit(RLIMIT_NOFILE, &before);
    rlimit none_more = before;
    none_more.rlim_cur = 0;
    setrlimit(RLIMIT_NOFILE, &none_more);
    find({"in", "b.hex"});
    setrlimit(RLIMIT_NOFILE, &before);
    EXPECT_EQ(paths_found(), strings{"b.hex"});
    ASSERT_EQ(found.problems.size(), 1U);
    EXPECT_TRUE(found.problems.at(0).starts_with(path("in") + ": the folder can't be read: ")) << found.problems.at(0);
}
#endif

using report_names_test = input_files_test;

TEST_F(report_names_test, are_without_the_extension) {
    find({"a.hex", "b.c.bin", "edid", ".hidden", "x.txt"});
    EXPECT_EQ(report_names(), (strings{"a", "b.c", "edid", ".hidden", "x"}));
}

TEST_F(report_names_test, keep_the_extension_if_nothing_else_differs) {
    find({"a.hex", "b.hex", "a.bin", "a.ddc", "edid", "edid.hex"});
    EXPECT_EQ(report_names(), (strings{"a.hex", "b", "a.bin", "a.ddc", "edid", "edid.hex"}));
}

TEST_F(report_names_test, are_compared_without_regard_to_case) {
    find({"Monitor.hex", "monitor.bin"});
    EXPECT_EQ(report_names(), (strings{"Monitor.hex", "monitor.bin"}));
}

#ifdef _WIN32
TEST_F(report_names_test, are_compared_without_regard_to_case_beyond_ascii) {
    find({"x/\xC3\x84.hex", "y/\xC3\xA4.hex"});
    EXPECT_EQ(report_names(), (strings{"x_\xC3\x84", "y_\xC3\xA4"}));
}
#endif

TEST_F(report_names_test, begin_with_the_folder_if_files_in_different_folders_have_one_name) {
    find({"x/a.hex", "b.hex", "y/a.hex", "z/A.HEX"});
    EXPECT_EQ(report_names(), (strings{"x_a", "b", "y_a", "z_A"}));
    find({"card0-DP-1/edid", "card0-DP-2/edid"});
    EXPECT_EQ(report_names(), (strings{"card0-DP-1_edid", "card0-DP-2_edid"}));
}

TEST_F(report_names_test, begin_with_as_many_folders_as_are_needed) {
    find({"1/x/a.hex", "2/x/a.hex", "2/y/a.hex"});
    EXPECT_EQ(report_names(), (strings{"1_x_a", "2_x_a", "y_a"}));
}

TEST_F(report_names_test, differ_from_a_name_that_looks_like_a_folder) {
    find({"1/x/a.hex", "1/y/a.hex", "2/x_a.hex"});
    EXPECT_EQ(report_names(), (strings{"1_x_a", "y_a", "2_x_a"}));
}

TEST_F(report_names_test, take_no_folder_that_the_command_line_does_not_name) {
    found = find_input_files({"a.hex", "./a.hex", "../a.hex", "x/a.hex"});
    EXPECT_EQ(report_names(), (strings{"shared: a", "shared: a", "shared: a", "x_a"}));
}

TEST_F(report_names_test, are_shared_by_a_file_that_is_named_twice) {
    find({"a.hex", "a.hex"});
    EXPECT_EQ(report_names(), (strings{"shared: a", "shared: a"}));
}

TEST_F(report_names_test, can_be_shared_with_a_name_that_lost_its_extension) {
    find({"a.hex.bin", "a.hex", "a.bin"});
    EXPECT_EQ(report_names(), (strings{"shared: a.hex", "shared: a.hex", "a.bin"}));
}

} // namespace
} // namespace desk::batch
