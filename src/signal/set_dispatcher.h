#pragma once

#include "signal/autorun.h"

namespace desk {

/// SET sends the operator's choice to the generator. What it sends depends on the view.
class set_dispatcher {
public:
    set_dispatcher(exchange& link, desk_frame& desk, status_frame& status, catalogue& rows, autorun& steps);

    void cmd_run_click();

private:
    /// Sends the selected row of a list and shows the result.
    void set_row(list_view& list, std::string_view letters, label& shown, std::int16_t& current);
    void set_favorite_timings();
    void set_favorite_patterns();
    /// Sends the flag of each row of a list, up to the first failed exchange. Returns whether any row sent was
    /// checked.
    bool send_flags(const list_view& list, int count, std::string_view letters_on, std::string_view letters_off);
    static void check_default(list_view& list, int row);
    void upload_autorun();

    exchange& exchange_;
    desk_frame& desk_frame_;
    status_frame& status_;
    catalogue& catalogue_;
    autorun& autorun_;
};

} // namespace desk
