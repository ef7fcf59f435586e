#include "generator/own_name.h"

#include "runtime/failure.h"
#include "runtime/files.h"

#include <cerrno>
#include <cstdio>
#include <string>
#include <system_error>

#include <fcntl.h>
#include <unistd.h>

namespace desk {

namespace fs = std::filesystem;

namespace {

constexpr int most_attempts = 100;

std::error_code renamed(const fs::path& from, const fs::path& to, unsigned flags) {
    if (::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), flags) == 0) return {};
    return {errno, std::generic_category()};
}

bool unsupported(const std::error_code& error) { return error.value() == EINVAL || error.value() == ENOSYS; }

/// Renames; fails if the new name exists.
std::error_code renamed_to_free_name(const fs::path& from, const fs::path& to) {
    std::error_code error = renamed(from, to, RENAME_NOREPLACE);
    // some file systems support only the older call
    if (!unsupported(error)) return error;
    if (::linkat(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), 0) != 0) return {errno, std::generic_category()};
    ::unlink(from.c_str());
    return {};
}

void remove_ours(const fs::path& path, const is_ours& ours) {
    if (ours(path)) ::unlink(path.c_str());
}

/// Returns false if nothing has the name any more.
bool replaced(const fs::path& made, const fs::path& name, const expect_replaceable& check) {
    check(name);
    std::error_code error = renamed(made, name, RENAME_EXCHANGE);
    if (unsupported(error)) {
        if (::rename(made.c_str(), name.c_str()) == 0) return true;
        error = {errno, std::generic_category()};
    }
    if (error == std::errc::no_such_file_or_directory) return false;
    if (error) {
        throw runtime_failure(failure::path_file_access_error,
                              utf8_from_path(name) + " can't be replaced: " + error.message());
    }
    // `made` now names what had the name at the moment of the exchange
    try {
        std::error_code gone;
        if (fs::exists(fs::symlink_status(made, gone))) check(made);
    } catch (...) {
        renamed(made, name, RENAME_EXCHANGE);
        throw;
    }
    ::unlink(made.c_str());
    return true;
}

} // namespace

fs::path make_beside(const fs::path& name, const std::function<std::error_code(const fs::path&)>& make) {
    std::error_code error;
    for (int i = 0; i < most_attempts; ++i) {
        fs::path beside = name;
        beside += ".new" + std::to_string(::getpid()) + "-" + std::to_string(i);
        error = make(beside);
        if (!error) return beside;
        if (error != std::errc::file_exists) break;
    }
    throw runtime_failure(failure::path_file_access_error,
                          utf8_from_path(name) + " can't be created: " + error.message());
}

void take_name(const fs::path& made, const fs::path& name, const expect_replaceable& check, const is_ours& ours) {
    try {
        for (int i = 0; i < most_attempts; ++i) {
            const std::error_code error = renamed_to_free_name(made, name);
            if (!error) return;
            if (error != std::errc::file_exists) {
                throw runtime_failure(failure::path_file_access_error,
                                      utf8_from_path(name) + " can't be created: " + error.message());
            }
            if (replaced(made, name, check)) return;
        }
        throw runtime_failure(failure::path_file_access_error,
                              utf8_from_path(name) + " keeps being changed by other programs");
    } catch (...) {
        remove_ours(made, ours);
        throw;
    }
}

void give_up_name(const fs::path& name, const is_ours& ours) noexcept {
    try {
        if (!ours(name)) return;
        const fs::path aside =
            make_beside(name, [&](const fs::path& beside) { return renamed_to_free_name(name, beside); });
        // something else may have taken the name since the check
        if (ours(aside))
            ::unlink(aside.c_str());
        else
            renamed_to_free_name(aside, name);
    } catch (const std::exception&) {
        // the name stays: nobody loses anything
    }
}

} // namespace desk
