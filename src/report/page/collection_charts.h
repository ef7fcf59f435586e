#pragma once

#include "drawing/markup_writer.h"
#include "report/page/index_row.h"

#include <span>

namespace desk::page {

/// The charts of a collection: years, resolutions, findings, the desk's outcome.
void write_collection_charts(drawing::markup_writer& out, std::span<const index_row> rows);

} // namespace desk::page
