#pragma once

#include <string>

namespace desk {

/// The main window's caption: the program's name, followed by the file of the WRITE window if there is one.
inline constexpr const char* title = "VELOTRACE ";

inline std::string title_with(const std::string& edid_file_name) { return std::string(title) + " - " + edid_file_name; }

} // namespace desk
