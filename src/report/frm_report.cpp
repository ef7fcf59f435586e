#include "report/frm_report.h"

#include "edid/save_name.h"
#include "report/text/report_text.h"
#include "runtime/failure.h"
#include "runtime/files.h"
#include "runtime/text.h"
#include "runtime/windows_1252.h"

namespace desk {

frm_report::frm_report(machine& m, const edid_buffers& buffers, translation_tables& tables, shared_fields& fields)
    : machine_(m), trans_buff_(buffers.trans_buff), tables_(tables), fields_(fields) {
    lay_out_controls();
    txt_report.text = "Parsing ..." + std::string(line_end);
    cmd_save.on_click = [this] { cmd_save_click(); };
    cmd_exit.on_click = [this] { cmd_exit_click(); };
    form.on_close = [this] { cmd_exit_click(); };
}

void frm_report::load() {
    const std::tm now = machine_.dates.now();
    if (report_build(report_text, trans_buff_, tables_, fields_.sn_value, date_text(now), time_text(now)))
        txt_report.text = report_text;
    cmd_save.enabled = true;
    cmd_exit.enabled = true;
}

void frm_report::cmd_exit_click() { form.visible = false; }

void frm_report::cmd_save_click() {
    try {
        choose_and_save();
    } catch (const runtime_failure& silent) {
        // Intended: the window shows no failure.
        machine_.report_silent_failure(silent.sentence());
    }
}

void frm_report::choose_and_save() {
    const auto choice = ask_where_to_save(machine_, dia_file, [this] { prepare_dialog(); });
    if (!choice) return;
    const std::string name = with_ending(choice->file_name, ".txt");
    replace_whole_file(path_from_utf8(name), bytes_from_text(report_text + std::string(line_end)));
}

void frm_report::prepare_dialog() {
    dia_file.kind = file_dialog_setup::dialog_kind::save;
    dia_file.filter = "*.txt|*.txt";
    dia_file.filter_index = 1;
    dia_file.title = "Save EDID Report";
    dia_file.init_dir = utf8_from_path(machine_.program_directory);
    dia_file.file_name = "";
}

} // namespace desk
