#pragma once

#include "edid/shared_fields.h"
#include "edid/workbench_frame.h"

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>

namespace desk {

inline constexpr const char* rescued_read_name = "rescued_read.hex";
inline constexpr const char* rescued_write_name = "rescued_write.hex";

/// How many older files of a name stay when a window's text is rescued again: "rescued_read_1.hex" is the newest of
/// them.
inline constexpr int older_rescued_files = 10;

/// What a failure that ends the program must not take along: writes the EDID texts of the READ and WRITE windows that
/// no file holds as simple-type HEX files into `directory`. If that fails, into the folder that `user_folder` returns
/// or throws a runtime_failure for (none: it is left out), and at last into the system's folder for temporary files,
/// under a name that is free there, for the user alone. Returns a line for each window with EDID text, which says where
/// its text is now and which folders failed, and why. Never fails.
std::string rescue_window_texts(const workbench_frame& view, const shared_fields& fields,
                                const std::filesystem::path& directory,
                                const std::function<std::filesystem::path()>& user_folder = {}) noexcept;

/// The EDID text that a window's text begins with, without the lines that a failed read has put behind it; empty where
/// the window holds a status text.
std::string_view edid_text_of(std::string_view window_text);

/// Whether the desk would get all the bytes of an EDID text by opening the file.
bool file_holds(const std::string& path, std::string_view edid_text);

} // namespace desk
