#pragma once

#include "controls/controls.h"

#include <array>

namespace desk {

/// The panel control view: the operator's row of hardware-like switches.
struct panel_frame {
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
};

} // namespace desk
