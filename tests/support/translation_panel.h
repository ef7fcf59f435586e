#pragma once

#include "edid/buffers.h"
#include "edid/serial_number.h"
#include "edid/shared_fields.h"
#include "edid/workbench_frame.h"
#include "translate/decode/translation_tables.h"
#include "translate/node_dispatch.h"
#include "translate/translation_frame.h"
#include "translate/translation_tree.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace desk::test {

/// The translation panel with its tables and procedures, without the rest of the desk.
struct translation_panel {
    edid_buffers buffers;
    shared_fields fields;
    serial_number serial{buffers, fields};
    workbench_frame workbench;
    translation_frame view;
    translation_tables tables;
    node_dispatch dispatch{view, buffers, tables, serial, fields};
    translation_tree tree{workbench, view, buffers, tables, dispatch};

    /// Hides every control over the text, as the layout does when the desk starts.
    void hide_all() {
        for (check_box& box : view.chk_established)
            box.visible = false;
        for (const auto& [name, shown] : all_pictures())
            shown->visible = false;
    }

    /// The numbers of the boxes that are on show, and of those that are ticked.
    std::vector<int> visible_boxes() const {
        return boxes_that([](const check_box& box) { return box.visible.get(); });
    }
    std::vector<int> ticked_boxes() const {
        return boxes_that([](const check_box& box) { return box.value.get() == 1; });
    }

    /// The names of the pictures on show: "fl", "lfe".
    std::vector<std::string> visible_pictures() {
        std::vector<std::string> names;
        for (const auto& [name, shown] : all_pictures())
            if (shown->visible) names.push_back(name);
        return names;
    }
    std::vector<std::pair<std::string, picture*>> all_pictures() {
        return {{"fl", &view.pic_speaker_fl},   {"flc", &view.pic_speaker_flc}, {"fc", &view.pic_speaker_fc},
                {"frc", &view.pic_speaker_frc}, {"fr", &view.pic_speaker_fr},   {"lfe", &view.pic_speaker_lfe},
                {"rl", &view.pic_speaker_rl},   {"rlc", &view.pic_speaker_rlc}, {"rc", &view.pic_speaker_rc},
                {"rrc", &view.pic_speaker_rrc}, {"rr", &view.pic_speaker_rr}};
    }

private:
    template <class Test>
    std::vector<int> boxes_that(Test holds) const {
        std::vector<int> numbers;
        for (std::size_t i = 0; i < view.chk_established.size(); ++i)
            if (holds(view.chk_established.at(i))) numbers.push_back(static_cast<int>(i));
        return numbers;
    }
};

} // namespace desk::test
