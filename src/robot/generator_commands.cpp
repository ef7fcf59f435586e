#include "robot/robot.h"

#include "runtime/failure.h"

namespace desk::robot {

namespace {

json counts_of(const faulty_generator& generator) {
    json counts = json::object();
    for (const auto& [kind, count] : generator.counts())
        counts[std::string(fault_name(kind))] = count;
    return counts;
}

/// Parses "RATE SEED [KIND...]" or "off"; none for anything else.
std::optional<fault_plan> fault_plan_in(const std::vector<token>& tokens) {
    std::vector<std::string_view> asked;
    for (std::size_t i = 1; i < tokens.size(); ++i) {
        if (tokens[i].quoted) return std::nullopt;
        if (i == 2) asked.emplace_back("seed");
        asked.push_back(tokens[i].text);
    }
    const bool off = asked.size() == 1 && asked.front() == "off";
    if (!off && asked.size() < 3) return std::nullopt;
    try {
        return fault_plan_of(asked);
    } catch (const runtime_failure&) {
        return std::nullopt;
    }
}

} // namespace

void robot::add_generator_commands() {
    anytime_["port"] = [this](tokens_in w) { return set_port(w); };
    anytime_["generator"] = [this](tokens_in w) {
        if (w.size() != 2 || (w[1].text != "silent" && w[1].text != "simulated")) return refused(bad_tokens);
        line_.simulated_answers = w[1].text == "simulated";
        return ok();
    };
    anytime_["faults"] = [this](tokens_in w) {
        if (w.size() == 1) return ok(counts_of(line_.faulty));
        auto plan = fault_plan_in(w);
        if (!plan) return refused(bad_tokens);
        line_.faulty.follow(std::move(*plan));
        return ok();
    };
    anytime_["sink"] = [this](tokens_in w) { return sink(w); };
    anytime_["reply"] = [this](tokens_in w) { return reply(w); };
    anytime_["say"] = [this](tokens_in w) {
        const auto parts = scripted_answer_of(w, 1);
        if (!parts || parts->has_echo()) return refused(bad_tokens);
        line_.say(parts->to(""));
        return ok();
    };
    anytime_["wire"] = [this](tokens_in) { return ok(line_.take_log()); };
}

std::string robot::set_port(tokens_in tokens) {
    using state = virtual_line::port_state;
    static const std::map<std::string, state> states = {
        {"ok", state::ok}, {"missing", state::missing}, {"gone", state::gone}, {"stuck", state::stuck}};
    const auto number = tokens.size() == 3 ? number_of(tokens[1]) : std::nullopt;
    const auto found = tokens.size() == 3 ? states.find(tokens[2].text) : states.end();
    if (!number || *number < 1 || *number > 8 || found == states.end()) return refused(bad_tokens);
    line_.set_port(*number, found->second);
    return ok();
}

std::string robot::reply(tokens_in tokens) {
    reply_script& script = line_.script;
    const auto is_clear = [&tokens](std::size_t place) {
        return tokens.size() == place + 1 && !tokens[place].quoted && tokens[place].text == "clear";
    };
    if (is_clear(1)) {
        script.clear();
        return ok();
    }
    if (tokens.size() < 3) return refused(bad_tokens);
    const std::string& command = tokens[1].text;
    const bool raw = !tokens[1].quoted && command == "raw";
    if (!raw && (!tokens[1].quoted || (command.size() != 6 && !command.ends_with('*')))) return refused(bad_tokens);
    if (is_clear(2)) {
        raw ? script.clear_raw() : script.clear(command);
        return ok();
    }
    auto parts = scripted_answer_of(tokens, 2);
    if (!parts) return refused(bad_tokens);
    if (!raw) {
        script.add(command, std::move(*parts));
        return ok();
    }
    if (parts->has_echo()) return refused("a raw block has no echo");
    script.add_raw(std::move(*parts));
    return ok();
}

std::string robot::sink(tokens_in tokens) {
    const auto number = tokens.size() >= 2 ? number_of(tokens[1]) : std::nullopt;
    if (!number || *number < 1 || *number > 3 || tokens.size() > 3) return refused(bad_tokens);
    auto& held = line_.simulated.state.sinks.at(static_cast<std::size_t>(*number - 1)).edid;
    if (tokens.size() == 2) return held ? ok(hex_of_bytes(string_of(*held))) : ok("none");
    if (!tokens[2].quoted && tokens[2].text == "none") {
        held.reset();
        return ok();
    }
    const auto data = tokens[2].quoted ? bytes_of_hex(tokens[2].text) : std::nullopt;
    if (!data || data->size() != 256) return refused("a sink holds 512 hexadecimal digits");
    held = bytes_of(*data);
    return ok();
}

} // namespace desk::robot
