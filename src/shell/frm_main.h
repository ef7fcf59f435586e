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
#include "signal/favourites.h"
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

/// The main window: the parts of the desk put together, the seven views, start-up and shut-down.
class frm_main {
    machine& machine_; // first: the parts below are built on it

public:
    explicit frm_main(machine& m);

    window form;

    exchange link{machine_};
    status_frame status;
    desk_frame desk_area;
    catalogue rows{link, desk_area, status};
    favourites favourite_views{link, desk_area, rows};
    autorun autorun_view{link, desk_area, rows};
    set_dispatcher set{link, desk_area, status, rows, autorun_view};
    panel switches{link, status};
    color_settings colors{link, desk_area};
    refresh status_refresh{link, status, rows, switches};
    download view_download{link, desk_area, rows, switches, colors, autorun_view, status_refresh};
    upload custom_string_upload{link, desk_area};
    workbench_frame edid;
    shared_fields fields;
    edid_buffers buffers;
    window_text texts{form, edid, buffers, machine_.events};
    previous_files previous{edid, fields};
    file_number_1 number_1;
    file_opener opener{machine_, form, edid, fields, texts, previous, number_1};
    file_saver saver{machine_, form, edid, fields, previous, number_1};
    result_frame result{edid};
    compare_recover comparison{machine_, form, edid, buffers, texts, result};
    sink_transfers transfers{link, edid, fields, buffers, texts, result};
    serial_number serial{buffers, fields};
    programmer options{machine_, edid, fields, buffers, texts, serial, transfers, saver};
    translation_frame translation;
    translation_tables tables;
    node_dispatch dispatch{translation, buffers, tables, serial, fields};
    translation_tree tree{edid, translation, buffers, tables, dispatch};
    report_opener report{machine_, translation, buffers, tables, serial, fields};
    about about_view{link};

    picture img_logo;
    line line_rs232;
    label lab_desk;
    button cmd_edid;
    button cmd_setup;

    bool logo_hidden = false; ///< the start picture has been taken away

    /// Start-up. No failure is caught here: a missing or malformed settings file, a port number outside 0 to 8 or a
    /// missing catalogue ends the program.
    void load();
    /// Shut-down: closes the port and rewrites the settings file. A step that fails is skipped.
    void unload();

    /// Hides all that any view may have shown.
    void view_reset();
    /// Lights the button of the present view.
    void view_paint();
    /// What every view button does first.
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
