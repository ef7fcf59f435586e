#pragma once

#include "controls/window.h"
#include "edid/file_number_1.h"
#include "edid/previous_files.h"
#include "edid/shared_fields.h"
#include "edid/workbench_frame.h"
#include "platform/machine.h"

#include <functional>
#include <string>

namespace desk {

/// Saves the text of the WRITE or the READ window as a HEX or BIN file.
class file_saver {
public:
    file_saver(machine& m, window& form, workbench_frame& view, shared_fields& fields, previous_files& previous,
               const file_number_1& number);

    /// Opens frm_diag with the choice of the HEX style and returns when it has been closed.
    std::function<void()> choose_hex_type;

    void cmd_save_write_click();
    void cmd_save_read_click();
    /// Side 1 is WRITE, any other READ. Every failure ends it silently.
    void save_file(int side);

private:
    void choose_and_save(int side);
    void prepare_dialog();
    void write(const std::string& path, bool hex, const std::string& text) const;

    machine& machine_;
    window& form_;
    workbench_frame& workbench_;
    shared_fields& fields_;
    previous_files& previous_;
    const file_number_1& number_;
};

} // namespace desk
