#include "shell/frm_main.h"

namespace desk {

frm_main::frm_main(machine& m) : machine_(m) {
    lay_out_controls();
    wire_events();
}

void frm_main::wire_events() {
    form.on_load = [this] { load(); };
    form.on_unload = [this] { unload(); };
    form.on_key_press = [this](int code) { key_press(code); };
    catalogue.change_view = [this](int view_mode) { change_view(view_mode); };
    cmd_edid.on_click = [this] { cmd_edid_click(); };
    cmd_setup.on_click = [this] { cmd_setup_click(); };
}

void frm_main::key_press(int /*code*/) {
    if (workbench.fra_pre_f.visible) workbench.fra_pre_f.visible = false;
}

} // namespace desk
