#include "cli/autorun_csv.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <vector>

namespace desk::cli {
namespace {

using steps = std::vector<autorun_step>;

const autorun_limits limits{32, 76, 48, {1, 2, 3, 5, 10, 60}};

constexpr const char* header = "step,timing,pattern,seconds\n";

steps read(const std::string& text) { return steps_of_csv(text, limits); }

/// The message about a bad text; empty if it is accepted.
std::string problem_of(const std::string& text) {
    try {
        read(text);
    } catch (const csv_error& e) {
        return e.what();
    }
    return "";
}

/// The message about a bad line after the header.
std::string problem_of_line(const std::string& line) { return problem_of(header + line + "\n"); }

TEST(autorun_csv, has_a_header_and_a_line_for_each_step) {
    EXPECT_EQ(csv_of({{1, 7, 3, 5}, {32, 76, 48, 60}}), "step,timing,pattern,seconds\n1,7,3,5\n32,76,48,60\n");
    EXPECT_EQ(csv_of({}), header);
}

TEST(autorun_csv, is_read_back_as_it_was_written) {
    const steps written{{1, 7, 3, 5}, {2, 1, 1, 1}, {32, 76, 48, 60}};
    EXPECT_EQ(read(csv_of(written)), written);
    EXPECT_EQ(read(csv_of({})), steps{});
}

TEST(autorun_csv, keeps_the_order_of_the_lines) {
    EXPECT_EQ(read("step,timing,pattern,seconds\n9,1,1,1\n2,2,2,2\n"), (steps{{9, 1, 1, 1}, {2, 2, 2, 2}}));
}

TEST(autorun_csv, accepts_the_limits) {
    EXPECT_EQ(read("step,timing,pattern,seconds\n1,1,1,1\n32,76,48,60\n"), (steps{{1, 1, 1, 1}, {32, 76, 48, 60}}));
}

TEST(autorun_csv, accepts_any_line_ends_and_a_missing_last_one) {
    const steps expected{{1, 7, 3, 5}, {2, 8, 4, 10}};
    for (const std::string end : {"\n", "\r\n", "\r"}) {
        const std::string text = "step,timing,pattern,seconds" + end + "1,7,3,5" + end + "2,8,4,10";
        EXPECT_EQ(read(text), expected);
        EXPECT_EQ(read(text + end), expected);
    }
}

TEST(autorun_csv, accepts_a_byte_order_mark) {
    EXPECT_EQ(read(std::string("\xEF\xBB\xBF") + header + "1,7,3,5\n"), (steps{{1, 7, 3, 5}}));
}

TEST(autorun_csv, ignores_spaces_empty_lines_and_case) {
    EXPECT_EQ(read("\n  \nStep, Timing, Pattern, SECONDS \n\n 1 , 7 ,3,  5 \n\n"), (steps{{1, 7, 3, 5}}));
}

TEST(autorun_csv, counts_empty_lines_in_every_style) {
    EXPECT_EQ(problem_of("\n\nstep,timing,pattern,seconds\n\n\nx\n"),
              "line 6: a line has four numbers, separated by commas");
    EXPECT_EQ(problem_of("\r\n\r\nstep,timing,pattern,seconds\r\n\r\n\r\nx\r\n"),
              "line 6: a line has four numbers, separated by commas");
    EXPECT_EQ(problem_of("\r\rstep,timing,pattern,seconds\r\r\rx\r"),
              "line 6: a line has four numbers, separated by commas");
}

TEST(autorun_csv, needs_a_header) {
    EXPECT_EQ(problem_of(""), "line 1: the header is missing: step,timing,pattern,seconds");
    EXPECT_EQ(problem_of("1,7,3,5\n"), "line 1: the header has to be step,timing,pattern,seconds");
    EXPECT_EQ(problem_of("\nstep,timing,seconds,pattern\n"),
              "line 2: the header has to be step,timing,pattern,seconds");
    EXPECT_EQ(problem_of("step;timing;pattern;seconds\n"), "line 1: the header has to be step,timing,pattern,seconds");
}

TEST(autorun_csv, has_one_header_only) {
    EXPECT_EQ(problem_of_line("step,timing,pattern,seconds"), "line 2: \"step\" is not a number");
}

TEST(autorun_csv, needs_four_numbers) {
    for (const char* const line : {"1", "1,7,3", "1,7,3,5,", "1,7,3,5,6", "1 7 3 5", "1;7;3;5"})
        EXPECT_EQ(problem_of_line(line), "line 2: a line has four numbers, separated by commas") << line;
}

TEST(autorun_csv, needs_whole_numbers_alone) {
    EXPECT_EQ(problem_of_line("1,,3,5"), "line 2: \"\" is not a number");
    EXPECT_EQ(problem_of_line("1,7,3,"), "line 2: \"\" is not a number");
    EXPECT_EQ(problem_of_line("one,7,3,5"), "line 2: \"one\" is not a number");
    EXPECT_EQ(problem_of_line("1,+7,3,5"), "line 2: \"+7\" is not a number");
    EXPECT_EQ(problem_of_line("1,7,3.0,5"), "line 2: \"3.0\" is not a number");
    EXPECT_EQ(problem_of_line("1,7,3,5s"), "line 2: \"5s\" is not a number");
    EXPECT_EQ(problem_of_line("1,7,0x3,5"), "line 2: \"0x3\" is not a number");
    EXPECT_EQ(problem_of_line("\"1\",7,3,5"), "line 2: \"\"1\"\" is not a number");
    EXPECT_TRUE(problem_of_line(std::string("1,7\0,3,5", 8)).starts_with("line 2: "));
    EXPECT_EQ(problem_of_line("1,99999999999999999999,3,5"), "line 2: \"99999999999999999999\" is not a number");
}

TEST(autorun_csv, quotes_only_the_start_of_a_long_cell) {
    const std::string problem = problem_of_line("1," + std::string(1'000'000, 'x') + ",3,5");
    EXPECT_TRUE(problem.starts_with("line 2: \"xxx")) << problem.substr(0, 100);
    EXPECT_TRUE(problem.ends_with("is not a number"));
    EXPECT_LT(problem.size(), 100U);
}

TEST(autorun_csv, needs_rows_that_exist) {
    EXPECT_EQ(problem_of_line("0,7,3,5"), "line 2: step 0 is not in 1 to 32");
    EXPECT_EQ(problem_of_line("33,7,3,5"), "line 2: step 33 is not in 1 to 32");
    EXPECT_EQ(problem_of_line("-1,7,3,5"), "line 2: step -1 is not in 1 to 32");
    EXPECT_EQ(problem_of_line("1,0,3,5"), "line 2: timing 0 is not in 1 to 76");
    EXPECT_EQ(problem_of_line("1,77,3,5"), "line 2: timing 77 is not in 1 to 76");
    EXPECT_EQ(problem_of_line("1,7,0,5"), "line 2: pattern 0 is not in 1 to 48");
    EXPECT_EQ(problem_of_line("1,7,49,5"), "line 2: pattern 49 is not in 1 to 48");
}

TEST(autorun_csv, needs_an_interval_on_offer) {
    for (const std::string seconds : {"0", "4", "61", "-5"})
        EXPECT_EQ(problem_of_line("1,7,3," + seconds),
                  "line 2: " + seconds + " seconds are not on offer: 1 2 3 5 10 60");
}

TEST(autorun_csv, names_a_step_only_once) {
    EXPECT_EQ(problem_of_line("1,7,3,5\n2,7,3,5\n1,7,3,5"), "line 4: step 1 for the second time");
}

TEST(autorun_csv, reports_the_first_bad_line) {
    EXPECT_EQ(problem_of_line("1,7,3,5\nbad\n0,0,0,0"), "line 3: a line has four numbers, separated by commas");
}

TEST(autorun_csv, reads_a_long_file_quickly) {
    // the longest file that is read has 16 MB
    const std::string text = std::string(16'000'000, '\n');
    EXPECT_EQ(problem_of(text + "x"), "line 16000001: the header has to be step,timing,pattern,seconds");
}

} // namespace
} // namespace desk::cli
