#include "signal/refresh.h"

#include "link/button_at_work.h"
#include "link/commands.h"
#include "runtime/failure.h"
#include "runtime/subscript.h"

namespace desk {

refresh::refresh(exchange& link, status_frame& status, catalogue& rows, panel& switches)
    : exchange_(link), status_(status), catalogue_(rows), panel_(switches) {
    status_.cmd_refresh.on_click = [this] { cmd_refresh_click(); };
}

void refresh::cmd_refresh_click() {
    begin_work(status_.cmd_refresh, exchange_.host().events);
    status_.empty();
    exchange_.host().events.pump();
    while_doing([] { return "Reading what the generator outputs"; },
                [this] {
                    work steps(exchange_.progress, 4);
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
    exchange_.tx_cmd(command::query(mnemonic::timing));
    if (!exchange_.rx_done) {
        catalogue_.cur_timing = not_known;
        status_.lab_timing.caption = link_error_label;
        return false;
    }
    catalogue_.cur_timing = as_number(last_of_answer(exchange_.rx_text, 3));
    // a row missing from the list ends the program here
    status_.lab_timing.caption = catalogue_.lstv_timing.text(catalogue_.cur_timing);
    // the figures of the previously selected row stay until the list's next event
    if (exchange_.view_mode == view::timing_select) {
        catalogue_.lstv_timing.select(catalogue_.cur_timing);
        catalogue_.lstv_timing.set_focus();
    }
    return true;
}

bool refresh::read_pattern() {
    exchange_.tx_cmd(command::query(mnemonic::pattern));
    if (!exchange_.rx_done) {
        catalogue_.cur_pattern = not_known;
        status_.lab_pattern.caption = link_error_label;
        return false;
    }
    catalogue_.cur_pattern = as_number(last_of_answer(exchange_.rx_text, 3));
    status_.lab_pattern.caption = catalogue_.lstv_pattern.text(catalogue_.cur_pattern);
    if (exchange_.view_mode == view::pattern_select) {
        catalogue_.lstv_pattern.select(catalogue_.cur_pattern);
        catalogue_.show_pattern_extras();
        catalogue_.lstv_pattern.set_focus();
    }
    return true;
}

bool refresh::read_output_format() {
    exchange_.tx_cmd(command::query(mnemonic::output_format));
    if (!exchange_.rx_done) {
        // the panel's group does not change
        status_.lab_out.caption = link_error_label;
        return false;
    }
    const int value = as_number(last_of_answer(exchange_.rx_text, 3));
    if (value >= 1 && value <= 4) status_.lab_out.caption = element(panel_.cmd_out, value - 1).caption;
    if (exchange_.view_mode == view::panel_control) panel_.paint_out(value);
    return true;
}

void refresh::read_hdcp() {
    exchange_.tx_cmd(command::query(mnemonic::hdcp));
    if (!exchange_.rx_done) {
        status_.lab_hdcp.caption = link_error_label;
        if (exchange_.view_mode == view::panel_control) panel_.paint_hdcp(not_known);
        return;
    }
    const int value = last_of_answer(exchange_.rx_text, 1) == "0" ? 0 : 1;
    status_.lab_hdcp.caption = element(panel_.cmd_hdcp, value).caption;
    if (exchange_.view_mode == view::panel_control) panel_.paint_hdcp(value);
}

} // namespace desk
