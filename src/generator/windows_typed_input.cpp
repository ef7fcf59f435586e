#include "generator/windows_typed_input.h"

#include "platform/windows_standard_input.h"

#include <thread>
#include <utility>

namespace desk {

typed_input::typed_input() {
    std::thread([shared = shared_] {
        bool more = true;
        while (more) {
            std::string text;
            more = read_standard_input(text);
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

} // namespace desk
