#include "runtime/disk.h"
#include "runtime/windows_api.h"

#include <algorithm>

namespace desk {

namespace {

std::errc condition_of(DWORD error) {
    switch (error) {
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
        return std::errc::no_such_file_or_directory;
    case ERROR_FILE_EXISTS:
    case ERROR_ALREADY_EXISTS:
        return std::errc::file_exists;
    case ERROR_ACCESS_DENIED:
        return std::errc::permission_denied;
    case ERROR_WRITE_PROTECT:
        return std::errc::read_only_file_system;
    case ERROR_SHARING_VIOLATION:
    case ERROR_LOCK_VIOLATION:
        return std::errc::device_or_resource_busy;
    case ERROR_DISK_FULL:
    case ERROR_HANDLE_DISK_FULL:
        return std::errc::no_space_on_device;
    default:
        return std::errc::io_error;
    }
}

std::error_code last_error() { return std::make_error_code(condition_of(GetLastError())); }

/// The bytes of a file that is open, up to where `worst` asks for.
std::error_code write_all(HANDLE file, std::string_view bytes, outlives worst) {
    constexpr std::size_t most = 1 << 20;
    while (!bytes.empty()) {
        DWORD written = 0;
        if (!WriteFile(file, bytes.data(), static_cast<DWORD>(std::min(bytes.size(), most)), &written, nullptr))
            return last_error();
        bytes.remove_prefix(written);
    }
    if (worst == outlives::power_loss && !FlushFileBuffers(file)) return last_error();
    return {};
}

} // namespace

std::error_code write_new_file(const std::filesystem::path& path, std::string_view bytes, outlives worst) {
    const HANDLE file =
        CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) return last_error();
    const std::error_code error = write_all(file, bytes, worst);
    CloseHandle(file);
    if (error) DeleteFileW(path.c_str());
    return error;
}

std::error_code rename_over(const std::filesystem::path& from, const std::filesystem::path& to, outlives worst) {
    const DWORD through = worst == outlives::power_loss ? MOVEFILE_WRITE_THROUGH : 0;
    if (!MoveFileExW(from.c_str(), to.c_str(), MOVEFILE_REPLACE_EXISTING | through)) return last_error();
    return {};
}

std::error_code flush_to_disk(const std::filesystem::path& path) {
    const HANDLE file = CreateFileW(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                    OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) return last_error();
    const std::error_code error = FlushFileBuffers(file) ? std::error_code() : last_error();
    CloseHandle(file);
    return error;
}

} // namespace desk
