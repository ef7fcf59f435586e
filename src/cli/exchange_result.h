#pragma once

#include "cli/desk_session.h"

#include <functional>

namespace desk::cli {

/// Does `work` as an event of the desk. Throws command_failure (failed) if the desk shows a box meanwhile.
void expect_no_box(desk_session& session, const std::function<void()>& work);

/// Throws command_failure (failed) if a label of the status frame shows a failed exchange.
void expect_status(const frm_main& desk);

} // namespace desk::cli
