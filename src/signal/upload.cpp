#include "signal/upload.h"

#include "link/button_at_work.h"
#include "link/commands.h"
#include "runtime/text.h"
#include "runtime/windows_1252.h"

namespace desk {

upload::upload(exchange& link, desk_frame& desk) : exchange_(link), desk_frame_(desk) {
    desk_frame_.cmd_upload.on_click = [this] { cmd_upload_click(); };
}

void upload::cmd_upload_click() {
    begin_work(desk_frame_.cmd_upload, exchange_.host().events);
    exchange_.tx_cmd(command::upload_custom_string);
    if (!exchange_.rx_done) {
        // Intended: this box has no "!", and the button stays red and disabled for the rest of the run.
        exchange_.host().boxes.show("Link Error", box_icon::critical, box_buttons::ok);
        return;
    }
    desk_frame_.txt_motion_str.text = trim(desk_frame_.txt_motion_str.text.get());
    exchange_.drain_output();
    exchange_.host().port.discard_input();
    bytes block = bytes_of(bytes_from_text(desk_frame_.txt_motion_str.text.get()));
    block.resize(custom_string_length); // padded with zeros
    exchange_.host().port.write(block);
    end_work(desk_frame_.cmd_upload);
}

} // namespace desk
