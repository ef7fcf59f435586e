#include "unread_line.h"

#include <array>
#include <chrono>
#include <cstdlib>
#include <thread>

#include <fcntl.h>
#include <unistd.h>

namespace desk::gui {

unread_line::unread_line(const std::filesystem::path& folder) : master_(::posix_openpt(O_RDWR | O_NOCTTY)) {
    ::grantpt(master_);
    ::unlockpt(master_);
    const char* const name = ::ptsname(master_);
    slave_ = ::open(name, O_RDWR | O_NOCTTY | O_NONBLOCK);
    std::filesystem::create_symlink(name, folder / "com1");
}

unread_line::~unread_line() {
    ::close(slave_);
    ::close(master_);
}

void unread_line::fill() const {
    const std::array<char, 1024> some{};
    // the system frees some space when it moves the first bytes to the other end
    constexpr int full_for_sure = 20;
    for (int refused = 0; refused < full_for_sure;) {
        refused =
            ::write(slave_, some.data(), some.size()) > 0 || ::write(slave_, some.data(), 1) > 0 ? 0 : refused + 1;
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
}

} // namespace desk::gui
