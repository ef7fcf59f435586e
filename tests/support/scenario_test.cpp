#include "support/scenario.h"

#include "runtime/files.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <stdexcept>
#include <string>

namespace desk::test {
namespace {

constexpr std::string_view catalogue = "1\r\n\"[01] one\",800,640,16,96,\"-\",525,480,10,2,\"-\",25.175\r\n"
                                       "1\r\n\"[01] bar\"\r\n";

/// The failures of a scenario with these lines.
std::vector<std::string> failures_of(const std::string& lines) {
    return run_scenario(scenarios_of("== rule\n" + lines).at(0), catalogue);
}

TEST(a_scenario_file, holds_scenarios_with_the_numbers_of_their_lines) {
    const auto scenarios = scenarios_of("# remark\n\n== first rule\nstart\n\n== second rule\n  stop  \n# x\nquit\n");
    ASSERT_EQ(scenarios.size(), 2U);
    EXPECT_EQ(scenarios[0].rule, "first rule");
    ASSERT_EQ(scenarios[1].lines.size(), 2U);
    EXPECT_EQ(scenarios[1].lines[0].number, 7);
    EXPECT_EQ(scenarios[1].lines[0].text, "stop");
    EXPECT_EQ(scenarios[1].lines[1].number, 9);
}

TEST(a_scenario_file, begins_with_a_rule) { EXPECT_THROW(scenarios_of("start\n== rule\n"), std::runtime_error); }

TEST(a_scenario, passes_if_every_answer_matches) {
    EXPECT_TRUE(failures_of("start\n"
                            "field com_port   -> ok 1\n"
                            "get lab_ver.caption   -> ~ v1[01]\n"
                            "click nothing   -> ~ ^refused\n")
                    .empty());
}

TEST(a_scenario, fails_if_an_answer_differs) {
    const auto failures = failures_of("start\nfield com_port   -> ok 2\n");
    ASSERT_EQ(failures.size(), 1U);
    EXPECT_NE(failures[0].find("line 3: field com_port"), std::string::npos);
    EXPECT_NE(failures[0].find("expected ok 2"), std::string::npos);
    EXPECT_NE(failures[0].find("got      ok 1"), std::string::npos);
}

TEST(a_scenario_file, names_texts) {
    const auto scenarios = scenarios_of("let $row = select lstv_timing\nlet $all = $row 1\n== rule\n$row 7\n$all\n");
    ASSERT_EQ(scenarios.size(), 1U);
    EXPECT_EQ(scenarios[0].lines[0].text, "select lstv_timing 7");
    EXPECT_EQ(scenarios[0].lines[1].text, "select lstv_timing 1");
    EXPECT_THROW(scenarios_of("let $row\n"), std::runtime_error);
}

TEST(a_scenario_file, has_several_lines_in_one) {
    const auto scenarios = scenarios_of("let $BOTH = start ;; stop\n== rule\n$BOTH ;; quit\nstart\n");
    ASSERT_EQ(scenarios[0].lines.size(), 4U);
    const char* texts[] = {"start", "stop", "quit", "start"};
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_EQ(scenarios[0].lines[i].text, texts[i]);
        EXPECT_EQ(scenarios[0].lines[i].number, i < 3 ? 3 : 4);
    }
}

TEST(a_scenario, expands_runs) {
    EXPECT_TRUE(failures_of("start\n"
                            "type txt_motion_str \"{9..11:%3}{1..1:x}{2..1:y}\"\n"
                            "get txt_motion_str.text   -> ok \"009010011x\"\n"
                            "items cbo_com   -> ok [{1..8, \"COM%2:\"}]\n")
                    .size() == 3)
        << "the box is not on show, its text is another, the ports have one digit";
    EXPECT_TRUE(failures_of("start\nreply \"TIM001\" \"T{1..2:%3}\" {1..1:\"%2\"}\nclick cmd_timing\nclick cmd_run\n"
                            "wire   -> ok [{1..2, \"> TIM%3\"}]\n")
                    .size() == 1)
        << "TIM001 is sent twice, TIM002 never";
    EXPECT_TRUE(failures_of("start\nreply \"TIM001\" echo\nclick cmd_timing\nclick cmd_run\n"
                            "wire   -> ok [{1..1, \"> TIM%3\", \"< TIM%3\"}]\n")
                    .empty());
}

TEST(a_scenario, knows_the_lit_button_of_a_group) {
    EXPECT_TRUE(failures_of("start\n! lit cmd_out none\nreply \"OUT*\" echo\nclick cmd_setup\nclick cmd_out(2)\n"
                            "! lit cmd_out 2\n")
                    .empty());
    EXPECT_EQ(failures_of("start\n! lit cmd_out 2\n").size(), 1U);
    EXPECT_EQ(failures_of("start\n! lit cmd_out 4\n").size(), 1U);
    EXPECT_EQ(failures_of("start\n! lit cmd_nothing none\n").size(), 1U);
    EXPECT_EQ(failures_of("start\nreply \"OUT*\" echo\nclick cmd_setup\nclick cmd_out(2)\n! lit cmd_out 1\n").size(),
              2U);
}

TEST(a_scenario, fails_if_an_answer_is_longer_or_shorter) {
    EXPECT_EQ(failures_of("start\nboxes   -> ok\n").size(), 1U);
    EXPECT_EQ(failures_of("start   -> ok true\n").size(), 1U);
}

TEST(a_scenario, fails_if_no_part_of_the_answer_matches) {
    EXPECT_EQ(failures_of("start\nfield com_port   -> ~ ^ok [2-8]$\n").size(), 1U);
}

TEST(a_scenario, expects_ok_by_default) {
    EXPECT_EQ(failures_of("click cmd_timing\n").size(), 1U) << "no program runs";
    EXPECT_EQ(failures_of("! catalogue none\nstart\n").size(), 1U);
}

TEST(a_scenario, fails_at_an_unknown_directive) {
    EXPECT_EQ(failures_of("! something\n").size(), 1U);
    EXPECT_EQ(failures_of("! settings no_string\n").size(), 1U);
}

TEST(a_scenario, has_its_own_files) {
    EXPECT_TRUE(failures_of("! file a.txt \"\\u00ff\\u0000x\"\n"
                            "! expect_file a.txt \"\\u00ff\\u0000x\"\n"
                            "! expect_file b.txt none\n")
                    .empty());
    EXPECT_EQ(failures_of("! expect_file a.txt \"\"\n").size(), 1U);
    EXPECT_EQ(failures_of("! file a.txt \"x\"\n! expect_file a.txt \"y\"\n").size(), 1U);
    EXPECT_EQ(failures_of("! file a.txt \"x\"\n! expect_file a.txt none\n").size(), 1U);
}

TEST(a_scenario, checks_everything_that_views_show) {
    EXPECT_TRUE(failures_of("start\n! on_show\nclick cmd_edid\n! on_show fra_edid\n").empty());
    EXPECT_FALSE(failures_of("start\n! on_show fra_edid\n").empty());
    EXPECT_FALSE(failures_of("start\nclick cmd_edid\n! on_show\n").empty());
    EXPECT_FALSE(failures_of("start\n! on_show cmd_about\n").empty());
}

TEST(a_scenario, measures_the_clock) {
    EXPECT_TRUE(failures_of("start\n! mark\nwait 100\n! passed 100 100\n").empty());
    EXPECT_EQ(failures_of("start\n! mark\nwait 100\n! passed 105 200\n").size(), 1U);
    EXPECT_EQ(failures_of("start\n! mark\nwait 100\n! passed 0 95\n").size(), 1U);
}

TEST(a_scenario, knows_its_directory) {
    EXPECT_TRUE(failures_of("file \"$DIR/x.hex\"\nfile $DIR/x.hex   -> ~ ^refused\n").empty());
}

/// What follows each start of a line in the language's reference, up to the next space.
std::vector<std::string> words_after(const std::string& start) {
    const std::string reference = read_whole_file(SCENARIO_REFERENCE);
    std::vector<std::string> words;
    for (std::size_t at = 0; (at = reference.find("\n///     " + start, at)) != std::string::npos;) {
        at += std::string("\n///     " + start).size();
        words.push_back(reference.substr(at, reference.find_first_of(" \n", at) - at));
    }
    std::sort(words.begin(), words.end());
    return words;
}

TEST(the_reference_of_the_language, has_each_directive_on_its_own_line) {
    EXPECT_EQ(words_after("! "), directive_names());
}

TEST(the_reference_of_the_language, has_every_other_form_on_its_own_line) {
    EXPECT_EQ(words_after("command"), std::vector<std::string>(3, ""));
    for (const char* form : {"== ", "# ", "let $NAME = ", "LINE ;; LINE", "command   -> ANSWER", "command   -> ~ REGEX",
                             "$DIR", "{12*00}", "{3..30:TEXT}", "{3..30, TEXT}", "{text DIGITS}"})
        EXPECT_EQ(words_after(form).size(), 1U) << form;
}

} // namespace
} // namespace desk::test
