// Hundreds of thousands of exchanges on the virtual clock: memory and descriptors stay constant after the first
// tenth.

#include "soak/process_resources.h"
#include "support/desk_files.h"
#include "support/robot_at_hand.h"
#include "support/temporary_directory.h"

#include <cstdlib>
#include <iostream>
#include <stdexcept>
#include <string>

namespace {

using namespace desk;
using namespace desk::test;

constexpr int timings = 30;
constexpr int exchanges_to_a_look = 1000;
constexpr std::size_t most_growth_kib = 1024;

class bench {
public:
    bench() : robot_(directory_.path()) {
        directory_.put("marlo_rs232.ini", usual_settings);
        directory_.put("timing_pattern.ini", plain_catalogue(timings, timings));
        for (const char* line : {"generator simulated", "start", "click cmd_timing"})
            expect(line, "ok");
    }

    /// SET for the next row: one command and its answer.
    void exchange() {
        const int row = 1 + count_++ % timings;
        expect("select lstv_timing " + std::to_string(row), "ok");
        expect("click cmd_run", "ok");
        if (count_ % exchanges_to_a_look != 0) return;
        expect("get lab_timing.caption", "ok \"timing " + std::to_string(row) + "\"");
        // the traffic is kept until it is read
        robot_.answer("wire");
    }

private:
    void expect(const std::string& line, const std::string& answer) {
        const std::string got = robot_.answer(line);
        if (got != answer) throw std::runtime_error(line + ": " + got);
    }

    temporary_directory directory_;
    robot_at_hand robot_;
    int count_ = 0;
};

int run(int count) {
    bench b;
    return stays_flat(count, most_growth_kib, [&] { b.exchange(); }) ? 0 : 1;
}

} // namespace

int main(int argument_count, char** arguments) {
    const int count = argument_count == 2 ? std::atoi(arguments[1]) : 0;
    if (count < 10) {
        std::cerr << "usage: many_exchanges COUNT\n";
        return 2;
    }
    try {
        return run(count);
    } catch (const std::exception& e) {
        std::cerr << "many_exchanges: " << e.what() << '\n';
        return 1;
    }
}
