#include "shell/about.h"

#include "link/commands.h"
#include "runtime/windows_1252.h"

namespace desk {

about::about(exchange& link) : exchange_(link) {
    cmd_about.on_click = [this] { cmd_about_click(); };
    cmd_about_ok.on_click = [this] { cmd_about_ok_click(); };
}

void about::cmd_about_click() {
    if (fra_about.visible) {
        fra_about.visible = false;
        return;
    }
    cmd_about.enabled = false;
    cmd_about_ok.enabled = false;
    fra_about.visible = true;
    exchange_.host().events.pump();
    lab_about.caption = "Application S/W is v1.3G\r\nLinking VELOTRACE ...";
    exchange_.tx_cmd(command::firmware_version);
    if (exchange_.rx_done) {
        // the fourth character is skipped
        const std::string major = text_from_bytes(character_of_answer(exchange_.rx_text, 5));
        const std::string minor = text_from_bytes(last_of_answer(exchange_.rx_text, 1));
        lab_about.caption += "\r\nHardware F/W is v" + major + "." + minor;
    } else {
        lab_about.caption += "\r\nLink Error !\r\nHardware F/W is unknown.";
    }
    cmd_about_ok.enabled = true;
    cmd_about.enabled = true;
}

void about::cmd_about_ok_click() { fra_about.visible = false; }

} // namespace desk
