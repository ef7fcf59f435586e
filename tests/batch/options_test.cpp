#include "batch/options.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace desk::batch {
namespace {

using words = std::vector<std::string>;

/// The complaint about an invalid command line; empty for a valid one.
std::string complaint_of(const words& line) {
    try {
        options_of(line);
    } catch (const usage_error& e) {
        return e.what();
    }
    return "";
}

TEST(options, are_the_names_in_their_order) {
    const options read = options_of({"b.hex", "a.bin", "folder", "b.hex"});
    EXPECT_EQ(read.inputs, (words{"b.hex", "a.bin", "folder", "b.hex"}));
    EXPECT_FALSE(read.help);
    EXPECT_EQ(read.jobs, 0U);
    EXPECT_EQ(read.output_folder, "");
}

TEST(options, have_a_number_of_jobs) {
    for (const auto& [text, jobs] : {std::pair{"1", 1U}, {"8", 8U}, {"1024", 1024U}}) {
        EXPECT_EQ(options_of({"-j", text, "a"}).jobs, jobs);
        EXPECT_EQ(options_of({"-j" + std::string(text), "a"}).jobs, jobs);
    }
}

TEST(options, have_a_folder_for_the_reports) {
    EXPECT_EQ(options_of({"-o", "reports", "a"}).output_folder, "reports");
    EXPECT_EQ(options_of({"-oreports", "a"}).output_folder, "reports");
    EXPECT_EQ(options_of({"-o", "-x", "a"}).output_folder, "-x");
}

TEST(options, have_a_format) {
    EXPECT_EQ(options_of({"a"}).format, output_format::text);
    EXPECT_EQ(options_of({"--format", "json", "a"}).format, output_format::json);
    EXPECT_EQ(options_of({"--format=json", "a"}).format, output_format::json);
    EXPECT_EQ(options_of({"--format", "json", "--format", "text", "a"}).format, output_format::text);
    EXPECT_EQ(complaint_of({"a", "--format"}), "--format needs a value");
    EXPECT_EQ(complaint_of({"--format", "xml", "a"}), "--format needs text, json or html, not \"xml\"");
    EXPECT_EQ(options_of({"--format", "html", "-o", "pages", "a"}).format, output_format::html);
    EXPECT_EQ(complaint_of({"--format", "html", "a"}), "--format html needs -o FOLDER");
}

TEST(options, ask_for_the_version_and_need_no_name_then) {
    EXPECT_TRUE(options_of({"--version"}).version);
    EXPECT_TRUE(options_of({"-j", "2", "--version", "-x"}).version);
    EXPECT_FALSE(options_of({"--", "--version"}).version);
}

TEST(options, can_be_anywhere_and_the_last_one_counts) {
    const options read = options_of({"a", "-j", "2", "b", "-ox", "-j3", "c", "-o", "y"});
    EXPECT_EQ(read.inputs, (words{"a", "b", "c"}));
    EXPECT_EQ(read.jobs, 3U);
    EXPECT_EQ(read.output_folder, "y");
}

TEST(options, end_at_two_hyphens) {
    const options read = options_of({"-j2", "--", "-o", "--help", "--", "-"});
    EXPECT_EQ(read.inputs, (words{"-o", "--help", "--", "-"}));
    EXPECT_EQ(read.jobs, 2U);
    EXPECT_FALSE(read.help);
}

TEST(options, take_one_hyphen_as_a_name) { EXPECT_EQ(options_of({"-"}).inputs, words{"-"}); }

TEST(options, can_ask_for_help) {
    EXPECT_TRUE(options_of({"-h"}).help);
    EXPECT_TRUE(options_of({"--help"}).help);
    EXPECT_TRUE(options_of({"a", "--help", "-x"}).help) << "what follows is not looked at";
}

TEST(options, must_name_a_file) {
    for (const words& line : {words{}, {"-j", "2"}, {"-o", "x"}, {"--"}})
        EXPECT_EQ(complaint_of(line), "no file given");
}

TEST(options, must_have_their_values) {
    EXPECT_EQ(complaint_of({"a", "-j"}), "-j needs a value");
    EXPECT_EQ(complaint_of({"a", "-o"}), "-o needs a value");
    EXPECT_EQ(complaint_of({"a", "-o", ""}), "-o needs the name of a folder");
}

TEST(options, must_have_a_number_of_jobs_that_can_be) {
    for (const char* text : {"0", "1025", "-1", "+1", "1x", "x", " 1", "1 ", "1.5", "99999999999999999999"}) {
        EXPECT_EQ(complaint_of({"-j", text, "a"}),
                  "-j needs a number from 1 to 1024, not \"" + std::string(text) + "\"");
    }
    EXPECT_EQ(complaint_of({"-j", "", "a"}), "-j needs a number from 1 to 1024, not \"\"");
}

TEST(options, must_be_known) {
    for (const char* word : {"-x", "--jobs", "--output", "-H", "--helpful"})
        EXPECT_EQ(complaint_of({word, "a"}), "unknown option " + std::string(word));
}

TEST(help_text, names_all_options) {
    const std::string text = help_text;
    EXPECT_TRUE(text.starts_with("usage: edid_report "));
    EXPECT_TRUE(text.ends_with("\n"));
    for (const char* option : {"--format FORMAT", "-j N", "-o FOLDER", "--  ", "-h, --help", "Exit status"})
        EXPECT_NE(text.find(option), std::string::npos) << option;
}

} // namespace
} // namespace desk::batch
