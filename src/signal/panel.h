#pragma once

#include "link/exchange.h"
#include "signal/status_frame.h"

#include <array>
#include <string_view>

namespace desk {

/// The panel control view: rows of switches. A press acts on the generator at once; the lit button of a group is what
/// the generator last confirmed.
class panel {
public:
    panel(exchange& link, status_frame& status);

    frame fra_setup;
    label lab_setup;
    std::array<button, 4> cmd_out;
    std::array<button, 2> cmd_hdcp;
    std::array<button, 3> cmd_asc;
    std::array<button, 3> cmd_lpcm;
    std::array<button, 3> cmd_csc;
    std::array<button, 3> cmd_deep;
    std::array<button, 2> cmd_auto_go;
    std::array<button, 2> cmd_fav;
    button cmd_reset;

    /// These only recolour. Groups of three and four buttons light the button of index value - 1, groups of two the
    /// button of index value. Any other value, such as 254 and 999, lights none.
    void paint_out(int value);
    void paint_asc(int value);
    void paint_lpcm(int value);
    void paint_csc(int value);
    void paint_deep(int value);
    void paint_hdcp(int value);
    void paint_auto(int value);
    void paint_fav(int value);

    void cmd_out_click(int index);
    void cmd_hdcp_click(int index);
    void cmd_asc_click(int index);
    void cmd_lpcm_click(int index);
    void cmd_csc_click(int index);
    void cmd_deep_click(int index);
    void cmd_auto_go_click(int index);
    void cmd_fav_click(int index);
    void cmd_reset_click();

private:
    void wire_events();
    /// Disables the button, turns it red, and sends its command.
    void press(button& member, std::string_view letters, int argument);
    /// Queries the number of channels, which the audio source may have changed.
    void query_lpcm();
    void clear_lamps();

    exchange& exchange_;
    status_frame& status_;
};

} // namespace desk
