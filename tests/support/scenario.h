#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace desk::test {

/// A scenario file holds several scenarios. Each has a fresh directory of its own, with a settings file (port 1, no
/// previous files, 0, 0, 0) and the catalogue of the scenario files' folder.
///
///     == the rule in one sentence      begins a scenario
///     # text                           a remark
///     command                          a robot command; its answer must begin with "ok"
///     command   -> ANSWER              its answer must be exactly this
///     command   -> ~ REGEX             its answer must hold this
///     ! settings TEXT | none           the settings file, as a JSON string (code = byte), or no such file
///     ! catalogue TEXT | none          the same for the catalogue
///     ! file NAME TEXT                 any file of the directory
///     ! expect_file NAME TEXT | none   what the file must hold now
///     ! file_holds NAME REGEX  what it must hold somewhere, its text written as inside a JSON string
///     ! on_show NAME...                of all that the views show and hide, exactly these are on show now
///     ! mark                           takes note of the clock
///     ! passed MIN MAX                 so many milliseconds have passed since the last mark
///     ! lit GROUP INDEX | none         of a group of buttons this one alone is green, the others have the face's
///     colour let $NAME = TEXT                 from here to the end of the file $NAME stands for this text
///
/// The bytes of a file can also stand as "hex:" and hexadecimal digits. {12*00} stands for the text twelve times.
/// {text DIGITS} stands for these bytes as the READ and WRITE windows show them, written as inside a JSON string.
/// $DIR stands for the scenario's directory. {3..30:TEXT} stands for a run of the text, once for each number; in it %2
/// and %3 are the number in two and in three digits. {3..30, TEXT} is the same with a comma and a blank between. An
/// arrow stands at least two blanks behind its command.

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

/// Runs a scenario. Each line that fails is told in one text: number, expected and got.
std::vector<std::string> run_scenario(const scenario& s, std::string_view default_catalogue);

/// Runs every scenario of a file and prints what fails. Gives the number of scenarios that failed.
int run_scenario_file(const std::filesystem::path& file);

} // namespace desk::test
