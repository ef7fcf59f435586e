#pragma once

#include "controls/window.h"
#include "edid/byte_step.h"
#include "edid/file_number_1.h"
#include "edid/previous_files.h"
#include "edid/shared_fields.h"
#include "edid/window_text.h"
#include "edid/workbench_frame.h"
#include "platform/machine.h"

#include <cstddef>
#include <string>

namespace desk {

/// Opens EDID files into the WRITE window: with OPEN, and from the list of previous files.
class file_opener {
public:
    file_opener(machine& m, window& form, workbench_frame& view, shared_fields& fields, window_text& text,
                previous_files& previous, file_number_1& number);

    bool file_ok = false; ///< the last file was parsed well

    /// Every failure on this road ends it silently.
    void cmd_load_click();
    /// No handler is armed on this road: a failure ends the program.
    void lab_pre_f_click(std::size_t index);

    void load_file();
    void load_hex();
    void load_bin();
    void load_ddc();

private:
    void choose_and_open();
    void prepare_dialog();
    void open_present_name();
    template <class Read>
    void load(byte_step::append when, Read read);
    void show_box(const std::string& text);

    machine& machine_;
    window& form_;
    workbench_frame& workbench_;
    shared_fields& fields_;
    window_text& window_text_;
    previous_files& previous_;
    file_number_1& number_;
};

/// Whether a file (and no folder) of that name exists.
bool file_exists(const std::string& path);

} // namespace desk
