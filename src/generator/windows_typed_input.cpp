#include "generator/windows_typed_input.h"

#include "runtime/files.h"

#include <array>
#include <thread>
#include <utility>

namespace desk {

typed_input::typed_input() {
    std::thread([shared = shared_] {
        bool more = true;
        while (more) {
            std::string text;
            more = read(text);
            const std::lock_guard lock(shared->mutex);
            shared->waiting.text += text;
            shared->waiting.all = !more;
            SetEvent(shared->event);
        }
    }).detach();
}

typed_input::typed typed_input::take() {
    const std::lock_guard lock(shared_->mutex);
    ResetEvent(shared_->event);
    return std::exchange(shared_->waiting, {});
}

/// Waits for input. Returns false at its end.
bool typed_input::read(std::string& text) {
    const HANDLE input = GetStdHandle(STD_INPUT_HANDLE);
    DWORD mode = 0;
    DWORD got = 0;
    if (GetConsoleMode(input, &mode)) {
        std::array<wchar_t, 1024> wide{};
        if (!ReadConsoleW(input, wide.data(), static_cast<DWORD>(wide.size()), &got, nullptr)) return false;
        // Ctrl+C ends the wait with nothing; Ctrl+Z ends the input, as everywhere on Windows
        if (got > 0 && wide.front() == L'\x1A') return false;
        text = utf8_from_path(std::wstring(wide.data(), got));
        return true;
    }
    std::array<char, 1024> chunk{};
    if (!ReadFile(input, chunk.data(), static_cast<DWORD>(chunk.size()), &got, nullptr) || got == 0) return false;
    text.assign(chunk.data(), got);
    return true;
}

} // namespace desk
