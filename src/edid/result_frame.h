#pragma once

#include "edid/difference.h"
#include "edid/workbench_frame.h"

#include <string>

namespace desk {

/// The frame that tells the progress and the result of a transfer or a comparison. It stays until the operator presses
/// its OK, which is dead until there is a result.
class result_frame {
public:
    explicit result_frame(workbench_frame& view);

    /// Shows the frame with its first line and no result.
    void begin(const std::string& caption, const std::string& first_line);
    /// Appends to the progress text.
    void tell(const std::string& text);
    void show_pass(bool pass);

    void cmd_ok_click();

    difference differing; ///< what COMP or VERIFY has found last

private:
    workbench_frame& workbench_;
};

} // namespace desk
