#pragma once

#include "signal/catalogue.h"

namespace desk {

/// SET, the one button that pushes the operator's choice to the generator. What it does depends on the view.
class set_dispatcher {
public:
    set_dispatcher(exchange& link, desk_frame& desk, status_frame& status, catalogue& rows);

    void cmd_run_click();

private:
    void set_timing();
    void set_pattern();
    bool sent_and_echoed(std::string_view cmd);

    exchange& link_;
    desk_frame& desk_;
    status_frame& status_;
    catalogue& rows_;
};

} // namespace desk
