#include "runtime/files.h"

#include "support/expect_failure.h"
#include "support/file_size_limit.h"
#include "support/temporary_directory.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace desk {
namespace {

using test::failure_of;
using test::temporary_directory;

TEST(read_whole_file, gives_every_byte) {
    const temporary_directory directory;
    const std::string content("a\r\nb\n\0\xFF\x1A end", 12);
    directory.put("data", content);
    EXPECT_EQ(read_whole_file(directory / "data"), content);
}

TEST(read_whole_file, gives_nothing_for_an_empty_file) {
    const temporary_directory directory;
    directory.put("empty", "");
    EXPECT_EQ(read_whole_file(directory / "empty"), "");
}

TEST(read_whole_file, fails_where_there_is_no_file) {
    const temporary_directory directory;
    EXPECT_EQ(failure_of([&] { read_whole_file(directory / "none"); }), failure::file_not_found);
}

TEST(read_whole_file, fails_for_a_directory) {
    const temporary_directory directory;
    EXPECT_EQ(failure_of([&] { read_whole_file(directory.path()); }), failure::path_file_access_error);
}

TEST(read_whole_file, fails_for_more_bytes_than_are_wanted) {
    const temporary_directory directory;
    directory.put("file", std::string(20000, 'x'));
    EXPECT_EQ(read_whole_file(directory / "file", 20000).size(), 20000U);
    EXPECT_EQ(failure_of([&] { read_whole_file(directory / "file", 19999); }), failure::path_file_access_error);
}

TEST(read_whole_file, tells_which_file_it_was) {
    const temporary_directory directory;
    try {
        read_whole_file(directory / "none.ini");
        FAIL() << "nothing was thrown";
    } catch (const runtime_failure& f) {
        EXPECT_NE(f.sentence().find("none.ini"), std::string::npos);
    }
}

TEST(replace_whole_file, makes_a_file_with_these_bytes) {
    const temporary_directory directory;
    const std::string content("1\r\n\0\xE4", 5);
    replace_whole_file(directory / "new.ini", content);
    EXPECT_EQ(directory.content("new.ini"), content);
}

TEST(replace_whole_file, leaves_nothing_of_the_old_file_and_no_second_file) {
    const temporary_directory directory;
    directory.put("old.ini", "a long text that stood here before");
    replace_whole_file(directory / "old.ini", "short");
    EXPECT_EQ(directory.content("old.ini"), "short");
    EXPECT_EQ(directory.file_count(), 1U);
}

TEST(replace_whole_file, leaves_a_link_a_link) {
    const temporary_directory directory;
    directory.put("real.ini", "old");
    std::filesystem::create_symlink(directory / "real.ini", directory / "link.ini");
    replace_whole_file(directory / "link.ini", "new");
    EXPECT_TRUE(std::filesystem::is_symlink(directory / "link.ini"));
    EXPECT_EQ(directory.content("real.ini"), "new");
}

TEST(replace_whole_file, keeps_what_others_may_do_with_it) {
    using std::filesystem::perms;
    const temporary_directory directory;
    directory.put("old.ini", "old");
    const perms wanted = perms::owner_read | perms::owner_write | perms::group_read;
    std::filesystem::permissions(directory / "old.ini", wanted);
    replace_whole_file(directory / "old.ini", "new");
    EXPECT_EQ(std::filesystem::status(directory / "old.ini").permissions(), wanted);
}

TEST(replace_whole_file, fails_in_a_directory_that_is_not_there) {
    const temporary_directory directory;
    EXPECT_EQ(failure_of([&] { replace_whole_file(directory / "none/file.ini", "x"); }),
              failure::path_file_access_error);
}

TEST(replace_whole_file, leaves_all_as_it_was_where_it_fails) {
    const temporary_directory directory;
    std::filesystem::create_directory(directory / "taken");
    directory.put("taken/inside", "kept");
    EXPECT_EQ(failure_of([&] { replace_whole_file(directory / "taken", "x"); }), failure::path_file_access_error);
    EXPECT_EQ(directory.content("taken/inside"), "kept");
    EXPECT_EQ(directory.file_count(), 1U);
}

TEST(replace_whole_file, leaves_the_old_file_whole_where_the_disk_is_full) {
    const temporary_directory directory;
    directory.put("old.ini", "old");
    const test::file_size_limit disk_is_full(100);
    EXPECT_EQ(failure_of([&] { replace_whole_file(directory / "old.ini", std::string(500, 'x')); }),
              failure::path_file_access_error);
    EXPECT_EQ(failure_of([&] { replace_whole_file(directory / "new.ini", std::string(500, 'x')); }),
              failure::path_file_access_error);
    EXPECT_EQ(directory.content("old.ini"), "old");
    EXPECT_EQ(directory.file_count(), 1U);
}

TEST(write_over_file, makes_a_file_with_these_bytes) {
    const temporary_directory directory;
    const std::string content("1\r\n\0\xE4", 5);
    write_over_file(directory / "ä.bin", content);
    EXPECT_EQ(directory.content("ä.bin"), content);
}

TEST(write_over_file, replaces_the_first_bytes_and_keeps_the_rest) {
    const temporary_directory directory;
    directory.put("old.bin", "a long text that stood here before");
    write_over_file(directory / "old.bin", "short");
    EXPECT_EQ(directory.content("old.bin"), "shortg text that stood here before");
    write_over_file(directory / "old.bin", "");
    EXPECT_EQ(directory.content("old.bin"), "shortg text that stood here before");
    EXPECT_EQ(directory.file_count(), 1U);
}

TEST(write_over_file, grows_a_shorter_file) {
    const temporary_directory directory;
    directory.put("old.bin", "old");
    write_over_file(directory / "old.bin", "a longer text");
    EXPECT_EQ(directory.content("old.bin"), "a longer text");
}

TEST(write_over_file, writes_to_where_a_link_leads) {
    const temporary_directory directory;
    directory.put("real.bin", "old content");
    std::filesystem::create_symlink(directory / "real.bin", directory / "link.bin");
    write_over_file(directory / "link.bin", "new");
    EXPECT_TRUE(std::filesystem::is_symlink(directory / "link.bin"));
    EXPECT_EQ(directory.content("real.bin"), "new content");
}

TEST(write_over_file, fails_where_no_file_can_be) {
    const temporary_directory directory;
    directory.put("file", "no folder");
    for (const char* name : {"none/a.bin", "file/a.bin", ""})
        EXPECT_EQ(failure_of([&] { write_over_file(directory / name, "x"); }), failure::path_file_access_error) << name;
    EXPECT_EQ(directory.content("file"), "no folder");
}

TEST(write_over_file, fails_half_way_where_the_disk_is_full) {
    const temporary_directory directory;
    directory.put("old.bin", std::string(1000, 'o'));
    const test::file_size_limit disk_is_full(100);
    EXPECT_EQ(failure_of([&] { write_over_file(directory / "old.bin", std::string(500, 'n')); }),
              failure::path_file_access_error);
    EXPECT_EQ(directory.content("old.bin"), std::string(100, 'n') + std::string(900, 'o'));
}

TEST(replace_whole_file, touches_no_other_file_beside_it) {
    const temporary_directory directory;
    const std::vector<std::string> others = {"old.ini.new", "velotrace0.new", "velotrace1.new"};
    for (const std::string& name : others)
        directory.put(name, "mine");
    directory.put("old.ini", "old");
    replace_whole_file(directory / "old.ini", "new");
    EXPECT_EQ(directory.content("old.ini"), "new");
    for (const std::string& name : others)
        EXPECT_EQ(directory.content(name), "mine") << name;
    EXPECT_EQ(directory.file_count(), 4U);
}

TEST(replace_whole_file, writes_to_a_device_and_leaves_it_one) {
    EXPECT_EQ(failure_of([] { replace_whole_file("/dev/full", "new"); }), failure::path_file_access_error);
    EXPECT_TRUE(std::filesystem::is_character_file("/dev/full"));
}

TEST(paths, come_back_as_the_same_text) {
    const std::string name = "Gr\xC3\xBC\xC3\x9F"
                             "e \xE2\x82\xAC.hex";
    EXPECT_EQ(utf8_from_path(path_from_utf8(name)), name);
}

TEST(paths, lead_to_a_file_whose_name_is_not_ascii) {
    const temporary_directory directory;
    const std::string name = "\xC3\xA4.bin";
    replace_whole_file(directory / name, "x");
    EXPECT_EQ(read_whole_file(directory / name), "x");
}

} // namespace
} // namespace desk
