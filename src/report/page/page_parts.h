#pragma once

#include <string_view>

namespace desk::page {

/// The content of page.css and index.js, without characters that HTML or XML would read as markup, and their SHA-256
/// digests in hexadecimal. The build writes them.
extern const std::string_view style_sheet;
extern const std::string_view style_sheet_sha256;
extern const std::string_view index_script;
extern const std::string_view index_script_sha256;

} // namespace desk::page
