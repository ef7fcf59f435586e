#include "edid/file_opener.h"

#include "edid/format/file_kind.h"
#include "edid/title.h"
#include "runtime/failure.h"
#include "runtime/files.h"
#include "runtime/path_text.h"
#include "runtime/subscript.h"

namespace desk {

file_opener::file_opener(machine& m, window& form, workbench_frame& view, shared_fields& fields, window_text& text,
                         previous_files& previous, file_number_1& number)
    : machine_(m)
    , form_(form)
    , workbench_(view)
    , fields_(fields)
    , window_text_(text)
    , previous_(previous)
    , number_(number) {
    workbench_.cmd_load.on_click = [this] { cmd_load_click(); };
    for (std::size_t i = 0; i < workbench_.lab_pre_f.size(); ++i)
        workbench_.lab_pre_f.at(i).on_click = [this, i] { lab_pre_f_click(i); };
}

void file_opener::cmd_load_click() {
    try {
        choose_and_open();
    } catch (const runtime_failure& silent) {
        // Intended: the window shows no failure.
        machine_.report_silent_failure(silent.sentence());
    }
}

void file_opener::choose_and_open() {
    prepare_dialog();
    const auto choice = machine_.files.show(workbench_.dia_file);
    if (!choice || choice->file_name.empty()) return;
    if (!file_exists(choice->file_name)) return show_box(choice->file_name + " dosen't exist !");
    fields_.edid_file_name = choice->file_name;
    open_present_name();
}

void file_opener::prepare_dialog() {
    file_dialog_setup& dia_file = workbench_.dia_file;
    dia_file.kind = file_dialog_setup::dialog_kind::open;
    dia_file.title = "Open edid file";
    dia_file.file_name = "";
    dia_file.filter_index = 1;
    dia_file.filter = "hex / bin / ddc|*.hex;*.bin;*.ddc|*.hex|*.hex|*.bin|*.bin|*.ddc|*.ddc|*.*|*.*";
    const std::string& newest = workbench_.lab_pre_f[0].caption;
    if (!fields_.edid_file_name.empty())
        dia_file.init_dir = path_part(fields_.edid_file_name, 0);
    else if (!newest.empty() && file_exists(newest))
        dia_file.init_dir = path_part(newest, 0);
    // otherwise the dialog keeps its last folder
}

void file_opener::open_present_name() {
    load_file();
    previous_.add_pre_f();
    window_text_.enable_write_side(true);
}

void file_opener::lab_pre_f_click(std::size_t index) {
    workbench_.fra_pre_f.visible = false;
    const std::string path = element(workbench_.lab_pre_f, index).caption;
    if (!path.empty() && file_exists(path)) {
        fields_.edid_file_name = path;
        return open_present_name();
    }
    if (!path.empty()) {
        show_box(path + " doesn't exist !");
        previous_.forget(index);
    }
    if (!fields_.edid_file_name.empty()) window_text_.enable_write_side(true);
}

void file_opener::load_file() {
    while_doing([this] { return "Opening the EDID file " + fields_.edid_file_name; },
                [this] {
                    load_by_kind();
                    if (file_ok) {
                        window_text_.win2buff(buff::write, 1);
                        workbench_.cmd_write_translate.enabled = true;
                        workbench_.cmd_sum_write.enabled = true;
                    } else {
                        show_box("Data Error !");
                    }
                });
    form_.caption = title_with(fields_.edid_file_name);
}

void file_opener::load_by_kind() {
    switch (kind_by_last_characters(fields_.edid_file_name)) {
    case file_kind::hex:
        load_hex();
        break;
    case file_kind::bin:
        load_bin();
        break;
    case file_kind::ddc:
        load_ddc();
        break;
    default:
        show_box("Wrong file format !");
        file_ok = false;
        break;
    }
}

template <class Read>
void file_opener::load(byte_step::append when, Read read) {
    workbench_.txt_write.text = "";
    fields_.write_text_file = fields_.edid_file_name;
    file_ok = true;
    const std::string file = number_.open_for_reading(fields_.edid_file_name);
    byte_step step(workbench_, window_text_, when);
    // a failure here leaves the file open
    if (!read(file, step)) file_ok = false;
    number_.close();
}

void file_opener::load_hex() { load(byte_step::append::line_by_line, read_hex); }

void file_opener::load_bin() { load(byte_step::append::at_once, read_bin); }

void file_opener::load_ddc() {
    load(byte_step::append::at_once, [this](std::string_view file, byte_step& step) {
        const std::string looking = "Looking for the EDID's header in " + fields_.edid_file_name;
        return read_ddc(file, step, [&] { machine_.events.turn_without_progress(looking); });
    });
}

void file_opener::show_box(const std::string& text) { machine_.boxes.show(text, box_icon::critical, box_buttons::ok); }

bool file_exists(const std::string& path) {
    const std::filesystem::file_type type = type_of_file(path_from_utf8(path));
    return std::filesystem::exists(std::filesystem::file_status(type)) && type != std::filesystem::file_type::directory;
}

} // namespace desk
