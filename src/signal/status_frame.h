#pragma once

#include "controls/controls.h"

namespace desk {

/// "VELOTRACE OUT Status": what the generator is known to output. Always on show.
struct status_frame {
    frame fra_status;
    button cmd_refresh;
    label lab_timing_lab;
    label lab_timing;
    label lab_pattern_lab;
    label lab_pattern;
    label lab_out_lab;
    label lab_out;
    label lab_hdcp_lab;
    label lab_hdcp;
};

} // namespace desk
