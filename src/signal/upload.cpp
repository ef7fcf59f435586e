#include "signal/upload.h"

#include "link/button_at_work.h"
#include "link/commands.h"
#include "runtime/text.h"
#include "runtime/windows_1252.h"

namespace desk {

upload::upload(exchange& link, desk_frame& desk) : link_(link), desk_(desk) {
    desk_.cmd_upload.on_click = [this] { cmd_upload_click(); };
}

void upload::cmd_upload_click() {
    begin_work(desk_.cmd_upload, link_.host().events);
    link_.tx_cmd(command::upload_custom_string);
    if (!link_.rx_done) {
        // The desk behaves so: this box has no "!", and the button stays red and dead for the rest of the run.
        link_.host().boxes.show("Link Error", box_icon::critical, box_buttons::ok);
        return;
    }
    desk_.txt_motion_str.text = trim(desk_.txt_motion_str.text.get());
    link_.drain_output();
    link_.host().port.discard_input();
    bytes block = bytes_of(bytes_from_text(desk_.txt_motion_str.text.get()));
    block.resize(custom_string_length); // 0 behind the text
    link_.host().port.write(block);
    end_work(desk_.cmd_upload);
}

} // namespace desk
