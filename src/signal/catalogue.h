#pragma once

#include "controls/list_view.h"
#include "link/exchange.h"
#include "signal/desk_frame.h"
#include "signal/status_frame.h"

#include <cstdint>
#include <functional>
#include <string_view>

namespace desk {

/// The timings and patterns by row number. The list controls are the only store: names and figures are read back from
/// them. A row's number is its 1-based place in timing_pattern.ini, and the argument of the wire commands.
class catalogue {
public:
    catalogue(exchange& link, desk_frame& desk, status_frame& status);

    std::int16_t cur_timing = not_known;  ///< row known to be on the generator's output
    std::int16_t cur_pattern = not_known; ///< the same for the pattern

    list_view lstv_timing;
    list_view lstv_timing_sub; ///< figures of the timings: htotal as the row's text, the rest as sub-items 1 to 10
    list_view lstv_pattern;
    combo_box cbo_timing;
    combo_box cbo_pattern;

    button cmd_timing;
    button cmd_pattern;

    /// The common part of a view change: hides the previous view, sets view_mode and lights the view's button.
    std::function<void(int)> change_view;

    /// Fills the lists from the text of timing_pattern.ini. Throws failure::input_past_end_of_file,
    /// failure::type_mismatch or failure::overflow if the text is too short or a number is invalid.
    void load(std::string_view text);

    void show_timing_detail();
    void show_pattern_extras();

    void cmd_timing_click();
    void cmd_pattern_click();
    void lstv_timing_click(); ///< also KeyUp
    void lstv_pattern_click();
    void cmd_check_all_click();
    void cmd_check_none_click();

private:
    void show_motion_set(bool shown);
    void show_color_set(bool shown);
    void check_rows(bool checked);

    exchange& exchange_;
    desk_frame& desk_frame_;
    status_frame& status_;
};

/// Position of Download in the views of the two lists, in twips.
inline constexpr int download_left_beside_list = 5640;
inline constexpr int download_top_beside_list = 2250;

} // namespace desk
