#include "qt/help_lines.h"

#include "qt/by_control.h"

#include <map>
#include <string>

namespace desk::qt {

namespace {

/// "%0" is the control's place in a control array, counted from 0.
const std::map<std::string, const char*>& lines() {
    static const std::map<std::string, const char*> table = {
        {"cbo_com", "Chooses a port and opens it at once"},
        {"cmd_conn", "Opens the chosen port; closes it first if it is open"},
        {"cmd_disconn", "Closes the port"},
        {"cmd_about", "Asks the generator for its version, to check that it answers"},
        {"cmd_about_ok", "Closes this frame"},
        {"cmd_timing", "Shows the timings and their figures"},
        {"cmd_pattern", "Shows the patterns"},
        {"cmd_fav_timing", "Shows which timings the generator offers as favorites"},
        {"cmd_fav_pattern", "Shows which patterns the generator offers as favorites"},
        {"cmd_edid", "Shows the EDID of a file beside that of a sink"},
        {"cmd_auto", "Shows the sequence that the generator runs by itself"},
        {"cmd_setup", "Shows the generator's switches"},

        {"lab_timing", "What the generator last confirmed; Refresh asks again"},
        {"lab_pattern", "What the generator last confirmed; Refresh asks again"},
        {"lab_out", "What the generator last confirmed; Refresh asks again"},
        {"lab_hdcp", "What the generator last confirmed; Refresh asks again"},
        {"cmd_refresh", "Asks the generator for all four"},

        {"lstv_timing", "Selects a timing; SET sends it"},
        {"lstv_pattern", "Selects a pattern; SET sends it"},
        {"cmd_run", "Sends what this view shows to the generator"},
        {"cmd_download", "Reads from the generator what this view shows"},
        {"cmd_check_all", "Ticks all rows; nothing is sent before SET"},
        {"cmd_check_none", "Unticks all rows; nothing is sent before SET"},
        {"hsr_color_setting", "Sends the value at every step"},
        {"txt_color_setting", "Sends a number from 0 to 255 when Enter is pressed"},
        {"txt_motion_str", "Up to twelve characters; Upload sends them"},
        {"cmd_upload", "Sends the custom string to the generator"},
        {"txt_pix_f", "From the catalogue; not editable"},

        {"cmd_out", "Sets the output format at once; green means confirmed"},
        {"cmd_hdcp", "Switches HDCP at once; green means confirmed"},
        {"cmd_asc", "Sets the audio source at once, and asks for the channels that it allows"},
        {"cmd_lpcm", "Sets the audio channels at once; the generator can refuse"},
        {"cmd_csc", "Sets the color space at once; green means confirmed"},
        {"cmd_deep", "Sets the color depth at once; green means confirmed"},
        {"cmd_auto_go", "Starts or stops the autorun list at once"},
        {"cmd_fav", "Lets the generator offer all timings and patterns, or only its favorites"},
        {"cmd_reset", "Resets the generator to its defaults"},

        {"lstv_auto", "Selects a row; a double click puts its values into the three lists below"},
        {"cbo_timing", "The timing for Add / Replace"},
        {"cbo_pattern", "The pattern for Add / Replace"},
        {"cbo_interval", "The seconds for Add / Replace"},
        {"cmd_replace", "Puts the three values into the selected row; nothing is sent before SET"},
        {"cmd_delete", "Empties the selected row; nothing is sent before SET"},

        {"txt_write", "The EDID of the file. Marked bytes differ from the sink's"},
        {"lab_write_checksum", "The checksum that block %0 needs, and whether it has it"},
        {"cmd_recover", "Corrects the checksum in the text of block %0. To send it, save the file and open it again"},
        {"cmd_load", "Opens a HEX, BIN or DDC file"},
        {"cmd_pre_f", "Lists the last ten files"},
        {"cmd_clear_file", "Empties the WRITE window"},
        {"cmd_save_write", "Saves the text of the WRITE window"},
        {"cmd_write", "Writes the EDID into the sink, as it was opened"},
        {"cmd_verify", "Reads the sink and compares it with the EDID as it was opened"},
        {"cmd_w_auto", "Writes one EDID into many sinks, each with its own serial number"},
        {"cmd_erase", "Erases the EDID memory of the sink; asks first"},
        {"cmd_write_translate", "Explains this EDID"},
        {"cmd_sum_write", "Computes the sum that an EEPROM programmer shows"},
        {"txt_read", "The EDID of the sink. Marked bytes differ from the file's"},
        {"lab_read_checksum", "The checksum that block %0 needs, and whether it has it"},
        {"cmd_read", "Reads the EDID of the sink"},
        {"cmd_compare", "Compares the bytes of both sides and marks those that differ"},
        {"cmd_clear_read", "Empties the READ window"},
        {"cmd_save_read", "Saves the text of the READ window"},
        {"cmd_read_translate", "Explains this EDID"},
        {"cmd_sum_read", "Computes the sum that an EEPROM programmer shows"},
        {"opt_edid_src", "The sink that READ, WRITE, VERIFY, ERASE and AUTO work on"},
        {"lab_pre_f", "Opens this file"},
        {"cmd_ok", "Closes this frame"},

        {"cmd_edid_report", "Shows the whole analysis as one text"},
        {"cmd_edid_back", "Goes back to the EDID texts"},
        {"tree_edid", "Shows the lines of the selected part"},
        {"chk_established", "Whether the EDID has this timing; ticking it changes nothing"},

        {"frm_diag.cmd_ok", "Closes this window"},
        {"cbo_eeprom", "The size of the memory that the programmer sums up"},
        {"opt_unused", "What the memory holds after the 256 bytes of the EDID"},
        {"chk_4digits", "Shows four digits, as many programmers do"},
        {"cmd_checksum", "Shows the sum of the whole memory"},
        {"opt_hex_type", "How the bytes are written in the HEX file"},
        {"txt_sn", "The serial number of the next unit, 0 to 4294967295"},
        {"cmd_add", "The next serial number"},
        {"cmd_sub", "The previous serial number"},
        {"chk_write", "RUN writes the EDID with the serial number into the sink"},
        {"chk_verify", "RUN reads the sink back and compares"},
        {"chk_auto_sn", "After a PASS the serial number goes up by one"},
        {"frm_diag.cmd_run", "Writes and verifies one unit"},

        {"cmd_save", "Saves the report as a text file"},
        {"cmd_exit", "Closes the report"},
    };
    return table;
}

} // namespace

QString help_line(const control& c) {
    const char* const* const line = entry_of(c, lines());
    return line == nullptr ? QString() : QString::fromLatin1(*line).replace("%0", QString::number(c.index));
}

} // namespace desk::qt
