#include "soak/soak.h"

#include "generator/fault_plan.h"
#include "robot/operator_commands.h"
#include "robot/tokens.h"
#include "runtime/failure.h"
#include "runtime/files.h"
#include "soak/desk_at_rest.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <sstream>

namespace desk::test {

namespace {

using strings = std::vector<std::string>;

constexpr int actions_to_a_rescue = 100;
constexpr int actions_to_a_look_around = 20;
constexpr int most_problems = 10;
constexpr int port_count = 8;
constexpr const char* any_node = "node";
constexpr std::size_t most_last_lines = 4000;

/// The longest action: an autorun upload interrupted by an erase and more.
constexpr std::int64_t longest_action_ms = std::int64_t{30} * 60 * 1000;

constexpr std::array expected_failures = {
    failure::does_not_return,        failure::invalid_procedure_call, failure::overflow,
    failure::subscript_out_of_range, failure::division_by_zero,       failure::type_mismatch,
    failure::file_not_found,         failure::file_already_open,      failure::input_past_end_of_file,
    failure::bad_record_number,      failure::path_file_access_error, failure::invalid_property_value,
    failure::index_out_of_bounds,    failure::key_not_unique};

std::string fatal_answer(failure f) {
    return "fatal " + std::to_string(static_cast<int>(f)) + " " + nlohmann::json(failure_text(f)).dump();
}

bool is_expected(const std::string& fatal) {
    return std::any_of(expected_failures.begin(), expected_failures.end(),
                       [&](failure f) { return fatal_answer(f) == fatal; });
}

} // namespace

soak::soak(std::uint64_t seed)
    : random_(seed), files_(random_), desk_(files_.path()), operator_(desk_, files_.path(), files_.names(), random_()) {
    say("generator simulated");
    start();
}

void soak::act(int actions) {
    for (int i = 1; i <= actions; ++i) {
        ++summary_.actions;
        if (below(8) == 0) some_disturbance();
        check_after(some_action());
        check_rules();
        check_clock();
        if (i % actions_to_a_look_around == 0) check_recovery();
        if (i % actions_to_a_rescue == 0) rescue();
        remember_transcript();
    }
    check_recovery();
    summary_.faults = desk_.answer("faults").substr(3);
    summary_.virtual_ms += clock_ms_;
    summary_.answers = operator_.outcomes();
    for (const std::string& nonsense : operator_.nonsense())
        problem("not a valid answer: " + nonsense);
    remember_transcript();
}

std::string soak::some_action() {
    if (task_.empty() && below(20) == 0) start_some_task();
    if (!task_.empty() && below(8) != 0) {
        const std::string line = task_.front();
        task_.pop_front();
        return say(line == any_node ? operator_.some_node() : line);
    }
    return below(4) == 0 ? some_exchange() : operator_.act_once();
}

void soak::start_some_task() {
    static const std::vector<strings> tasks = {
        {"click cmd_edid", "click cmd_read", "click cmd_read_translate", any_node, any_node, any_node, any_node,
         any_node, "click cmd_edid_report", "click frm_report.cmd_save", "click frm_report.cmd_exit"},
        {"click cmd_edid", "click cmd_load", "click cmd_write_translate", any_node, any_node, any_node, any_node,
         any_node, any_node, any_node, any_node},
        {"click cmd_edid", "click cmd_load", "click cmd_write", "click cmd_ok", "click cmd_verify", "click cmd_ok"},
        {"click cmd_edid", "click cmd_load", "click cmd_w_auto", "click frm_diag.cmd_run", "click frm_diag.cmd_run",
         "click frm_diag.cmd_ok"},
        {"click cmd_edid", "click cmd_load", "click cmd_recover(0)", "click cmd_recover(1)", "click cmd_save_write",
         "click frm_diag.opt_hex_type(1)", "click frm_diag.cmd_ok", "click cmd_compare"},
        {"click cmd_auto", "click cmd_download", "click cmd_replace", "click cmd_run"},
        {"click cmd_fav_timing", "click cmd_run", "click cmd_download"},
        {"click cmd_fav_pattern", "click cmd_download", "click cmd_run"},
        {"click cmd_pattern", "select lstv_pattern 41", "click cmd_download", "click cmd_upload"},
        {"click cmd_pattern", "select lstv_pattern 13", "click cmd_download", "slide hsr_color_setting(3) 200",
         "key txt_color_setting(0) 13", "drag hsr_color_setting(1) 7"},
        {"click cmd_setup", "click cmd_download", "click cmd_reset", "click cmd_download"}};
    const strings task = one_of(tasks);
    task_.assign(task.begin(), task.end());
    const std::string answer = say("file \"" + utf8_from_path(files_.path()) + "/" + one_of(files_.names()) + "\"");
    if (answer != "ok") problem("the robot refuses a file: " + answer);
}

std::string soak::some_exchange() {
    static const strings buttons = {
        "cmd_conn",    "cmd_run",    "cmd_run",        "cmd_download",     "cmd_download",    "cmd_refresh",
        "cmd_about",   "cmd_upload", "cmd_reset",      "cmd_read",         "cmd_write",       "cmd_verify",
        "cmd_erase",   "cmd_out(1)", "cmd_hdcp(1)",    "cmd_asc(0)",       "cmd_lpcm(2)",     "cmd_csc(1)",
        "cmd_deep(2)", "cmd_fav(1)", "cmd_auto_go(1)", "frm_diag.cmd_run", "frm_diag.cmd_run"};
    // an erase asks first
    say("answer yes");
    if (below(40) == 0) check_after(say("select cbo_com " + std::to_string(below(port_count))));
    for (int tries = 0; tries < 20; ++tries) {
        std::string answer = say("click " + one_of(buttons));
        if (!answer.starts_with("refused ")) return answer;
    }
    return operator_.act_once();
}

void soak::some_disturbance() {
    switch (below(16)) {
    case 0:
    case 1:
    case 2:
    case 3:
        say(some_faults());
        break;
    case 4:
        say("faults off");
        break;
    case 5:
        say(one_of(strings{"generator silent", "generator simulated", "generator simulated", "generator simulated"}));
        break;
    case 6:
        say(some_port());
        break;
    case 7:
        say(some_sink());
        break;
    case 8:
    case 9:
        say("buffer " + one_of(strings{"read", "write", "trans"}) + " \"" +
            robot::hex_of_bytes(string_of(files_.some_edid())) + "\"");
        break;
    case 10:
    case 11:
    case 12:
        files_.change_some();
        break;
    case 13:
        say("key " + one_of(strings{"frm_main", "frm_diag", "frm_report"}) + " " + std::to_string(below(256)));
        break;
    case 14:
        if (below(4) == 0) stop_and_start();
        break;
    default:
        break;
    }
    if (below(4) == 0) say("reply clear");
}

std::string soak::some_faults() {
    std::string line = "faults " + one_of(strings{"5", "20", "20", "50", "100"});
    line += " " + std::to_string(below(1000));
    for (int i = below(4); i > 0; --i)
        line.append(" ").append(fault_name(one_of(all_faults)));
    return line;
}

std::string soak::some_port() {
    const std::string port = "port " + std::to_string(1 + below(below(2) == 0 ? 2 : port_count));
    // a port that never drains ends the program at the next command
    if (below(10) == 0) return port + " stuck";
    return port + one_of(strings{" gone", " missing", " ok", " ok"});
}

std::string soak::some_sink() {
    const std::string sink = "sink " + std::to_string(1 + below(3));
    return below(4) == 0 ? sink + " none" : sink + " \"" + robot::hex_of_bytes(string_of(files_.some_edid())) + "\"";
}

void soak::stop_and_start() {
    if (say("stop") != "ok") return; // a modal window is open
    summary_.virtual_ms += clock_ms_;
    start();
}

void soak::start() {
    if (below(4) == 0) {
        files_.spoil_start();
        const std::string answer = say("start");
        if (!answer.starts_with("fatal ")) problem("starts although a file is unreadable: " + answer);
        check_failure(answer);
        files_.mend_start();
    }
    clock_ms_ = 0;
    ++summary_.fresh_starts;
    const std::string answer = say("start");
    if (answer != "ok") problem("cannot restart: " + answer);
}

void soak::rescue() {
    ++summary_.rescues;
    for (const char* line : {"faults off", "reply clear", "generator simulated"})
        say(line);
    for (int port = 1; port <= port_count; ++port)
        say("port " + std::to_string(port) + " ok");
    // let pending work finish
    for (int round = 0; round < 5; ++round) {
        close_windows();
        check_after(say("wait 5000"));
    }
    close_windows();
    check_rules();
    check_after(say("click cmd_conn"));
    expect("field rs232_connected", "ok true");
    check_after(say("click cmd_refresh"));
    check_rules();
    expect("field rx_done", "ok true");
    for (const char* label : {"lab_timing", "lab_pattern", "lab_out", "lab_hdcp"}) {
        const std::string shown = desk_.answer("get " + std::string(label) + ".caption");
        if (shown == "ok \"\"" || shown == "ok \"Link Error\"")
            problem(std::string(label) + " after a rescue: " + shown);
    }
}

void soak::close_windows() {
    for (const char* closing_button : {"frm_diag.cmd_ok", "frm_report.cmd_exit"}) {
        const std::string name(closing_button);
        if (desk_.answer("get " + name.substr(0, name.find('.')) + ".shown") != "ok true") continue;
        const std::string answer = say("click " + name);
        if (answer.starts_with("refused ")) problem(name + " does not close its window: " + answer);
        check_after(answer);
    }
}

void soak::expect(const std::string& line, const std::string& answer) {
    const std::string got = desk_.answer(line);
    if (got != answer) problem(line + " after a rescue: " + got);
}

std::string soak::say(const std::string& line) { return operator_.say(line); }

void soak::check_after(const std::string& answer) {
    if (!answer.starts_with("fatal ")) return;
    summary_.virtual_ms += clock_ms_;
    check_failure(answer);
    start();
}

void soak::check_failure(const std::string& answer) {
    if (!answer.starts_with("fatal ")) return;
    const std::string why = say("why");
    soak_summary::failure_seen& seen = summary_.failures[answer.substr(6)];
    if (seen.count++ == 0) seen.sentence = why.substr(3);
    if (!is_expected(answer)) problem("an unknown failure: " + answer);
    // an internal error has the text of a C++ exception
    if (why.size() < 8 || why.find("::") != std::string::npos) problem("a failure without a sentence: " + why);
}

void soak::check_rules() {
    for (const std::string& rule : broken_rules([this](const std::string& line) { return desk_.answer(line); }))
        problem(rule);
}

void soak::check_clock() {
    const std::int64_t now_ms = std::stoll(desk_.answer("clock").substr(3));
    if (now_ms < clock_ms_) problem("the clock went backwards");
    if (now_ms - clock_ms_ > longest_action_ms) problem("an action took " + std::to_string(now_ms - clock_ms_) + " ms");
    clock_ms_ = now_ms;
}

void soak::check_recovery() {
    for (const auto& entry : nlohmann::json::parse(say("wire").substr(3))) {
        const auto& text = entry.get_ref<const std::string&>();
        // a longer one is a block
        if (text.starts_with("> ") && text.size() == 2 + 6) ++summary_.commands;
        if (text.starts_with("< ")) ++summary_.parts_of_answers;
    }
    for (const char* line : {"boxes",
                             "dialogs",
                             "later",
                             "tree",
                             "rows lstv_timing",
                             "rows lstv_pattern",
                             "rows lstv_auto",
                             "buffer read",
                             "buffer write",
                             "buffer trans",
                             "get txt_read.text",
                             "get txt_write.text",
                             "get txt_edid.text",
                             "get txt_msg.text",
                             "get txt_motion_str.text",
                             "get lab_about.caption",
                             "get frm_main.caption",
                             "field rx_text",
                             "field edid_file_name",
                             "field sn_value",
                             "field descriptor_map",
                             "field report_text"})
        say(line);
}

void soak::remember_transcript() {
    std::istringstream transcript(operator_.take_transcript());
    std::string said;
    for (std::string line; std::getline(transcript, line);) {
        for (const char c : line) {
            summary_.hash ^= static_cast<std::uint8_t>(c);
            summary_.hash *= 1099511628211U;
        }
        last_lines_ += line.substr(0, 200) + "\n";
        const bool is_answer = line.starts_with("  -> ");
        if (is_answer && line.starts_with("  -> ok")) remember_control(said);
        said = is_answer ? "" : line;
    }
    if (last_lines_.size() > most_last_lines) last_lines_.erase(0, last_lines_.size() - most_last_lines);
}

void soak::remember_control(const std::string& said) {
    std::istringstream words(said);
    std::string verb;
    std::string name;
    words >> verb >> name;
    if (verb == "node") name = "tree_edid";
    if (verb == "node" || robot::operator_commands().contains(verb))
        summary_.controls.insert(name.find('.') == std::string::npos ? "frm_main." + name : name);
}

void soak::problem(const std::string& what) {
    if (summary_.problems.size() >= most_problems) return;
    remember_transcript();
    summary_.problems.push_back("action " + std::to_string(summary_.actions) + ": " + what + "\n" + last_lines_);
}

} // namespace desk::test
