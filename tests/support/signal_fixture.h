#pragma once

#include "controls/window.h"
#include "signal/download.h"
#include "signal/favorites.h"
#include "signal/set_dispatcher.h"
#include "signal/upload.h"
#include "support/generator_fixture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <functional>
#include <initializer_list>
#include <map>
#include <string>
#include <vector>

namespace desk::test {

/// A row's name, with its number in the second and third characters.
inline std::string numbered(int row, const std::string& what) {
    return std::string(row < 10 ? "[0" : "[") + std::to_string(row) + "] " + what;
}

/// A catalogue with these numbers of rows: "[07] timing", "[41] pattern".
inline std::string numbered_catalogue(int timings, int patterns) {
    std::string text = std::to_string(timings) + "\r\n";
    for (int i = 1; i <= timings; ++i)
        text += "\"" + numbered(i, "timing") + "\"," + std::to_string(800 + i) +
                ",640,16,96,\"-\",525,480,10,2,\"+\",25.175\r\n";
    text += std::to_string(patterns) + "\r\n";
    for (int i = 1; i <= patterns; ++i)
        text += "\"" + numbered(i, "pattern") + "\"\r\n";
    return text;
}

/// Index of the lit button of a group; -1: none, -2: several.
template <std::size_t Count>
int lit(const std::array<button, Count>& group) {
    int found = -1;
    for (std::size_t i = 0; i < Count; ++i) {
        if (group.at(i).back_color.get() == 65280) found = found == -1 ? static_cast<int>(i) : -2;
    }
    return found;
}

inline std::vector<int> checked_rows(const list_view& list) {
    std::vector<int> rows;
    for (int i = 1; i <= list.row_count(); ++i) {
        if (list.row(i).checked) rows.push_back(i);
    }
    return rows;
}

/// Checks exactly these rows of a list.
inline void set_checks(list_view& list, const std::vector<int>& rows) {
    for (int i = 1; i <= list.row_count(); ++i)
        list.set_checked(i, std::find(rows.begin(), rows.end(), i) != rows.end());
}

/// The signal side on a scripted machine, with an answering generator.
class signal_fixture : public generator_fixture {
protected:
    explicit signal_fixture(int timings = 30, int patterns = 45) {
        rows.change_view = [this](int view) { link.view_mode = static_cast<std::int16_t>(view); };
        for (control* c : std::initializer_list<control*>{&rows.lstv_timing, &rows.lstv_pattern, &desk_area.cmd_run})
            form.add(*c);
        for (text_box& box : desk_area.txt_color_setting)
            form.add(box);
        set_captions(switches.cmd_out, {"PC", "HD", "DVI", "HDMI"});
        set_captions(switches.cmd_hdcp, {"OFF", "ON"});
        rows.load(numbered_catalogue(timings, patterns));
        steps.fill_intervals();
        steps.fill_rows();
    }

    void enter(int view) { link.view_mode = static_cast<std::int16_t>(view); }

    strings labels() const {
        return {status.lab_timing.caption, status.lab_pattern.caption, status.lab_out.caption, status.lab_hdcp.caption};
    }
    void set_labels(const std::string& text) {
        for (label* l : {&status.lab_timing, &status.lab_pattern, &status.lab_out, &status.lab_hdcp})
            l->caption = text;
    }

    /// Number, timing, pattern and interval of a row of the autorun list.
    strings autorun_row(int number) const {
        const list_view& list = steps.lstv_auto;
        return {list.text(number), list.sub_item(number, 1), list.sub_item(number, 2), list.sub_item(number, 3)};
    }
    static strings unused_row(int number) { return {std::to_string(number), "", "", "0"}; }

    desk_frame desk_area;
    status_frame status;
    catalogue rows{link, desk_area, status};
    favorites favorite_views{link, desk_area, rows};
    autorun steps{link, desk_area, rows};
    set_dispatcher dispatcher{link, desk_area, status, rows, steps};
    panel switches{link, status};
    color_settings colors{link, desk_area};
    refresh status_refresh{link, status, rows, switches};
    download read_back{link, desk_area, rows, switches, colors, steps, status_refresh};
    upload custom_string_upload{link, desk_area};
    window form;

private:
    template <std::size_t Count>
    static void set_captions(std::array<button, Count>& group, const std::array<const char*, Count>& captions) {
        for (std::size_t i = 0; i < Count; ++i)
            group.at(i).caption = captions.at(i);
    }
};

inline const noted_boxes::shown box_link_error{"Link Error !", box_icon::critical, box_buttons::ok};

} // namespace desk::test
