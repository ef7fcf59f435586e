#include "signal/set_dispatcher.h"

#include "link/button_at_work.h"
#include "link/commands.h"
#include "runtime/failure.h"
#include "runtime/numbers.h"

namespace desk {

namespace {

// the generator always has a favorite
constexpr int first_default_timing = 1;
constexpr int second_default_timing = 23;
constexpr int default_pattern = 1;

} // namespace

set_dispatcher::set_dispatcher(exchange& link, desk_frame& desk, status_frame& status, catalogue& rows, autorun& steps)
    : exchange_(link), desk_frame_(desk), status_(status), catalogue_(rows), autorun_(steps) {
    desk_frame_.cmd_run.on_click = [this] { cmd_run_click(); };
}

void set_dispatcher::cmd_run_click() {
    begin_work(desk_frame_.cmd_run, exchange_.host().events);
    switch (exchange_.view_mode) {
    case view::timing_select:
        set_row(catalogue_.lstv_timing, mnemonic::timing, status_.lab_timing, catalogue_.cur_timing);
        break;
    case view::pattern_select:
        set_row(catalogue_.lstv_pattern, mnemonic::pattern, status_.lab_pattern, catalogue_.cur_pattern);
        break;
    case view::favorite_timing:
        set_favorite_timings();
        break;
    case view::favorite_pattern:
        set_favorite_patterns();
        break;
    case view::autorun_config:
        upload_autorun();
        break;
    default:
        break;
    }
    end_work(desk_frame_.cmd_run);
}

void set_dispatcher::set_row(list_view& list, std::string_view letters, label& shown, std::int16_t& current) {
    shown.caption = "";
    exchange_.host().events.pump();
    const int row = list.selected();
    const std::string cmd = command::set(letters, row);
    exchange_.tx_cmd(cmd);
    // stricter than the rest of the desk: all six characters must be echoed
    if (exchange_.rx_done && exchange_.rx_text == cmd) {
        shown.caption = list.text(row);
        current = to_integer(row);
    } else {
        shown.caption = link_error_label;
    }
    list.set_focus();
}

void set_dispatcher::set_favorite_timings() {
    desk_frame_.cmd_download.enabled = false;
    const bool any_checked = send_flags(catalogue_.lstv_timing, exchange_.fav_timing_count,
                                        mnemonic::favorite_timing_on, mnemonic::favorite_timing_off);
    if (!any_checked && exchange_.rx_done) {
        // a catalogue without the second row ends the program here
        while_doing([] { return "Checking the default favorite timings"; },
                    [this] {
                        check_default(catalogue_.lstv_timing, first_default_timing);
                        check_default(catalogue_.lstv_timing, second_default_timing);
                    });
        // the result of the second command is ignored
        if (exchange_.tx_cmd_or_box(command::set(mnemonic::favorite_timing_on, first_default_timing)))
            exchange_.tx_cmd(command::set(mnemonic::favorite_timing_on, second_default_timing));
    }
    desk_frame_.cmd_download.enabled = true;
}

void set_dispatcher::set_favorite_patterns() {
    desk_frame_.cmd_download.enabled = false;
    const bool any_checked = send_flags(catalogue_.lstv_pattern, exchange_.fav_pattern_count,
                                        mnemonic::favorite_pattern_on, mnemonic::favorite_pattern_off);
    if (!any_checked && exchange_.rx_done) {
        // only one row, unlike the timings
        while_doing([] { return "Checking the default favorite pattern"; },
                    [this] { check_default(catalogue_.lstv_pattern, default_pattern); });
        exchange_.tx_cmd_or_box(command::set(mnemonic::favorite_pattern_on, default_pattern));
    }
    desk_frame_.cmd_download.enabled = true;
}

bool set_dispatcher::send_flags(const list_view& list, int count, std::string_view letters_on,
                                std::string_view letters_off) {
    bool any_checked = false;
    work rows(exchange_.progress, count);
    for (int i = 1; i <= count; ++i) {
        const bool checked = list.row(i).checked;
        any_checked = any_checked || checked;
        if (!exchange_.tx_cmd_or_box(command::set(checked ? letters_on : letters_off, i))) break;
        rows.step();
    }
    return any_checked;
}

void set_dispatcher::check_default(list_view& list, int row) {
    list.select(row);
    list.set_checked(row, true);
}

void set_dispatcher::upload_autorun() {
    desk_frame_.cmd_download.enabled = false;
    autorun_.upload_autorun();
    desk_frame_.cmd_download.enabled = true;
}

} // namespace desk
