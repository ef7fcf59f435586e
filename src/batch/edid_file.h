#pragma once

#include "edid/format/buffer.h"
#include "edid/format/file_kind.h"

#include <filesystem>
#include <string>

namespace desk::batch {

/// The two blocks that the desk gets from a file.
struct edid_file {
    edid_buffer edid{};
    std::string remark; ///< a note that the EDID was filled up or cut; empty: neither
};

/// Reads a file with the desk's readers. Throws runtime_failure for a file that can't be read or holds no EDID.
edid_file read_edid_file(const std::filesystem::path& path, file_kind kind);

} // namespace desk::batch
