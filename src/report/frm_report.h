#pragma once

#include "controls/controls.h"
#include "controls/window.h"
#include "edid/buffers.h"
#include "edid/shared_fields.h"
#include "platform/machine.h"
#include "translate/decode/translation_tables.h"

#include <string>

namespace desk {

/// The report's window, to read and save the report of `trans_buff`. It is created anew each time.
class frm_report {
public:
    frm_report(machine& m, const edid_buffers& buffers, translation_tables& tables, shared_fields& fields);

    window form;
    text_box txt_report;
    button cmd_save;
    button cmd_exit;
    file_dialog_setup dia_file;

    std::string report_text; ///< ends early if a decoder fails

    /// Builds the report. Throws what the decoders throw.
    /// Intended: for an EDID without a header the box keeps showing "Parsing ...", while Save saves the short report.
    void load();

    void cmd_save_click();
    void cmd_exit_click();

private:
    void lay_out_controls();
    void choose_and_save();
    void prepare_dialog();

    machine& machine_;
    const edid_buffer& trans_buff_;
    translation_tables& tables_;
    shared_fields& fields_;
};

} // namespace desk
