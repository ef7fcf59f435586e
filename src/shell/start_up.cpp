#include "shell/frm_main.h"

#include "edid/title.h"
#include "runtime/failure.h"
#include "runtime/files.h"

namespace desk {

void frm_main::load() {
    exchange.view_mode = view::none_yet;
    logo_hidden = false;
    catalogue.cur_timing = not_known;
    catalogue.cur_pattern = not_known;
    exchange.download_mode = false;
    exchange.rs232_connected = false;
    shared_fields.edid_file_name = "";
    shared_fields.diag_mode = diag::none;
    shared_fields.edid_src = 1;

    for (int port = 1; port <= 8; ++port)
        exchange.cbo_com.add_item("COM" + std::to_string(port) + ":", port - 1);
    autorun.fill_intervals();

    while_doing([] { return "Reading the settings file marlo_rs232.ini"; },
                [this] {
                    kept_settings{exchange, workbench, shared_fields}.read(
                        read_whole_file(machine_.program_directory / settings_file_name));
                });
    // raises Click, which opens the port; port 0 gives list index -1 and raises none
    while_doing([] { return "Selecting the port from marlo_rs232.ini"; },
                [this] { exchange.cbo_com.set_list_index(exchange.com_port - 1); });

    while_doing([] { return "Reading the catalogue timing_pattern.ini"; },
                [this] { catalogue.load(read_whole_file(machine_.program_directory / catalogue_file_name)); });
    autorun.fill_rows();
    set_texts();
    form.caption = title;
    about.lab_ver.caption = "v11";
}

void frm_main::set_texts() {
    panel.lab_setup.caption = "Press [Download] to download VELOTRACE system status.\r\n"
                              "Press panel control buttons to control VELOTRACE right away.\r\n"
                              "After [Reset], press [Download] to get VELOTRACE default status.\r\n\r\n\r\n\r\n"
                              "Output Format = \r\n\r\n"
                              "HDCP =\r\n\r\n"
                              "Audio Source = \r\n\r\n"
                              "LPCM CH = \r\n\r\n"
                              "Color Space = \r\n\r\n"
                              "Deep Color = \r\n\r\n"
                              "Autorun = \r\n\r\n"
                              "My Favorite = \r\n\r\n"
                              "System Reset = ";
    desk_frame.lab_hori.caption = "      Total:         pix\r\n\r\n"
                                  "      Active:         pix\r\n\r\n"
                                  "Pulse Delay:         pix,          us\r\n\r\n"
                                  "Pulse Width:         pix,          us\r\n\r\n"
                                  "    Polarity:\r\n\r\n"
                                  "   Frequence:         KHz\r\n\r\n";
    desk_frame.lab_vert.caption = "      Total:         line\r\n\r\n"
                                  "      Active:         line\r\n\r\n"
                                  "Pulse Delay:         line,         ms\r\n\r\n"
                                  "Pulse Width:         line,         ms\r\n\r\n"
                                  "    Polarity:\r\n\r\n"
                                  "   Frequence:         Hz(frame)\r\n\r\n";
}

void frm_main::unload() {
    const auto step = [this](const auto& work) {
        try {
            work();
        } catch (const runtime_failure& skipped) {
            machine_.report_silent_failure(skipped.sentence());
        }
    };
    step([this] { machine_.port.close(); });
    step([this] {
        replace_whole_file(machine_.program_directory / settings_file_name,
                           kept_settings{exchange, workbench, shared_fields}.text());
    });
}

} // namespace desk
