// The robot's script: any lines, each with a one-line answer.

#include "desk_under_fuzz.h"
#include "fuzz_input.h"
#include "support/desk_files.h"
#include "support/robot_at_hand.h"
#include "support/temporary_directory.h"

#include <nlohmann/json.hpp>

namespace {

using namespace desk;

constexpr std::size_t most_lines = 60;
constexpr int longest_wait = 20000;

/// Excludes lines that write files anywhere or take long.
bool is_harmless(const std::string& line) {
    const auto tokens = robot::tokens_of(line);
    if (!tokens || tokens->empty()) return true;
    const std::string& name = tokens->front().text;
    if (name == "file") return false;
    if (name != "wait" || tokens->size() < 2) return true;
    const auto time = robot::number_of(tokens->at(1));
    return !time || *time <= longest_wait;
}

bool is_json(std::string_view text) { return nlohmann::json::accept(text); }

bool is_answer(std::string_view answer) {
    if (answer.empty() || answer == "ok") return true;
    if (answer.find('\n') != std::string_view::npos) return false;
    if (answer.starts_with("ok ")) return is_json(answer.substr(3));
    if (answer.starts_with("refused ")) return is_json(answer.substr(8));
    if (!answer.starts_with("fatal ")) return false;
    const std::size_t text = answer.find(' ', 6);
    return text != std::string_view::npos && is_json(answer.substr(text + 1));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const test::temporary_directory directory;
    // a line may end the program, which writes its settings
    directory.put("marlo_rs232.ini", test::usual_settings);
    directory.put("timing_pattern.ini", test::plain_catalogue(30, 45));
    test::robot_at_hand operator_at_desk(directory.path());
    std::vector<std::string> lines = fuzz::split(fuzz::text_of(data, size), '\n');
    lines.resize(std::min(lines.size(), most_lines));
    for (const std::string& line : lines) {
        if (!is_harmless(line)) continue;
        const std::string answer = operator_at_desk.answer(line);
        fuzz::demand(is_answer(answer), "an answer is one of the three kinds, with its value in JSON");
        if (operator_at_desk.finished()) break;
    }
    return 0;
}
