#include "qt/plain_names.h"

#include "qt/by_control.h"

#include <map>
#include <string>

namespace desk::qt {

namespace {

/// "%0" and "%1" are the control's place in a control array, counted from 0 and from 1.
const std::map<std::string, const char*>& names() {
    static const std::map<std::string, const char*> table = {
        {"cbo_com", "RS232 port"},
        {"img_logo", "Start picture"},
        {"lab_timing", "Timing of the generator"},
        {"lab_pattern", "Pattern of the generator"},
        {"lab_out", "Output format of the generator"},
        {"lab_hdcp", "HDCP of the generator"},

        {"lstv_timing", "Timings"},
        {"lstv_timing_sub", "Figures of the timings"},
        {"lstv_pattern", "Patterns"},
        {"fra_desk", "Work area"},
        {"lab_desk_note", "Hint"},
        {"txt_pix_f", "Pixel clock in MHz"},
        {"lab_hori", "Horizontal figures"},
        {"txt_htotal_pix", "Horizontal total in pixels"},
        {"txt_hactive_pix", "Horizontal active in pixels"},
        {"txt_hdelay_pix", "Horizontal pulse delay in pixels"},
        {"txt_hsw_pix", "Horizontal pulse width in pixels"},
        {"txt_htotal_us", "Horizontal total in microseconds"},
        {"txt_hactive_us", "Horizontal active in microseconds"},
        {"txt_hdelay_us", "Horizontal pulse delay in microseconds"},
        {"txt_hsw_us", "Horizontal pulse width in microseconds"},
        {"txt_hpol", "Horizontal polarity"},
        {"txt_hf", "Horizontal frequency in kHz"},
        {"lab_vert", "Vertical figures"},
        {"txt_vtotal_line", "Vertical total in lines"},
        {"txt_vactive_line", "Vertical active in lines"},
        {"txt_vdelay_line", "Vertical pulse delay in lines"},
        {"txt_vsw_line", "Vertical pulse width in lines"},
        {"txt_vtotal_ms", "Vertical total in milliseconds"},
        {"txt_vactive_ms", "Vertical active in milliseconds"},
        {"txt_vdelay_ms", "Vertical pulse delay in milliseconds"},
        {"txt_vsw_ms", "Vertical pulse width in milliseconds"},
        {"txt_vpol", "Vertical polarity"},
        {"txt_vf", "Vertical frequency in Hz"},
        {"lab_color_setting", "Name of color value %1"},
        {"hsr_color_setting", "Color value %1"},
        {"txt_color_setting", "Color value %1 as a number"},
        {"txt_motion_str", "Custom string"},

        {"lab_setup", "Panel"},
        {"cmd_out", "Output format"},
        {"cmd_hdcp", "HDCP"},
        {"cmd_asc", "Audio source"},
        {"cmd_lpcm", "LPCM channels"},
        {"cmd_csc", "Color space"},
        {"cmd_deep", "Deep color"},
        {"cmd_auto_go", "Autorun"},
        {"cmd_fav", "My Favorite"},
        {"cmd_reset", "System reset"},

        {"lab_auto", "Hint"},
        {"lstv_auto", "Autorun list"},
        {"cbo_timing", "Timing of the autorun row"},
        {"cbo_pattern", "Pattern of the autorun row"},
        {"cbo_interval", "Interval of the autorun row in seconds"},

        {"txt_write", "Bytes of the WRITE side"},
        {"lab_w_checksum", "WRITE side"},
        {"lab_write_checksum", "Checksum of block %0 on the WRITE side"},
        {"cmd_recover", "Repair the checksum of block %0 on the WRITE side"},
        {"cmd_load", "Open a file into the WRITE side"},
        {"cmd_pre_f", "Previous files"},
        {"cmd_clear_file", "WRITE side"},
        {"cmd_save_write", "WRITE side"},
        {"cmd_write", "Write the file to the sink"},
        {"cmd_verify", "Compare the sink with the file"},
        {"cmd_w_auto", "Automatic serial number run"},
        {"cmd_erase", "Erase the sink"},
        {"cmd_write_translate", "Translate the WRITE side"},
        {"cmd_sum_write", "Sum of the WRITE side"},
        {"txt_read", "Bytes of the READ side"},
        {"lab_r_checksum", "READ side"},
        {"lab_read_checksum", "Checksum of block %0 on the READ side"},
        {"cmd_read", "Read the sink"},
        {"cmd_compare", "Compare both sides"},
        {"cmd_clear_read", "READ side"},
        {"cmd_save_read", "READ side"},
        {"cmd_read_translate", "Translate the READ side"},
        {"cmd_sum_read", "Sum of the READ side"},
        {"opt_edid_src", "Source"},
        {"lab_pre_f", "Previous file %1"},
        {"txt_msg", "Messages"},
        {"lab_pass", "Result"},
        {"tree_edid", "Parts of the EDID"},
        {"txt_edid", "Text of the selected part"},
        {"pic_speaker_fl", "Speaker front left"},
        {"pic_speaker_flc", "Speaker front left of center"},
        {"pic_speaker_fc", "Speaker front center"},
        {"pic_speaker_frc", "Speaker front right of center"},
        {"pic_speaker_fr", "Speaker front right"},
        {"pic_speaker_lfe", "Low frequency speaker"},
        {"pic_speaker_rl", "Speaker rear left"},
        {"pic_speaker_rlc", "Speaker rear left of center"},
        {"pic_speaker_rc", "Speaker rear center"},
        {"pic_speaker_rrc", "Speaker rear right of center"},
        {"pic_speaker_rr", "Speaker rear right"},

        {"lab_about", "Versions"},
        {"lab_ver", "Version"},

        {"cbo_eeprom", "EEPROM size"},
        {"opt_unused", "Unused bytes"},
        {"lab_checksum", "Checksum"},
        {"opt_hex_type", "HEX type"},
        {"txt_sn", "Serial number"},
        {"cmd_add", "Next serial number"},
        {"cmd_sub", "Previous serial number"},
        {"txt_auto_msg", "Messages"},
        {"lab_pass_sn", "Serial number of the unit"},
        {"txt_test", "Selected EEPROM size"},

        {"txt_report", "Report"},
    };
    return table;
}

} // namespace

QString plain_name(const control& c) {
    const char* const* const name = entry_of(c, names());
    if (name == nullptr) return {};
    return QString::fromLatin1(*name)
        .replace("%0", QString::number(c.index))
        .replace("%1", QString::number(c.index + 1));
}

} // namespace desk::qt
