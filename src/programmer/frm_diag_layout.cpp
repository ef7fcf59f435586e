#include "controls/layout.h"
#include "programmer/frm_diag.h"

namespace desk {

namespace {

// the three faces lie over each other
constexpr int face_left = 120;
constexpr int face_top = 120;
constexpr int face_width = 5280;
constexpr int face_height = 4500;

constexpr int button_height = 420;
constexpr int box_height = 330;
constexpr int choice_height = 300;

} // namespace

void frm_diag::lay_out_controls() {
    form.name = "frm_diag";
    form.caption = "EDID";
    form.width = face_left + face_width + 120;
    form.height = 5340;

    frame* const in_window = nullptr;
    automatic_run& r = run;

    // clang-format off
    lay_out(form, {
        {fra_sum, "fra_sum", in_window, face_left, face_top, face_width, face_height, "SUM", hidden},
        {lab_eeprom, "lab_eeprom", &fra_sum, 240, 480, 1440, 240, "EEPROM Size"},
        {cbo_eeprom, "cbo_eeprom", &fra_sum, 1740, 420, 3120, 360},
        {lab_unused, "lab_unused", &fra_sum, 240, 1080, 1440, 240, "Unused Bytes"},
        {opt_unused[0], "opt_unused(0)", &fra_sum, 1740, 1050, 1320, choice_height, "0x00"},
        {opt_unused[1], "opt_unused(1)", &fra_sum, 3180, 1050, 1320, choice_height, "0xFF"},
        {chk_4digits, "chk_4digits", &fra_sum, 240, 1650, 4680, choice_height, "Show lower 4 digits of checksum only"},
        {cmd_checksum, "cmd_checksum", &fra_sum, 240, 2280, 1380, button_height, "CHECKSUM"},
        {lab_checksum, "lab_checksum", &fra_sum, 1740, 2220, 3120, 540, "", large_bold},

        {fra_save_hex, "fra_save_hex", in_window, face_left, face_top, face_width, face_height, "HEX Type", hidden},
        {opt_hex_type[0], "opt_hex_type(0)", &fra_save_hex, 240, 480, 4680, choice_height, "save simple-type HEX"},
        {opt_hex_type[1], "opt_hex_type(1)", &fra_save_hex, 240, 960, 4680, choice_height, "save C-language-type HEX"},

        {r.fra_auto, "fra_auto", in_window, face_left, face_top, face_width, face_height, "AUTO", hidden},
        {r.lab_sn, "lab_sn", &r.fra_auto, 240, 420, 1020, 240, "Serial No."},
        {r.txt_sn, "txt_sn", &r.fra_auto, 1320, 360, 1740, box_height, "", fixed_pitch},
        {r.cmd_add, "cmd_add", &r.fra_auto, 3120, 360, 420, box_height, "+"},
        {r.cmd_sub, "cmd_sub", &r.fra_auto, 3600, 360, 420, box_height, "-"},
        {r.chk_write, "chk_write", &r.fra_auto, 240, 840, 1080, choice_height, "WRITE"},
        {r.chk_verify, "chk_verify", &r.fra_auto, 1380, 840, 1080, choice_height, "VERIFY"},
        {r.chk_auto_sn, "chk_auto_sn", &r.fra_auto, 2580, 840, 1260, choice_height, "Auto SN."},
        {r.cmd_run, "cmd_run", &r.fra_auto, 3960, 780, 1080, button_height, "RUN", hidden},
        {r.txt_auto_msg, "txt_auto_msg", &r.fra_auto, 240, 1320, 4800, 1920, "", locked | multi_line},
        {r.lab_pass, "lab_pass", &r.fra_auto, 240, 3360, 4800, 540, "", large_bold},
        {r.lab_pass_sn, "lab_pass_sn", &r.fra_auto, 240, 3960, 4800, 300},

        {cmd_ok, "cmd_ok", in_window, 4020, 4740, 1380, button_height, "", hidden},
        {txt_test, "txt_test", in_window, 120, 4740, 2400, box_height, "", hidden},
    });
    // clang-format on
}

} // namespace desk
