#pragma once

#include "edid/format/buffer.h"
#include "translate/decode/translation_tables.h"

#include <string>
#include <string_view>

namespace desk {

/// The start of every report.
inline constexpr std::string_view report_title = "EDID Analysis Report ";

/// Builds the report of an EDID in `report_text`: everything that the translation shows, in a fixed order. Takes any
/// 256 bytes, even those whose tree can't be built. Fills `tables`, and sets `sn_value` to the EDID's serial number.
/// Returns true for a complete report, false for an EDID without a header, which the report says. Throws what the
/// decoders throw; the arguments then keep what was written before.
bool report_build(std::string& report_text, const edid_buffer& trans_buff, translation_tables& tables, double& sn_value,
                  std::string_view date, std::string_view time);

} // namespace desk
