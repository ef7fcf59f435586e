#pragma once

#include "controls/window.h"
#include "edid/buffers.h"
#include "edid/checksum_rule.h"
#include "edid/workbench_frame.h"
#include "platform/event_pump.h"

#include <array>
#include <cstdint>

namespace desk {

/// The text of the READ and WRITE windows: from bytes and back, with the block checksums beside it.
class window_text {
public:
    window_text(window& form, workbench_frame& view, edid_buffers& buffers, event_pump& events);

    /// The checksum that block 0 or 1 of the WRITE window needs, where it was found wrong.
    std::array<std::uint8_t, 2> recover_sum{};

    /// Parses a window's text into a buffer: `txt_write` for `buff_type` 1, else `txt_read`. For 1 the bytes behind the
    /// text become 0xFF. `win_type` has no effect. Throws failure::subscript_out_of_range at the 257th byte.
    void win2buff(std::uint8_t buff_type, int win_type);
    /// Shows a buffer in a window, `txt_write` for `win_type` 1, else `txt_read`, with both block checksums.
    void buff2win(std::uint8_t buff_type, int win_type);

    /// Shows what a block of the WRITE window needs. A wrong one is kept in `recover_sum` and can be repaired. Throws
    /// failure::overflow for a block that needs 256.
    void show_write_checksum(const block_checksum& sum);

    /// Enables the buttons that send `write_buff`, or disables all that work on the WRITE side.
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

/// The labels of the block checksums: "BK0=3C Correct.".
std::string checksum_caption(std::size_t block, std::int32_t needed, const char* verdict);

} // namespace desk
