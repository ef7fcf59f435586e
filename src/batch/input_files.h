#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace desk::batch {

/// How a file holds its EDID.
enum class file_kind : std::uint8_t { hex, bin, ddc, unknown };

/// By a file name's extension; a name without one is that of raw bytes.
file_kind kind_of(std::string_view name);

/// A file to report on. There can be very many of them: the folder is kept once.
struct input_file {
    std::uint32_t folder = 0;     ///< index in input_files::folders
    bool keeps_extension = false; ///< other files have the same name but for the extension
    bool name_taken = false;      ///< another file's report has the same name
    std::string name;
};

/// The files that the command line names.
struct input_files {
    std::vector<std::string> folders; ///< each as it was named, with its separator at the end; "" is the present one
    std::vector<input_file> files;
    std::vector<std::string> problems; ///< what can't be reported on, a sentence each

    std::string path_of(const input_file& file) const { return folders.at(file.folder) + file.name; }
};

/// Finds the files: those named, and those of known kinds in the folders named, in the order of their names.
input_files find_input_files(const std::vector<std::string>& names);

/// The name of a file's report, without the ".txt".
std::string_view report_name(const input_file& file);

} // namespace desk::batch
