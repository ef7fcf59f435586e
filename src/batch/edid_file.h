#pragma once

#include "edid/format/buffer.h"
#include "edid/format/file_kind.h"

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace desk::batch {

/// The EDID in a file.
struct edid_file {
    std::vector<std::uint8_t> bytes; ///< all of it; at least one
    edid_buffer edid{};              ///< the two blocks that the desk gets
    std::string remark;              ///< a note that the EDID was filled up or cut; empty: neither
};

/// Reads the content of a file with the desk's readers. Throws runtime_failure if it holds no EDID.
edid_file edid_in(std::string_view file, file_kind kind);

/// Reads a file with the desk's readers. Throws runtime_failure for a file that can't be read or holds no EDID.
edid_file read_edid_file(const std::filesystem::path& path, file_kind kind);

} // namespace desk::batch
