#include "generator/sim_options.h"

#include "runtime/failure.h"
#include "runtime/files.h"

#include <charconv>
#include <iterator>
#include <sstream>
#include <system_error>

namespace desk {

namespace {

[[noreturn]] void options_not_understood(const std::string& why) {
    throw runtime_failure(failure::invalid_procedure_call, why);
}

int count_of(const std::string& option, const std::string& word) {
    int count = 0;
    const char* const end = word.data() + word.size();
    const auto [stop, error] = std::from_chars(word.data(), end, count);
    if (error != std::errc() || stop != end || count < 1 || count > largest_catalogue) {
        options_not_understood(option + " needs a number from 1 to " + std::to_string(largest_catalogue) + ", not \"" +
                               word + "\"");
    }
    return count;
}

fault_plan faults_of(const std::string& argument) {
    std::istringstream text(argument);
    const std::vector<std::string> words{std::istream_iterator<std::string>(text), {}};
    return fault_plan_of({words.begin(), words.end()});
}

/// The words after "--send".
sim_options sending_options(const std::vector<std::string>& arguments) {
    if (arguments.size() < 2 || arguments[1].empty())
        options_not_understood("--send needs the path of a control socket");
    sim_options options;
    options.send_to = path_from_utf8(arguments[1]);
    for (std::size_t i = 2; i < arguments.size(); ++i)
        options.line += (i == 2 ? "" : " ") + arguments[i];
    if (arguments.size() > 2 && options.line.empty()) options_not_understood("--send needs a line that is not empty");
    return options;
}

} // namespace

sim_options sim_options_of(const std::vector<std::string>& arguments) {
    if (!arguments.empty() && arguments.front() == "--send") return sending_options(arguments);
    sim_options options;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string& word = arguments[i];
        if (word == "--help" || word == "-h") {
            options.help = true;
        } else if (word == "--version") {
            options.version = true;
        } else if (word == "--quiet") {
            options.quiet = true;
        } else if (word == "--timings" || word == "--patterns") {
            if (++i == arguments.size()) options_not_understood(word + " needs a number");
            (word == "--timings" ? options.timings : options.patterns) = count_of(word, arguments[i]);
        } else if (word == "--faults") {
            if (++i == arguments.size()) options_not_understood("--faults needs a rate");
            options.faults = faults_of(arguments[i]);
        } else if (word == "--control") {
            if (++i == arguments.size() || arguments[i].empty()) options_not_understood("--control needs a path");
            options.control = path_from_utf8(arguments[i]);
        } else if (word == "--send") {
            options_not_understood("--send has to be the first word");
        } else if (word.empty() || word.front() == '-') {
            options_not_understood("unknown option \"" + word + "\"");
        } else if (!options.link.empty()) {
            options_not_understood("only one LINK, not \"" + word + "\" too");
        } else {
            options.link = path_from_utf8(word);
        }
    }
    return options;
}

std::string_view sim_help() {
    return "usage: velotrace_sim [--timings N] [--patterns N] [--faults FAULTS] [--quiet]\n"
           "                     [--control PATH] [LINK]\n"
           "       velotrace_sim --send PATH [LINE...]\n"
           "\n"
           "A simulated generator on a pseudo terminal. LINK becomes a symbolic link to the\n"
           "terminal; a desk opens its port N as the link comN in its own directory. LINK\n"
           "defaults to com1 there. It replaces only the link of another simulator.\n"
           "\n"
           "On Windows it is a pipe, and LINK is a file that names it: portN.txt in the\n"
           "desk's directory, by default port1.txt.\n"
           "\n"
           "  --timings N   number of timings in the generator's catalogue\n"
           "  --patterns N  number of patterns\n"
           "  --faults FAULTS\n"
           "                inject faults by chance: \"20 seed 7 drop late\", as the command\n"
           "                \"faults\" takes it\n"
           "  --quiet       do not show the traffic\n"
           "  --control PATH\n"
           "                also read commands from a Unix socket, for this user only; on\n"
           "                Windows PATH is a pipe, \\\\.\\pipe\\NAME\n"
           "  --send PATH LINE...\n"
           "                send a command to the simulator at this socket and print its\n"
           "                reply; without LINE, send the lines of standard input\n"
           "  --help        show this text\n"
           "  --version     show number, commit and date of this build\n"
           "\n"
           "Commands on standard input control the generator and inject faults; \"help\" lists\n"
           "them.\n";
}

} // namespace desk
