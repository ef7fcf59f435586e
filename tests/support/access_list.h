#pragma once

#ifdef __linux__

#include <cerrno>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include <sys/xattr.h>

namespace desk::test {

/// One entry of a POSIX access list; `id` is only used for a named user or group.
struct access_entry {
    enum tag_of : std::uint16_t { owner = 1, user = 2, group = 4, named_group = 8, mask = 16, others = 32 };
    std::uint16_t tag;
    std::uint16_t permissions; ///< 4 read, 2 write, 1 execute
    std::uint32_t id = 0xFFFFFFFF;
};

inline constexpr const char* access_list_name = "system.posix_acl_access";
inline constexpr const char* default_list_name = "system.posix_acl_default"; ///< inherited by new files of a folder

/// Sets an access list; false: not supported by the file system.
inline bool set_access_list(const std::filesystem::path& path, const char* name,
                            const std::vector<access_entry>& entries) {
    std::string list("\2\0\0\0", 4);
    for (const access_entry& e : entries)
        list.append(reinterpret_cast<const char*>(&e), sizeof e);
    return ::setxattr(path.c_str(), name, list.data(), list.size(), 0) == 0;
}

/// The access list as stored; empty if there is none.
inline std::string access_list_of(const std::filesystem::path& path) {
    std::string list(4096, '\0');
    const ssize_t size = ::getxattr(path.c_str(), access_list_name, list.data(), list.size());
    list.resize(size > 0 ? static_cast<std::size_t>(size) : 0);
    return list;
}

} // namespace desk::test

#endif
