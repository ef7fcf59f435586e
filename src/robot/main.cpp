#include "platform/command_line.h"
#include "platform/program_directory.h"
#include "robot/robot.h"
#include "runtime/failure.h"
#include "runtime/version.h"

#include <filesystem>
#include <iostream>
#include <string>
#include <string_view>

namespace {

constexpr std::string_view usage = "usage: desk_robot [DIRECTORY] < script\n";

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

    desk::robot::robot robot(directory);
    // scripts and answers hold control characters, and are the same bytes on every system
    desk::pass_standard_streams_as_bytes();
    std::string line;
    while (!robot.finished() && std::getline(std::cin, line)) {
        const std::string answer = robot.answer(line);
        if (!answer.empty()) desk::write_to_standard_output(answer + "\n");
    }
    return 0;
}
