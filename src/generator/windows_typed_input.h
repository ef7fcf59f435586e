#pragma once

#include "runtime/windows_api.h"

#include <memory>
#include <mutex>
#include <string>

namespace desk {

/// Standard input, in UTF-8, read by a thread of its own: Windows has no wait for a console and a pipe alike. The
/// thread ends with the program.
class typed_input {
public:
    typed_input();

    /// Set when `take` has something to do.
    HANDLE event() const { return shared_->event; }

    struct typed {
        std::string text;
        bool all = false; ///< nothing more will be typed
    };
    typed take();

private:
    struct shared_state {
        std::mutex mutex;
        typed waiting;
        HANDLE event = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    };

    std::shared_ptr<shared_state> shared_ = std::make_shared<shared_state>();
};

} // namespace desk
