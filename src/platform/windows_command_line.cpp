#include "platform/command_line.h"
#include "runtime/terminal_text.h"
#include "runtime/windows_api.h"

#include <cstdio>
#include <filesystem>

#include <fcntl.h>
#include <io.h>

#include <shellapi.h>

namespace desk {

namespace {

/// A console accepts wide characters in any code page.
bool write_to_console(DWORD which, std::string_view text) {
    const int length = static_cast<int>(text.size());
    std::wstring wide(text.size(), L'\0');
    const int count = MultiByteToWideChar(CP_UTF8, 0, text.data(), length, wide.data(), length);
    DWORD written = 0;
    return WriteConsoleW(GetStdHandle(which), wide.data(), static_cast<DWORD>(count), &written, nullptr) != 0;
}

} // namespace

std::vector<std::string> program_arguments(int /*argument_count*/, char** /*arguments*/) {
    std::vector<std::string> words;
    int count = 0;
    wchar_t** const wide = CommandLineToArgvW(GetCommandLineW(), &count);
    for (int i = 1; wide != nullptr && i < count; ++i) {
        const std::u8string word = std::filesystem::path(wide[i]).u8string();
        words.emplace_back(word.begin(), word.end());
    }
    LocalFree(wide);
    return words;
}

void prepare_standard_streams() {
    _setmode(_fileno(stdin), _O_BINARY);
    _setmode(_fileno(stdout), _O_BINARY);
}

bool write_to_standard_output(std::string_view bytes) {
    if (_isatty(_fileno(stdout)) != 0) return write_to_console(STD_OUTPUT_HANDLE, terminal_text(bytes));
    // the report has its own line ends
    _setmode(_fileno(stdout), _O_BINARY);
    return std::fwrite(bytes.data(), 1, bytes.size(), stdout) == bytes.size() && std::fflush(stdout) == 0;
}

void write_to_standard_error(std::string_view text) {
    if (standard_error_is_a_terminal()) {
        write_to_console(STD_ERROR_HANDLE, terminal_text(text));
        return;
    }
    _setmode(_fileno(stderr), _O_BINARY);
    std::fwrite(text.data(), 1, text.size(), stderr);
}

void overwrite_terminal_line(std::string_view text) { write_to_console(STD_ERROR_HANDLE, "\r" + terminal_text(text)); }

bool standard_error_is_a_terminal() { return _isatty(_fileno(stderr)) != 0; }

} // namespace desk
