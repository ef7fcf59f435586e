#include "platform/posix_program_directory.h"

#include "platform/first_files.h"
#include "platform/program_directory.h"
#include "runtime/failure.h"
#include "runtime/files.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace desk {

namespace fs = std::filesystem;

namespace {

constexpr const char* data_folder = "velotrace-desk";

fs::path folder_of_program() {
    std::error_code error;
    const fs::path program = fs::read_symlink("/proc/self/exe", error);
    return error ? fs::current_path() : program.parent_path();
}

std::string environment(const char* name) {
    const char* const value = std::getenv(name);
    return value == nullptr ? "" : value;
}

user_folders folders_of_environment() {
    return {.data_home = environment("XDG_DATA_HOME"), .home = environment("HOME")};
}

bool is_folder(const fs::path& path) {
    std::error_code error;
    return fs::is_directory(path, error);
}

/// Gives what root creates to the owner of the folder: sudo can keep the user's HOME, and the next start is the
/// user's.
void hand_over_to_user(const fs::path& created) {
    if (::geteuid() != 0) return;
    struct stat folder {};
    struct stat here {};
    const int opened = ::open(created.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
    // an attacker who replaces it by a link to another file of root's gains nothing
    const bool is_own = opened >= 0 && ::fstat(opened, &here) == 0 && here.st_uid == 0 &&
                        (S_ISDIR(here.st_mode) || (S_ISREG(here.st_mode) && here.st_nlink == 1));
    if (is_own && ::stat(created.parent_path().c_str(), &folder) == 0 && folder.st_uid != 0 &&
        ::fchown(opened, folder.st_uid, folder.st_gid) != 0) {
        // the file stays root's, which is enough for this run
    }
    if (opened >= 0) ::close(opened);
}

/// Creates missing folders for the user alone, as the XDG standard requires.
void create_folder(const fs::path& folder) {
    if (is_folder(folder)) return;
    if (folder.has_parent_path() && folder.parent_path() != folder) create_folder(folder.parent_path());
    const int made = ::mkdir(folder.c_str(), S_IRWXU);
    const int reason = errno;
    if (made == 0) return hand_over_to_user(folder);
    // another program of this user may have been quicker
    if (is_folder(folder)) return;
    throw runtime_failure(failure::path_file_access_error,
                          "the folder " + utf8_from_path(folder) + " can't be created: " + std::strerror(reason));
}

} // namespace

std::optional<fs::path> first_files_of(const fs::path& program_folder) {
    return first_files_in(program_folder.parent_path() / "share" / data_folder, program_folder);
}

fs::path own_directory_of(const user_folders& user) {
    // a relative path is ignored
    if (fs::path(user.data_home).is_absolute()) return fs::path(user.data_home) / data_folder;
    if (fs::path(user.home).is_absolute()) return fs::path(user.home) / ".local" / "share" / data_folder;
    throw runtime_failure(failure::path_file_access_error,
                          "neither HOME nor XDG_DATA_HOME names a folder for the settings and the catalogue");
}

void prepare_own_directory(const fs::path& own_directory, const fs::path& first_files) {
    create_folder(own_directory);
    copy_missing_first_files(own_directory, first_files, hand_over_to_user);
}

fs::path program_directory() {
    fs::path program_folder = folder_of_program();
    const std::optional<fs::path> first_files = first_files_of(program_folder);
    if (!first_files) return program_folder;
    return while_doing([] { return "The program's own directory"; },
                       [&] {
                           fs::path own_directory = own_directory_of(folders_of_environment());
                           prepare_own_directory(own_directory, *first_files);
                           return own_directory;
                       });
}

fs::path user_data_directory() {
    fs::path folder = own_directory_of(folders_of_environment());
    create_folder(folder);
    return folder;
}

} // namespace desk
