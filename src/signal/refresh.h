#pragma once

#include "signal/catalogue.h"
#include "signal/panel.h"

namespace desk {

/// Asks the generator what it outputs now and shows it in the four labels of the status frame. Stops at the first
/// failure and shows no box.
class refresh {
public:
    refresh(exchange& link, status_frame& status, catalogue& rows, panel& switches);

    void cmd_refresh_click();

private:
    bool read_timing();
    bool read_pattern();
    bool read_output_format();
    void read_hdcp();

    exchange& exchange_;
    status_frame& status_;
    catalogue& catalogue_;
    panel& panel_;
};

} // namespace desk
