#include "signal/set_dispatcher.h"

#include "link/commands.h"
#include "runtime/numbers.h"

namespace desk {

set_dispatcher::set_dispatcher(exchange& link, desk_frame& desk, status_frame& status, catalogue& rows)
    : link_(link), desk_(desk), status_(status), rows_(rows) {
    desk_.cmd_run.on_click = [this] { cmd_run_click(); };
}

void set_dispatcher::cmd_run_click() {
    desk_.cmd_run.enabled = false;
    link_.host().events.pump();
    desk_.cmd_run.back_color = color_red;
    switch (link_.view_mode) {
    case 0:
        set_timing();
        break;
    case 1:
        set_pattern();
        break;
    default:
        break;
    }
    desk_.cmd_run.back_color = color_button_face;
    desk_.cmd_run.enabled = true;
}

bool set_dispatcher::sent_and_echoed(std::string_view cmd) {
    link_.tx_cmd(cmd);
    // stricter than the rest of the desk: the generator must echo all six characters
    return link_.rx_done && link_.rx_text == cmd;
}

void set_dispatcher::set_timing() {
    status_.lab_timing.caption = "";
    link_.host().events.pump();
    const int row = rows_.lstv_timing.selected();
    if (sent_and_echoed(command::set(mnemonic::timing, row))) {
        status_.lab_timing.caption = rows_.lstv_timing.text(row);
        rows_.cur_timing = to_integer(row);
    } else {
        status_.lab_timing.caption = "Link Error";
    }
    rows_.lstv_timing.set_focus();
}

void set_dispatcher::set_pattern() {
    status_.lab_pattern.caption = "";
    link_.host().events.pump();
    const int row = rows_.lstv_pattern.selected();
    if (sent_and_echoed(command::set(mnemonic::pattern, row))) {
        status_.lab_pattern.caption = rows_.lstv_pattern.text(row);
        rows_.cur_pattern = to_integer(row);
    } else {
        status_.lab_pattern.caption = "Link Error";
    }
    rows_.lstv_pattern.set_focus();
}

} // namespace desk
