#pragma once

#include "controls/controls.h"
#include "platform/dialogs.h"

#include <array>

namespace desk {

/// The EDID Read/Write view: the READ and WRITE windows with their buttons, the previous files and the result frame.
struct workbench_frame {
    frame fra_edid;

    label lab_write;
    text_box txt_write;
    label lab_w_checksum;
    std::array<label, 2> lab_write_checksum;
    std::array<button, 2> cmd_recover;
    button cmd_load;
    button cmd_pre_f;
    button cmd_clear_file;
    button cmd_save_write;
    button cmd_verify;
    button cmd_write;
    button cmd_w_auto;
    button cmd_erase;
    button cmd_write_translate;
    button cmd_sum_write;

    label lab_read;
    text_box txt_read;
    label lab_r_checksum;
    std::array<label, 2> lab_read_checksum;
    button cmd_read;
    button cmd_compare;
    button cmd_clear_read;
    button cmd_save_read;
    button cmd_read_translate;
    button cmd_sum_read;

    label lab_edid_src;
    std::array<option_button, 3> opt_edid_src; // indexes 1 to 3 on the window

    frame fra_pre_f;
    std::array<label, 10> lab_pre_f; // the captions are the list of previous files, newest first

    file_dialog_setup dia_file; ///< the file dialog for OPEN and SAVE; settings that are not changed persist

    frame fra_compare;
    text_box txt_msg;
    label lab_pass;
    button cmd_ok;
};

} // namespace desk
