#include "edid/compare_recover.h"

#include "runtime/failure.h"
#include "runtime/subscript.h"
#include "runtime/text.h"

namespace desk {

compare_recover::compare_recover(machine& m, window& form, workbench_frame& view, const edid_buffers& buffers,
                                 const window_text& text, result_frame& result)
    : machine_(m), form_(form), workbench_(view), buffers_(buffers), window_text_(text), result_(result) {
    workbench_.cmd_compare.on_click = [this] { cmd_compare_click(); };
    for (std::size_t block = 0; block < workbench_.cmd_recover.size(); ++block)
        workbench_.cmd_recover.at(block).on_click = [this, block] { cmd_recover_click(block); };
}

void compare_recover::cmd_compare_click() {
    workbench_.fra_compare.caption = "COMPARE";
    workbench_.lab_pass.caption = "";
    // it is the windows that must not be empty: a line that tells of a failed read is enough
    if (workbench_.txt_write.text.get().empty() || workbench_.txt_read.text.get().empty()) {
        machine_.boxes.show("READ or WRITE data is empty!", box_icon::critical, box_buttons::ok);
        return;
    }
    result_.begin("COMPARE", "Comparing ...\r\n");
    const int count = buffers_.different_bytes();
    result_.differing.look_at(buffers_);
    // the words differ from those of VERIFY on purpose
    result_.tell(count > 0 ? "There are" + str(count) + " wrong data!" : "Match entirely.");
    result_.show_pass(count == 0);
}

void compare_recover::cmd_recover_click(std::size_t block) {
    workbench_.txt_write.text = trim(workbench_.txt_write.text.get());
    machine_.events.pump();
    const std::string& text = workbench_.txt_write.text;
    const std::uint8_t needed = element(window_text_.recover_sum, block);
    const std::string mark = block == 0 ? "//7F" : "//FF";
    const std::size_t p = text.find(mark);
    // two digits and a blank stand before the mark
    if (p == std::string::npos || p < 3) {
        throw runtime_failure(failure::invalid_procedure_call,
                              "Repairing block " + std::to_string(block) + ": the WRITE window has no line " + mark);
    }
    const std::string before = text.substr(0, p - 3);
    workbench_.txt_write.text = before + hex2(needed) + (block == 0 ? text.substr(p - 1) : " //FF\r\n");
    element(workbench_.cmd_recover, block).visible = false;
    label& shown = element(workbench_.lab_write_checksum, block);
    shown.fore_color = color_black;
    shown.caption = checksum_caption(block, needed, " Modified.");
    form_.caption += " *";
}

} // namespace desk
