#include "cli/catalogue_rows.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace desk::cli {
namespace {

class catalogue_rows : public testing::Test {
protected:
    catalogue_rows() { fill({"[01] 640x480 60Hz", "[02] 640x480 75Hz", "[03] 1080p", "[04] 1080p RB", "Grey [5]"}); }

    void fill(const std::vector<std::string>& names) {
        rows.clear();
        for (const std::string& name : names)
            rows.add_row(name);
    }
    int row(const std::string& word) { return row_of(rows, word, "timing"); }
    std::string problem_of(const std::string& word) {
        try {
            row(word);
        } catch (const command_failure& f) {
            EXPECT_EQ(f.status(), outcome::misused) << word;
            return f.what();
        }
        return "";
    }

    list_view rows;
};

TEST_F(catalogue_rows, are_found_by_number) {
    EXPECT_EQ(row("1"), 1);
    EXPECT_EQ(row("5"), 5);
    EXPECT_EQ(row("003"), 3);
    EXPECT_EQ(row(" 3 "), 3);
}

TEST_F(catalogue_rows, have_no_other_numbers) {
    for (const std::string word : {"0", "6", "-1", "480", "2147483647"})
        EXPECT_EQ(problem_of(word), "there is no timing " + word + ": the rows are 1 to 5");
    // too large for a number
    EXPECT_NE(problem_of("99999999999"), "");
}

TEST_F(catalogue_rows, are_found_by_their_whole_name) {
    EXPECT_EQ(row("[01] 640x480 60Hz"), 1);
    EXPECT_EQ(row("Grey [5]"), 5);
}

TEST_F(catalogue_rows, are_found_by_their_name_without_the_number) {
    EXPECT_EQ(row("640x480 75Hz"), 2);
    // the whole name of one row is a part of another's
    EXPECT_EQ(row("1080p"), 3);
    EXPECT_EQ(row("1080p RB"), 4);
}

TEST_F(catalogue_rows, are_found_by_a_part_that_only_one_has) {
    EXPECT_EQ(row("60Hz"), 1);
    EXPECT_EQ(row("[02]"), 2);
    EXPECT_EQ(row("RB"), 4);
    EXPECT_EQ(row("[5]"), 5);
}

TEST_F(catalogue_rows, are_found_without_regard_to_case_and_outer_spaces) {
    EXPECT_EQ(row("640X480 60hz"), 1);
    EXPECT_EQ(row("  gREY "), 5);
}

TEST_F(catalogue_rows, are_all_named_if_a_part_fits_several) {
    EXPECT_EQ(problem_of("640x480"), "\"640x480\" fits more than one timing: [01] 640x480 60Hz, [02] 640x480 75Hz");
    EXPECT_EQ(problem_of("z"), "\"z\" fits more than one timing: [01] 640x480 60Hz, [02] 640x480 75Hz");
}

TEST_F(catalogue_rows, are_named_up_to_the_eighth) {
    fill(std::vector<std::string>(8, "same"));
    EXPECT_EQ(problem_of("same"), "\"same\" fits more than one timing: same, same, same, same, same, same, same, same");
    fill(std::vector<std::string>(9, "same"));
    EXPECT_EQ(problem_of("same"),
              "\"same\" fits more than one timing: same, same, same, same, same, same, same, same, ...");
}

TEST_F(catalogue_rows, need_a_word_that_fits) {
    EXPECT_EQ(problem_of("4K"), "no timing has \"4K\" in its name");
    EXPECT_EQ(problem_of(""), "a timing needs a row or a name");
    EXPECT_EQ(problem_of("  "), "a timing needs a row or a name");
}

TEST_F(catalogue_rows, can_be_missing) {
    fill({});
    EXPECT_EQ(problem_of("x"), "no timing has \"x\" in its name");
    EXPECT_NE(problem_of("1"), "");
}

TEST_F(catalogue_rows, are_shown_with_number_and_name) {
    EXPECT_EQ(row_object(rows, 3).dump(), "{\"row\":3,\"name\":\"[03] 1080p\"}");
    EXPECT_EQ(row_line(rows, 3), "  3  [03] 1080p\n");
    fill(std::vector<std::string>(100, "same"));
    EXPECT_EQ(row_line(rows, 10), " 10  same\n");
    EXPECT_EQ(row_line(rows, 100), "100  same\n");
}

} // namespace
} // namespace desk::cli
