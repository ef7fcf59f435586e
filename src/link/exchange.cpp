#include "link/exchange.h"

#include "link/commands.h"
#include "link/delay.h"
#include "runtime/failure.h"
#include "runtime/numbers.h"
#include "runtime/text.h"

#include <algorithm>

namespace desk {

namespace {

constexpr int most_tries = 2;
constexpr int wait_limit = 150;
constexpr int wait_limit_reset = 800;

} // namespace

exchange::exchange(machine& m) : machine_(m) {
    tim_rx.interval = 20;
    cbo_com.on_click = [this] { cbo_com_click(); };
    cmd_conn.on_click = [this] { cmd_conn_click(); };
    cmd_disconn.on_click = [this] { cmd_disconn_click(); };
    tim_rx.on_timer = [this] { tim_rx_timer(); };
}

void exchange::set_comm() {
    try {
        if (rs232_connected) machine_.port.close();
        machine_.port.open(com_port);
        machine_.port.discard_input();
        machine_.port.discard_output();
        rs232_connected = true;
        cmd_conn.back_color = color_green;
        cmd_disconn.back_color = color_button_face;
        cmd_disconn.tool_tip = "";
        machine_.events.pump();
    } catch (const runtime_failure& f) {
        machine_.report_silent_failure(f.sentence());
        cmd_disconn.tool_tip = f.sentence();
        machine_.boxes.show("RS232 can not work on COM" + str(com_port) + ": !", box_icon::none, box_buttons::ok);
        show_disconnected_look();
        rs232_connected = false;
        machine_.events.pump();
    }
}

void exchange::show_disconnected_look() {
    cmd_conn.back_color = color_button_face;
    cmd_disconn.back_color = color_red;
}

void exchange::cbo_com_click() {
    com_port = to_integer(cbo_com.list_index() + 1);
    set_comm();
}

void exchange::cmd_conn_click() { set_comm(); }

void exchange::cmd_disconn_click() {
    if (!rs232_connected) return;
    show_disconnected_look();
    machine_.port.close();
    rs232_connected = false;
}

bool exchange::check_connected() {
    if (!rs232_connected) machine_.boxes.show("RS232 is disconnected !", box_icon::critical, box_buttons::ok);
    return rs232_connected;
}

void exchange::tx_cmd(std::string_view cmd) {
    rx_done = false;
    if (!check_connected()) return;
    const int limit = cmd == command::reset ? wait_limit_reset : wait_limit;
    const int outer_tries = tries; // of an exchange that this one comes in the middle of
    for (int attempt = 0; attempt < most_tries && !rx_done; ++attempt) {
        tries = attempt + 1;
        rx_count = 0;
        rx_text.clear();
        rx_done = false;
        drain_output();
        machine_.port.discard_input();
        machine_.port.write(bytes_of(cmd));
        tim_rx.enabled = true;
        for (int round = 0; round <= limit && !rx_done; ++round)
            delay_sec(machine_.events, 0.001F);
        // a wrong echo ends the wait at once, since the letters are looked at only here
        if (!download_mode && std::string_view(rx_text).substr(0, 3) != cmd.substr(0, 3)) rx_done = false;
    }
    tries = outer_tries;
    tim_rx.enabled = false;
    machine_.events.pump();
}

void exchange::tx_str(std::string_view cmd) {
    if (!check_connected()) return;
    drain_output();
    machine_.port.discard_input();
    if (cmd.size() < 6)
        throw runtime_failure(failure::invalid_procedure_call,
                              "\"" + std::string(cmd) + "\" does not have six characters");
    machine_.port.write(bytes_of(cmd.substr(0, 6)));
}

void exchange::tx_byte(std::uint8_t a_byte) {
    drain_output();
    machine_.port.write({a_byte});
}

void exchange::drain_output() {
    // a port that never drains holds the desk here for ever
    while (machine_.port.out_count() != 0)
        machine_.events.turn_without_progress("Waiting for the port to send its output");
}

bool exchange::tx_cmd_or_box(std::string_view cmd) {
    tx_cmd(cmd);
    const bool answered = rx_done;
    if (!answered) show_link_error();
    return answered;
}

void exchange::show_link_error() { machine_.boxes.show("Link Error !", box_icon::critical, box_buttons::ok); }

void exchange::tim_rx_timer() {
    if (machine_.port.in_count() == 0) return;
    tim_rx.enabled = false;
    machine_.events.pump();
    while_doing([] { return "Counting the bytes that the generator has sent"; },
                [this] {
                    for (const std::uint8_t a_byte : machine_.port.read()) {
                        rx_count = to_integer(rx_count + 1);
                        rx_text.push_back(static_cast<char>(a_byte));
                    }
                    judge_answer();
                });
    tim_rx.enabled = true;
    machine_.events.pump();
}

void exchange::judge_answer() {
    // the first row that fits decides alone, even where its count isn't reached yet; these take any bytes
    const auto expect = [this](int count) {
        if (rx_count >= count) rx_done = true;
    };
    if (download_mode && view_mode == view::favorite_timing)
        return expect(to_integer(fav_timing_count * favorite_record));
    if (download_mode && view_mode == view::favorite_pattern)
        return expect(to_integer(fav_pattern_count * favorite_record));
    if (download_mode && view_mode == view::autorun_config) return expect(autorun_rows * autorun_record);
    if (download_mode && view_mode == view::pattern_select && selected_pattern() == motion_string_pattern)
        return expect(custom_string_answer);
    if (download_mode && view_mode == view::edid_read_write) return expect(custom_string_answer);
    if (rx_count >= 6) rx_done = is_digit(rx_text.at(3)) && is_digit(rx_text.at(4)) && is_digit(rx_text.at(5));
}

std::string_view part_of_answer(std::string_view answer, std::size_t place, std::size_t count) {
    return answer.substr(std::min(place - 1, answer.size()), count);
}

std::string_view character_of_answer(std::string_view answer, std::size_t place) {
    return part_of_answer(answer, place, 1);
}

std::string_view last_of_answer(std::string_view answer, std::size_t count) {
    return answer.substr(answer.size() - std::min(count, answer.size()));
}

std::int16_t as_number(std::string_view part) {
    const std::size_t digits = std::min(part.find_first_not_of(' '), part.size());
    return to_integer(val(part.substr(0, part.find_first_not_of("0123456789", digits))));
}

} // namespace desk
