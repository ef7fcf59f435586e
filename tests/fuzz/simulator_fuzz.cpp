// The simulated generator: any bytes from the desk at any times, and any console lines.

#include "desk_under_fuzz.h"
#include "fuzz_input.h"
#include "generator/generator_on_line.h"
#include "generator/simulator_console.h"

namespace {

using namespace desk;

/// Excludes lines that name a file, since their effect depends on the file.
bool names_file(std::string_view line) {
    return line.find("sink") != std::string_view::npos && line.find('/') != std::string_view::npos;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::fuzz_input input(data, size);
    simulated_generator generator(30, 45);
    fault_injector faults(generator);
    cable cable;
    simulator_console console(generator, faults, cable);
    generator_on_line on_line(faults, cable);
    generator_on_line::time now{0};
    while (!input.empty()) {
        switch (input.below(4)) {
        case 0: {
            const std::string_view line = input.text();
            if (!names_file(line)) console.take_line(line);
            break;
        }
        case 1:
            on_line.receive(bytes_of(input.text()), now);
            break;
        case 2:
            now += std::chrono::milliseconds(input.byte() * 3);
            break;
        default:
            if (input.below(16) == 0) on_line.cut();
            break;
        }
        on_line.take_due(now);
        const auto next = on_line.next_due();
        fuzz::demand(!next || *next > now, "everything due has been taken");
        on_line.take_log();
    }
    const edid_sink& first = generator.state.sinks.front();
    fuzz::demand(!first.edid || first.edid->size() == 256, "a sink holds 256 bytes");
    fuzz::demand(generator.timing_count() == 30 && generator.pattern_count() == 45, "the catalogue keeps its size");
    return 0;
}
