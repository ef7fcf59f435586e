#pragma once

#include "link/commands.h"
#include "signal/catalogue.h"

namespace desk {

/// The generator's autorun list: up to 32 steps of a timing, a pattern and a duration.
class autorun {
public:
    autorun(exchange& link, desk_frame& desk, catalogue& rows);

    button cmd_auto;
    frame fra_auto;
    label lab_auto;
    list_view lstv_auto; ///< 32 rows: number, timing, pattern, seconds as text ("0": unused)
    combo_box cbo_interval;
    button cmd_replace;
    button cmd_delete;

    /// Fills in the intervals on offer, in seconds.
    void fill_intervals();
    /// Fills in 32 unused rows.
    void fill_rows();

    /// Sends all 32 rows, four exchanges each; stops with a box at the first failure.
    void upload_autorun();

    void cmd_auto_click();
    void cmd_replace_click();
    void cmd_delete_click();
    void lstv_auto_dbl_click();

private:
    void set_selected_row(const std::string& timing, const std::string& pattern, const std::string& interval);
    bool upload_row(int row);
    bool send(std::string_view letters, int argument);

    exchange& exchange_;
    desk_frame& desk_frame_;
    catalogue& catalogue_;
};

/// The interval of an unused row.
inline constexpr const char* autorun_unused = "0";

/// Position of Download in the frames of Autorun Config and Panel Control, in twips.
inline constexpr int download_left_over_frame = 2700;
inline constexpr int download_top_over_frame = 2100;

} // namespace desk
