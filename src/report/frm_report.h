#pragma once

#include "controls/controls.h"
#include "controls/window.h"
#include "platform/machine.h"
#include "report/report_builder.h"

#include <string>

namespace desk {

/// The report's window: the whole analysis of `trans_buff` as one text, to be read and saved. Each opening has a fresh
/// one.
class frm_report {
    machine& machine_; // first: the parts below are built on it

public:
    frm_report(machine& m, const edid_buffers& buffers, translation_tables& tables, serial_number& serial,
               const shared_fields& fields);

    window form;
    text_box txt_report;
    button cmd_save;
    button cmd_exit;
    file_dialog_setup dia_file;

    report_builder builder;

    /// Builds the report. Throws what the decoders throw.
    /// The desk behaves so: for an EDID that begins with no header the box goes on showing "Parsing ...", while Save
    /// saves what there is to say.
    void load();

    void cmd_save_click();
    void cmd_exit_click();

private:
    void lay_out_controls();
    void choose_and_save();
    void prepare_dialog();
};

} // namespace desk
