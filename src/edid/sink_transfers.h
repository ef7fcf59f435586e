#pragma once

#include "edid/buffers.h"
#include "edid/result_frame.h"
#include "edid/shared_fields.h"
#include "edid/window_text.h"
#include "edid/workbench_frame.h"
#include "link/exchange.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace desk {

/// READ, WRITE, VERIFY and ERASE of a sink's EDID memory. WRITE and VERIFY also run as steps of the automatic run, in
/// whose window they report then.
class sink_transfers {
public:
    sink_transfers(exchange& link, workbench_frame& view, shared_fields& fields, edid_buffers& buffers,
                   window_text& text, result_frame& result);

    /// The controls of frm_diag in which the automatic run is told; set while it is open in that mode.
    struct automatic_run_window {
        text_box* txt_auto_msg = nullptr;
        button* cmd_ok = nullptr;
    };
    automatic_run_window frm_diag;

    work_progress& progress() { return exchange_.progress; }

    void cmd_read_click();
    void cmd_write_click();
    void cmd_verify_click();
    void cmd_erase_click();
    void opt_edid_src_click(std::size_t place);

    /// Brings the sink's 256 bytes into `read_buff` and sets `read_ok`. Errors go to `txt_read`.
    void read_sink();

private:
    bool automatic() const { return fields_.diag_mode == diag::automatic_run; }
    bool command_to_sink(std::string_view cmd);
    void tell_run(const std::string& text);
    int wait_for_answer(int rounds, float s);
    void send_write_buff();
    void tell_write_result(int t);
    void tell_write_result_of_run(int t);
    void verify();
    void verify_in_run();

    exchange& exchange_;
    workbench_frame& workbench_;
    shared_fields& fields_;
    edid_buffers& buffers_;
    window_text& window_text_;
    result_frame& result_;
};

} // namespace desk
