#include "signal/autorun.h"

#include "runtime/numbers.h"
#include "runtime/text.h"
#include "runtime/windows_1252.h"

namespace desk {

namespace {

/// A row's number from the second and third characters of its name. The list's order is not consulted: the catalogue
/// keeps the two equal.
int number_in_name(const std::string& name) {
    // one byte a character
    const std::string characters = bytes_from_text(name);
    return to_integer(val(part_of_answer(characters, 2, 2)));
}

/// Chooses the item with exactly this text; leaves the choice if there is none.
void choose_text(combo_box& list, const std::string& text) {
    for (int i = 0; i < list.list_count(); ++i) {
        if (list.item(i) != text) continue;
        list.set_list_index(i);
        return;
    }
}

} // namespace

autorun::autorun(exchange& link, desk_frame& desk, catalogue& rows)
    : exchange_(link), desk_frame_(desk), catalogue_(rows) {
    lstv_auto.columns = {{"No.", 660}, {"Timing", 2940}, {"Pattern", 3240}, {"Interval (sec)", 1500}};
    cmd_auto.on_click = [this] { cmd_auto_click(); };
    cmd_replace.on_click = [this] { cmd_replace_click(); };
    cmd_delete.on_click = [this] { cmd_delete_click(); };
    lstv_auto.on_double_click = [this] { lstv_auto_dbl_click(); };
}

void autorun::fill_intervals() {
    for (const int seconds : {5,   10,  15,  20,  25,  30,  40,  50,  60,  70,  80,  90,  100, 110, 120, 150,
                              180, 210, 240, 270, 300, 330, 360, 390, 420, 450, 480, 510, 540, 570, 600})
        cbo_interval.add_item(number_text(seconds), cbo_interval.list_count());
}

void autorun::fill_rows() {
    for (int i = 1; i <= autorun_rows; ++i) {
        lstv_auto.add_row(number_text(i));
        lstv_auto.set_sub_item(i, 1, "");
        lstv_auto.set_sub_item(i, 2, "");
        lstv_auto.set_sub_item(i, 3, autorun_unused);
    }
}

void autorun::cmd_auto_click() {
    catalogue_.change_view(view::autorun_config);
    lab_auto.caption = "Press [Download] to download VELOTRACE Autorun settings.\r\n"
                       "Press [Add/Replace], [Delete] to Edit your Autorun settings.\r\n"
                       "Press [SET] to upload Autorun settings to VELOTRACE.";
    desk_frame_.cmd_download.left = download_left_over_frame;
    desk_frame_.cmd_download.top = download_top_over_frame;
    fra_auto.visible = true;
    desk_frame_.cmd_run.visible = true;
    desk_frame_.cmd_download.visible = true;
    catalogue_.cbo_timing.set_list_index(0);
    catalogue_.cbo_pattern.set_list_index(0);
    cbo_interval.set_list_index(0);
}

void autorun::cmd_replace_click() {
    set_selected_row(catalogue_.cbo_timing.text(), catalogue_.cbo_pattern.text(), cbo_interval.text());
}

void autorun::cmd_delete_click() { set_selected_row("", "", autorun_unused); }

void autorun::set_selected_row(const std::string& timing, const std::string& pattern, const std::string& interval) {
    const int row = lstv_auto.selected();
    // a press while a download has just emptied the list finds no row
    if (row == 0) return;
    lstv_auto.set_sub_item(row, 1, timing);
    lstv_auto.set_sub_item(row, 2, pattern);
    lstv_auto.set_sub_item(row, 3, interval);
}

void autorun::lstv_auto_dbl_click() {
    const int row = lstv_auto.selected();
    if (row == 0) return;
    choose_text(catalogue_.cbo_timing, lstv_auto.sub_item(row, 1));
    choose_text(catalogue_.cbo_pattern, lstv_auto.sub_item(row, 2));
    choose_text(cbo_interval, trim(lstv_auto.sub_item(row, 3)));
}

void autorun::upload_autorun() {
    work rows(exchange_.progress, autorun_rows);
    for (int i = 1; i <= autorun_rows; ++i) {
        if (!upload_row(i)) return;
        rows.step();
    }
}

bool autorun::upload_row(int row) {
    if (!send(mnemonic::autorun_row, row)) return false;
    if (lstv_auto.sub_item(row, 3) == autorun_unused)
        return send(mnemonic::autorun_timing, 1) && send(mnemonic::autorun_pattern, 1) &&
               send(mnemonic::autorun_interval, 0);
    return send(mnemonic::autorun_timing, number_in_name(lstv_auto.sub_item(row, 1))) &&
           send(mnemonic::autorun_pattern, number_in_name(lstv_auto.sub_item(row, 2))) &&
           send(mnemonic::autorun_interval, to_integer(val(lstv_auto.sub_item(row, 3))));
}

bool autorun::send(std::string_view letters, int argument) {
    return exchange_.tx_cmd_or_box(command::set(letters, argument));
}

} // namespace desk
