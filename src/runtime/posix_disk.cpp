#include "runtime/disk.h"

#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace desk {

namespace {

std::error_code last_error() { return {errno, std::generic_category()}; }

std::error_code flush(int file) {
    // a file system that knows no flushing is no reason to refuse the file
    return ::fsync(file) == 0 || errno == EINVAL ? std::error_code() : last_error();
}

/// The bytes of a file that is open, up to where `worst` asks for.
std::error_code write_all(int file, std::string_view bytes, outlives worst) {
    while (!bytes.empty()) {
        const ssize_t written = ::write(file, bytes.data(), bytes.size());
        if (written < 0 && errno != EINTR) return last_error();
        if (written > 0) bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return worst == outlives::power_loss ? flush(file) : std::error_code();
}

std::error_code flush(const std::filesystem::path& path, int mode) {
    const int file = ::open(path.c_str(), mode | O_CLOEXEC);
    if (file < 0) return last_error();
    const std::error_code error = flush(file);
    ::close(file);
    return error;
}

} // namespace

std::error_code write_new_file(const std::filesystem::path& path, std::string_view bytes, outlives worst) {
    constexpr mode_t everybody = S_IRUSR | S_IWUSR | S_IRGRP | S_IWGRP | S_IROTH | S_IWOTH;
    const int file = ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, everybody);
    if (file < 0) return last_error();
    std::error_code error = write_all(file, bytes, worst);
    // some file systems tell only here that the disk is full
    if (::close(file) != 0 && !error) error = last_error();
    if (error) ::unlink(path.c_str());
    return error;
}

std::error_code rename_over(const std::filesystem::path& from, const std::filesystem::path& to, outlives worst) {
    if (::rename(from.c_str(), to.c_str()) != 0) return last_error();
    // the new file stands already: that its name is not on the disk yet is no failure
    if (worst == outlives::power_loss) flush(to.has_parent_path() ? to.parent_path() : ".", O_RDONLY | O_DIRECTORY);
    return {};
}

std::error_code flush_to_disk(const std::filesystem::path& path) { return flush(path, O_WRONLY); }

} // namespace desk
