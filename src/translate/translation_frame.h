#pragma once

#include "controls/controls.h"
#include "controls/tree_view.h"

#include <array>

namespace desk {

/// The translation panel, which covers the EDID Read/Write view.
struct translation_frame {
    frame fra_edid_edit;
    tree_view tree_edid;
    text_box txt_edid;
    std::array<check_box, 17> chk_established;
    picture pic_speaker_fl;
    picture pic_speaker_flc;
    picture pic_speaker_fc;
    picture pic_speaker_frc;
    picture pic_speaker_fr;
    picture pic_speaker_lfe;
    picture pic_speaker_rl;
    picture pic_speaker_rlc;
    picture pic_speaker_rc;
    picture pic_speaker_rrc;
    picture pic_speaker_rr;
    button cmd_edid_report;
    button cmd_edid_back;
};

} // namespace desk
