#pragma once

#include <filesystem>
#include <optional>

#include <sys/socket.h>
#include <sys/un.h>

namespace desk {

/// The address of a Unix socket at this path; none if the path is too long.
inline std::optional<sockaddr_un> control_address(const std::filesystem::path& path) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    const std::string& name = path.native();
    if (name.size() >= sizeof address.sun_path) return std::nullopt;
    name.copy(address.sun_path, name.size());
    return address;
}

} // namespace desk
