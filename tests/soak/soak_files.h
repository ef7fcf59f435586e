#pragma once

#include "runtime/bytes.h"
#include "support/temporary_directory.h"

#include <cstdint>
#include <random>
#include <string>
#include <vector>

namespace desk::test {

/// The desk's directory with files of every fate in it: good ones, bad ones, read-only ones, a folder where a file is
/// expected, names of files that are not there, and names to save under.
class soak_files {
public:
    explicit soak_files(std::mt19937_64& random);

    const std::filesystem::path& path() const { return directory_.path(); }
    /// What an operator may choose; some names come several times.
    const std::vector<std::string>& names() const { return names_; }

    /// Some file gets another content or goes away.
    void change_some();
    /// Bytes like those of an EDID, good, a little wrong or beyond recognition.
    bytes some_edid();

    /// The settings file or the catalogue becomes one that the desk can't start with.
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
