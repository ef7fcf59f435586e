#include "platform/command_line.h"

#include <cstdio>

#include <unistd.h>

namespace desk {

std::vector<std::string> program_arguments(int argument_count, char** arguments) {
    std::vector<std::string> words;
    for (int i = 1; i < argument_count; ++i)
        words.emplace_back(arguments[i]);
    return words;
}

void pass_standard_streams_as_bytes() {}

bool write_to_standard_output(std::string_view bytes) {
    return std::fwrite(bytes.data(), 1, bytes.size(), stdout) == bytes.size() && std::fflush(stdout) == 0;
}

void write_to_standard_error(std::string_view text) { std::fwrite(text.data(), 1, text.size(), stderr); }

bool standard_error_is_a_terminal() { return ::isatty(STDERR_FILENO) != 0; }

} // namespace desk
