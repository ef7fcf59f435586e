#include "edid/result_frame.h"

namespace desk {

result_frame::result_frame(workbench_frame& view) : differing(view), workbench_(view) {
    workbench_.cmd_ok.on_click = [this] { cmd_ok_click(); };
}

void result_frame::begin(const std::string& caption, const std::string& first_line) {
    workbench_.fra_compare.caption = caption;
    workbench_.fra_compare.visible = true;
    workbench_.cmd_ok.enabled = false;
    workbench_.lab_pass.caption = "";
    workbench_.txt_msg.text = first_line;
}

void result_frame::tell(const std::string& text) { workbench_.txt_msg.text += text; }

void result_frame::show_pass(bool pass) {
    workbench_.cmd_ok.enabled = true;
    workbench_.lab_pass.fore_color = pass ? color_green : color_red;
    workbench_.lab_pass.caption = pass ? "PASS" : "FAIL";
}

void result_frame::cmd_ok_click() { workbench_.fra_compare.visible = false; }

} // namespace desk
