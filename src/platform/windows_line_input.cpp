#include "platform/end_request.h"
#include "platform/line_input.h"
#include "platform/windows_standard_input.h"

#include "runtime/windows_api.h"

namespace desk {

std::string line_input::read_more() const {
    // a thread of its own notes Ctrl+C, perhaps after the wait for the console has ended
    constexpr int longest_ms = 1000;
    std::string text;
    while (read_standard_input(text) && text.empty() && !request_.received()) {
        for (int i = 0; i < longest_ms && !request_.received(); ++i)
            Sleep(1);
    }
    return text;
}

} // namespace desk
