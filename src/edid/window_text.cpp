#include "edid/window_text.h"

#include "edid/format/canonical_text.h"
#include "edid/format/text_scanner.h"
#include "edid/title.h"
#include "runtime/failure.h"
#include "runtime/numbers.h"
#include "runtime/subscript.h"
#include "runtime/text.h"

#include <algorithm>

namespace desk {

namespace {

/// Stores the bytes of a text in a buffer.
class into_buffer final : public text_findings {
public:
    explicit into_buffer(edid_buffer& target) : target_(target) {}
    void pair(std::string_view digits) override {
        element(target_, k_) = value_of_pair(digits);
        ++k_;
    }
    std::size_t count() const { return k_; }

private:
    edid_buffer& target_;
    std::size_t k_ = 0;
};

} // namespace

window_text::window_text(window& form, workbench_frame& view, edid_buffers& buffers, event_pump& events)
    : form_(form), workbench_(view), buffers_(buffers), events_(events) {
    workbench_.cmd_clear_read.on_click = [this] { cmd_clear_read_click(); };
    workbench_.cmd_clear_file.on_click = [this] { cmd_clear_file_click(); };
}

void window_text::win2buff(std::uint8_t buff_type, int /*win_type*/) {
    const text_box& source = buff_type == buff::write ? workbench_.txt_write : workbench_.txt_read;
    edid_buffer& target = buffers_.of(buff_type);
    into_buffer stored(target);
    while_doing([] { return "Reading the bytes of a window's text"; },
                [&] { scan_window_text(source.text.get(), stored); });
    if (buff_type == buff::write)
        std::fill(target.begin() + static_cast<std::ptrdiff_t>(stored.count()), target.end(), std::uint8_t{0xFF});
}

void window_text::buff2win(std::uint8_t buff_type, int win_type) {
    const bool write_side = win_type == 1;
    text_box& shown = write_side ? workbench_.txt_write : workbench_.txt_read;
    shown.text = "";
    checksum_rule rule;
    for (const std::uint8_t byte : buffers_.of(buff_type)) {
        if (const auto sum = rule.compare(byte))
            write_side ? show_write_checksum(*sum) : show_checksum(workbench_.lab_read_checksum, *sum);
        shown.text += canonical_piece(byte, rule.count());
        rule.take(byte);
    }
}

void window_text::show_checksum(std::array<label, 2>& labels, const block_checksum& sum) {
    label& shown = element(labels, sum.block);
    shown.fore_color = sum.correct ? color_black : color_dark_red;
    shown.caption = checksum_caption(sum.block, sum.needed, sum.correct ? " Correct." : " Error.");
}

void window_text::show_write_checksum(const block_checksum& sum) {
    show_checksum(workbench_.lab_write_checksum, sum);
    if (!sum.correct) {
        // Intended: a block that needs 256 fails here, after its label has changed.
        while_doing(
            [&] { return "Storing the checksum that block " + number_text(static_cast<int>(sum.block)) + " needs"; },
            [&] { element(recover_sum, sum.block) = to_byte(sum.needed); });
    }
    element(workbench_.cmd_recover, sum.block).visible = !sum.correct;
}

void window_text::enable_write_side(bool on) {
    workbench_.cmd_write.enabled = on;
    workbench_.cmd_verify.enabled = on;
    workbench_.cmd_w_auto.enabled = on;
    if (!on) {
        workbench_.cmd_write_translate.enabled = false;
        workbench_.cmd_sum_write.enabled = false;
    }
    events_.pump();
}

void window_text::cmd_clear_read_click() {
    workbench_.txt_read.text = "";
    workbench_.cmd_read_translate.enabled = false;
    workbench_.cmd_sum_read.enabled = false;
}

void window_text::cmd_clear_file_click() {
    workbench_.txt_write.text = "";
    form_.caption = title;
    enable_write_side(false);
}

std::string checksum_caption(std::size_t block, std::int32_t needed, const char* verdict) {
    return "BK" + std::to_string(block) + "=" + hex(static_cast<std::uint32_t>(needed)) + verdict;
}

} // namespace desk
