#pragma once

#include "edid/shared_fields.h"
#include "edid/workbench_frame.h"

#include <filesystem>
#include <string>
#include <string_view>

namespace desk {

inline constexpr const char* rescued_read_name = "rescued_read.hex";
inline constexpr const char* rescued_write_name = "rescued_write.hex";

/// How many older files of a name stay when a window's text is rescued again: "rescued_read_1.hex" is the newest of
/// them.
inline constexpr int older_rescued_files = 10;

/// What a failure that ends the program must not take along: writes the EDID texts of the READ and WRITE windows that
/// no file holds as simple-type HEX files into `directory`, or where that can't be, into the system's folder for
/// temporary files. Gives a line for each window with EDID text, which tells where its text is now. Never fails.
std::string rescue_window_texts(const workbench_frame& view, const shared_fields& fields,
                                const std::filesystem::path& directory) noexcept;

/// The EDID text that a window's text begins with, without the lines that a failed read has put behind it; empty where
/// the window holds a status text.
std::string_view edid_text_of(std::string_view window_text);

/// Whether the desk would get all the bytes of an EDID text by opening the file.
bool file_holds(const std::string& path, std::string_view edid_text);

} // namespace desk
