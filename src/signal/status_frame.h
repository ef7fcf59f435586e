#pragma once

#include "controls/controls.h"

#include <cstdint>

namespace desk {

/// The row or value for "not known".
inline constexpr std::int16_t not_known = 254;

/// "VELOTRACE OUT Status": what the generator is known to output. Always visible.
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

    void empty() {
        for (label* value : {&lab_timing, &lab_pattern, &lab_out, &lab_hdcp})
            value->caption = "";
    }
};

} // namespace desk
