#pragma once

#include "signal/catalogue.h"

namespace desk {

/// The list that the generator runs by itself: up to 32 steps of a timing, a pattern and a time to hold them.
class autorun {
public:
    autorun(desk_frame& desk, catalogue& rows);

    button cmd_auto;
    frame fra_auto;
    label lab_auto;
    list_view lstv_auto; ///< 32 rows: number, timing, pattern, seconds as text ("0": unused)
    combo_box cbo_interval;
    button cmd_replace;
    button cmd_delete;

    /// The intervals that can be chosen, in seconds.
    void fill_intervals();
    /// The 32 rows as unused.
    void fill_rows();

    void cmd_auto_click();

private:
    desk_frame& desk_;
    catalogue& rows_;
};

inline constexpr int autorun_rows = 32;

/// Where Download stands over the frames of Autorun Config and Panel Control, in twips.
inline constexpr int download_left_over_frame = 2700;
inline constexpr int download_top_over_frame = 2100;

} // namespace desk
