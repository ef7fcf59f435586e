#include "runtime/files.h"

#include "support/expect_failure.h"
#include "support/file_size_limit.h"
#include "support/protected_folder.h"
#include "support/temporary_directory.h"

#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <vector>

namespace desk {
namespace {

using test::failure_of;
using test::sentence_of;
using test::temporary_directory;

void make_two_minutes_old(const std::filesystem::path& file) {
    std::filesystem::last_write_time(file, std::filesystem::file_time_type::clock::now() - std::chrono::minutes(2));
}

void put_two_minutes_ago(const temporary_directory& directory, const std::string& name) {
    directory.put(name, "half of a f");
    make_two_minutes_old(directory / name);
}

TEST(read_whole_file, returns_every_byte) {
    const temporary_directory directory;
    const std::string content("a\r\nb\n\0\xFF\x1A end", 12);
    directory.put("data", content);
    EXPECT_EQ(read_whole_file(directory / "data"), content);
}

TEST(read_whole_file, returns_nothing_for_an_empty_file) {
    const temporary_directory directory;
    directory.put("empty", "");
    EXPECT_EQ(read_whole_file(directory / "empty"), "");
}

TEST(read_whole_file, fails_for_a_directory) {
    const temporary_directory directory;
    EXPECT_EQ(failure_of([&] { read_whole_file(directory.path()); }), failure::path_file_access_error);
}

TEST(read_whole_file, accepts_up_to_16_mb) {
    const temporary_directory directory;
    directory.put("file", "x");
    std::filesystem::resize_file(directory / "file", longest_file);
    EXPECT_EQ(read_whole_file(directory / "file").size(), 16U * 1024 * 1024);
    std::filesystem::resize_file(directory / "file", longest_file + 1);
    EXPECT_EQ(sentence_of([&] { read_whole_file(directory / "file"); }),
              "the file " + utf8_from_path(directory / "file") + " can't be read: it is longer than 16 MB.");
}

TEST(read_whole_file, fails_if_there_is_no_file_and_names_it) {
    const temporary_directory directory;
    EXPECT_EQ(failure_of([&] { read_whole_file(directory / "none.ini"); }), failure::file_not_found);
    EXPECT_NE(sentence_of([&] { read_whole_file(directory / "none.ini"); }).find("none.ini"), std::string::npos);
}

TEST(replace_whole_file, creates_a_file_with_these_bytes) {
    const temporary_directory directory;
    const std::string content("1\r\n\0\xE4", 5);
    replace_whole_file(directory / "new.ini", content);
    EXPECT_EQ(directory.content("new.ini"), content);
}

TEST(replace_whole_file, removes_the_old_content_and_leaves_no_second_file) {
    const temporary_directory directory;
    directory.put("old.ini", "a long text that stood here before");
    replace_whole_file(directory / "old.ini", "short");
    EXPECT_EQ(directory.content("old.ini"), "short");
    EXPECT_EQ(directory.file_count(), 1U);
}

#ifndef _WIN32
TEST(replace_whole_file, keeps_a_link) {
    const temporary_directory directory;
    directory.put("real.ini", "old");
    std::filesystem::create_symlink(directory / "real.ini", directory / "link.ini");
    replace_whole_file(directory / "link.ini", "new");
    EXPECT_TRUE(std::filesystem::is_symlink(directory / "link.ini"));
    EXPECT_EQ(directory.content("real.ini"), "new");
}
#endif

TEST(replace_whole_file, fails_in_a_missing_directory) {
    const temporary_directory directory;
    EXPECT_EQ(failure_of([&] { replace_whole_file(directory / "none/file.ini", "x"); }),
              failure::path_file_access_error);
}

TEST(replace_whole_file, changes_nothing_if_it_fails) {
    const temporary_directory directory;
    std::filesystem::create_directory(directory / "taken");
    directory.put("taken/inside", "kept");
    EXPECT_EQ(failure_of([&] { replace_whole_file(directory / "taken", "x"); }), failure::path_file_access_error);
    EXPECT_EQ(directory.content("taken/inside"), "kept");
    EXPECT_EQ(directory.file_count(), 1U);
}

#ifndef _WIN32
TEST(replace_whole_file, keeps_the_old_file_on_a_full_disk) {
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
#endif

TEST(write_over_file, creates_a_file_with_these_bytes) {
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

#ifndef _WIN32
TEST(write_over_file, writes_to_the_target_of_a_link) {
    const temporary_directory directory;
    directory.put("real.bin", "old content");
    std::filesystem::create_symlink(directory / "real.bin", directory / "link.bin");
    write_over_file(directory / "link.bin", "new");
    EXPECT_TRUE(std::filesystem::is_symlink(directory / "link.bin"));
    EXPECT_EQ(directory.content("real.bin"), "new content");
}
#endif

TEST(write_over_file, fails_if_no_file_can_exist) {
    const temporary_directory directory;
    directory.put("file", "no folder");
    for (const char* name : {"none/a.bin", "file/a.bin", ""})
        EXPECT_EQ(failure_of([&] { write_over_file(directory / name, "x"); }), failure::path_file_access_error) << name;
    EXPECT_EQ(directory.content("file"), "no folder");
}

#ifndef _WIN32
TEST(write_over_file, keeps_the_old_file_on_a_full_disk) {
    const temporary_directory directory;
    directory.put("old.bin", std::string(1000, 'o'));
    const test::file_size_limit disk_is_full(100);
    EXPECT_EQ(failure_of([&] { write_over_file(directory / "old.bin", std::string(500, 'n')); }),
              failure::path_file_access_error);
    EXPECT_EQ(directory.content("old.bin"), std::string(1000, 'o'));
    EXPECT_EQ(directory.file_count(), 1U);
}
#endif

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

TEST(replace_whole_file, removes_leftovers_of_killed_programs) {
    const temporary_directory directory;
    for (const char* left : {"velotrace00000000.new", "velotrace1A2B3C4D.new"})
        put_two_minutes_ago(directory, left);
    replace_whole_file(directory / "settings.ini", "new");
    EXPECT_EQ(directory.file_count(), 1U);
}

TEST(replace_whole_file, keeps_a_file_that_another_program_may_be_writing) {
    const temporary_directory directory;
    directory.put("velotrace1A2B3C4D.new", "half of a f");
    replace_whole_file(directory / "settings.ini", "new");
    EXPECT_EQ(directory.content("velotrace1A2B3C4D.new"), "half of a f");
}

#ifndef _WIN32
TEST(replace_whole_file, keeps_old_files_with_similar_names) {
    const temporary_directory directory;
    const std::vector<std::string> others = {
        "velotrace1A2B3C4D",     "velotrace1A2B3C4.new",  "velotrace1A2B3C4DE.new", "velotrace1a2b3c4d.new",
        "velotrace1A2B3C4G.new", "Velotrace1A2B3C4D.new", "velotrace1A2B3C4D.new~", "1A2B3C4D.new"};
    for (const std::string& name : others)
        put_two_minutes_ago(directory, name);
    std::filesystem::create_directory(directory / "velotrace00000000.new");
    make_two_minutes_old(directory / "velotrace00000000.new");
    replace_whole_file(directory / "settings.ini", "new");
    for (const std::string& name : others)
        EXPECT_TRUE(directory.has(name)) << name;
    EXPECT_EQ(directory.file_count(), others.size() + 2);
}
#endif

TEST(replace_whole_file, does_not_scan_when_thousands_are_written) {
    const temporary_directory directory;
    put_two_minutes_ago(directory, "velotrace1A2B3C4D.new");
    replace_whole_file(directory / "report.txt", "new", outlives::killed_program);
    EXPECT_EQ(directory.file_count(), 2U);
    remove_left_behind(directory.path());
    EXPECT_EQ(directory.file_count(), 1U);
}

TEST(remove_left_behind, ignores_a_missing_folder) {
    const temporary_directory directory;
    EXPECT_NO_THROW(remove_left_behind(directory / "none"));
}

#ifndef _WIN32
TEST(replace_whole_file, writes_a_writable_file_in_a_protected_folder) {
    const temporary_directory directory;
    directory.put("old.hex", "a long text that stood here before");
    directory.put("short.hex", "x");
    const test::protected_folder closed(directory.path());
    replace_whole_file(directory / "old.hex", "short");
    replace_whole_file(directory / "short.hex", "a longer text");
    EXPECT_EQ(directory.content("old.hex"), "short");
    EXPECT_EQ(directory.content("short.hex"), "a longer text");
    EXPECT_EQ(failure_of([&] { replace_whole_file(directory / "new.hex", "x"); }), failure::path_file_access_error);
    EXPECT_EQ(directory.file_count(), 2U);
}

TEST(replace_whole_file, keeps_the_old_file_there_on_a_full_disk) {
    const temporary_directory directory;
    const std::string old(200, 'o');
    directory.put("old.hex", old);
    const test::protected_folder closed(directory.path());
    const test::file_size_limit disk_is_full(300);
    EXPECT_EQ(failure_of([&] { replace_whole_file(directory / "old.hex", std::string(500, 'x')); }),
              failure::path_file_access_error);
    EXPECT_EQ(directory.content("old.hex"), old);
}
#endif

TEST(paths, convert_back_to_the_same_text) {
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
