#include "cli/exchange_result.h"

#include "cli/answer.h"

namespace desk::cli {

void expect_no_box(desk_session& session, const std::function<void()>& work) {
    auto& shown = session.boxes().shown;
    shown.clear();
    work();
    if (!shown.empty()) throw command_failure(outcome::failed, shown.back());
}

void expect_status(const frm_main& desk) {
    const status_frame& status = desk.status_frame;
    for (const label* shown : {&status.lab_timing, &status.lab_pattern, &status.lab_out, &status.lab_hdcp}) {
        if (shown->caption == link_error_label) throw command_failure(outcome::failed, link_error_label);
    }
}

} // namespace desk::cli
