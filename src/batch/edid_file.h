#pragma once

#include "batch/input_files.h"
#include "edid/buffer.h"

#include <filesystem>
#include <string>

namespace desk::batch {

/// What a file holds, as the two blocks that the desk would have of it.
struct edid_file {
    edid_buffer edid{};
    std::string remark; ///< what the operator should know of it: that it was filled up or cut; empty: nothing
};

/// Reads a file with the desk's own readers. Throws runtime_failure for one that can't be read or holds no EDID.
edid_file read_edid_file(const std::filesystem::path& path, file_kind kind);

} // namespace desk::batch
