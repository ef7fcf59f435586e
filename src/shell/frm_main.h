#pragma once

#include "controls/window.h"
#include "edid/buffers.h"
#include "edid/compare_recover.h"
#include "edid/file_number_1.h"
#include "edid/file_opener.h"
#include "edid/file_saver.h"
#include "edid/previous_files.h"
#include "edid/result_frame.h"
#include "edid/serial_number.h"
#include "edid/shared_fields.h"
#include "edid/sink_transfers.h"
#include "edid/window_text.h"
#include "edid/workbench_frame.h"
#include "link/exchange.h"
#include "platform/machine.h"
#include "programmer/programmer.h"
#include "report/report_opener.h"
#include "shell/about.h"
#include "shell/settings_file.h"
#include "signal/autorun.h"
#include "signal/catalogue.h"
#include "signal/color_settings.h"
#include "signal/desk_frame.h"
#include "signal/download.h"
#include "signal/favorites.h"
#include "signal/panel.h"
#include "signal/refresh.h"
#include "signal/set_dispatcher.h"
#include "signal/status_frame.h"
#include "signal/upload.h"
#include "translate/node_dispatch.h"
#include "translate/translation_frame.h"
#include "translate/translation_tables.h"
#include "translate/translation_tree.h"

namespace desk {

inline constexpr const char* catalogue_file_name = "timing_pattern.ini";

/// The main window: contains the parts of the desk; handles the seven views, start-up and shut-down.
class frm_main {
    machine& machine_; // first: the parts below use it

public:
    explicit frm_main(machine& m);

    window form;

    desk::exchange exchange{machine_};
    desk::status_frame status_frame;
    desk::desk_frame desk_frame;
    desk::catalogue catalogue{exchange, desk_frame, status_frame};
    desk::favorites favorites{exchange, desk_frame, catalogue};
    desk::autorun autorun{exchange, desk_frame, catalogue};
    desk::set_dispatcher set_dispatcher{exchange, desk_frame, status_frame, catalogue, autorun};
    desk::panel panel{exchange, status_frame};
    desk::color_settings color_settings{exchange, desk_frame};
    desk::refresh refresh{exchange, status_frame, catalogue, panel};
    desk::download download{exchange, desk_frame, catalogue, panel, color_settings, autorun, refresh};
    desk::upload upload{exchange, desk_frame};
    workbench_frame workbench;
    desk::shared_fields shared_fields;
    desk::edid_buffers edid_buffers;
    desk::window_text window_text{form, workbench, edid_buffers, machine_.events};
    desk::previous_files previous_files{workbench, shared_fields};
    desk::file_number_1 file_number_1;
    desk::file_opener file_opener{machine_, form, workbench, shared_fields, window_text, previous_files, file_number_1};
    desk::file_saver file_saver{machine_, form, workbench, shared_fields, previous_files, file_number_1};
    desk::result_frame result_frame{workbench};
    desk::compare_recover compare_recover{machine_, form, workbench, edid_buffers, window_text, result_frame};
    desk::sink_transfers sink_transfers{exchange, workbench, shared_fields, edid_buffers, window_text, result_frame};
    desk::serial_number serial_number{edid_buffers, shared_fields};
    desk::programmer programmer{machine_,    workbench,     shared_fields,  edid_buffers,
                                window_text, serial_number, sink_transfers, file_saver};
    desk::translation_frame translation_frame;
    desk::translation_tables translation_tables;
    desk::node_dispatch node_dispatch{translation_frame, edid_buffers, translation_tables, serial_number,
                                      shared_fields};
    desk::translation_tree translation_tree{workbench, translation_frame, edid_buffers, translation_tables,
                                            node_dispatch};
    desk::report_opener report_opener{machine_,           translation_frame, edid_buffers,
                                      translation_tables, serial_number,     shared_fields};
    desk::about about{exchange};

    picture img_logo;
    line line_rs232;
    label lab_desk;
    button cmd_edid;
    button cmd_setup;

    bool logo_hidden = false; ///< the start picture is hidden

    /// Start-up. Catches no failure: a missing or malformed settings file, a port number outside 0 to 8 or a missing
    /// catalogue ends the program.
    void load();
    /// Shut-down: closes the port and rewrites the settings file. Skips a step that fails.
    void unload();

    /// Hides everything that a view may show.
    void view_reset();
    void view_paint();
    /// The first action of every view button.
    void change_view(int view_mode);

    void cmd_edid_click();
    void cmd_setup_click();
    void key_press(int code);

private:
    void lay_out_controls();
    void wire_events();
    void set_texts();
};

} // namespace desk
