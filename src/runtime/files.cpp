#include "runtime/files.h"

#include "runtime/failure.h"
#include "runtime/text.h"

#include <atomic>
#include <chrono>
#include <cstdint>
#include <random>
#include <system_error>

namespace desk {

namespace {

std::string reason_of(const std::error_code& error) {
    if (error == std::errc::not_supported) return "it is not a regular file";
    if (error == std::errc::device_or_resource_busy) return "another program has it open";
    return error.message();
}

runtime_failure not_read(const std::filesystem::path& path, const std::string& reason) {
    return {failure::path_file_access_error, "the file " + utf8_from_path(path) + " can't be read: " + reason};
}

runtime_failure not_written(const std::filesystem::path& path, const std::error_code& error) {
    return {failure::path_file_access_error,
            "the file " + utf8_from_path(path) + " can't be written: " + reason_of(error)};
}

constexpr std::string_view beside_start = "velotrace";
constexpr std::string_view beside_end = ".new";
constexpr std::size_t beside_digits = 8;

/// A short unique name in the same folder, so that nobody else's file is touched. No other thread gets the same name,
/// and another program hardly ever.
std::filesystem::path name_beside(const std::filesystem::path& path) {
    static std::atomic<std::uint32_t> next = std::random_device{}();
    std::string number = hex(next++);
    number.insert(0, beside_digits - number.size(), '0');
    std::filesystem::path beside = path;
    beside.replace_filename(std::string(beside_start) + number + std::string(beside_end));
    return beside;
}

bool is_name_beside(std::string_view name) {
    return name.size() == beside_start.size() + beside_digits + beside_end.size() && name.starts_with(beside_start) &&
           name.ends_with(beside_end) &&
           name.find_first_not_of("0123456789ABCDEF", beside_start.size()) == name.size() - beside_end.size();
}

/// Old enough that no program can still be writing it.
bool is_left_behind(const std::filesystem::directory_entry& file) {
    if (!is_name_beside(utf8_from_path(file.path().filename()))) return false;
    std::error_code error;
    if (!std::filesystem::is_regular_file(file.symlink_status(error))) return false;
    const std::filesystem::file_time_type written = file.last_write_time(error);
    return !error && std::filesystem::file_time_type::clock::now() - written > std::chrono::minutes(1);
}

/// Whether a file can't be replaced but may be writable: its folder is protected, the system has it in use, or a new
/// file can't get its owner, group, access list and mode.
bool keeps_names(const std::error_code& error) {
    for (const std::errc kept : {std::errc::permission_denied, std::errc::operation_not_permitted,
                                 std::errc::read_only_file_system, std::errc::device_or_resource_busy}) {
        if (error == kept) return true;
    }
    return false;
}

/// Resolves links whose target need not exist.
std::filesystem::path end_of_links(std::filesystem::path path) {
    constexpr int most_links = 40;
    std::error_code error;
    for (int i = 0; i < most_links && std::filesystem::is_symlink(path, error); ++i)
        path = path.parent_path() / std::filesystem::read_symlink(path, error);
    return path;
}

/// Creates the file beside `target` and renames it over `target`.
std::error_code put_in_place_of(const std::filesystem::path& target, bool is_there, std::string_view bytes,
                                outlives worst) {
    std::filesystem::path beside;
    std::error_code error;
    do {
        beside = name_beside(target);
        error = is_there ? write_new_file_like(target, beside, bytes, worst)
                         : write_new_file(beside, bytes, worst, open_to::others);
    } while (error == std::errc::file_exists);
    return error ? error : rename_over(beside, target, worst);
}

std::error_code replace(const std::filesystem::path& path, std::string_view bytes, outlives worst) {
    const bool is_there = type_of_file(path) != std::filesystem::file_type::not_found;
    // a write-protected file is not replaced either
    const old_file_state old = is_there ? look_at_old_file(path) : old_file_state();
    if (old.error) return old.error;
    const std::filesystem::path target = end_of_links(path);
    // the folder is scanned once for each file saved by hand, not for each of thousands
    if (worst == outlives::power_loss) remove_left_behind(target.parent_path());
    if (!old.has_one_name) return write_in_place(target, bytes, worst);
    const std::error_code error = put_in_place_of(target, is_there, bytes, worst);
    return is_there && keeps_names(error) ? write_in_place(target, bytes, worst) : error;
}

} // namespace

std::string read_start_of_file(const std::filesystem::path& path, std::size_t most) {
    std::string content;
    const std::error_code error = read_file(path, most, content);
    if (error == std::errc::no_such_file_or_directory || error == std::errc::not_a_directory)
        throw runtime_failure(failure::file_not_found, "the file " + utf8_from_path(path) + " does not exist");
    if (error) throw not_read(path, reason_of(error));
    return content;
}

std::string read_whole_file(const std::filesystem::path& path) {
    std::string content = read_start_of_file(path, longest_file + 1);
    if (content.size() > longest_file) throw not_read(path, "it is longer than 16 MB");
    return content;
}

void remove_left_behind(const std::filesystem::path& folder) {
    std::error_code error;
    std::filesystem::directory_iterator file(folder, error);
    for (; !error && file != std::filesystem::directory_iterator(); file.increment(error)) {
        std::error_code ignored;
        if (is_left_behind(*file)) std::filesystem::remove(file->path(), ignored);
    }
}

void replace_whole_file(const std::filesystem::path& path, std::string_view bytes, outlives worst) {
    if (const std::error_code error = replace(path, bytes, worst)) throw not_written(path, error);
}

void write_over_file(const std::filesystem::path& path, std::string_view bytes) {
    std::string content(bytes);
    if (type_of_file(path) == std::filesystem::file_type::regular) {
        const std::string old = read_whole_file(path);
        if (old.size() > content.size()) content.append(old, content.size());
    }
    replace_whole_file(path, content);
}

} // namespace desk
