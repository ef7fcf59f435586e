#include "controls/layout.h"
#include "programmer/frm_diag.h"

namespace desk {

namespace {

// the three pages share one place
constexpr int page_left = 120;
constexpr int page_top = 120;
constexpr int page_width = 5280;
constexpr int page_height = 4500;

constexpr int row_height = 420;
constexpr int inside = 240;

} // namespace

void frm_diag::lay_out_controls() {
    form.name = "frm_diag";
    form.caption = "EDID";
    form.width = page_left + page_width + 120;
    form.height = 5310;

    frame* const in_window = nullptr;
    automatic_run& r = run;

    // clang-format off
    lay_out(form, {
        {fra_sum, "fra_sum", in_window, page_left, page_top, page_width, page_height, "SUM", hidden | view_frame},
        {lab_eeprom, "lab_eeprom", &fra_sum, inside, 600, 1440, row_height, "EEPROM Size", in_middle},
        {cbo_eeprom, "cbo_eeprom", &fra_sum, 1740, 600, 3300, row_height},
        {lab_unused, "lab_unused", &fra_sum, inside, 1140, 1440, row_height, "Unused Bytes", in_middle},
        {opt_unused[0], "opt_unused(0)", &fra_sum, 1740, 1140, 1320, row_height, "0x00"},
        {opt_unused[1], "opt_unused(1)", &fra_sum, 3180, 1140, 1320, row_height, "0xFF"},
        {chk_4digits, "chk_4digits", &fra_sum, inside, 1680, 4680, row_height, "Show lower 4 digits of checksum only"},
        {cmd_checksum, "cmd_checksum", &fra_sum, inside, 2340, 1380, row_height, "CHECKSUM"},
        {lab_checksum, "lab_checksum", &fra_sum, 1740, 2250, 3300, 600, "", large_bold | in_middle},

        {fra_save_hex, "fra_save_hex", in_window, page_left, page_top, page_width, page_height, "HEX Type", hidden | view_frame},
        {opt_hex_type[0], "opt_hex_type(0)", &fra_save_hex, inside, 600, 4680, row_height, "save simple-type HEX"},
        {opt_hex_type[1], "opt_hex_type(1)", &fra_save_hex, inside, 1080, 4680, row_height, "save C-language-type HEX"},

        {r.fra_auto, "fra_auto", in_window, page_left, page_top, page_width, page_height, "AUTO", hidden | view_frame},
        {r.lab_sn, "lab_sn", &r.fra_auto, inside, 540, 1020, row_height, "Serial No.", in_middle},
        {r.txt_sn, "txt_sn", &r.fra_auto, 1320, 540, 1740, row_height, "", fixed_pitch},
        {r.cmd_add, "cmd_add", &r.fra_auto, 3120, 540, 420, row_height, "+"},
        {r.cmd_sub, "cmd_sub", &r.fra_auto, 3600, 540, 420, row_height, "-"},
        {r.chk_write, "chk_write", &r.fra_auto, inside, 1080, 1080, row_height, "WRITE"},
        {r.chk_verify, "chk_verify", &r.fra_auto, 1380, 1080, 1140, row_height, "VERIFY"},
        {r.chk_auto_sn, "chk_auto_sn", &r.fra_auto, 2580, 1080, 1320, row_height, "Auto SN."},
        {r.cmd_run, "cmd_run", &r.fra_auto, 3960, 1080, 1080, row_height, "RUN", hidden},
        {r.txt_auto_msg, "txt_auto_msg", &r.fra_auto, inside, 1620, 4800, 1710, "", locked | multi_line},
        {r.lab_pass, "lab_pass", &r.fra_auto, inside, 3420, 4800, 540, "", large_bold | in_middle},
        {r.lab_pass_sn, "lab_pass_sn", &r.fra_auto, inside, 4020, 4800, 300, "", in_middle},

        {cmd_ok, "cmd_ok", in_window, 4020, 4770, 1380, row_height, "", hidden},
        {txt_test, "txt_test", in_window, 120, 4770, 2400, row_height, "", hidden},
    });
    // clang-format on
}

} // namespace desk
