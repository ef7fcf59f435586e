#include "robot/robot.h"

#include "controls/kinds.h"
#include "controls/operator_actions.h"
#include "edid/rescue.h"
#include "robot/inspection.h"
#include "robot/operator_commands.h"
#include "runtime/failure.h"

#include <algorithm>
#include <set>

namespace desk::robot {

namespace {

constexpr const char* no_program = "no program";
constexpr const char* not_on_show = "the control is not on show";

/// The limit of nested commands, in one line or each inside another: far more than an operator needs, and few enough
/// for the stack.
constexpr std::size_t most_nested = 200;
constexpr const char* nested_too_deep = "too many commands are nested";

/// The number of leading `after` commands of a line.
std::size_t nested_in(const std::vector<token>& tokens) {
    std::size_t count = 0;
    while (2 * count < tokens.size() && tokens[2 * count].text == "after")
        ++count;
    return count;
}

/// The windows that can open above the main window.
const std::set<std::string> modal_window_names = {"frm_diag", "frm_report"};

/// Whether `after` accepts a command: actions of the operator, and queries of a property.
bool can_be_done_later(const std::string& name) {
    return operator_commands().contains(name) || name == "node" || name == "close" || name == "after" ||
           name == "later" || name == "get";
}

} // namespace

robot::robot(std::filesystem::path program_directory, line_source next_line, answer_sink give_answer)
    : next_line_(std::move(next_line))
    , give_answer_(std::move(give_answer))
    , machine_{line_, events_, boxes_, files_, windows_, dates_, std::move(program_directory)} {
    windows_.let_operator_work = [this](const auto& closed) { serve_until(closed); };
    add_life_commands();
    add_dialog_commands();
    add_looking_commands();
    add_list_commands();
    add_generator_commands();
}

void robot::serve_operator() {
    while (const auto line = next_line()) {
        const std::string answer = answer_line(*line);
        if (events_.abandoned()) return;
        give_answer_(answer);
    }
}

void robot::serve_until(const std::function<bool()>& closed) {
    // the command that opened the window is answered now; the one that closes it, once the suspended procedure returns
    if (!under_way_.empty() && under_way_.back() != nullptr) {
        *under_way_.back() = true;
        later_.push_back(ok());
    }
    give_answer_(ok());
    while (true) {
        const auto line = next_line();
        if (!line) events_.abandon();
        events_.throw_if_over();
        under_way_.push_back(nullptr);
        const std::string answer = answer_line(*line);
        under_way_.pop_back();
        events_.throw_if_over();
        if (closed()) return;
        give_answer_(answer);
    }
}

std::string robot::answer_line(std::string_view line) {
    const std::size_t first = line.find_first_not_of(" \t\r");
    if (first == std::string_view::npos || line.front() == '#') return "";
    const auto tokens = tokens_of(line);
    if (!tokens) return refused("a quoted word is no JSON string");
    std::string answer = carry_out(*tokens, line);
    if (running() && !windows_.suspends() && events_.clock_time() < wait_goes_on_until_) {
        answer = run([this] {
            wait_until(wait_goes_on_until_);
            return ok();
        });
    }
    return answer;
}

void robot::wait_until(std::chrono::milliseconds clock_time) {
    const window* const here = windows_.top();
    events_.run_on(clock_time - events_.clock_time(), [here] { return here->visible.get(); });
    // first the procedure that the closed window suspended continues, in the time of this wait
    if (!here->visible) wait_goes_on_until_ = clock_time;
}

std::string robot::carry_out(tokens_in tokens, std::string_view line) {
    const std::string& name = tokens.front().text;
    if (name == "after") return running() ? after(tokens, line) : refused(no_program);
    if (const auto found = anytime_.find(name); found != anytime_.end()) return found->second(tokens);
    if (const auto found = inspecting_.find(name); found != inspecting_.end())
        return desk_ ? found->second(tokens) : refused(no_program);
    if (const auto found = operating_.find(name); found != operating_.end())
        return running() ? run([&] { return found->second(tokens); }) : refused(no_program);
    return refused("no such command");
}

std::string robot::run(const std::function<std::string()>& work) {
    std::string result = ok();
    events_.run_event([&] { result = work(); });
    events_.settle_focus();
    return events_.ended_by() ? fatal_end() : result;
}

std::string robot::fatal_end() {
    if (!rescued_) rescue_window_texts(desk_->workbench, desk_->shared_fields, machine_.program_directory);
    rescued_ = true;
    return fatal(*events_.ended_by());
}

void robot::add_life_commands() {
    anytime_["start"] = [this](tokens_in w) { return start(w); };
    anytime_["quit"] = [this](tokens_in) {
        finished_ = true;
        return ok();
    };
    operating_["stop"] = [this](tokens_in w) { return stop(w); };
    operating_["wait"] = [this](tokens_in w) {
        const auto ms = w.size() == 2 ? number_of(w[1]) : std::nullopt;
        if (!ms || *ms < 0) return refused(bad_tokens);
        wait_until(events_.clock_time() + std::chrono::milliseconds(*ms));
        return ok();
    };
    inspecting_["why"] = [this](tokens_in) {
        return events_.ended_by() ? ok(events_.ended_by()->sentence()) : refused("there was no fatal end");
    };
    inspecting_["clock"] = [this](tokens_in) { return ok(events_.clock_time().count()); };
    for (const auto& [name, unused] : operator_commands())
        operating_[name] = [this](tokens_in w) { return operate(w); };
    operating_["key"] = [this](tokens_in w) { return press_key(w); };
    operating_["node"] = [this](tokens_in w) {
        tree_view& tree = desk_->translation_frame.tree_edid;
        if (w.size() != 2) return refused(bad_tokens);
        if (windows_.modal_is_open()) return refused(reason_out_of_reach(tree));
        for (int n = 1; n <= tree.node_count(); ++n) {
            if (tree.node(n).key != w[1].text) continue;
            if (!tree.usable()) return refused("the tree can't be used now");
            click_node(tree, n);
            return ok();
        }
        return refused("no such node");
    };
    operating_["close"] = [this](tokens_in w) { return close(w); };
    inspecting_["later"] = [this](tokens_in) {
        json answers = json::array();
        answers.swap(later_);
        return ok(answers);
    };
}

std::string robot::start(tokens_in tokens) {
    if (tokens.size() != 1) return refused(bad_tokens);
    if (running()) return refused("the program runs");
    line_.unplug();
    windows_.start(nullptr);
    desk_ = std::make_unique<frm_main>(machine_);
    windows_.start(&desk_->form);
    later_ = json::array();
    wait_goes_on_until_ = {};
    rescued_ = false;
    return run([this] {
        desk_->form.on_load();
        desk_->form.visible = true;
        const int rows = std::clamp<int>(desk_->exchange.fav_timing_count, 0, 998);
        line_.simulated.set_catalogue_size(rows, std::clamp<int>(desk_->exchange.fav_pattern_count, 0, 998));
        return ok();
    });
}

std::string robot::stop(tokens_in tokens) {
    if (tokens.size() != 1) return refused(bad_tokens);
    if (windows_.modal_is_open()) return refused("a modal window stands above");
    desk_->form.on_unload();
    line_.unplug();
    windows_.start(nullptr);
    desk_.reset();
    return ok();
}

std::string robot::close(tokens_in tokens) {
    window* const w = windows_.modal_is_open() ? windows_.top() : nullptr;
    if (tokens.size() != 2 || w == nullptr || w->name != tokens[1].text) return refused("no such modal window is open");
    if (!w->on_close) return refused("its title bar does not close it");
    w->on_close();
    return ok();
}

control* robot::find_control(const std::string& name) const {
    if (window* const w = windows_.find(name)) return w;
    const std::size_t point = name.find('.');
    if (point == std::string::npos) return desk_->form.find(name);
    const window* const w = windows_.find(name.substr(0, point));
    return w != nullptr ? w->find(name.substr(point + 1)) : nullptr;
}

std::string robot::reason_out_of_reach(const control& c) const {
    if (c.owner != windows_.top()) return "a modal window stands above";
    if (!c.shown()) return not_on_show;
    return c.usable() ? "" : "the control is disabled";
}

std::string robot::operate(tokens_in tokens) {
    if (tokens.size() < 2) return refused(bad_tokens);
    control* const c = find_control(tokens[1].text);
    if (c == nullptr || is<window>(*c)) return refused("no such control");
    const std::string reason = reason_out_of_reach(*c);
    if (!reason.empty()) return refused(reason);
    return operator_commands().at(tokens[0].text)(*c, tokens);
}

std::string robot::press_key(tokens_in tokens) {
    const auto code = tokens.size() == 3 ? number_of(tokens[2]) : std::nullopt;
    if (!code) return refused(bad_tokens);
    control* const c = find_control(tokens[1].text);
    if (c == nullptr || !is<window>(*c)) return operate(tokens);
    const std::string reason = reason_out_of_reach(*c);
    if (!reason.empty()) return refused(reason);
    if (c->owner->on_key_press) c->owner->on_key_press(*code);
    return ok();
}

std::string robot::after(tokens_in tokens, std::string_view line) {
    const auto ms = tokens.size() >= 3 ? number_of(tokens[1]) : std::nullopt;
    if (!ms || *ms < 0) return refused(bad_tokens);
    if (nested_in(tokens) > most_nested) return refused(nested_too_deep);
    const std::string& name = tokens[2].text;
    if (!can_be_done_later(name)) return refused("this can't be done later");
    const std::string rest(line.substr(tokens[2].at));
    events_.later(std::chrono::milliseconds(*ms), [this, name, rest] { run_later(name, rest); });
    return ok();
}

void robot::run_later(const std::string& name, const std::string& line) {
    if (under_way_.size() >= most_nested) {
        later_.push_back(refused(nested_too_deep));
        return;
    }
    bool kept = false;
    under_way_.push_back(&kept);
    try {
        const std::string answer = do_later(name, line);
        if (!kept) later_.push_back(answer);
    } catch (...) {
        under_way_.pop_back();
        throw;
    }
    under_way_.pop_back();
}

std::string robot::do_later(const std::string& name, const std::string& line) {
    const auto tokens = tokens_of(line);
    if (name == "after") return after(*tokens, line);
    return inspecting_.contains(name) ? inspecting_.at(name)(*tokens) : operating_.at(name)(*tokens);
}

void robot::add_looking_commands() {
    inspecting_["get"] = [this](tokens_in w) { return get(w); };
    inspecting_["tree"] = [this](tokens_in) { return ok(nodes_of(desk_->translation_frame.tree_edid)); };
    inspecting_["field"] = [this](tokens_in w) {
        const auto value = w.size() == 2 ? field_of(*desk_, w[1].text) : std::nullopt;
        return value ? ok(*value) : refused("no such field");
    };
    inspecting_["controls"] = [this](tokens_in w) {
        const window* const open = w.size() == 2 ? windows_.find(w[1].text) : nullptr;
        return open != nullptr ? ok(controls_of(*open)) : refused("no such window");
    };
    inspecting_["buffer"] = [this](tokens_in w) { return buffer(w); };
    inspecting_["items"] = [this](tokens_in w) {
        auto* const box = w.size() == 2 ? as<combo_box>(find_control(w[1].text)) : nullptr;
        return box != nullptr ? ok(box->items()) : refused("no such combo box");
    };
}

std::string robot::get(tokens_in tokens) {
    if (tokens.size() != 2) return refused(bad_tokens);
    const std::string& path = tokens[1].text;
    const std::size_t point = path.rfind('.');
    if (point == std::string::npos) return refused(bad_tokens);
    const std::string name = path.substr(0, point);
    const std::string property = path.substr(point + 1);
    control* const c = find_control(name);
    if (c == nullptr && property == "shown" && modal_window_names.contains(name)) return ok(false);
    if (c == nullptr) return refused("no such control");
    const auto value = property_of(*c, property);
    return value ? ok(*value) : refused("no such property");
}

std::string robot::buffer(tokens_in tokens) {
    const std::map<std::string, edid_buffer*> buffers = {{"read", &desk_->edid_buffers.read_buff},
                                                         {"write", &desk_->edid_buffers.write_buff},
                                                         {"trans", &desk_->edid_buffers.trans_buff}};
    const auto found = tokens.size() == 2 || tokens.size() == 3 ? buffers.find(tokens[1].text) : buffers.end();
    if (found == buffers.end()) return refused(bad_tokens);
    edid_buffer& held = *found->second;
    if (tokens.size() == 3 && !running()) return refused(no_program);
    if (tokens.size() == 2) return ok(hex_of_bytes({reinterpret_cast<const char*>(held.data()), held.size()}));
    const auto bytes = tokens[2].quoted ? bytes_of_hex(tokens[2].text) : std::nullopt;
    if (!bytes || bytes->size() != held.size()) return refused("a buffer holds 512 hexadecimal digits");
    std::copy(bytes->begin(), bytes->end(), held.begin());
    return ok();
}

void robot::add_list_commands() {
    inspecting_["columns"] = [this](tokens_in w) {
        return on_list(w, [](list_view& l) {
            json titles = json::array();
            for (const list_column& column : l.columns)
                titles.push_back(column.title);
            return ok(titles);
        });
    };
    inspecting_["rows"] = [this](tokens_in w) {
        return on_list(w, [](list_view& l) {
            json rows = json::array();
            for (int i = 1; i <= l.row_count(); ++i)
                rows.push_back(row_of(l.row(i)));
            return ok(rows);
        });
    };
    inspecting_["row"] = [this](tokens_in w) {
        return on_list(w, [&w](list_view& l) {
            const auto n = w.size() == 3 ? number_of(w[2]) : std::nullopt;
            if (!n || *n < 1 || *n > l.row_count()) return refused("no such row");
            return ok(row_of(l.row(*n)));
        });
    };
}

std::string robot::on_list(tokens_in tokens, const std::function<std::string(list_view&)>& look) {
    auto* const list = tokens.size() >= 2 ? as<list_view>(find_control(tokens[1].text)) : nullptr;
    return list != nullptr ? look(*list) : refused("no such list view");
}

void robot::add_dialog_commands() {
    anytime_["answer"] = [this](tokens_in w) {
        static const std::map<std::string, box_answer> answers = {
            {"yes", box_answer::yes}, {"no", box_answer::no}, {"cancel", box_answer::cancel}, {"ok", box_answer::ok}};
        const auto found = w.size() == 2 ? answers.find(w[1].text) : answers.end();
        if (found == answers.end()) return refused(bad_tokens);
        boxes_.queue(found->second);
        return ok();
    };
    anytime_["file"] = [this](tokens_in w) { return queue_file(w); };
    anytime_["boxes"] = [this](tokens_in) { return ok(boxes_.take_shown()); };
    anytime_["dialogs"] = [this](tokens_in) { return ok(files_.take_shown()); };
}

std::string robot::queue_file(tokens_in tokens) {
    if (tokens.size() == 2 && !tokens[1].quoted && tokens[1].text == "cancel") {
        files_.queue(std::nullopt, std::nullopt);
        return ok();
    }
    const auto filter_index = tokens.size() == 3 ? number_of(tokens[2]) : std::nullopt;
    if (tokens.size() < 2 || tokens.size() > 3 || !tokens[1].quoted || (tokens.size() == 3 && !filter_index))
        return refused(bad_tokens);
    files_.queue(tokens[1].text, filter_index);
    return ok();
}

} // namespace desk::robot
