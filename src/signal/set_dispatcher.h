#pragma once

#include "signal/catalogue.h"

namespace desk {

/// SET, the one button that pushes the operator's choice to the generator. What it does depends on the view.
class set_dispatcher {
public:
    set_dispatcher(exchange& link, desk_frame& desk, status_frame& status, catalogue& rows);

    void cmd_run_click();

private:
    /// Sends the selected row of a list and shows what the generator made of it.
    void set_row(list_view& list, std::string_view letters, label& shown, std::int16_t& current);

    exchange& link_;
    desk_frame& desk_;
    status_frame& status_;
    catalogue& rows_;
};

} // namespace desk
