#pragma once

#include "controls/window.h"
#include "edid/buffers.h"
#include "edid/format/checksum_rule.h"
#include "edid/workbench_frame.h"
#include "platform/event_pump.h"

#include <array>
#include <cstdint>

namespace desk {

/// Converts between buffers and the texts of the READ and WRITE windows, and shows the block checksums.
class window_text {
public:
    window_text(window& form, workbench_frame& view, edid_buffers& buffers, event_pump& events);

    /// The checksum that block 0 or 1 of the WRITE window needs, if the block was wrong.
    std::array<std::uint8_t, 2> recover_sum{};

    /// Parses a window's text into a buffer: `txt_write` for `buff_type` 1, otherwise `txt_read`. For 1, missing bytes
    /// become 0xFF. `win_type` has no effect. Throws failure::subscript_out_of_range at the 257th byte.
    void win2buff(std::uint8_t buff_type, int win_type);
    /// Shows a buffer in a window, `txt_write` for `win_type` 1, otherwise `txt_read`, with both block checksums.
    void buff2win(std::uint8_t buff_type, int win_type);

    /// Shows the checksum of a block of the WRITE window. For a wrong one, stores the needed value in `recover_sum` and
    /// shows the R button. Throws failure::overflow for a block that needs 256.
    void show_write_checksum(const block_checksum& sum);

    /// Enables the buttons that send `write_buff`, or disables all buttons that work on the WRITE side.
    void enable_write_side(bool on);

    void cmd_clear_read_click();
    void cmd_clear_file_click();

private:
    static void show_checksum(std::array<label, 2>& labels, const block_checksum& sum);

    window& form_;
    workbench_frame& workbench_;
    edid_buffers& buffers_;
    event_pump& events_;
};

/// The caption of a block checksum, such as "BK0=3C Correct.".
std::string checksum_caption(std::size_t block, std::int32_t needed, const char* verdict);

} // namespace desk
