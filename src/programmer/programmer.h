#pragma once

#include "edid/buffers.h"
#include "edid/file_saver.h"
#include "edid/serial_number.h"
#include "edid/shared_fields.h"
#include "edid/sink_transfers.h"
#include "edid/window_text.h"
#include "edid/workbench_frame.h"
#include "platform/machine.h"
#include "programmer/frm_diag.h"

#include <memory>

namespace desk {

/// Opens frm_diag: SUM on both sides, AUTO, and saving a HEX file.
class programmer {
public:
    programmer(machine& m, workbench_frame& view, shared_fields& fields, edid_buffers& buffers, window_text& text,
               serial_number& serial, sink_transfers& transfers, file_saver& saver);

    void cmd_sum_write_click();
    void cmd_sum_read_click();
    void cmd_w_auto_click();

    /// Opens frm_diag above the other windows and returns when it has been closed.
    void show_frm_diag(std::int16_t diag_mode);

private:
    void show_and_enable_write(std::int16_t diag_mode);

    machine& machine_;
    workbench_frame& workbench_;
    shared_fields& fields_;
    edid_buffers& buffers_;
    window_text& window_text_;
    serial_number& serial_;
    sink_transfers& transfers_;
    std::shared_ptr<frm_diag> frm_diag_; // the last one opened, for inspection after the program has ended inside it
};

} // namespace desk
