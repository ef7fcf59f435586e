// One line of commands for velotrace_cli, and the whole input as an autorun list in CSV. The parsed commands are not
// carried out.

#include "cli/autorun_csv.h"
#include "cli/command_line.h"
#include "cli/line_words.h"
#include "desk_under_fuzz.h"
#include "fuzz_input.h"

#include <set>

namespace {

using namespace desk;

/// The words in quotation marks that keep every character.
std::string quoted(const std::vector<std::string>& words) {
    std::string line;
    for (const std::string& word : words) {
        line += line.empty() ? "'" : " '";
        for (const char c : word)
            line += c == '\'' ? std::string("'\\''") : std::string(1, c);
        line += "'";
    }
    return line;
}

/// Nothing: the line has an open quotation mark.
std::optional<std::vector<std::string>> words_in(std::string_view line) {
    try {
        return cli::words_of_line(line);
    } catch (const cli::unclosed_quote& e) {
        fuzz::demand(*e.what() != '\0', "an open quotation mark is explained");
        return std::nullopt;
    }
}

void read_commands(std::string_view line) {
    const auto words = words_in(line);
    if (!words) return;
    fuzz::demand(cli::words_of_line(quoted(*words)) == *words, "quoted words come back");
    // a backslash at the end keeps the space that follows it
    if (!line.ends_with('\\')) fuzz::demand(words_in(std::string(line) + " #'") == words, "a comment adds no word");
    if (words->empty()) return;
    try {
        fuzz::demand(cli::parse_line(*words) != nullptr, "a line that makes sense is a command");
    } catch (const cli::command_failure& f) {
        fuzz::demand(f.status() == cli::outcome::misused, "a bad line is misuse");
        fuzz::demand(*f.what() != '\0', "a bad line is explained");
    }
}

void read_csv(std::string_view text) {
    static const cli::autorun_limits limits{32, 79, 64, {5, 10, 600}};
    std::vector<cli::autorun_step> steps;
    try {
        steps = cli::steps_of_csv(text, limits);
    } catch (const cli::csv_error& e) {
        fuzz::demand(std::string_view(e.what()).starts_with("line "), "a bad line is named");
        return;
    }
    std::set<int> named;
    for (const cli::autorun_step& s : steps) {
        fuzz::demand(s.step >= 1 && s.step <= limits.steps && named.insert(s.step).second, "each step is there once");
        fuzz::demand(s.timing >= 1 && s.timing <= limits.timings, "the timing exists");
        fuzz::demand(s.pattern >= 1 && s.pattern <= limits.patterns, "the pattern exists");
        fuzz::demand(std::find(limits.seconds.begin(), limits.seconds.end(), s.seconds) != limits.seconds.end(),
                     "the interval is on offer");
    }
    fuzz::demand(cli::steps_of_csv(cli::csv_of(steps), limits) == steps, "what is written is read back");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text = fuzz::text_of(data, size);
    for (const std::string& line : fuzz::split(text, '\n'))
        read_commands(line);
    read_csv(text);
    return 0;
}
