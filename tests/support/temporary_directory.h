#pragma once

#include "runtime/files.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <string_view>

namespace desk::test {

/// A new empty directory; deletes itself with its files.
class temporary_directory {
public:
    temporary_directory() {
        std::random_device random;
        do
            path_ = std::filesystem::temp_directory_path() / ("desk_test_" + std::to_string(random()));
        while (!std::filesystem::create_directory(path_));
    }
    temporary_directory(const temporary_directory&) = delete;
    temporary_directory& operator=(const temporary_directory&) = delete;
    ~temporary_directory() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }

    const std::filesystem::path& path() const { return path_; }
    /// The path with "/" as separator on every system, so that it can be quoted unchanged.
    std::string plain_name() const {
        const std::u8string name = path_.generic_u8string();
        return {name.begin(), name.end()};
    }
    std::filesystem::path operator/(std::string_view name) const {
        // with native separators
        return (path_ / path_from_utf8(name)).make_preferred();
    }

    void put(std::string_view name, std::string_view content) const {
        std::ofstream(*this / name, std::ios::binary) << content;
    }
    std::string content(std::string_view name) const {
        std::ifstream file(*this / name, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    }
    bool has(std::string_view name) const { return std::filesystem::exists(*this / name); }
    std::size_t file_count() const {
        return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(path_), {}));
    }

private:
    std::filesystem::path path_;
};

} // namespace desk::test
