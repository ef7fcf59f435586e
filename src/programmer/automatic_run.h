#pragma once

#include "controls/controls.h"
#include "edid/serial_number.h"
#include "edid/shared_fields.h"
#include "edid/sink_transfers.h"
#include "platform/event_pump.h"

namespace desk {

/// The AUTO page of frm_diag: for each unit, puts a serial number into `write_buff`, writes the sink, verifies it and
/// steps the number. The text of the WRITE window does not change.
class automatic_run {
public:
    automatic_run(shared_fields& fields, serial_number& serial, sink_transfers& transfers, event_pump& events,
                  button& cmd_ok);

    frame fra_auto;
    label lab_sn;
    text_box txt_sn;
    button cmd_add;
    button cmd_sub;
    check_box chk_write;
    check_box chk_verify;
    check_box chk_auto_sn;
    button cmd_run;
    text_box txt_auto_msg;
    label lab_pass;
    label lab_pass_sn;

    /// Shows the serial number in `write_buff` and receives the results of WRITE and VERIFY.
    void load();

    void cmd_add_click();
    void cmd_sub_click();
    void cmd_run_click();

private:
    double typed_sn() const;
    void write();
    void show_result(bool pass);

    shared_fields& fields_;
    serial_number& serial_;
    sink_transfers& transfers_;
    event_pump& events_;
    button& cmd_ok_;
};

} // namespace desk
