#include "edid/previous_files.h"

#include "runtime/subscript.h"

#include <algorithm>

namespace desk {

previous_files::previous_files(workbench_frame& view, const shared_fields& fields) : workbench_(view), fields_(fields) {
    workbench_.cmd_pre_f.on_click = [this] { cmd_pre_f_click(); };
    for (std::size_t i = 0; i < workbench_.lab_pre_f.size(); ++i)
        workbench_.lab_pre_f.at(i).on_mouse_move = [this, i] { lab_pre_f_mouse_move(i); };
}

void previous_files::add_pre_f() {
    auto& list = workbench_.lab_pre_f;
    const auto found =
        std::find_if(list.begin(), list.end(), [this](const label& l) { return l.caption == fields_.edid_file_name; });
    // one that is not found pushes the oldest out
    std::size_t gap = found == list.end() ? list.size() - 1 : static_cast<std::size_t>(found - list.begin());
    for (; gap > 0; --gap)
        list.at(gap).caption = list.at(gap - 1).caption;
    list[0].caption = fields_.edid_file_name;
}

void previous_files::forget(std::size_t index) {
    auto& list = workbench_.lab_pre_f;
    for (std::size_t k = index; k + 1 < list.size(); ++k)
        list.at(k).caption = list.at(k + 1).caption;
    list.back().caption = "";
}

void previous_files::cmd_pre_f_click() { workbench_.fra_pre_f.visible = !workbench_.fra_pre_f.visible.get(); }

void previous_files::lab_pre_f_mouse_move(std::size_t index) {
    for (label& entry : workbench_.lab_pre_f) {
        entry.back_color = workbench_.fra_pre_f.back_color;
        entry.fore_color = color_black;
    }
    label& under_mouse = element(workbench_.lab_pre_f, index);
    under_mouse.back_color = color_blue;
    under_mouse.fore_color = color_white;
}

} // namespace desk
