#include "cli/commands.h"
#include "cli/exchange_result.h"
#include "cli/operator.h"
#include "edid/format/checksum_rule.h"
#include "edid/format/file_writers.h"
#include "platform/sha256.h"
#include "runtime/failure.h"
#include "runtime/files.h"
#include "runtime/text.h"
#include "runtime/windows_1252.h"

#include <algorithm>
#include <filesystem>

namespace desk::cli {

namespace {

constexpr int hex_filter = 1;
constexpr int bin_filter = 2;

bool has_extension(const std::string& file, const std::string& extension) {
    return lower_case(file).ends_with(extension);
}

/// The last line with content.
std::string last_line_of(const std::string& text) {
    std::string line;
    for (std::size_t from = 0; from < text.size();) {
        const std::size_t end = std::min(text.find("\r\n", from), text.size());
        if (!trim(text.substr(from, end - from)).empty()) line = trim(text.substr(from, end - from));
        from = end + 2;
    }
    return line;
}

std::string absolute(const std::string& file) {
    std::error_code error;
    const auto path = std::filesystem::absolute(path_from_utf8(file), error);
    if (error) throw command_failure(outcome::unusable, file + ": " + error.message());
    return utf8_from_path(path);
}

frm_main& open_workbench(desk_session& session, edid_source source) {
    frm_main& desk = session.desk();
    press(desk.cmd_edid);
    select(desk.workbench.opt_edid_src.at(static_cast<std::size_t>(source)));
    return desk;
}

/// Does `work`, which uses a file. Throws command_failure (unusable) if the desk reports a failure: in a box, or to the
/// log only.
void expect_file(desk_session& session, const std::function<void()>& work) {
    auto& shown = session.boxes().shown;
    shown.clear();
    session.take_silent_failures();
    work();
    if (!shown.empty()) throw command_failure(outcome::unusable, shown.back());
    const auto failures = session.take_silent_failures();
    if (failures.empty()) return;
    throw command_failure(outcome::unusable, without_full_stop(failures.back()));
}

json checksums_of(const edid_buffer& edid) {
    json correct = json::array();
    checksum_rule rule;
    for (const std::uint8_t byte : edid) {
        if (const auto sum = rule.compare(byte)) correct.push_back(sum->correct);
        rule.take(byte);
    }
    return correct;
}

bool is_empty_block(const edid_buffer& edid, std::size_t block) {
    const auto begin = edid.begin() + static_cast<std::ptrdiff_t>(block * edid_block_size);
    return std::all_of(begin, begin + edid_block_size, [](std::uint8_t byte) { return byte == 0xFF; });
}

/// OPEN. Reports a wrong checksum, which the desk shows beside the text before the operator writes it.
void open_file(desk_session& session, frm_main& desk, const std::string& file) {
    session.files().choice = file_choice{absolute(file), 1};
    expect_file(session, [&] { press(desk.workbench.cmd_load); });
    const edid_buffer& edid = desk.edid_buffers.write_buff;
    const json correct = checksums_of(edid);
    for (std::size_t block = 0; block < correct.size(); ++block) {
        // the second one of a file with one block
        if (correct[block] || (block > 0 && is_empty_block(edid, block))) continue;
        session.boxes().report(file + ": the checksum of block " + std::to_string(block) + " is wrong");
    }
}

/// READ's SAVE.
void save_read(desk_session& session, frm_main& desk, const std::string& file, bool c_style) {
    const bool hex = has_extension(file, ".hex");
    session.files().choice = file_choice{absolute(file), hex ? hex_filter : bin_filter};
    session.windows().work = [c_style](window& w) {
        select(control_in<option_button>(w, c_style ? "opt_hex_type(1)" : "opt_hex_type(0)"));
        press(control_in<button>(w, "cmd_ok"));
    };
    expect_file(session, [&] { press(desk.workbench.cmd_save_read); });
}

answer read_answer(const frm_main& desk, const std::string& file) {
    const edid_buffer& edid = desk.edid_buffers.read_buff;
    answer a;
    a.fields["file"] = file;
    a.fields["checksums"] = checksums_of(edid);
    a.fields["sha256"] = sha256(edid);
    if (file == "-") return a;
    a.text = "EDID in " + file + "\n";
    for (const label& sum : desk.workbench.lab_read_checksum)
        a.text += sum.caption.get() + "\n";
    a.text += "SHA-256 " + a.fields["sha256"].get<std::string>() + "\n";
    return a;
}

/// Throws command_failure (failed) unless the frame shows PASS. Closes it.
void expect_pass(frm_main& desk, const json& fields_of_failure) {
    const std::string result = desk.workbench.lab_pass.caption;
    std::string line = last_line_of(desk.workbench.txt_msg.text);
    // the frame then shows no result, and what it announced last
    if (result.empty()) line += " The generator gave another answer than expected";
    if (desk.workbench.cmd_ok.usable()) press(desk.workbench.cmd_ok);
    if (result != "PASS") throw command_failure(outcome::failed, line, fields_of_failure);
}

answer verify(frm_main& desk) {
    press(desk.workbench.cmd_verify);
    json fields{{"verified", false}};
    if (desk.shared_fields.read_ok) fields["differences"] = desk.edid_buffers.different_bytes();
    expect_pass(desk, fields);
    return {{{"verified", true}}, "Match entirely.\n", true};
}

/// The units of a stamping run, in the window of the automatic run.
class stamping_run {
public:
    stamping_run(window& w, event_pump& events, console& out, const stamping& wanted)
        : window_(w), events_(events), out_(out), wanted_(wanted) {}

    void run() {
        for (std::int64_t unit = 0; unit < wanted_.count; ++unit) {
            serial_ = wanted_.serial + unit * wanted_.step;
            if (unit > 0 && wanted_.keys != nullptr) wait_for_unit();
            stamp();
        }
        press(control_in<button>(window_, "cmd_ok"));
    }

    /// Of the present unit.
    std::int64_t serial() const { return serial_; }

private:
    void stamp() {
        const std::string number = std::to_string(serial_);
        out_.report_progress("Writing unit " + number + " ...");
        type(control_in<text_box>(window_, "txt_sn"), number);
        press(control_in<button>(window_, "cmd_run"));
        const bool pass = control_in<label>(window_, "lab_pass").caption == "PASS";
        const char* const result = pass ? "PASS" : "FAIL";
        const std::string why = last_line_of(control_in<text_box>(window_, "txt_auto_msg").text);
        answer a{{{"serial", serial_}, {"result", result}}, number + "  " + result + "\n", false};
        // a unit that was written but could not be read back passes
        const bool unread = pass && why != "Match entirely .";
        if (unread) a.fields["message"] = why;
        if (unread) out_.report("unit " + number + ": " + why);
        give(a, serial_ + (pass ? wanted_.step : 0));
        if (pass) return;
        throw command_failure(outcome::failed, "unit " + number + ": " + why + "; go on with --serial " + number);
    }

    /// `next`: the unit to go on at if standard output takes no answer.
    void give(const answer& a, std::int64_t next) {
        try {
            out_.give(a);
        } catch (const command_failure& f) {
            throw command_failure(f.status(), std::string(f.what()) + ": go on with --serial " + std::to_string(next));
        }
    }

    void wait_for_unit() {
        const std::string number = std::to_string(serial_);
        out_.report("connect unit " + number + " and press Enter");
        if (wanted_.keys->next()) return;
        events_.pump(); // ends here if the end was requested
        throw command_failure(outcome::unusable, "standard input has ended: go on with --serial " + number);
    }

    window& window_;
    event_pump& events_;
    console& out_;
    const stamping& wanted_;
    std::int64_t serial_ = 0;
};

} // namespace

void expect_extension(const std::string& file, const std::vector<std::string>& extensions) {
    std::string all;
    for (const std::string& extension : extensions) {
        if (has_extension(file, extension)) return;
        all += (all.empty() ? "" : extension == extensions.back() ? " or " : ", ") + extension;
    }
    throw command_failure(outcome::misused, "the name of the file has to end with " + all + ": " + file);
}

answer read_edid(desk_session& session, console& out, edid_source source, const std::string& file, bool c_style) {
    frm_main& desk = open_workbench(session, source);
    expect_no_box(session, [&] { press(desk.workbench.cmd_read); });
    const std::string& text = desk.workbench.txt_read.text;
    if (!desk.shared_fields.read_ok) throw command_failure(outcome::failed, last_line_of(text));
    if (file == "-")
        out.give_bytes(bytes_from_text(c_style ? c_language_hex_of(text) : simple_hex_of(text)));
    else
        save_read(session, desk, file, c_style);
    return read_answer(desk, file);
}

answer write_edid(desk_session& session, edid_source source, const std::string& file, bool and_verify) {
    frm_main& desk = open_workbench(session, source);
    open_file(session, desk, file);
    press(desk.workbench.cmd_write);
    expect_pass(desk, json::object());
    if (and_verify) return verify(desk);
    return {{{"verified", nullptr}}, "Written, not verified.\n", true};
}

answer verify_edid(desk_session& session, edid_source source, const std::string& file) {
    frm_main& desk = open_workbench(session, source);
    open_file(session, desk, file);
    return verify(desk);
}

answer erase_edid(desk_session& session, edid_source source) {
    frm_main& desk = open_workbench(session, source);
    press(desk.workbench.cmd_erase);
    expect_pass(desk, json::object());
    return {json::object(), "Erased.\n", true};
}

void stamp_edid(desk_session& session, console& out, const stamping& wanted) {
    frm_main& desk = open_workbench(session, wanted.source);
    open_file(session, desk, wanted.file);
    session.windows().work = [&](window& w) {
        stamping_run run(w, session.events(), out, wanted);
        const auto report_unit = [&] {
            const std::string number = std::to_string(run.serial());
            out.report("unit " + number + " is not complete: go on with --serial " + number);
        };
        try {
            run.run();
        } catch (const program_over&) {
            report_unit();
            throw;
        } catch (const runtime_failure&) {
            // the desk can't store some numbers
            report_unit();
            throw;
        }
    };
    press(desk.workbench.cmd_w_auto);
}

} // namespace desk::cli
