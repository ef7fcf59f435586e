#include "generator/control_client.h"
#include "generator/sim_options.h"
#include "generator/simulator.h"
#include "generator/simulator_system.h"
#include "platform/command_line.h"
#include "platform/program_directory.h"
#include "runtime/failure.h"
#include "runtime/version.h"

#include <exception>
#include <memory>
#include <string>
#include <vector>

namespace desk {

namespace {

int run(const std::vector<std::string>& arguments) {
    sim_options options;
    try {
        options = sim_options_of(arguments);
    } catch (const runtime_failure& f) {
        write_to_standard_error("velotrace_sim: " + f.sentence() + "\nTry velotrace_sim --help.\n");
        return 2;
    }
    if (options.version) {
        write_to_standard_output(version_line("velotrace_sim"));
        return 0;
    }
    if (options.help) {
        write_to_standard_output(sim_help());
        return 0;
    }
    if (!options.send_to.empty()) return send_to_simulator(options.send_to, options.line);
    if (options.link.empty()) options.link = link_of_port_1(program_directory());
    prepare_standard_streams();
    const std::unique_ptr<simulator_system> system = make_simulator_system(options);
    simulator(options, *system).run();
    return 0;
}

} // namespace

} // namespace desk

int main(int argument_count, char** arguments) {
    try {
        return desk::run(desk::program_arguments(argument_count, arguments));
    } catch (const desk::runtime_failure& f) {
        desk::write_to_standard_error("velotrace_sim: " + f.sentence() + "\n");
    } catch (const std::exception& e) {
        desk::write_to_standard_error("velotrace_sim: " + std::string(e.what()) + "\n");
    }
    return 1;
}
