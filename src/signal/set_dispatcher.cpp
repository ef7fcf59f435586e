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
        set_row(rows_.lstv_timing, mnemonic::timing, status_.lab_timing, rows_.cur_timing);
        break;
    case 1:
        set_row(rows_.lstv_pattern, mnemonic::pattern, status_.lab_pattern, rows_.cur_pattern);
        break;
    default:
        break;
    }
    desk_.cmd_run.back_color = color_button_face;
    desk_.cmd_run.enabled = true;
}

void set_dispatcher::set_row(list_view& list, std::string_view letters, label& shown, std::int16_t& current) {
    shown.caption = "";
    link_.host().events.pump();
    const int row = list.selected();
    const std::string cmd = command::set(letters, row);
    link_.tx_cmd(cmd);
    // stricter than the rest of the desk: the generator must echo all six characters
    if (link_.rx_done && link_.rx_text == cmd) {
        shown.caption = list.text(row);
        current = to_integer(row);
    } else {
        shown.caption = "Link Error";
    }
    list.set_focus();
}

} // namespace desk
