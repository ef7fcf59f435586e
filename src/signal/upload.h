#pragma once

#include "link/exchange.h"
#include "signal/desk_frame.h"

namespace desk {

/// Upload sends the custom string: twelve raw bytes after an answered command.
class upload {
public:
    upload(exchange& link, desk_frame& desk);

    void cmd_upload_click();

private:
    exchange& exchange_;
    desk_frame& desk_frame_;
};

} // namespace desk
