#pragma once

#include "controls/controls.h"
#include "link/exchange.h"

namespace desk {

/// The About frame: the version of the desk, and that of the generator's firmware, which it queries.
class about {
public:
    explicit about(exchange& link);

    button cmd_about;
    frame fra_about;
    label lab_about;
    label lab_ver;
    button cmd_about_ok;

    void cmd_about_click();
    void cmd_about_ok_click();

private:
    exchange& exchange_;
};

} // namespace desk
