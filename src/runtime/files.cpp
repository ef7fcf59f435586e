#include "runtime/files.h"

#include "runtime/failure.h"
#include "runtime/text.h"

#include <array>
#include <atomic>
#include <chrono>
#include <cstdint>
#include <fstream>
#include <random>
#include <system_error>

namespace desk {

std::filesystem::path path_from_utf8(std::string_view text) { return {std::u8string(text.begin(), text.end())}; }

std::string utf8_from_path(const std::filesystem::path& path) {
    const std::u8string text = path.u8string();
    return {text.begin(), text.end()};
}

std::string read_whole_file(const std::filesystem::path& path, std::size_t longest) {
    const auto name = [&] { return "the file " + utf8_from_path(path); };
    std::error_code error;
    const auto status = std::filesystem::status(path, error);
    if (status.type() == std::filesystem::file_type::not_found)
        throw runtime_failure(failure::file_not_found, name() + " does not exist");
    std::ifstream file(path, std::ios::binary);
    if (!file.is_open() || std::filesystem::is_directory(status))
        throw runtime_failure(failure::path_file_access_error, name() + " can't be read");
    std::string content;
    std::array<char, 16384> piece{};
    // what can't be read to its end is not taken for the whole
    while (file.read(piece.data(), piece.size()), file.gcount() > 0) {
        content.append(piece.data(), static_cast<std::size_t>(file.gcount()));
        if (content.size() > longest)
            throw runtime_failure(failure::path_file_access_error, name() + " is too long to be read");
    }
    if (file.bad() || !file.eof())
        throw runtime_failure(failure::path_file_access_error, name() + " can't be read to its end");
    return content;
}

namespace {

runtime_failure not_written(const std::filesystem::path& path, const std::error_code& why = {}) {
    const std::string reason = why ? ": " + why.message() : "";
    return {failure::path_file_access_error, "the file " + utf8_from_path(path) + " can't be written" + reason};
}

void write_over(const std::filesystem::path& path, std::string_view bytes) {
    // opened for reading too, it is not cut
    std::fstream file(path, std::ios::binary | std::ios::out | std::ios::in);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    file.close();
    if (!file) throw not_written(path);
}

void write_to_device(const std::filesystem::path& path, std::string_view bytes) {
    std::ofstream device(path, std::ios::binary);
    device.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    device.close();
    if (!device) throw not_written(path);
}

constexpr std::string_view beside_start = "velotrace";
constexpr std::string_view beside_end = ".new";
constexpr std::size_t beside_digits = 8;

/// A short name of its own in the same folder, so that no file of somebody else's is touched; no other thread and, as
/// good as surely, no other program has the same.
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

/// Whether a folder keeps its names as they are, though a file in it may be open to writing: the folder is protected,
/// or the file is one that the system holds fast.
bool keeps_names(const std::error_code& error) {
    for (const std::errc kept : {std::errc::permission_denied, std::errc::operation_not_permitted,
                                 std::errc::read_only_file_system, std::errc::device_or_resource_busy}) {
        if (error == kept) return true;
    }
    return false;
}

std::error_code put_in_place_of(const std::filesystem::path& target, std::filesystem::perms permissions,
                                std::string_view bytes, outlives worst) {
    std::filesystem::path beside;
    std::error_code error;
    do
        error = write_new_file(beside = name_beside(target), bytes, worst);
    while (error == std::errc::file_exists);
    if (error) return error;
    std::error_code ignored;
    if (permissions != std::filesystem::perms::unknown && permissions != std::filesystem::perms::none)
        std::filesystem::permissions(beside, permissions, ignored);
    error = rename_over(beside, target, worst);
    if (error) std::filesystem::remove(beside, ignored);
    return error;
}

void overwrite_and_cut(const std::filesystem::path& file, std::string_view bytes) {
    write_over(file, bytes);
    std::error_code error;
    std::filesystem::resize_file(file, bytes.size(), error);
    if (!error) error = flush_to_disk(file);
    if (error) throw not_written(file, error);
}

/// Makes an existing file hold these bytes and no more, where it stands.
void rewrite(const std::filesystem::path& file, std::string_view bytes) {
    const std::string old = read_whole_file(file);
    try {
        overwrite_and_cut(file, bytes);
    } catch (const runtime_failure&) {
        // a disk that got full has still the room that the old bytes had
        overwrite_and_cut(file, old);
        throw;
    }
}

} // namespace

void remove_left_behind(const std::filesystem::path& folder) {
    std::error_code error;
    std::filesystem::directory_iterator file(folder, error);
    for (; !error && file != std::filesystem::directory_iterator(); file.increment(error)) {
        std::error_code ignored;
        if (is_left_behind(*file)) std::filesystem::remove(file->path(), ignored);
    }
}

void replace_whole_file(const std::filesystem::path& path, std::string_view bytes, outlives worst) {
    std::error_code error;
    // a link to a file stays a link, and the new file is as open to others as the old one
    const std::filesystem::path old_file = std::filesystem::canonical(path, error);
    const std::filesystem::path target = error ? path : old_file;
    const std::filesystem::file_status old_status = std::filesystem::status(target, error);
    const bool is_there = std::filesystem::exists(old_status);
    // a device is no file that could be replaced
    if (is_there && !std::filesystem::is_regular_file(old_status)) return write_to_device(target, bytes);
    // one that is protected from writing is not replaced either
    if (is_there && !std::ofstream(target, std::ios::binary | std::ios::app)) throw not_written(path);
    // the folder is looked through once for each file saved by hand, not for each of thousands
    if (worst == outlives::power_loss) remove_left_behind(target.parent_path());
    error = put_in_place_of(target, old_status.permissions(), bytes, worst);
    if (is_there && keeps_names(error)) return rewrite(target, bytes);
    if (error) throw not_written(path, error);
}

void write_over_file(const std::filesystem::path& path, std::string_view bytes) {
    std::string content(bytes);
    std::error_code error;
    if (std::filesystem::is_regular_file(path, error)) {
        const std::string old = read_whole_file(path);
        if (old.size() > content.size()) content.append(old, content.size());
    }
    replace_whole_file(path, content);
}

} // namespace desk
