#pragma once

#include <cstdint>
#include <string_view>

namespace desk {

/// How a file stores an EDID.
enum class file_kind : std::uint8_t { hex, bin, ddc, unknown };

/// The kind by the last three characters of a name, in either case.
/// Intended: it expects no point before them; "edidhex" is a HEX file too.
file_kind kind_by_last_characters(std::string_view name);

/// The kind by the extension of a file name, in either case. A file without one holds raw bytes.
file_kind kind_by_extension(std::string_view name);

} // namespace desk
