#include "edid/result_frame.h"

namespace desk {

result_frame::result_frame(workbench_frame& view) : differing(view), view_(view) {
    view_.cmd_ok.on_click = [this] { cmd_ok_click(); };
}

void result_frame::begin(const std::string& caption, const std::string& first_line) {
    view_.fra_compare.caption = caption;
    view_.fra_compare.visible = true;
    view_.cmd_ok.enabled = false;
    view_.lab_pass.caption = "";
    view_.txt_msg.text = first_line;
}

void result_frame::tell(const std::string& text) { view_.txt_msg.text += text; }

void result_frame::show_pass(bool pass) {
    view_.cmd_ok.enabled = true;
    view_.lab_pass.fore_color = pass ? color_green : color_red;
    view_.lab_pass.caption = pass ? "PASS" : "FAIL";
}

void result_frame::cmd_ok_click() { view_.fra_compare.visible = false; }

} // namespace desk
