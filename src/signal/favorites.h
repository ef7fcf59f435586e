#pragma once

#include "signal/catalogue.h"

namespace desk {

/// The two favorite views. The check boxes of the catalogue's lists are the only copy of the flags.
class favorites {
public:
    favorites(exchange& link, desk_frame& desk, catalogue& rows);

    button cmd_fav_timing;
    button cmd_fav_pattern;

    void cmd_fav_timing_click();
    void cmd_fav_pattern_click();

private:
    void show_list(list_view& rows);

    exchange& exchange_;
    desk_frame& desk_frame_;
    catalogue& catalogue_;
};

} // namespace desk
