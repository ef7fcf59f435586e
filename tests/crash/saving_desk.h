#pragma once

#include "support/temporary_directory.h"

#include <cstddef>
#include <string>
#include <vector>

namespace desk::test {

/// The program's folder, and a script that saves over and over: a HEX file, a report, and, by ending the program, the
/// settings.
class saving_desk {
public:
    explicit saving_desk(int rounds);

    const std::vector<std::string>& script() const { return script_; }
    std::filesystem::path folder() const { return directory_.path(); }
    /// The script file, and the file for its answers.
    std::filesystem::path script_file() const { return outside_ / "script"; }
    std::filesystem::path answer_file() const { return outside_ / "answers"; }

    /// Restores the folder to its state before the first line.
    void begin_again() const;

    /// What is wrong with the files of a desk killed after `answered` answers. Empty: each is complete, as it was
    /// before or after the current line.
    std::string fault_after(std::size_t answered) const;

    /// Number of leftover temporary files.
    std::size_t left_behind() const;

private:
    void add_round(const std::string& edid);
    void add(const std::string& line) { script_.push_back(line); }
    std::vector<std::string> saved_files() const;
    std::string path_in_script(const std::string& name) const { return '"' + utf8_from_path(directory_ / name) + '"'; }

    temporary_directory directory_;
    temporary_directory outside_;
    std::vector<std::string> script_;
    std::vector<std::vector<std::string>> files_after_; // by number of lines
};

} // namespace desk::test
