#include "edid/file_saver.h"

#include "edid/format/file_writers.h"
#include "edid/save_name.h"
#include "edid/title.h"
#include "runtime/failure.h"
#include "runtime/files.h"
#include "runtime/path_text.h"
#include "runtime/text.h"
#include "runtime/windows_1252.h"

namespace desk {

namespace {

constexpr int write_side = 1;
constexpr int read_side = 2;
constexpr int hex_filter = 1;

} // namespace

file_saver::file_saver(machine& m, window& form, workbench_frame& view, shared_fields& fields, previous_files& previous,
                       const file_number_1& number)
    : machine_(m), form_(form), workbench_(view), fields_(fields), previous_(previous), number_(number) {
    workbench_.cmd_save_write.on_click = [this] { cmd_save_write_click(); };
    workbench_.cmd_save_read.on_click = [this] { cmd_save_read_click(); };
}

void file_saver::cmd_save_write_click() {
    if (workbench_.txt_write.text.get().empty())
        machine_.boxes.show("WRITE window is empty", box_icon::critical, box_buttons::ok);
    else
        save_file(write_side);
}

void file_saver::cmd_save_read_click() {
    if (workbench_.txt_read.text.get().empty())
        machine_.boxes.show("EDID of Read is empty", box_icon::critical, box_buttons::ok);
    else
        save_file(read_side);
}

void file_saver::save_file(int side) {
    try {
        choose_and_save(side);
    } catch (const runtime_failure& silent) {
        // Intended: the window shows no failure.
        machine_.report_silent_failure(silent.sentence());
    }
}

void file_saver::choose_and_save(int side) {
    const auto choice = ask_where_to_save(machine_, workbench_.dia_file, [this] { prepare_dialog(); });
    if (!choice) return;
    const bool hex = choice->filter_index == hex_filter;
    const std::string name = with_ending(choice->file_name, hex ? ".hex" : ".bin");
    if (hex) choose_hex_type();
    const std::string text = side == write_side ? workbench_.txt_write.text : workbench_.txt_read.text;
    if (side == write_side) {
        fields_.edid_file_name = name;
        form_.caption = title_with(name);
        previous_.add_pre_f();
    }
    write(name, hex, text);
    (side == write_side ? fields_.write_text_file : fields_.read_text_file) = name;
}

void file_saver::prepare_dialog() {
    file_dialog_setup& dia_file = workbench_.dia_file;
    dia_file.kind = file_dialog_setup::dialog_kind::save;
    dia_file.title = "Save EDID file";
    dia_file.filter_index = hex_filter;
    dia_file.filter = "*.hex|*.hex|*.bin|*.bin";
    if (fields_.edid_file_name.empty()) {
        dia_file.init_dir = utf8_from_path(machine_.program_directory);
        dia_file.file_name = "";
    } else {
        dia_file.init_dir = path_part(fields_.edid_file_name, 0);
        dia_file.file_name = without_last_characters(path_part(fields_.edid_file_name, 2), 4);
    }
}

void file_saver::write(const std::string& path, bool hex, const std::string& text) const {
    if (!hex)
        number_.write_over(path, bin_of(text));
    else if (fields_.hex_type == hex_style::simple)
        number_.replace(path, bytes_from_text(simple_hex_of(text)));
    else
        number_.replace(path, bytes_from_text(c_language_hex_of(text)));
}

} // namespace desk
