#pragma once

#include "runtime/bytes.h"
#include "support/temporary_directory.h"

#include <cstdint>
#include <random>
#include <string>
#include <vector>

namespace desk::test {

/// The desk's directory with all sorts of files: good ones, bad ones, read-only ones, a folder instead of a file,
/// names of missing files, and names to save to.
class soak_files {
public:
    explicit soak_files(std::mt19937_64& random);
    soak_files(const soak_files&) = delete;
    soak_files& operator=(const soak_files&) = delete;
    ~soak_files();

    /// With "/" as separator on every system, so that it can be quoted unchanged.
    std::filesystem::path path() const { return path_from_utf8(directory_.plain_name()); }
    /// Names for the operator to choose from; some occur several times.
    const std::vector<std::string>& names() const { return names_; }

    /// Changes or removes a random file.
    void change_some();
    /// EDID-like bytes: good, slightly wrong or unrecognizable.
    bytes some_edid();

    /// Breaks the settings file or the catalogue, so that the desk can't start.
    void spoil_start();
    void mend_start();

private:
    std::string some_content();
    int below(int limit) { return static_cast<int>(random_() % static_cast<std::uint64_t>(limit)); }

    std::mt19937_64& random_;
    temporary_directory directory_;
    std::vector<std::string> names_;
};

} // namespace desk::test
