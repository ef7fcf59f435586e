#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace desk::test {

// clang-format off
/// A scenario file holds several scenarios. Each has a fresh desk in a fresh directory, with a settings file (port 1,
/// no previous files, 0, 0, 0) and the catalogue of the scenario files' folder.
///
///     == the rule in one sentence        begins a scenario
///     # TEXT                             a comment
///     let $NAME = TEXT                   from here to the end of the file, $NAME is replaced by this text
///     LINE ;; LINE                       two lines, usually those of a name
///     command                            a robot command; its answer must begin with "ok"
///     command   -> ANSWER                its answer must be exactly this; at least two spaces before the arrow
///     command   -> ~ REGEX               its answer must contain this
///     ! settings TEXT | none             puts this settings file there, or removes it
///     ! catalogue TEXT | none            the same for the catalogue
///     ! file NAME TEXT | none            the same for any file of the directory
///     ! expect_file NAME TEXT | none     the file must hold exactly this, or not exist
///     ! file_holds NAME REGEX            the file must contain this, its text escaped as in a JSON string
///     ! on_show NAME...                  of all that the views show and hide, exactly these are on show
///     ! lit GROUP INDEX | none           of a group of buttons only this one is green; the others have the face's color
///     ! mark                             notes the time
///     ! passed MIN MAX                   MIN to MAX milliseconds have passed since the mark
///
/// The TEXT of a file is a JSON string (one byte for each character), or hex: and hexadecimal digits. In any line:
///
///     $DIR                               the scenario's directory
///     {12*00}                            the text 00, twelve times
///     {3..30:TEXT}                       the text for each number; %2 and %3 are the number in two and three digits
///     {3..30, TEXT}                      the same, separated by commas and spaces
///     {text DIGITS}                      these bytes as READ and WRITE windows show them, escaped as in a JSON string
// clang-format on

struct scenario_line {
    int number = 0; ///< in the file, from 1
    std::string text;
};

struct scenario {
    std::string rule;
    std::vector<scenario_line> lines;
};

/// The scenarios of a file's text. A line before the first rule throws std::runtime_error.
std::vector<scenario> scenarios_of(std::string_view text);

/// Runs a scenario. One text for each line that fails: number, expected and got.
std::vector<std::string> run_scenario(const scenario& s, std::string_view default_catalogue);

/// The words that can follow "!".
std::vector<std::string> directive_names();

/// Runs every scenario of a file and prints what fails. Gives the number of scenarios that failed.
int run_scenario_file(const std::filesystem::path& file);

} // namespace desk::test
