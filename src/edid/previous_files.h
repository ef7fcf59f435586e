#pragma once

#include "edid/shared_fields.h"
#include "edid/workbench_frame.h"

#include <cstddef>
#include <string>

namespace desk {

/// The list of the ten files opened or saved last. The captions of its labels are the list; there is no other store.
class previous_files {
public:
    previous_files(workbench_frame& view, const shared_fields& fields);

    /// Puts `edid_file_name` at the head; one that is in the list already moves there.
    void add_pre_f();
    /// Takes an entry out and closes the gap.
    void forget(std::size_t index);

    void cmd_pre_f_click();
    /// Lights the label under the mouse alone.
    void lab_pre_f_mouse_move(std::size_t index);

private:
    workbench_frame& workbench_;
    const shared_fields& fields_;
};

} // namespace desk
