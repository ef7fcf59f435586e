#include "generator/simulator.h"

#include "platform/command_line.h"
#include "runtime/failure.h"

#include <algorithm>
#include <chrono>
#include <optional>
#include <utility>
#include <vector>

namespace desk {

namespace {

using std::chrono::nanoseconds;

nanoseconds now() {
    return std::chrono::duration_cast<nanoseconds>(std::chrono::steady_clock::now().time_since_epoch());
}

void show(const std::string& reply) {
    if (!reply.empty()) write_to_standard_output(reply + "\n");
}

} // namespace

simulator::simulator(const sim_options& options, simulator_system& system)
    : quiet_(options.quiet), system_(system), generator_(options.timings, options.patterns) {
    faults_.follow(options.faults);
}

void simulator::run() {
    plug();
    while (!console_.quit_asked()) {
        serve_line();
        const simulator_system::news arrived = wait();
        if (arrived.end) break;
        if (!arrived.from_desk.empty()) line_.receive(arrived.from_desk, now());
        take_typed(arrived);
        system_.serve_control([this](std::string_view line) { return reply_to(line); });
    }
}

void simulator::serve_line() {
    const bytes due = line_.take_due(now());
    if (system_.is_plugged()) system_.write_to_desk(due);
    show_traffic();
    follow_cable();
}

void simulator::show_traffic() {
    const std::vector<std::string> log = line_.take_log();
    if (quiet_ || log.empty()) return;
    for (const std::string& entry : log)
        write_to_standard_output(entry + "\n");
}

void simulator::follow_cable() {
    const bool was_out = std::exchange(pulled_out_, cable_.pulled_out(now()));
    if (pulled_out_ && system_.is_plugged()) unplug();
    if (was_out && !pulled_out_ && !cable_.unplugged()) show(plug_problem());
}

simulator_system::news simulator::wait() {
    std::optional<nanoseconds> longest;
    if (const std::optional<nanoseconds> due = line_.next_due()) longest = std::max(nanoseconds(0), *due - now());
    if (system_.control_has_line()) longest = nanoseconds(0);
    return system_.wait(line_.ready_for_more(now()), longest);
}

void simulator::take_typed(const simulator_system::news& arrived) {
    typed_.add(arrived.typed);
    if (arrived.typed_all) typed_.end();
    while (const std::optional<std::string> line = typed_.next())
        show(reply_to(*line));
}

std::string simulator::reply_to(std::string_view line) {
    if (line.size() > typed_lines::longest)
        return "A line has at most " + std::to_string(typed_lines::longest) + " bytes.";
    std::string reply = console_.take_line(line);
    // before the reply: its reader can then take the name of the link
    if (cable_.unplugged()) {
        unplug();
    } else if (!system_.is_plugged() && !pulled_out_) {
        const std::string problem = plug_problem();
        if (!problem.empty()) reply += (reply.empty() ? "" : "\n") + problem;
    }
    return reply;
}

/// Plugs the generator in and returns why it failed; empty: it did not.
std::string simulator::plug_problem() {
    try {
        plug();
        return "";
    } catch (const runtime_failure& f) {
        return f.sentence();
    }
}

void simulator::plug() {
    system_.plug();
    write_to_standard_output("VELOTRACE simulator on " + system_.line_name() + "\n");
}

void simulator::unplug() {
    system_.unplug();
    line_.cut();
}

} // namespace desk
