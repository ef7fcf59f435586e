#include "edid/byte_step.h"

#include "edid/buffer.h"
#include "edid/canonical_text.h"

namespace desk {

void byte_step::take(std::uint8_t byte) {
    if (const auto sum = rule_.compare(byte)) window_text_.show_write_checksum(*sum);
    const std::size_t n = rule_.count();
    rule_.take(byte);
    line_ += canonical_piece(byte, n);
    if (when_ == append::at_once) finish_line();
}

void byte_step::finish_line() {
    workbench_.txt_write.text += line_;
    line_.clear();
}

void byte_step::start_again() {
    workbench_.txt_write.text = "";
    rule_ = {};
}

void byte_step::finish_one_block() {
    for (std::size_t i = edid_block_size; i < edid_size; ++i)
        workbench_.txt_write.text += canonical_piece(0xFF, i);
    label& shown = workbench_.lab_write_checksum[1];
    shown.fore_color = color_black;
    shown.caption = "Checksum BK1= Empty block FF for DVI";
}

} // namespace desk
