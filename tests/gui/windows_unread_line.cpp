#include "unread_line.h"

#include "runtime/windows_api.h"

#include <fstream>
#include <string>

namespace desk::gui {

// a pipe without a buffer
unread_line::unread_line(const std::filesystem::path& folder) {
    const std::string name = "\\\\.\\pipe\\desk_test_unread_" + std::to_string(GetCurrentProcessId());
    served_ = CreateNamedPipeA(name.c_str(), PIPE_ACCESS_DUPLEX, PIPE_TYPE_BYTE | PIPE_READMODE_BYTE | PIPE_WAIT, 1, 0,
                               0, 0, nullptr);
    std::ofstream(folder / "port1.txt") << name;
}

unread_line::~unread_line() { CloseHandle(served_); }

void unread_line::fill() const {}

} // namespace desk::gui
