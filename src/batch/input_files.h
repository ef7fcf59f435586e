#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace desk::batch {

/// A file to report on. There can be very many of them, so the folder is stored once.
struct input_file {
    std::uint32_t folder = 0; ///< index in input_files::folders
    std::string name;
    bool keeps_extension = false;  ///< other files differ only in their extension
    std::uint8_t kept_folders = 0; ///< how many folders its report's name has, since names alone would be equal
    bool shares_name = false;      ///< another file's report has the same name nevertheless
};

/// The files that the command line names.
struct input_files {
    std::vector<std::string> folders; ///< as named, with a separator at the end; "" is the current folder
    std::vector<input_file> files;
    std::vector<std::string> problems; ///< a sentence for each file or folder without a report

    std::string path_of(const input_file& file) const { return folders.at(file.folder) + file.name; }
    /// The name of a file's report without its extension: "a", "a.hex", "folder_a".
    std::string report_name(const input_file& file) const;
};

/// Finds the named files, and the files of known kinds in the named folders, sorted by name.
input_files find_input_files(const std::vector<std::string>& names);

} // namespace desk::batch
