#include "runtime/disk.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <thread>
#include <utility>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace desk {

namespace {

constexpr mode_t everybody = S_IRUSR | S_IWUSR | S_IRGRP | S_IWGRP | S_IROTH | S_IWOTH;
constexpr mode_t owner_alone = S_IRUSR | S_IWUSR;
constexpr mode_t all_mode_bits = 07777;
constexpr const char* access_list = "system.posix_acl_access";

std::error_code last_error() { return {errno, std::generic_category()}; }
std::error_code not_kept() { return std::make_error_code(std::errc::operation_not_permitted); }

class descriptor {
public:
    explicit descriptor(int number) : number_(number) {}
    descriptor(const descriptor&) = delete;
    descriptor& operator=(const descriptor&) = delete;
    ~descriptor() {
        if (number_ >= 0) ::close(number_);
    }
    int number() const { return number_; }
    /// Some file systems report a full disk only here.
    std::error_code close() { return ::close(std::exchange(number_, -1)) == 0 ? std::error_code() : last_error(); }

private:
    int number_;
};

std::error_code problem_of(const struct stat& status) {
    if (S_ISREG(status.st_mode)) return {};
    return std::make_error_code(S_ISDIR(status.st_mode) ? std::errc::is_a_directory : std::errc::not_supported);
}

/// An existing regular file. Anything else is not opened, since opening a pipe blocks and opening a device can have
/// effects.
class regular_file {
public:
    regular_file(const std::filesystem::path& path, int mode) : file_(open(path, mode)) {
        // the name may lead elsewhere by now
        if (!error_) error_ = ::fstat(file_.number(), &status_) == 0 ? problem_of(status_) : last_error();
    }
    const std::error_code& error() const { return error_; }
    int number() const { return file_.number(); }
    const struct stat& status() const { return status_; }

private:
    int open(const std::filesystem::path& path, int mode) {
        error_ = ::stat(path.c_str(), &status_) == 0 ? problem_of(status_) : last_error();
        if (error_) return -1;
        // a file server revokes its lease on a file on request
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(1);
        while (true) {
            const int opened = ::open(path.c_str(), mode | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
            error_ = opened < 0 ? last_error() : std::error_code();
            if (error_ != std::errc::operation_would_block || std::chrono::steady_clock::now() > end) return opened;
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        }
    }

    struct stat status_ {};
    std::error_code error_;
    descriptor file_; // last: opening it sets the others
};

std::error_code flush(int file) {
    // accept a file system without fsync
    return ::fsync(file) == 0 || errno == EINVAL ? std::error_code() : last_error();
}

std::error_code flush(int file, outlives worst) {
    return worst == outlives::power_loss ? flush(file) : std::error_code();
}

std::error_code write_all(int file, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = ::write(file, bytes.data(), bytes.size());
        if (written < 0 && errno != EINTR) return last_error();
        if (written > 0) bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return {};
}

/// Appends the rest of a file, up to `most` bytes in all.
std::error_code read_up_to(int file, std::size_t most, std::string& bytes) {
    constexpr std::size_t piece = 65536;
    while (bytes.size() < most) {
        const std::size_t had = bytes.size();
        bytes.resize(had + std::min(piece, most - had));
        const ssize_t got = ::read(file, bytes.data() + had, bytes.size() - had);
        const std::error_code error = got < 0 ? last_error() : std::error_code();
        bytes.resize(had + (got > 0 ? static_cast<std::size_t>(got) : 0));
        if (got == 0) break;
        if (error && error != std::errc::interrupted) return error;
    }
    return {};
}

std::error_code write_and_cut(int file, std::string_view bytes, outlives worst) {
    if (::lseek(file, 0, SEEK_SET) != 0) return last_error();
    if (const std::error_code error = write_all(file, bytes)) return error;
    if (::ftruncate(file, static_cast<off_t>(bytes.size())) != 0) return last_error();
    return flush(file, worst);
}

/// Locks out other desks until the file or folder is closed. The wait is limited, so that nobody can block this desk;
/// not every file system has locks.
void lock(int file, std::chrono::milliseconds longest_wait) {
    const auto end = std::chrono::steady_clock::now() + longest_wait;
    while (std::chrono::steady_clock::now() < end && ::flock(file, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK)
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
}

/// The raw access list of a file; empty if it has none.
std::error_code read_access_list(int file, std::string& list) {
    const ssize_t size = ::fgetxattr(file, access_list, nullptr, 0);
    if (size < 0) return errno == ENODATA || errno == ENOTSUP ? std::error_code() : last_error();
    list.resize(static_cast<std::size_t>(size));
    const ssize_t got = ::fgetxattr(file, access_list, list.data(), list.size());
    return got == size ? std::error_code() : not_kept();
}

std::error_code set_access_list(int file, const std::string& list) {
    const bool done = list.empty() ? ::fremovexattr(file, access_list) == 0 || errno == ENODATA || errno == ENOTSUP
                                   : ::fsetxattr(file, access_list, list.data(), list.size(), 0) == 0;
    return done ? std::error_code() : not_kept();
}

bool same_owner(const struct stat& a, const struct stat& b) { return a.st_uid == b.st_uid && a.st_gid == b.st_gid; }

bool same_mode(const struct stat& a, const struct stat& b) { return ((a.st_mode ^ b.st_mode) & all_mode_bits) == 0; }

/// Copies the attributes of `old` to a new file that only its owner can open. The mode comes last: until then nobody
/// outside the old access list can open the file.
std::error_code make_like(const regular_file& old, int file) {
    struct stat now {};
    if (::fstat(file, &now) != 0) return last_error();
    const struct stat& wanted = old.status();
    if (!same_owner(now, wanted) && ::fchown(file, wanted.st_uid, wanted.st_gid) != 0) return not_kept();
    std::string list;
    if (const std::error_code error = read_access_list(old.number(), list)) return error;
    if (const std::error_code error = set_access_list(file, list)) return error;
    if (::fstat(file, &now) != 0) return last_error();
    // a file system with one mode for all files refuses to change it
    if (!same_mode(now, wanted) && ::fchmod(file, wanted.st_mode & all_mode_bits) != 0) return not_kept();
    // some file systems accept all of this and do nothing
    if (::fstat(file, &now) != 0) return last_error();
    return same_owner(now, wanted) && same_mode(now, wanted) ? std::error_code() : not_kept();
}

std::error_code create(const std::filesystem::path& path, std::string_view bytes, outlives worst, mode_t mode,
                       const regular_file* old) {
    descriptor file(::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode));
    if (file.number() < 0) return last_error();
    std::error_code error = write_all(file.number(), bytes);
    if (!error && old != nullptr) error = make_like(*old, file.number());
    if (!error) error = flush(file.number(), worst);
    const std::error_code closing = file.close();
    if (!error) error = closing;
    if (error) ::unlink(path.c_str());
    return error;
}

} // namespace

std::filesystem::file_type type_of_file(const std::filesystem::path& path) {
    std::error_code error;
    return std::filesystem::status(path, error).type();
}

std::error_code read_file(const std::filesystem::path& path, std::size_t most, std::string& bytes) {
    const regular_file file(path, O_RDONLY);
    bytes.clear();
    return file.error() ? file.error() : read_up_to(file.number(), most, bytes);
}

old_file_state look_at_old_file(const std::filesystem::path& path) {
    const regular_file file(path, O_WRONLY);
    return {file.error(), file.status().st_nlink <= 1};
}

std::error_code write_new_file(const std::filesystem::path& path, std::string_view bytes, outlives worst,
                               open_to whom) {
    return create(path, bytes, worst, whom == open_to::owner ? owner_alone : everybody, nullptr);
}

std::error_code write_new_file_like(const std::filesystem::path& old, const std::filesystem::path& path,
                                    std::string_view bytes, outlives worst) {
    const regular_file old_file(old, O_WRONLY);
    return old_file.error() ? old_file.error() : create(path, bytes, worst, owner_alone, &old_file);
}

std::error_code rename_over(const std::filesystem::path& from, const std::filesystem::path& to, outlives worst) {
    if (::rename(from.c_str(), to.c_str()) != 0) {
        const std::error_code error = last_error();
        ::unlink(from.c_str());
        return error;
    }
    if (worst == outlives::power_loss) {
        // the new file is renamed already: a rename not yet on disk is no failure
        const descriptor folder(
            ::open(to.has_parent_path() ? to.parent_path().c_str() : ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC));
        if (folder.number() >= 0) flush(folder.number());
    }
    return {};
}

std::error_code write_in_place(const std::filesystem::path& path, std::string_view bytes, outlives worst) {
    const regular_file file(path, O_RDWR);
    if (file.error()) return file.error();
    lock(file.number(), std::chrono::seconds(1));
    std::string old;
    if (const std::error_code error = read_up_to(file.number(), bytes.size(), old)) return error;
    const std::error_code error = write_and_cut(file.number(), bytes, worst);
    if (!error) return {};
    // even a full disk has the space of the old bytes
    if (::lseek(file.number(), 0, SEEK_SET) == 0 && !write_all(file.number(), old) &&
        ::ftruncate(file.number(), file.status().st_size) == 0)
        flush(file.number(), worst);
    return error;
}

folder_lock::folder_lock(const std::filesystem::path& folder)
    : handle_(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
    lock(static_cast<int>(handle_), std::chrono::seconds(5));
}

folder_lock::~folder_lock() {
    if (handle_ >= 0) ::close(static_cast<int>(handle_));
}

} // namespace desk
