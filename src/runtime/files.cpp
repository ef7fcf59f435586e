#include "runtime/files.h"

#include "runtime/failure.h"

#include <array>
#include <atomic>
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

runtime_failure not_written(const std::filesystem::path& path) {
    return {failure::path_file_access_error, "the file " + utf8_from_path(path) + " can't be written"};
}

void write_file(const std::filesystem::path& path, std::string_view bytes) {
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    file.close();
    if (!file) throw not_written(path);
}

/// A short name of its own in the same folder, so that no file of somebody else's is touched; no other thread and, as
/// good as surely, no other program has the same.
std::filesystem::path unused_name_beside(const std::filesystem::path& path) {
    static std::atomic<unsigned> next = std::random_device{}();
    std::filesystem::path beside = path;
    std::error_code error;
    do
        beside.replace_filename("velotrace" + std::to_string(next++) + ".new");
    while (std::filesystem::exists(beside, error));
    return beside;
}

} // namespace

void replace_whole_file(const std::filesystem::path& path, std::string_view bytes) {
    std::error_code error;
    // a link to a file stays a link, and the new file is as open to others as the old one
    const std::filesystem::path old_file = std::filesystem::canonical(path, error);
    const std::filesystem::path target = error ? path : old_file;
    const std::filesystem::file_status old_status = std::filesystem::status(target, error);
    // a device is no file that could be replaced
    if (std::filesystem::exists(old_status) && !std::filesystem::is_regular_file(old_status))
        return write_file(target, bytes);
    const std::filesystem::perms permissions = old_status.permissions();
    // one that is protected from writing is not replaced either
    if (std::filesystem::exists(old_status) && !std::ofstream(target, std::ios::binary | std::ios::app))
        throw not_written(path);
    const std::filesystem::path beside = unused_name_beside(target);
    try {
        write_file(beside, bytes);
    } catch (const runtime_failure&) {
        std::filesystem::remove(beside, error);
        throw not_written(path);
    }
    if (permissions != std::filesystem::perms::unknown && permissions != std::filesystem::perms::none)
        std::filesystem::permissions(beside, permissions, error);
    std::filesystem::rename(beside, target, error);
    if (error) {
        std::error_code ignored;
        std::filesystem::remove(beside, ignored);
        throw runtime_failure(failure::path_file_access_error,
                              "the file " + utf8_from_path(path) + " can't be replaced: " + error.message());
    }
}

void write_over_file(const std::filesystem::path& path, std::string_view bytes) {
    // opened for reading too, it is not cut; what is not there has to be made first
    std::error_code error;
    const auto reading = std::filesystem::exists(path, error) ? std::ios::in : std::ios::openmode();
    std::fstream file(path, std::ios::binary | std::ios::out | reading);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    file.close();
    if (!file) throw not_written(path);
}

} // namespace desk
