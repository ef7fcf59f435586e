#include "programmer/frm_diag.h"

#include "link/module_text.h"
#include "runtime/failure.h"
#include "runtime/numbers.h"
#include "runtime/subscript.h"
#include "runtime/text.h"

#include <numeric>

namespace desk {

frm_diag::frm_diag(shared_fields& fields, edid_buffers& buffers, window_text& text, serial_number& serial,
                   sink_transfers& transfers, event_pump& events)
    : fields_(fields), buffers_(buffers), window_text_(text), run(fields, serial, transfers, events, cmd_ok) {
    lay_out_controls();
    opt_hex_type[0].value = true;
    cbo_eeprom.on_click = [this] { cbo_eeprom_click(); };
    chk_4digits.on_click = [this] { chk_4digits_click(); };
    for (std::size_t i = 0; i < opt_unused.size(); ++i)
        opt_unused.at(i).on_click = [this, i] { opt_unused_click(i); };
    cmd_checksum.on_click = [this] { cmd_checksum_click(); };
    cmd_ok.on_click = [this] { cmd_ok_click(); };
}

void frm_diag::load() {
    switch (fields_.diag_mode) {
    case diag::hex_style:
        show_page(fra_save_hex, "OK");
        break;
    case diag::automatic_run:
        run.load();
        show_page(run.fra_auto, "CANCEL");
        run.cmd_run.visible = true;
        break;
    case diag::write_checksum:
        load_sum();
        fra_sum.caption = "[ WRITE ] Checksum of programmer";
        show_page(fra_sum, "EXIT");
        break;
    case diag::read_checksum:
        load_sum();
        fra_sum.caption = "[ READ ] Checksum of programmer";
        show_page(fra_sum, "EXIT");
        break;
    default:
        break;
    }
}

void frm_diag::load_sum() {
    while_doing([] { return "Showing the programmer's choices from marlo_rs232.ini"; },
                [this] {
                    cbo_eeprom.add_item(" 2 KBits( 256 Bytes)", 0);
                    cbo_eeprom.add_item(" 4 KBits( 512 Bytes)", 1);
                    cbo_eeprom.add_item(" 8 KBits(1024 Bytes)", 2);
                    cbo_eeprom.add_item("16 KBits(2048 Bytes)", 3);
                    lab_checksum.caption = "";
                    cbo_eeprom.set_list_index(fields_.eeprom_size_index); // raises Click
                    element(opt_unused, fields_.unused_byte_index).choose();
                    chk_4digits.set_value(fields_.checksum_4digits);
                });
}

void frm_diag::show_page(frame& page, const char* cmd_ok_caption) {
    page.visible = true;
    cmd_ok.caption = cmd_ok_caption;
    cmd_ok.visible = true;
}

void frm_diag::cbo_eeprom_click() {
    fields_.eeprom_size_index = to_byte(cbo_eeprom.list_index());
    txt_test.text = cbo_eeprom.text();
}

void frm_diag::chk_4digits_click() { fields_.checksum_4digits = to_byte(chk_4digits.value.get()); }

void frm_diag::opt_unused_click(std::size_t index) { fields_.unused_byte_index = static_cast<std::uint8_t>(index); }

double frm_diag::sum_of_image() const {
    const edid_buffer& edid = fields_.diag_mode == diag::write_checksum ? buffers_.write_buff : buffers_.read_buff;
    const double size = 256.0 * (1U << fields_.eeprom_size_index);
    const double sum = std::accumulate(edid.begin(), edid.end(), 0.0);
    return fields_.unused_byte_index == 1 ? sum + (size - static_cast<double>(edid.size())) * 0xFF : sum;
}

void frm_diag::cmd_checksum_click() {
    std::string t = hex(static_cast<std::uint32_t>(sum_of_image()));
    lab_checksum.caption = "0x" + (chk_4digits.value == 1 ? pad_left(t, "0", 4) : t);
}

void frm_diag::cmd_ok_click() {
    if (fields_.diag_mode == diag::hex_style)
        fields_.hex_type = opt_hex_type[0].value ? hex_style::simple : hex_style::c_language;
    // what the run has put into write_buff is dropped
    if (fields_.diag_mode == diag::automatic_run) window_text_.win2buff(buff::write, 1);
    fields_.diag_mode = diag::none;
    form.visible = false;
}

} // namespace desk
