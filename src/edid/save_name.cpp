#include "edid/save_name.h"

#include "edid/file_opener.h"
#include "runtime/text.h"
#include "runtime/windows_1252.h"

namespace desk {

std::optional<file_choice> ask_where_to_save(machine& m, file_dialog_setup& setup,
                                             const std::function<void()>& prepare) {
    while (true) {
        prepare();
        auto choice = m.files.show(setup);
        if (!choice || choice->file_name.empty()) return std::nullopt;
        if (!file_exists(choice->file_name)) return choice;
        switch (
            m.boxes.show(choice->file_name + " exists. Overwrite it ?", box_icon::none, box_buttons::yes_no_cancel)) {
        case box_answer::yes:
            return choice;
        case box_answer::no:
            break;
        default:
            return std::nullopt;
        }
    }
}

std::string with_ending(const std::string& name, std::string_view ending) {
    if (lower_case(last_characters(name, 4)) == ending) return name;
    return without_last_characters(name, 4) + std::string(ending);
}

} // namespace desk
