#include "platform/command_line.h"

#include "runtime/terminal_text.h"

#include <cstdio>
#include <utility>

#include <fcntl.h>
#include <unistd.h>

namespace desk {

namespace {

bool write(std::FILE* stream, std::string_view text) {
    return std::fwrite(text.data(), 1, text.size(), stream) == text.size();
}

} // namespace

std::vector<std::string> program_arguments(int argument_count, char** arguments) {
    std::vector<std::string> words;
    for (int i = 1; i < argument_count; ++i)
        words.emplace_back(arguments[i]);
    return words;
}

void prepare_standard_streams() {
    // the wrong way round, so that using a closed stream still fails
    for (const auto& [stream, use] :
         {std::pair(STDIN_FILENO, O_WRONLY), std::pair(STDOUT_FILENO, O_RDONLY), std::pair(STDERR_FILENO, O_RDONLY)}) {
        // gets the lowest free number
        if (::fcntl(stream, F_GETFD) < 0) ::open("/dev/null", use);
    }
}

bool write_to_standard_output(std::string_view bytes) {
    return write(stdout, ::isatty(STDOUT_FILENO) != 0 ? terminal_text(bytes) : std::string(bytes)) &&
           std::fflush(stdout) == 0;
}

void write_to_standard_error(std::string_view text) {
    write(stderr, standard_error_is_a_terminal() ? terminal_text(text) : std::string(text));
}

void overwrite_terminal_line(std::string_view text) { write(stderr, "\r" + terminal_text(text)); }

bool standard_error_is_a_terminal() { return ::isatty(STDERR_FILENO) != 0; }

} // namespace desk
