#include "edid/file_number_1.h"

#include "support/edid_fixture.h"
#include "support/expect_failure.h"
#include "support/temporary_directory.h"

#include <gtest/gtest.h>

#include <string>

namespace desk {
namespace {

using test::failure_of;

class file_number_1_test : public testing::Test {
protected:
    std::string path(const std::string& name) const { return utf8_from_path(directory / name); }
    /// What each of its three openings of a file ends in.
    void expect_failures(const std::string& name, std::optional<failure> expected) {
        EXPECT_EQ(failure_of([&] { number.replace(path(name), "replaced"); }), expected);
        EXPECT_EQ(failure_of([&] { number.write_over(path(name), "over"); }), expected);
        EXPECT_EQ(failure_of([&] { number.open_for_reading(path(name)); }), expected);
    }

    test::temporary_directory directory;
    file_number_1 number;
};

TEST_F(file_number_1_test, reads_the_contents_of_a_file) {
    const std::string content("a\r\n\0\xFF", 5);
    directory.put("ä.bin", content);
    EXPECT_EQ(number.open_for_reading(path("ä.bin")), content);
}

TEST_F(file_number_1_test, is_taken_from_opening_to_closing) {
    directory.put("a", "as it was");
    directory.put("b", "x");
    number.open_for_reading(path("b"));
    expect_failures("a", failure::file_already_open);
    EXPECT_EQ(directory.content("a"), "as it was");
    number.close();
    expect_failures("a", std::nullopt);
}

TEST_F(file_number_1_test, is_free_after_an_unreadable_file) {
    std::filesystem::create_directory(directory / "folder");
    directory.put("a", "x");
    EXPECT_EQ(failure_of([&] { number.open_for_reading(path("none")); }), failure::file_not_found);
    EXPECT_EQ(failure_of([&] { number.open_for_reading(path("folder")); }), failure::path_file_access_error);
    expect_failures("a", std::nullopt);
}

TEST_F(file_number_1_test, is_free_after_a_write_and_after_a_failed_write) {
    directory.put("a", "x");
    EXPECT_EQ(failure_of([&] { number.replace(path("none/a"), "x"); }), failure::path_file_access_error);
    EXPECT_EQ(failure_of([&] { number.write_over(path("none/a"), "x"); }), failure::path_file_access_error);
    expect_failures("a", std::nullopt);
}

TEST_F(file_number_1_test, replaces_a_file_whole) {
    directory.put("ä", "a longer text");
    number.replace(path("ä"), "short");
    EXPECT_EQ(directory.content("ä"), "short");
}

TEST_F(file_number_1_test, writes_over_a_file_and_keeps_its_tail) {
    directory.put("ä", "a longer text");
    number.write_over(path("ä"), "short");
    EXPECT_EQ(directory.content("ä"), "shortger text");
}

} // namespace
} // namespace desk
