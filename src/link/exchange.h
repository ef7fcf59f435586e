#pragma once

#include "controls/controls.h"
#include "link/view.h"
#include "link/work_progress.h"
#include "platform/machine.h"

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace desk {

/// The serial link: opens and closes the port, sends commands and raw bytes, and decides whether a received answer is
/// complete. After a command is sent, the 20 ms timer tim_rx collects what arrives, and the sender waits in
/// delay_sec, which pumps events, until the answer is accepted or the wait is over. Any event can run meanwhile: a
/// second handler's exchange resets rx_count, rx_text and rx_done under the first. Only the disabled buttons of
/// running handlers prevent that.
class exchange {
public:
    explicit exchange(machine& m);

    std::int16_t com_port = 0;               ///< 1 to 8; 0: none
    bool rs232_connected = false;            ///< the port is open and the link usable
    std::int16_t view_mode = view::none_yet; ///< the current view; also decides how an answer is counted
    bool download_mode = false;              ///< a download is running: longer answers, no comparison of letters
    std::int16_t fav_timing_count = 0;
    std::int16_t fav_pattern_count = 0;
    std::int16_t rx_count = 0; ///< bytes received since the current try began
    std::string rx_text;       ///< those bytes, one character each; valid until the next send
    bool rx_done = false;      ///< the answer to the current command has been accepted

    int tries = 0;          ///< how often the pending command has been sent; 0: none is pending
    work_progress progress; ///< of all work with the generator

    label lab_com;
    combo_box cbo_com;
    button cmd_conn;
    button cmd_disconn;
    timer tim_rx;

    /// The selected row of the pattern list, which decides how an answer is counted in Pattern Select.
    std::function<int()> selected_pattern;

    /// Opens the port given by com_port; closes it first if it is open.
    void set_comm();
    /// Sends a command and waits for its answer; two tries. The caller reads rx_done and rx_text.
    void tx_cmd(std::string_view cmd);
    /// Sends the first six characters and does not wait. Throws failure::invalid_procedure_call for fewer.
    void tx_str(std::string_view cmd);
    /// Sends one raw byte after all unsent ones.
    void tx_byte(std::uint8_t a_byte);
    /// Waits until everything is sent: no limit, no pump.
    void drain_output();
    /// The same as tx_cmd, but reports a failure in the box "Link Error !". Returns whether an answer was accepted.
    bool tx_cmd_or_box(std::string_view cmd);
    void show_link_error();

    void cbo_com_click();
    void cmd_conn_click();
    void cmd_disconn_click();
    void tim_rx_timer();

    machine& host() { return machine_; }

private:
    void check_answer();
    void show_disconnected();
    bool check_connected();

    machine& machine_;
};

/// A status label's text for a failed exchange. The box's text differs on purpose.
inline constexpr const char* link_error_label = "Link Error";

/// Two pattern rows have a fixed meaning, whatever their names in the catalogue.
inline constexpr int color_setting_pattern = 13;
inline constexpr int motion_string_pattern = 41;

/// The `place`th character of an answer, from 1; empty if the answer is shorter.
std::string_view character_of_answer(std::string_view answer, std::size_t place);
/// The last `count` characters of an answer, or all of a shorter one.
std::string_view last_of_answer(std::string_view answer, std::size_t count);
/// Up to `count` characters of an answer from the `place`th one, counted from 1.
std::string_view part_of_answer(std::string_view answer, std::size_t place, std::size_t count);
/// Part of an answer as a number: skips leading spaces and stops at the first non-digit; 0 if there is no digit.
std::int16_t as_number(std::string_view part);

} // namespace desk
