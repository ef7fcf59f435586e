#pragma once

#include "edid/shared_fields.h"
#include "edid/workbench_frame.h"

#include <cstddef>
#include <string>

namespace desk {

/// The list of the ten files last opened or saved. The captions of its labels are its only storage.
class previous_files {
public:
    previous_files(workbench_frame& view, const shared_fields& fields);

    /// Puts `edid_file_name` first; a file that is already in the list moves there.
    void add_pre_f();
    /// Removes an entry and closes the gap.
    void forget(std::size_t index);

    void cmd_pre_f_click();
    /// Highlights only the label under the mouse.
    void lab_pre_f_mouse_move(std::size_t index);

private:
    workbench_frame& workbench_;
    const shared_fields& fields_;
};

} // namespace desk
