#include "edid/sink_transfers.h"

#include "link/button_at_work.h"
#include "link/commands.h"
#include "link/delay.h"
#include "runtime/bytes.h"
#include "runtime/text.h"

#include <algorithm>
#include <array>

namespace desk {

namespace {

constexpr int read_limit = 150;
constexpr int write_limit = 150;
constexpr int erase_limit = 3001; // about 150 seconds: erasing is slow

constexpr const char* write_done = "EWR002";
constexpr const char* write_failed = "EWR003";
constexpr const char* erase_done = "ERS002";
constexpr const char* erase_failed = "ERS003";

const std::string crlf(line_end);

std::string reading_words(std::uint8_t edid_src) {
    switch (edid_src) {
    case 1:
        return "Reading HDMI/DVI-OUT's edid ...";
    case 2:
        return "Reading HDMI/DVI-IN's edid ...";
    default:
        return "Reading VGA(PC/HD-OUT)'s edid ...";
    }
}

} // namespace

sink_transfers::sink_transfers(exchange& link, workbench_frame& view, shared_fields& fields, edid_buffers& buffers,
                               window_text& text, result_frame& result)
    : exchange_(link), workbench_(view), fields_(fields), buffers_(buffers), window_text_(text), result_(result) {
    workbench_.cmd_read.on_click = [this] { cmd_read_click(); };
    workbench_.cmd_write.on_click = [this] { cmd_write_click(); };
    workbench_.cmd_verify.on_click = [this] { cmd_verify_click(); };
    workbench_.cmd_erase.on_click = [this] { cmd_erase_click(); };
    for (std::size_t place = 0; place < workbench_.opt_edid_src.size(); ++place)
        workbench_.opt_edid_src.at(place).on_click = [this, place] { opt_edid_src_click(place); };
}

void sink_transfers::opt_edid_src_click(std::size_t place) { fields_.edid_src = static_cast<std::uint8_t>(place + 1); }

bool sink_transfers::command_to_sink(std::string_view cmd) {
    // every command selects the sink anew
    switch (fields_.edid_src) {
    case 1:
        exchange_.tx_cmd(command::choose_hdmi_out);
        break;
    case 2:
        exchange_.tx_cmd(command::choose_hdmi_in);
        break;
    case 3:
        exchange_.tx_cmd(command::choose_vga_out);
        break;
    default:
        break;
    }
    if (exchange_.rx_done) exchange_.tx_cmd(cmd);
    return exchange_.rx_done;
}

void sink_transfers::read_sink() {
    fields_.read_ok = true;
    if (!command_to_sink(command::read_edid)) {
        workbench_.txt_read.text += crlf + "Link Error !" + crlf;
        fields_.read_ok = false;
        return;
    }
    // directly from the port, without tim_rx
    edid_buffer received{};
    work bytes_read(exchange_.progress, edid_size);
    int t = 0;
    for (std::size_t n = 0; n < edid_size;) {
        for (t = 0; exchange_.host().port.in_count() == 0 && t < read_limit; ++t)
            delay_sec(exchange_.host().events, 0.001F);
        if (t == read_limit) {
            fields_.read_ok = false;
            break;
        }
        for (const std::uint8_t byte : exchange_.host().port.read()) {
            if (n == edid_size) break;
            received.at(n++) = byte;
            bytes_read.step();
        }
    }
    if (fields_.read_ok)
        buffers_.read_buff = received;
    else if (t == read_limit)
        workbench_.txt_read.text += crlf + "Timeout ! Read fail !";
    else // another read failed in the middle of this one
        exchange_.host().boxes.show("Wrong response!", box_icon::critical, box_buttons::ok);
}

void sink_transfers::cmd_read_click() {
    workbench_.cmd_read.back_color = color_red;
    workbench_.cmd_read.enabled = false;
    workbench_.cmd_read_translate.enabled = false;
    workbench_.cmd_sum_read.enabled = false;
    exchange_.host().events.pump();
    fields_.read_ok = true;
    workbench_.txt_read.text = reading_words(fields_.edid_src);
    exchange_.download_mode = false;
    read_sink();
    if (fields_.read_ok) {
        window_text_.buff2win(buff::read, 2);
        end_work(workbench_.cmd_read);
        workbench_.cmd_read_translate.enabled = true;
        workbench_.cmd_sum_read.enabled = true;
    } else {
        end_work(workbench_.cmd_read);
    }
    exchange_.host().events.pump();
}

void sink_transfers::cmd_write_click() {
    workbench_.cmd_write.enabled = false;
    workbench_.cmd_write.back_color = color_red;
    const std::string first_line = "Writing WRITE data ..." + crlf;
    if (automatic())
        frm_diag.txt_auto_msg->text = first_line;
    else
        result_.begin("WRITE", first_line);

    if (!command_to_sink(command::write_edid)) {
        if (automatic()) {
            // Intended: the button stays red and disabled until frm_diag closes.
            append_to_run("Link Error !" + crlf);
            fields_.run_ok = false;
            return;
        }
        result_.append("Link Error !");
        result_.show_pass(false);
        end_work(workbench_.cmd_write);
        return;
    }
    const work writing(exchange_.progress);
    send_write_buff();
    const int t = wait_for_answer(write_limit, 0.01F);
    exchange_.tim_rx.enabled = false;
    exchange_.host().events.pump();
    if (automatic())
        show_write_result_of_run(t);
    else
        show_write_result(t);
}

void sink_transfers::send_write_buff() {
    exchange_.rx_count = 0;
    exchange_.rx_text.clear();
    exchange_.rx_done = false;
    exchange_.drain_output();
    exchange_.host().port.discard_input();
    exchange_.tim_rx.enabled = true;
    exchange_.host().events.pump();
    for (const std::uint8_t byte : buffers_.write_buff)
        exchange_.tx_byte(byte);
}

int sink_transfers::wait_for_answer(int rounds, float s) {
    int t = 0;
    for (; !exchange_.rx_done && t < rounds; ++t)
        delay_sec(exchange_.host().events, s);
    return t;
}

void sink_transfers::show_write_result(int t) {
    // Intended: any other answer shows no result, and the frame's OK stays disabled.
    if (t >= write_limit) {
        result_.append("WRITE timeout error !" + crlf);
        result_.show_pass(false);
    } else if (exchange_.rx_text == write_done) {
        result_.append("EWR002 Write completely .");
        result_.show_pass(true);
    } else if (exchange_.rx_text == write_failed) {
        result_.append("EWR003 DDC Error,Write Fail !");
        result_.show_pass(false);
    }
    end_work(workbench_.cmd_write);
}

void sink_transfers::show_write_result_of_run(int t) {
    // Intended: any other answer leaves run_ok unchanged, and the button stays red and disabled.
    if (t >= write_limit) {
        append_to_run("WRITE timeout error !" + crlf);
        fields_.run_ok = false;
    } else if (exchange_.rx_text == write_done) {
        append_to_run("EWR002 Write completely ." + crlf);
        fields_.run_ok = true;
    } else if (exchange_.rx_text == write_failed) {
        append_to_run("EWR003 DDC Error,Write Fail !" + crlf);
        fields_.run_ok = false;
    }
}

void sink_transfers::cmd_verify_click() {
    if (automatic())
        verify_in_run();
    else
        verify();
}

void sink_transfers::verify() {
    workbench_.cmd_verify.back_color = color_red;
    workbench_.cmd_verify.enabled = false;
    exchange_.host().events.pump();
    result_.begin("VERIFY", "Reading sink's edid ..." + crlf);
    read_sink();
    if (fields_.read_ok) {
        result_.append("Comparing ..." + crlf);
        const int count = buffers_.different_bytes();
        result_.differing.compare(buffers_);
        result_.append(count != 0 ? "There are" + str(count) + " wrong data !" : "Match entirely.");
        result_.show_pass(count == 0);
    } else {
        result_.append("Read sink's edid fail !" + crlf);
        result_.show_pass(false);
    }
    end_work(workbench_.cmd_verify);
    exchange_.host().events.pump();
}

void sink_transfers::verify_in_run() {
    frm_diag.cmd_ok->enabled = false;
    append_to_run("Reading sink's edid ..." + crlf);
    read_sink();
    if (fields_.read_ok) {
        append_to_run("Comparing ..." + crlf);
        const int count = buffers_.different_bytes();
        fields_.run_ok = count == 0;
        append_to_run(count != 0 ? "There are" + str(count) + " wrong data !" : "Match entirely .");
    } else {
        // Intended: run_ok stays true after a successful WRITE, and the run still ends with PASS.
        append_to_run("Read sink's edid fail !" + crlf);
    }
}

void sink_transfers::append_to_run(const std::string& text) { frm_diag.txt_auto_msg->text += text; }

void sink_transfers::cmd_erase_click() {
    if (exchange_.host().boxes.show("Are you sure to erase sink's EDID ?", box_icon::question, box_buttons::yes_no) !=
        box_answer::yes)
        return;
    workbench_.cmd_erase.back_color = color_red;
    result_.begin("ERASE", "Erasing sink's edid ..." + crlf);
    if (!command_to_sink(command::erase_edid)) {
        result_.append("Link Error !" + crlf);
        workbench_.cmd_erase.back_color = color_button_face;
        result_.show_pass(false);
        return;
    }
    exchange_.rx_count = 0;
    exchange_.rx_text.clear();
    exchange_.rx_done = false;
    exchange_.tim_rx.enabled = true;
    exchange_.host().events.pump();
    const work erasing(exchange_.progress);
    wait_for_answer(erase_limit, 0.05F);
    const bool erased = exchange_.rx_done && exchange_.rx_text == erase_done;
    if (erased)
        result_.append("ERS002 ERASE complete.");
    else if (exchange_.rx_done && exchange_.rx_text == erase_failed)
        result_.append("ERS003 DDC Error,Erase fail !");
    else
        result_.append("Timeout Error !");
    // Intended: tim_rx keeps running.
    workbench_.cmd_erase.back_color = color_button_face;
    result_.show_pass(erased);
}

} // namespace desk
