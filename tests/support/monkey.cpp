#include "support/monkey.h"

#include "runtime/files.h"

#include <nlohmann/json.hpp>

namespace desk::test {

namespace {

using strings = std::vector<std::string>;

/// The first word of an answer; of a fatal one also its number.
std::string outcome_of(const std::string& answer) {
    const std::size_t end = answer.find(' ');
    if (!answer.starts_with("fatal ")) return answer.substr(0, end);
    return answer.substr(0, answer.find(' ', end + 1));
}

} // namespace

void monkey::act(int actions) {
    say("generator simulated");
    say("start");
    for (int i = 0; i < actions; ++i) {
        if (act_once().starts_with("fatal")) say("start");
        if (i % 50 == 49) say(one_of(strings{"wire", "boxes", "dialogs", "later", "clock"}));
    }
    for (const char* look : {"later", "boxes", "wire", "clock"})
        say(look);
    for (const char* field :
         {"view_mode", "cur_timing", "cur_pattern", "color_mode", "rx_text", "download_mode", "edid_file_name",
          "diag_mode", "hex_type", "sn_value", "recover_sum", "descriptor_map", "data_block_addr", "report_text"})
        say(std::string("field ") + field);
    for (const char* buffer : {"buffer write", "buffer read", "get txt_write.text", "get txt_read.text"})
        say(buffer);
    for (const char* list : {"lstv_timing", "lstv_pattern", "lstv_auto"})
        say(std::string("rows ") + list);
}

std::string monkey::act_once() {
    look_at_controls();
    if (below(4) == 0) say(some_choice());
    if (below(10) == 0) say(some_trouble());
    // during the next action
    if (below(4) == 0) say("after " + std::to_string(below(1200)) + " " + some_action());
    return say(some_action());
}

std::string monkey::say(const std::string& line) {
    std::string answer = desk_.answer(line);
    std::string exchange = line + "\n  -> " + answer + "\n";
    const std::string directory = utf8_from_path(directory_);
    for (std::size_t at = 0; (at = exchange.find(directory, at)) != std::string::npos;)
        exchange.replace(at, directory.size(), "$DIR");
    transcript_ += exchange;
    const std::string outcome = outcome_of(answer);
    ++outcomes_[outcome];
    if (outcome != "ok" && outcome != "refused" && !outcome.starts_with("fatal ")) nonsense_.push_back(answer);
    return answer;
}

void monkey::look_at_controls() {
    std::string modal;
    for (const char* w : {"frm_diag", "frm_report"})
        if (desk_.answer("get " + std::string(w) + ".shown") == "ok true") modal = w;
    if (!controls_.empty() && modal == modal_) return;
    modal_ = modal;
    controls_.clear();
    const std::string on_top = modal.empty() ? "frm_main" : modal;
    for (const auto& control : nlohmann::json::parse(desk_.answer("controls " + on_top).substr(3)))
        controls_.emplace_back(on_top + "." + control["name"].get<std::string>(), control["kind"].get<std::string>());
}

std::string monkey::some_choice() {
    switch (below(6)) {
    case 0:
        return one_of(strings{"answer yes", "answer no", "answer cancel", "file cancel"});
    default:
        return "file \"" + utf8_from_path(directory_) + "/" + one_of(files_) + "\" " + std::to_string(1 + below(2));
    }
}

std::string monkey::some_action() {
    if (!modal_.empty() && below(20) == 0)
        return one_of(strings{"close frm_diag", "close frm_report", "click cmd_edid", "key frm_main 65"});
    // this view has many functions, most of them while an EDID is translated
    if (desk_.answer("get fra_edid_edit.shown") == "ok true" && below(2) == 0)
        return below(8) == 0 ? one_of(strings{"click cmd_edid_report", "click cmd_edid_back"}) : some_node();
    if (modal_.empty() && below(8) == 0)
        return one_of(strings{"click cmd_edid", "click cmd_load", "click cmd_read", "click cmd_save_write",
                              "click cmd_read_translate", "click cmd_write_translate"});
    // mostly controls in the operator's reach, sometimes hidden or disabled ones
    for (int tries = 0; tries < 200; ++tries) {
        const auto [name, kind] = one_of(controls_);
        const bool usable = desk_.answer("get " + name + ".shown") == "ok true" &&
                            desk_.answer("get " + name + ".enabled") == "ok true";
        if (!usable && below(40) != 0) continue;
        std::string action = action_on(name, kind);
        if (!action.empty()) return action;
    }
    return "wait " + std::to_string(below(300));
}

std::string monkey::action_on(const std::string& name, const std::string& kind) {
    if (kind == "button") return "click " + name;
    if (kind == "label") return one_of(strings{"click ", "hover "}) + name;
    if (kind == "check_box" || kind == "option_button") return "click " + name;
    if (kind == "slider") return one_of(strings{"slide ", "drag "}) + name + " " + std::to_string(below(256));
    if (kind == "combo_box") return "select " + name + " " + std::to_string(below(name.ends_with("cbo_com") ? 2 : 30));
    if (kind == "tree_view") return some_node();
    if (kind == "list_view") {
        const std::string row = std::to_string(1 + below(name.ends_with("lstv_auto") ? 32 : 45));
        switch (below(4)) {
        case 0:
            return "check " + name + " " + row + one_of(strings{" on", " off"});
        case 1:
            return "doubleclick " + name;
        case 2:
            return "keyup " + name;
        default:
            return "select " + name + " " + row;
        }
    }
    if (kind == "text_box") {
        switch (below(4)) {
        case 0:
            return "focus " + name;
        case 1:
            return "key " + name + " 13";
        default:
            return "type " + name + " " +
                   one_of(strings{R"("7")", R"("255")", R"("256")", R"("")", R"(" 12 ")", R"("4294967295")",
                                  R"("HELLO")", R"("€ 99")"});
        }
    }
    return "";
}

std::string monkey::some_node() {
    const auto nodes = nlohmann::json::parse(desk_.answer("tree").substr(3));
    if (nodes.empty()) return "node none";
    return "node " + nodes[static_cast<std::size_t>(below(static_cast<int>(nodes.size())))]["key"].get<std::string>();
}

std::string monkey::some_trouble() {
    const std::string cmd = one_of(strings{"*",      "TIM*",   "PAT*",   "OUT*",   "ASC*",   "PCM*",   "CSC999",
                                           "CRR999", "CRG999", "MOT*",   "FT+999", "FP+999", "FT*",    "ATS999",
                                           "AT*",    "RST001", "VER001", "ESC*",   "ERD001", "EWR001", "ERS001"});
    switch (below(15)) {
    case 12:
        return one_of(
            strings{"reply raw +100 \"EWR002\"", "reply raw \"EWR003\"", "reply raw none", "reply raw clear"});
    case 13:
        return one_of(strings{"sink 1 none", "sink 1 \"" + std::string(512, '5') + "\""});
    case 0:
        return "reply \"" + cmd + "\" none";
    case 1:
        return "reply \"" + cmd + "\" echo";
    case 2:
        return "reply \"" + cmd + "\" +" + std::to_string(below(900)) + " echo";
    case 3:
        return "reply \"" + cmd + "\" \"PCM100\"";
    case 4:
        return "reply \"" + cmd + "\" \"TIM\" +50 \"00" + std::to_string(below(10)) + "\"";
    case 5:
        return "reply \"" + cmd + "\" \"CRR" + std::to_string(100 + below(300)) + "\"";
    case 6:
        return "reply \"" + cmd + "\" hex:00FF80";
    case 7:
        return "say \"FT+0" + std::to_string(10 + below(40)) + "\"";
    case 8:
        return one_of(strings{"port 1 gone", "port 1 ok", "port 2 missing", "port 2 ok"});
    default:
        return "reply clear";
    }
}

} // namespace desk::test
