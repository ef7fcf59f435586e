#pragma once

#include "generator/cable.h"
#include "generator/fault_injector.h"
#include "generator/generator_on_line.h"
#include "generator/sim_options.h"
#include "generator/simulated_generator.h"
#include "generator/simulator_console.h"
#include "generator/simulator_system.h"
#include "runtime/typed_lines.h"

#include <string>
#include <string_view>

namespace desk {

/// The program: serves the generator on a line and carries out the lines of its console.
class simulator {
public:
    /// `system` must outlive this.
    simulator(const sim_options& options, simulator_system& system);

    /// Returns when the system or the operator ends the program. Throws failure::path_file_access_error if the first
    /// line can't be made.
    void run();

private:
    void serve_line();
    void show_traffic();
    void follow_cable();
    simulator_system::news wait();
    void take_typed(const simulator_system::news& now);
    std::string reply_to(std::string_view line);
    std::string plug_problem();
    void plug();
    void unplug();

    bool quiet_;
    simulator_system& system_;
    simulated_generator generator_;
    fault_injector faults_{generator_};
    cable cable_;
    simulator_console console_{generator_, faults_, cable_};
    generator_on_line line_{faults_, cable_};
    bool pulled_out_ = false; // the cable, at the last look
    typed_lines typed_;
};

} // namespace desk
