#include "signal/download.h"

#include "link/button_at_work.h"
#include "link/commands.h"
#include "runtime/failure.h"
#include "runtime/subscript.h"
#include "runtime/text.h"
#include "runtime/windows_1252.h"

namespace desk {

download::download(exchange& link, desk_frame& desk, catalogue& rows, panel& switches, color_settings& colors,
                   autorun& steps, refresh& status)
    : exchange_(link)
    , desk_frame_(desk)
    , catalogue_(rows)
    , panel_(switches)
    , colors_(colors)
    , autorun_(steps)
    , status_(status) {
    desk_frame_.cmd_download.on_click = [this] { cmd_download_click(); };
}

void download::cmd_download_click() {
    begin_work(desk_frame_.cmd_download, exchange_.host().events);
    exchange_.download_mode = true;
    while_doing([] { return "Reading the generator's settings"; }, [this] { read_back(); });
    exchange_.download_mode = false;
    end_work(desk_frame_.cmd_download);
    exchange_.host().events.pump();
}

void download::read_back() {
    if (exchange_.view_mode == view::pattern_select && catalogue_.lstv_pattern.selected() == motion_string_pattern)
        return read_custom_string();
    if (exchange_.view_mode == view::pattern_select && catalogue_.lstv_pattern.selected() == color_setting_pattern)
        return read_color_settings();
    if (exchange_.view_mode == view::favorite_timing &&
        !read_favorites(command::query_favorite_timings, exchange_.fav_timing_count, catalogue_.lstv_timing))
        return;
    if (exchange_.view_mode == view::favorite_pattern &&
        !read_favorites(command::query_favorite_patterns, exchange_.fav_pattern_count, catalogue_.lstv_pattern))
        return;
    if (exchange_.view_mode == view::autorun_config && !read_autorun_list()) return;
    if (exchange_.view_mode == view::panel_control) read_panel();
}

void download::read_custom_string() {
    if (!exchange_.tx_cmd_or_box(command::query_custom_string)) return;
    if (!exchange_.rx_text.starts_with(command::query_custom_string)) return exchange_.show_link_error();
    const std::string_view held = part_of_answer(exchange_.rx_text, 7, custom_string_length);
    desk_frame_.txt_motion_str.text = text_from_bytes(held.substr(0, held.find('\0')));
}

void download::read_color_settings() {
    if (!exchange_.tx_cmd_or_box(command::query(mnemonic::color_space))) return;
    const bool is_rgb = as_number(last_of_answer(exchange_.rx_text, 3)) == 1;
    colors_.color_mode = is_rgb ? 1 : 2;
    desk_frame_.lab_color_setting[0].caption = is_rgb ? "Red" : "Cr";
    desk_frame_.lab_color_setting[1].caption = is_rgb ? "Green" : "Y";
    desk_frame_.lab_color_setting[2].caption = is_rgb ? "Blue" : "Cb";
    desk_frame_.lab_color_setting[3].caption = "Grey";

    if (!exchange_.tx_cmd_or_box(command::query(mnemonic::color_red))) return;
    // the generator has no values: the controls stay disabled, and nothing is reported
    if (last_of_answer(exchange_.rx_text, 3) == "300") return;
    set_color(0, as_number(last_of_answer(exchange_.rx_text, 3)));
    if (!exchange_.tx_cmd_or_box(command::query(mnemonic::color_green))) return;
    // the grey control mirrors the second channel
    set_color(1, as_number(last_of_answer(exchange_.rx_text, 3)));
    set_color(3, as_number(last_of_answer(exchange_.rx_text, 3)));
    if (!exchange_.tx_cmd_or_box(command::query(mnemonic::color_blue))) return;
    set_color(2, as_number(last_of_answer(exchange_.rx_text, 3)));

    for (text_box& box : desk_frame_.txt_color_setting)
        box.enabled = true;
    for (slider& bar : desk_frame_.hsr_color_setting)
        bar.enabled = true;
}

void download::set_color(std::size_t index, int value) {
    element(desk_frame_.hsr_color_setting, index).set_value(value);
    element(desk_frame_.txt_color_setting, index).text = number_text(value);
    if (index < colors_.channels.size()) colors_.channels.at(index) = static_cast<std::uint8_t>(value);
}

bool download::read_favorites(std::string_view query, int count, list_view& list) {
    if (!answered_in_full(query, count * favorite_record)) return false;
    for (int i = 1; i <= count; ++i) {
        const std::string_view record = record_of_answer(i, favorite_record);
        // the row's number comes from the record, not from its position
        const int row = as_number(part_of_answer(record, 4, 3));
        list.set_checked(row, character_of_answer(record, 3) == "+");
    }
    return true;
}

bool download::answered_in_full(std::string_view query, int bytes) {
    const work received(exchange_.progress, bytes, exchange_.rx_count);
    return exchange_.tx_cmd_or_box(query);
}

std::string_view download::record_of_answer(int number, int size) const {
    return part_of_answer(exchange_.rx_text, static_cast<std::size_t>(size) * static_cast<std::size_t>(number - 1) + 1,
                          static_cast<std::size_t>(size));
}

bool download::read_autorun_list() {
    if (!answered_in_full(command::query_autorun_list, autorun_rows * autorun_record)) return false;
    list_view& list = autorun_.lstv_auto;
    list.clear();
    exchange_.host().events.pump();
    for (int i = 1; i <= autorun_rows; ++i) {
        const std::string_view record = record_of_answer(i, autorun_record);
        const int interval = as_number(part_of_answer(record, 22, 3));
        list.add_row(number_text(i));
        const bool used = interval != 0;
        list.set_sub_item(i, 1, used ? catalogue_.lstv_timing.text(as_number(part_of_answer(record, 10, 3))) : "");
        list.set_sub_item(i, 2, used ? catalogue_.lstv_pattern.text(as_number(part_of_answer(record, 16, 3))) : "");
        list.set_sub_item(i, 3, number_text(interval));
    }
    return true;
}

void download::read_panel() {
    work queries(exchange_.progress, 7);
    status_.cmd_refresh_click();
    if (!exchange_.rx_done) return; // the labels show the failure
    queries.step();
    const auto last_three = [this] { return as_number(last_of_answer(exchange_.rx_text, 3)); };
    if (!exchange_.tx_cmd_or_box(command::query(mnemonic::audio_source))) return;
    panel_.paint_asc(as_number(last_of_answer(exchange_.rx_text, 1)));
    queries.step();
    if (!exchange_.tx_cmd_or_box(command::query(mnemonic::lpcm_channels))) return;
    panel_.paint_lpcm(last_three());
    queries.step();
    if (!exchange_.tx_cmd_or_box(command::query(mnemonic::color_space))) return;
    panel_.paint_csc(last_three());
    queries.step();
    if (!exchange_.tx_cmd_or_box(command::query(mnemonic::deep_color))) return;
    panel_.paint_deep(last_three());
    queries.step();
    if (!exchange_.tx_cmd_or_box(command::query(mnemonic::autorun))) return;
    panel_.paint_auto(last_three());
    queries.step();
    if (!exchange_.tx_cmd_or_box(command::query(mnemonic::my_favorite))) return;
    panel_.paint_fav(last_three());
}

} // namespace desk
