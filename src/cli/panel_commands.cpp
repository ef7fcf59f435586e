#include "cli/commands.h"
#include "cli/exchange_result.h"
#include "cli/operator.h"

#include <algorithm>

namespace desk::cli {

namespace {

/// The value whose button is lit; null: none.
json lit_value(const panel_group& group, panel& p) {
    const auto buttons = group.buttons(p);
    const auto lit =
        std::find_if(buttons.begin(), buttons.end(), [](const button& b) { return b.back_color == color_green; });
    return lit == buttons.end() ? json() : json(group.values.at(static_cast<std::size_t>(lit - buttons.begin())));
}

answer panel_answer(frm_main& desk) {
    answer a;
    for (const panel_group& group : panel_groups()) {
        const json value = lit_value(group, desk.panel);
        a.fields[group.name] = value;
        std::string name = group.name;
        name.resize(13, ' ');
        a.text += name + (value.is_null() ? "not known" : value.get<std::string>()) + "\n";
    }
    return a;
}

frm_main& open_panel(desk_session& session) {
    frm_main& desk = session.desk();
    press(desk.cmd_setup);
    return desk;
}

} // namespace

answer get_panel(desk_session& session) {
    frm_main& desk = open_panel(session);
    expect_no_box(session, [&] { press(desk.desk_frame.cmd_download); });
    // the Refresh in it shows its failures in the status frame
    expect_status(desk);
    return panel_answer(desk);
}

answer press_panel(desk_session& session, const panel_group& group, std::size_t value) {
    frm_main& desk = open_panel(session);
    button& member = group.buttons(desk.panel)[value];
    expect_no_box(session, [&] { press(member); });
    if (member.back_color != color_green)
        throw command_failure(outcome::failed, desk.exchange.rx_done
                                                   ? "the generator refuses " + std::string(group.name) + " " +
                                                         group.values.at(value) + " now"
                                                   : std::string(link_error_label));
    answer a = panel_answer(desk);
    a.text = std::string(group.name) + " " + group.values.at(value) + "\n";
    a.confirmation = true;
    return a;
}

answer reset_panel(desk_session& session) {
    frm_main& desk = open_panel(session);
    expect_no_box(session, [&] { press(desk.panel.cmd_reset); });
    answer a = panel_answer(desk);
    a.text = "Reset.\n";
    a.confirmation = true;
    return a;
}

} // namespace desk::cli
