#include "programmer/automatic_run.h"

#include "link/delay.h"
#include "runtime/failure.h"
#include "runtime/text.h"

#include <string>

namespace desk {

namespace {

constexpr double largest_sn = 4294967295;

std::string without_spaces(double number) { return trim(str(number)); }

} // namespace

automatic_run::automatic_run(shared_fields& fields, serial_number& serial, sink_transfers& transfers,
                             event_pump& events, button& cmd_ok)
    : fields_(fields), serial_(serial), transfers_(transfers), events_(events), cmd_ok_(cmd_ok) {
    chk_write.value = 1;
    chk_verify.value = 1;
    cmd_add.on_click = [this] { cmd_add_click(); };
    cmd_sub.on_click = [this] { cmd_sub_click(); };
    cmd_run.on_click = [this] { cmd_run_click(); };
}

void automatic_run::load() {
    transfers_.frm_diag = {&txt_auto_msg, &cmd_ok_};
    serial_.get_sn(buff::write);
    txt_sn.text = without_spaces(fields_.sn_value);
}

double automatic_run::typed_sn() const {
    return while_doing([] { return "Reading the typed serial number"; }, [this] { return val(txt_sn.text.get()); });
}

void automatic_run::cmd_add_click() {
    txt_auto_msg.text = "";
    const double x = typed_sn();
    if (x < largest_sn)
        txt_sn.text = without_spaces(x + 1);
    else
        txt_auto_msg.text = "Max number of Serial Number is 4294967295";
}

void automatic_run::cmd_sub_click() {
    txt_auto_msg.text = "";
    const double x = typed_sn();
    // Intended: only 0 itself is the limit; a fraction or a negative number keeps decreasing.
    if (x == 0)
        txt_auto_msg.text = "Min number of Serial Number is 0";
    else
        txt_sn.text = without_spaces(x - 1);
}

void automatic_run::cmd_run_click() {
    txt_auto_msg.text = "";
    lab_pass.caption = "";
    lab_pass_sn.caption = "";
    if (chk_write.value != 1 && chk_verify.value != 1) return;
    cmd_run.enabled = false;
    cmd_ok_.enabled = false;
    events_.pump();
    work parts(transfers_.progress(), chk_write.value + chk_verify.value);
    if (chk_write.value == 1) {
        write();
        parts.step();
    } else {
        fields_.run_ok = true;
    }
    if (fields_.run_ok && chk_verify.value == 1) {
        delay_sec(events_, 1.0F);
        transfers_.cmd_verify_click();
    }
    show_result(fields_.run_ok);
    if (fields_.run_ok && chk_auto_sn.value == 1) cmd_add_click();
    cmd_run.enabled = true;
    cmd_ok_.enabled = true;
}

void automatic_run::write() {
    fields_.sn_value = typed_sn();
    if (fields_.sn_value >= 0 && fields_.sn_value <= largest_sn) {
        serial_.set_sn(buff::write);
        transfers_.cmd_write_click();
    } else {
        txt_auto_msg.text = "Wrong Serial Number !\r\nSN. Range= 0 ~ 4294967295";
        fields_.run_ok = false;
    }
}

void automatic_run::show_result(bool pass) {
    const color mark = pass ? color_dark_green : color_dark_red;
    lab_pass.fore_color = mark;
    lab_pass.caption = pass ? "PASS" : "FAIL";
    lab_pass_sn.fore_color = mark;
    lab_pass_sn.caption = without_spaces(fields_.sn_value);
}

} // namespace desk
