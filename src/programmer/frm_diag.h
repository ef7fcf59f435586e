#pragma once

#include "controls/controls.h"
#include "controls/window.h"
#include "edid/buffers.h"
#include "edid/shared_fields.h"
#include "edid/window_text.h"
#include "programmer/automatic_run.h"

#include <array>

namespace desk {

/// The programmer's window, with three pages chosen by `diag_mode`: the sum of a memory image, the style of a HEX
/// file to save, and the automatic run. Each opening creates a new one.
class frm_diag {
    shared_fields& fields_; // first: the parts below use them
    edid_buffers& buffers_;
    window_text& window_text_;

public:
    frm_diag(shared_fields& fields, edid_buffers& buffers, window_text& text, serial_number& serial,
             sink_transfers& transfers, event_pump& events);

    window form;
    button cmd_ok;

    frame fra_sum;
    button cmd_checksum;
    check_box chk_4digits;
    std::array<option_button, 2> opt_unused;
    label lab_unused;
    label lab_eeprom;
    combo_box cbo_eeprom;
    label lab_checksum;
    text_box txt_test; ///< holds the list's text; not used elsewhere

    frame fra_save_hex;
    std::array<option_button, 2> opt_hex_type;

    automatic_run run;

    /// Shows the page of `diag_mode`. Throws failure::invalid_property_value or failure::subscript_out_of_range if
    /// the settings file holds an invalid choice.
    void load();

    void cbo_eeprom_click();
    void chk_4digits_click();
    void opt_unused_click(std::size_t index);
    void cmd_checksum_click();
    void cmd_ok_click();

private:
    void lay_out_controls();
    void load_sum();
    void show_page(frame& page, const char* cmd_ok_caption);
    double sum_of_image() const;
};

} // namespace desk
