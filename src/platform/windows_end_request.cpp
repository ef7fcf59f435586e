#include "platform/end_request.h"
#include "runtime/windows_api.h"

#include <atomic>

namespace desk {

namespace {

std::atomic<bool> request_came = false;

/// Runs in a thread of its own. A program without a console is asked through its windows.
BOOL WINAPI note_end_request(DWORD event) {
    if (event != CTRL_C_EVENT && event != CTRL_BREAK_EVENT) return FALSE;
    request_came = true;
    return TRUE;
}

} // namespace

end_request::end_request() {
    request_came = false;
    SetConsoleCtrlHandler(note_end_request, TRUE);
}

end_request::~end_request() { SetConsoleCtrlHandler(note_end_request, FALSE); }

bool end_request::received() const {
    // the windows get what the system has sent them, such as the end of the user's log-on; clicks and keys wait
    MSG none{};
    PeekMessageW(&none, nullptr, 0, 0, PM_NOREMOVE | PM_QS_SENDMESSAGE);
    return request_came;
}

int end_request::descriptor() const { return -1; }

} // namespace desk
