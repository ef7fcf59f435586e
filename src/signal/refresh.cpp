#include "signal/refresh.h"

#include "link/button_at_work.h"
#include "link/commands.h"
#include "runtime/failure.h"
#include "runtime/subscript.h"

namespace desk {

refresh::refresh(exchange& link, status_frame& status, catalogue& rows, panel& switches)
    : link_(link), status_(status), rows_(rows), switches_(switches) {
    status_.cmd_refresh.on_click = [this] { cmd_refresh_click(); };
}

void refresh::cmd_refresh_click() {
    begin_work(status_.cmd_refresh, link_.host().events);
    status_.empty();
    link_.host().events.pump();
    while_doing([] { return "Reading what the generator outputs"; },
                [this] {
                    work steps(link_.progress, 4);
                    if (!read_timing()) return;
                    steps.step();
                    if (!read_pattern()) return;
                    steps.step();
                    if (!read_output_format()) return;
                    steps.step();
                    read_hdcp();
                });
    end_work(status_.cmd_refresh);
}

bool refresh::read_timing() {
    link_.tx_cmd(command::query(mnemonic::timing));
    if (!link_.rx_done) {
        rows_.cur_timing = not_known;
        status_.lab_timing.caption = link_error_label;
        return false;
    }
    rows_.cur_timing = as_number(last_of_answer(link_.rx_text, 3));
    // a row that the list doesn't have ends the program here
    status_.lab_timing.caption = rows_.lstv_timing.text(rows_.cur_timing);
    // the figures of the row that was selected before stay on show until the list's next event
    if (link_.view_mode == view::timing_select) {
        rows_.lstv_timing.select(rows_.cur_timing);
        rows_.lstv_timing.set_focus();
    }
    return true;
}

bool refresh::read_pattern() {
    link_.tx_cmd(command::query(mnemonic::pattern));
    if (!link_.rx_done) {
        rows_.cur_pattern = not_known;
        status_.lab_pattern.caption = link_error_label;
        return false;
    }
    rows_.cur_pattern = as_number(last_of_answer(link_.rx_text, 3));
    status_.lab_pattern.caption = rows_.lstv_pattern.text(rows_.cur_pattern);
    if (link_.view_mode == view::pattern_select) {
        rows_.lstv_pattern.select(rows_.cur_pattern);
        rows_.show_pattern_extras();
        rows_.lstv_pattern.set_focus();
    }
    return true;
}

bool refresh::read_output_format() {
    link_.tx_cmd(command::query(mnemonic::output_format));
    if (!link_.rx_done) {
        // the group on the panel stays as it was
        status_.lab_out.caption = link_error_label;
        return false;
    }
    const int value = as_number(last_of_answer(link_.rx_text, 3));
    if (value >= 1 && value <= 4) status_.lab_out.caption = element(switches_.cmd_out, value - 1).caption;
    if (link_.view_mode == view::panel_control) switches_.paint_out(value);
    return true;
}

void refresh::read_hdcp() {
    link_.tx_cmd(command::query(mnemonic::hdcp));
    if (!link_.rx_done) {
        status_.lab_hdcp.caption = link_error_label;
        if (link_.view_mode == view::panel_control) switches_.paint_hdcp(not_known);
        return;
    }
    const int value = last_of_answer(link_.rx_text, 1) == "0" ? 0 : 1;
    status_.lab_hdcp.caption = element(switches_.cmd_hdcp, value).caption;
    if (link_.view_mode == view::panel_control) switches_.paint_hdcp(value);
}

} // namespace desk
