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

/// The number of older files kept when a window's text is rescued again; "rescued_read_1.hex" is the newest.
inline constexpr int older_rescued_files = 10;

/// Saves the EDID texts of the READ and WRITE windows that no file holds before a failure ends the program: as simple
/// HEX files in `directory`; if that fails, in the folder that `user_folder` returns (it can be empty, or throw a
/// runtime_failure); finally in the system's folder for temporary files, under a free name and readable only by the
/// user. Returns a line for each window with EDID text: where its text is now, and which folders failed and why. Never
/// fails.
std::string rescue_window_texts(const workbench_frame& view, const shared_fields& fields,
                                const std::filesystem::path& directory,
                                const std::function<std::filesystem::path()>& user_folder = {}) noexcept;

/// The EDID text at the start of a window's text, without the message of a failed read after it; empty if the window
/// shows a message only.
std::string_view edid_text_of(std::string_view window_text);

/// Whether the desk would get all the bytes of an EDID text by opening the file.
bool file_holds(const std::string& path, std::string_view edid_text);

} // namespace desk
