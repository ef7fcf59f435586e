#include "runtime/disk.h"
#include "runtime/windows_api.h"
#include "runtime/windows_long_path.h"

#include <algorithm>
#include <cstring>
#include <utility>
#include <vector>

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

class open_handle {
public:
    explicit open_handle(HANDLE handle) : handle_(handle) {}
    open_handle(const open_handle&) = delete;
    open_handle& operator=(const open_handle&) = delete;
    ~open_handle() { close(); }
    HANDLE get() const { return handle_; }
    bool is_open() const { return handle_ != INVALID_HANDLE_VALUE; }
    void close() {
        if (is_open()) CloseHandle(std::exchange(handle_, INVALID_HANDLE_VALUE));
    }

private:
    HANDLE handle_;
};

/// An existing regular file; a folder is not opened, and a device is closed at once.
class regular_file {
public:
    regular_file(const std::filesystem::path& path, DWORD access) : file_(open(path, access)) {
        if (error_) return;
        if (!file_.is_open())
            error_ = last_error();
        else if (GetFileType(file_.get()) != FILE_TYPE_DISK)
            error_ = std::make_error_code(std::errc::not_supported);
    }
    const std::error_code& error() const { return error_; }
    HANDLE get() const { return file_.get(); }

private:
    HANDLE open(const std::filesystem::path& path, DWORD access) {
        if (type_of_file(path) == std::filesystem::file_type::directory) {
            error_ = std::make_error_code(std::errc::is_a_directory);
            return INVALID_HANDLE_VALUE;
        }
        return CreateFileW(without_length_limit(path).c_str(), access,
                           FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, OPEN_EXISTING,
                           FILE_ATTRIBUTE_NORMAL, nullptr);
    }

    std::error_code error_;
    open_handle file_; // last: opening it sets the error
};

std::error_code flush(HANDLE file, outlives worst) {
    if (worst != outlives::power_loss || FlushFileBuffers(file)) return {};
    // accept a file server that can't flush
    const DWORD error = GetLastError();
    return error == ERROR_INVALID_FUNCTION || error == ERROR_NOT_SUPPORTED ? std::error_code() : last_error();
}

std::error_code write_all(HANDLE file, std::string_view bytes) {
    constexpr std::size_t most = 1 << 20;
    while (!bytes.empty()) {
        DWORD written = 0;
        if (!WriteFile(file, bytes.data(), static_cast<DWORD>(std::min(bytes.size(), most)), &written, nullptr))
            return last_error();
        bytes.remove_prefix(written);
    }
    return {};
}

/// Appends the rest of a file, up to `most` bytes in all.
std::error_code read_up_to(HANDLE file, std::size_t most, std::string& bytes) {
    constexpr std::size_t piece = 65536;
    while (bytes.size() < most) {
        const std::size_t had = bytes.size();
        bytes.resize(had + std::min(piece, most - had));
        DWORD got = 0;
        const BOOL read = ReadFile(file, bytes.data() + had, static_cast<DWORD>(bytes.size() - had), &got, nullptr);
        bytes.resize(had + got);
        if (!read) return last_error();
        if (got == 0) break;
    }
    return {};
}

std::error_code cut(HANDLE file, LONGLONG length) {
    LARGE_INTEGER end{};
    end.QuadPart = length;
    return SetFilePointerEx(file, end, nullptr, FILE_BEGIN) && SetEndOfFile(file) ? std::error_code() : last_error();
}

std::error_code write_and_cut(HANDLE file, std::string_view bytes, LONGLONG length) {
    if (!SetFilePointerEx(file, LARGE_INTEGER{}, nullptr, FILE_BEGIN)) return last_error();
    if (const std::error_code error = write_all(file, bytes)) return error;
    return cut(file, length);
}

/// The security descriptor of a file with its access list alone; empty if the file system has none.
std::vector<char> access_list_of(const std::filesystem::path& path) {
    DWORD size = 0;
    GetFileSecurityW(path.c_str(), DACL_SECURITY_INFORMATION, nullptr, 0, &size);
    std::vector<char> list(size);
    if (!GetFileSecurityW(path.c_str(), DACL_SECURITY_INFORMATION, list.data(), size, &size)) list.clear();
    return list;
}

/// Null if there is no list.
const ACL* entries_of(std::vector<char>& descriptor) {
    BOOL is_there = FALSE;
    BOOL is_default = FALSE;
    ACL* entries = nullptr;
    if (!GetSecurityDescriptorDacl(descriptor.data(), &is_there, &entries, &is_default)) return nullptr;
    return is_there ? entries : nullptr;
}

bool has_access_list(const std::filesystem::path& path, std::vector<char>& wanted) {
    std::vector<char> found = access_list_of(path);
    if (found.empty()) return false;
    const ACL* const one = entries_of(found);
    const ACL* const other = entries_of(wanted);
    if (one == nullptr || other == nullptr) return one == other;
    return one->AclSize == other->AclSize && std::memcmp(one, other, one->AclSize) == 0;
}

std::error_code create(const std::filesystem::path& path, std::string_view bytes, outlives worst,
                       SECURITY_ATTRIBUTES* whom) {
    const std::filesystem::path name = without_length_limit(path);
    open_handle file(CreateFileW(name.c_str(), GENERIC_WRITE, 0, whom, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!file.is_open()) return last_error();
    std::error_code error = write_all(file.get(), bytes);
    if (!error) error = flush(file.get(), worst);
    file.close();
    if (error) DeleteFileW(name.c_str());
    return error;
}

} // namespace

std::filesystem::file_type type_of_file(const std::filesystem::path& path) {
    const DWORD attributes = GetFileAttributesW(without_length_limit(path).c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES) {
        return last_error() == std::errc::no_such_file_or_directory ? std::filesystem::file_type::not_found
                                                                    : std::filesystem::file_type::none;
    }
    return (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0 ? std::filesystem::file_type::directory
                                                        : std::filesystem::file_type::regular;
}

std::error_code read_file(const std::filesystem::path& path, std::size_t most, std::string& bytes) {
    const regular_file file(path, GENERIC_READ);
    bytes.clear();
    return file.error() ? file.error() : read_up_to(file.get(), most, bytes);
}

old_file_state look_at_old_file(const std::filesystem::path& path) {
    const regular_file file(path, GENERIC_WRITE);
    BY_HANDLE_FILE_INFORMATION found{};
    const bool known = !file.error() && GetFileInformationByHandle(file.get(), &found);
    return {file.error(), !known || found.nNumberOfLinks <= 1};
}

// a user's folders, and the temporary folder, are private on Windows
std::error_code write_new_file(const std::filesystem::path& path, std::string_view bytes, outlives worst,
                               open_to /*whom*/) {
    return create(path, bytes, worst, nullptr);
}

std::error_code write_new_file_like(const std::filesystem::path& old, const std::filesystem::path& path,
                                    std::string_view bytes, outlives worst) {
    // a file system without access lists has none to keep
    std::vector<char> list = access_list_of(without_length_limit(old));
    SECURITY_ATTRIBUTES like{sizeof like, list.data(), FALSE};
    if (const std::error_code error = create(path, bytes, worst, list.empty() ? nullptr : &like)) return error;
    const std::filesystem::path name = without_length_limit(path);
    // on many network shares nobody can change a list, but a new file has that of the folder, as the old one does
    if (list.empty() || has_access_list(name, list) ||
        SetFileSecurityW(name.c_str(), DACL_SECURITY_INFORMATION, list.data()))
        return {};
    DeleteFileW(name.c_str());
    return std::make_error_code(std::errc::operation_not_permitted);
}

// ReplaceFile would keep more of the old file, such as its creation time, but takes two steps: if the second one fails,
// the name leads nowhere.
std::error_code rename_over(const std::filesystem::path& from, const std::filesystem::path& to, outlives worst) {
    const std::filesystem::path made = without_length_limit(from);
    const DWORD through = worst == outlives::power_loss ? MOVEFILE_WRITE_THROUGH : 0;
    if (MoveFileExW(made.c_str(), without_length_limit(to).c_str(), MOVEFILE_REPLACE_EXISTING | through)) return {};
    const std::error_code error = last_error();
    DeleteFileW(made.c_str());
    return error;
}

std::error_code write_in_place(const std::filesystem::path& path, std::string_view bytes, outlives worst) {
    const regular_file file(path, GENERIC_READ | GENERIC_WRITE);
    if (file.error()) return file.error();
    LARGE_INTEGER old_length{};
    if (!GetFileSizeEx(file.get(), &old_length)) return last_error();
    std::string old;
    if (const std::error_code error = read_up_to(file.get(), bytes.size(), old)) return error;
    std::error_code error = write_and_cut(file.get(), bytes, static_cast<LONGLONG>(bytes.size()));
    if (!error) error = flush(file.get(), worst);
    if (!error) return {};
    // even a full disk has the space of the old bytes
    if (!write_and_cut(file.get(), old, old_length.QuadPart)) flush(file.get(), worst);
    return error;
}

folder_lock::folder_lock(const std::filesystem::path& folder) {
    constexpr int most_tries = 500;
    const std::filesystem::path name = without_length_limit(folder / "velotrace.lock");
    for (int i = 0; i < most_tries; ++i) {
        const HANDLE file = CreateFileW(name.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                        FILE_ATTRIBUTE_NORMAL | FILE_FLAG_DELETE_ON_CLOSE, nullptr);
        handle_ = reinterpret_cast<std::intptr_t>(file);
        if (file != INVALID_HANDLE_VALUE || GetLastError() != ERROR_SHARING_VIOLATION) return;
        Sleep(10);
    }
}

folder_lock::~folder_lock() {
    if (handle_ != -1) CloseHandle(reinterpret_cast<HANDLE>(handle_));
}

} // namespace desk
