#pragma once

#include "runtime/windows_api.h"

#include <vector>

namespace desk {

/// The rights of a new object that only this user can open.
class user_alone {
public:
    /// Throws failure::path_file_access_error if the system refuses.
    user_alone();
    user_alone(const user_alone&) = delete;
    user_alone& operator=(const user_alone&) = delete;

    SECURITY_ATTRIBUTES* attributes() { return &attributes_; }

private:
    std::vector<unsigned char> list_;
    SECURITY_DESCRIPTOR descriptor_{};
    SECURITY_ATTRIBUTES attributes_{};
};

} // namespace desk
