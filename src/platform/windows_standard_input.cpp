#include "platform/windows_standard_input.h"

#include "runtime/files.h"
#include "runtime/windows_api.h"

#include <array>

namespace desk {

bool read_standard_input(std::string& text) {
    text.clear();
    const HANDLE input = GetStdHandle(STD_INPUT_HANDLE);
    DWORD mode = 0;
    DWORD got = 0;
    if (GetConsoleMode(input, &mode)) {
        // as bytes a console returns its own code page, which lacks most letters
        std::array<wchar_t, 1024> wide{};
        if (!ReadConsoleW(input, wide.data(), static_cast<DWORD>(wide.size()), &got, nullptr)) return false;
        // Ctrl+Z ends the input, as everywhere on Windows
        if (got > 0 && wide.front() == L'\x1A') return false;
        text = utf8_from_path(std::wstring(wide.data(), got));
        return true;
    }
    std::array<char, 4096> chunk{};
    if (!ReadFile(input, chunk.data(), static_cast<DWORD>(chunk.size()), &got, nullptr) || got == 0) return false;
    text.assign(chunk.data(), got);
    return true;
}

} // namespace desk
