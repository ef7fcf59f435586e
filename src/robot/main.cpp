#include "platform/command_line.h"
#include "platform/program_directory.h"
#include "robot/robot.h"
#include "runtime/failure.h"
#include "runtime/version.h"

#include <filesystem>
#include <iostream>
#include <optional>
#include <string>
#include <string_view>

namespace {

constexpr std::string_view usage = "usage: desk_robot [DIRECTORY] < script\n";

std::optional<std::string> next_line() {
    std::string line;
    return std::getline(std::cin, line) ? std::optional(line) : std::nullopt;
}

void give_answer(const std::string& answer) {
    if (!answer.empty()) desk::write_to_standard_output(answer + "\n");
}

} // namespace

int main(int argument_count, char** arguments) {
    std::error_code error;
    std::filesystem::path directory;
    const std::string_view word = argument_count == 2 ? arguments[1] : "";
    if (word == "--version") {
        std::cout << desk::version_line("desk_robot");
        return 0;
    }
    if (word == "--help" || word == "-h") {
        std::cout << usage << "\nRuns the desk without a screen: one command a line, one line of answer.\n"
                  << "--version shows number, commit and date of this build.\n";
        return 0;
    }
    if (argument_count > 2) {
        desk::write_to_standard_error(usage);
        return 2;
    }
    if (argument_count == 2)
        directory = std::filesystem::absolute(arguments[1], error);
    else
        try {
            directory = desk::program_directory();
        } catch (const desk::runtime_failure& failure) {
            desk::write_to_standard_error("desk_robot: " + failure.sentence() + "\n");
            return 1;
        }

    // scripts and answers contain control characters, and are the same bytes on every system
    desk::prepare_standard_streams();
    desk::robot::robot(directory, next_line, give_answer).serve_operator();
    return 0;
}
