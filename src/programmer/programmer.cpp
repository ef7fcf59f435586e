#include "programmer/programmer.h"

#include "link/button_at_work.h"

namespace desk {

programmer::programmer(machine& m, workbench_frame& view, shared_fields& fields, edid_buffers& buffers,
                       window_text& text, serial_number& serial, sink_transfers& transfers, file_saver& saver)
    : machine_(m)
    , workbench_(view)
    , fields_(fields)
    , buffers_(buffers)
    , window_text_(text)
    , serial_(serial)
    , transfers_(transfers) {
    workbench_.cmd_sum_write.on_click = [this] { cmd_sum_write_click(); };
    workbench_.cmd_sum_read.on_click = [this] { cmd_sum_read_click(); };
    workbench_.cmd_w_auto.on_click = [this] { cmd_w_auto_click(); };
    saver.choose_hex_type = [this] { show_frm_diag(diag::hex_style); };
}

void programmer::cmd_sum_write_click() { show_and_enable_write(diag::write_checksum); }

// Intended: closing this side's sum enables WRITE too.
void programmer::cmd_sum_read_click() { show_and_enable_write(diag::read_checksum); }

void programmer::cmd_w_auto_click() { show_and_enable_write(diag::automatic_run); }

void programmer::show_and_enable_write(std::int16_t diag_mode) {
    show_frm_diag(diag_mode);
    end_work(workbench_.cmd_write);
}

void programmer::show_frm_diag(std::int16_t diag_mode) {
    fields_.diag_mode = diag_mode;
    // a closed window can be opened again before this procedure continues, so each opening holds its own
    const auto opened =
        std::make_shared<frm_diag>(fields_, buffers_, window_text_, serial_, transfers_, machine_.events);
    frm_diag_ = opened;
    opened->load();
    machine_.windows.show(opened->form);
    transfers_.frm_diag = {};
}

} // namespace desk
