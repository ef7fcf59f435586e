#pragma once

#include "controls/window.h"
#include "edid/buffers.h"
#include "edid/result_frame.h"
#include "edid/window_text.h"
#include "edid/workbench_frame.h"
#include "platform/machine.h"

#include <cstddef>

namespace desk {

/// COMP and the R buttons: what works on the two sides without the link.
class compare_recover {
public:
    compare_recover(machine& m, window& form, workbench_frame& view, const edid_buffers& buffers,
                    const window_text& text, result_frame& result);

    /// Compares the two buffers byte by byte.
    void cmd_compare_click();
    /// Puts the checksum that block 0 or 1 needs into the text of the WRITE window. `write_buff` keeps its byte.
    /// Throws failure::invalid_procedure_call for a text without the block's last line.
    void cmd_recover_click(std::size_t block);

private:
    machine& machine_;
    window& form_;
    workbench_frame& workbench_;
    const edid_buffers& buffers_;
    const window_text& window_text_;
    result_frame& result_;
};

} // namespace desk
