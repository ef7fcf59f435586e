#include "generator/windows_end_event.h"

namespace desk {

namespace {

/// Windows itself ends the program after five.
constexpr DWORD patience_ms = 4000;

HANDLE requested = nullptr;
HANDLE over = nullptr;

/// Runs in a thread of its own. When it returns from anything but Ctrl+C and Ctrl+Break, Windows ends the program.
BOOL WINAPI request_end(DWORD event) {
    SetEvent(requested);
    if (event != CTRL_C_EVENT && event != CTRL_BREAK_EVENT) WaitForSingleObject(over, patience_ms);
    return TRUE;
}

} // namespace

end_event::end_event() {
    requested = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    over = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    SetConsoleCtrlHandler(request_end, TRUE);
}

// the handler may still run: the events stay
end_event::~end_event() { SetEvent(over); }

HANDLE end_event::event() const { return requested; }

} // namespace desk
