#include "signal/panel.h"

#include "link/button_at_work.h"
#include "link/commands.h"
#include "runtime/subscript.h"

namespace desk {

namespace {

// lights no button, as not_known does
constexpr int unlit = 999;

template <std::size_t Count>
void light(std::array<button, Count>& group, int index) {
    for (std::size_t i = 0; i < Count; ++i)
        group.at(i).back_color = static_cast<int>(i) == index ? color_green : color_button_face;
}

} // namespace

panel::panel(exchange& link, status_frame& status) : exchange_(link), status_(status) { wire_events(); }

void panel::wire_events() {
    const auto wire = [this](auto& group, void (panel::*click)(int)) {
        for (std::size_t i = 0; i < group.size(); ++i)
            group.at(i).on_click = [this, click, index = static_cast<int>(i)] { (this->*click)(index); };
    };
    wire(cmd_out, &panel::cmd_out_click);
    wire(cmd_hdcp, &panel::cmd_hdcp_click);
    wire(cmd_asc, &panel::cmd_asc_click);
    wire(cmd_lpcm, &panel::cmd_lpcm_click);
    wire(cmd_csc, &panel::cmd_csc_click);
    wire(cmd_deep, &panel::cmd_deep_click);
    wire(cmd_auto_go, &panel::cmd_auto_go_click);
    wire(cmd_fav, &panel::cmd_fav_click);
    cmd_reset.on_click = [this] { cmd_reset_click(); };
}

void panel::paint_out(int value) { light(cmd_out, value - 1); }
void panel::paint_asc(int value) { light(cmd_asc, value - 1); }
void panel::paint_lpcm(int value) { light(cmd_lpcm, value - 1); }
void panel::paint_csc(int value) { light(cmd_csc, value - 1); }
void panel::paint_deep(int value) { light(cmd_deep, value - 1); }
void panel::paint_hdcp(int value) { light(cmd_hdcp, value); }
void panel::paint_auto(int value) { light(cmd_auto_go, value); }
void panel::paint_fav(int value) { light(cmd_fav, value); }

void panel::press(button& member, std::string_view letters, int argument) {
    member.back_color = color_red;
    member.enabled = false;
    exchange_.host().events.pump();
    exchange_.tx_cmd(command::set(letters, argument));
}

void panel::cmd_out_click(int index) {
    button& member = element(cmd_out, index);
    press(member, mnemonic::output_format, index + 1);
    if (exchange_.rx_done) {
        status_.lab_out.caption = member.caption;
        paint_out(index + 1);
    } else {
        status_.lab_out.caption = link_error_label;
        paint_out(unlit);
    }
    member.enabled = true;
}

void panel::cmd_hdcp_click(int index) {
    button& member = element(cmd_hdcp, index);
    press(member, mnemonic::hdcp, index);
    if (exchange_.rx_done) {
        status_.lab_hdcp.caption = member.caption;
        paint_hdcp(index);
    } else {
        status_.lab_hdcp.caption = link_error_label;
        paint_hdcp(not_known);
    }
    member.enabled = true;
}

void panel::cmd_asc_click(int index) {
    button& member = element(cmd_asc, index);
    press(member, mnemonic::audio_source, index + 1);
    if (exchange_.rx_done) {
        paint_asc(index + 1);
        query_lpcm();
    } else {
        paint_asc(unlit);
    }
    member.enabled = true;
}

void panel::query_lpcm() {
    if (exchange_.tx_cmd_or_box(command::query(mnemonic::lpcm_channels)))
        paint_lpcm(as_number(last_of_answer(exchange_.rx_text, 3)));
}

void panel::cmd_lpcm_click(int index) {
    button& member = element(cmd_lpcm, index);
    press(member, mnemonic::lpcm_channels, index + 1);
    // "PCM100" is the generator's refusal, not a link failure: nothing is reported
    const bool taken = exchange_.rx_done && exchange_.rx_text != "PCM100";
    paint_lpcm(taken ? index + 1 : unlit);
    member.enabled = true;
}

void panel::cmd_csc_click(int index) {
    button& member = element(cmd_csc, index);
    press(member, mnemonic::color_space, index + 1);
    paint_csc(exchange_.rx_done ? index + 1 : unlit);
    member.enabled = true;
}

void panel::cmd_deep_click(int index) {
    button& member = element(cmd_deep, index);
    press(member, mnemonic::deep_color, index + 1);
    paint_deep(exchange_.rx_done ? index + 1 : unlit);
    member.enabled = true;
}

void panel::cmd_auto_go_click(int index) {
    button& member = element(cmd_auto_go, index);
    press(member, mnemonic::autorun, index);
    paint_auto(exchange_.rx_done ? index : not_known);
    member.enabled = true;
}

void panel::cmd_fav_click(int index) {
    button& member = element(cmd_fav, index);
    press(member, mnemonic::my_favorite, index);
    paint_fav(exchange_.rx_done ? index : not_known);
    member.enabled = true;
}

void panel::cmd_reset_click() {
    begin_work(cmd_reset, exchange_.host().events);
    if (exchange_.tx_cmd_or_box(command::reset)) clear_lamps();
    end_work(cmd_reset);
}

void panel::clear_lamps() {
    paint_out(not_known);
    paint_hdcp(not_known);
    paint_asc(not_known);
    paint_lpcm(not_known);
    paint_csc(not_known);
    paint_deep(not_known);
    paint_auto(not_known);
    paint_fav(not_known);
    status_.empty();
}

} // namespace desk
