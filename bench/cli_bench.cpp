// Measures velotrace_cli as whole processes, with the simulated generator on a pseudo terminal paced at 19200 baud.

#include "report.h"
#include "support/piped_program.h"
#include "support/temporary_directory.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <exception>
#include <string>
#include <vector>

namespace {

using desk::bench::median;
using desk::bench::report;
using desk::test::piped_program;
using clock_type = std::chrono::steady_clock;

constexpr std::chrono::milliseconds patience(10'000);

// the command and its answer, six bytes of ten bits each at 19200 baud, and the generator's pause between them
constexpr double exchange_on_line_ms = 12 * 10 / 19.2 + 1;

double ms_since(clock_type::time_point start) {
    return std::chrono::duration<double, std::milli>(clock_type::now() - start).count();
}

struct run {
    double ms = 0;
    double memory_mb = 0;
    std::vector<std::string> lines;
};

/// The generator, and the program with its line.
class bench {
public:
    bench() {
        // its first line says that the terminal exists
        generator_.next_line(patience);
    }

    /// Runs the program to its end; `input` is its standard input.
    run cli(const std::vector<std::string>& arguments, const std::string& input = "") const {
        std::vector<std::string> words{VELOTRACE_CLI, "--json", "--port", (folder_ / "line").string()};
        words.insert(words.end(), arguments.begin(), arguments.end());
        run done;
        const auto start = clock_type::now();
        piped_program program(words, folder_ / "errors");
        program.type(input);
        program.end_input();
        while (const auto line = program.next_line(patience))
            done.lines.push_back(*line);
        const piped_program::ending end = program.wait();
        done.ms = ms_since(start);
        done.memory_mb = end.largest_memory_mb;
        if (end.status != 0) std::printf("  %s has FAILED\n", arguments.front().c_str());
        return done;
    }

    std::string file(const char* name) const { return (folder_ / name).string(); }

private:
    desk::test::temporary_directory folder_;
    piped_program generator_{{VELOTRACE_SIM, "--quiet", (folder_ / "line").string()}, folder_ / "errors"};
};

void measure_single(const bench& b) {
    std::vector<double> times;
    for (int i = 1; i <= 50; ++i)
        times.push_back(b.cli({"set", "timing", std::to_string(i)}).ms);
    report("set timing as a process, median of 50", median(times), "ms", 60 + exchange_on_line_ms);
    report("the same beyond the exchange on the line", median(times) - exchange_on_line_ms, "ms", 60);
    report("the longest of these", *std::max_element(times.begin(), times.end()) - exchange_on_line_ms, "ms", 60);
    times.clear();
    for (int i = 1; i <= 50; ++i)
        times.push_back(b.cli({"list", "timings"}).ms);
    report("list timings as a process, without a port, median of 50", median(times), "ms", 60);
}

void measure_batch(const bench& b) {
    std::string commands;
    for (int i = 1; i <= 100; ++i)
        commands += "set timing " + std::to_string(1 + i % 70) + "\n";
    std::vector<double> times;
    for (int i = 0; i < 5; ++i) {
        const run done = b.cli({"-"}, commands);
        times.push_back(done.ms / 100);
        if (done.lines.size() != 100) std::printf("  %zu answers, not 100\n", done.lines.size());
    }
    report("100 commands through \"-\", each, median of 5", median(times), "ms", 26);
}

void measure_memory(const bench& b) {
    std::string many;
    for (int i = 1; i <= 20; ++i)
        many += "status\npanel\nautorun\nfavorites timings\n";
    report("set timing, largest memory", b.cli({"set", "timing", "7"}).memory_mb, "MB", 8);
    report("edid read, largest memory", b.cli({"edid", "read", b.file("read.hex")}).memory_mb, "MB", 8);
    report("edid write, largest memory", b.cli({"edid", "write", b.file("read.hex")}).memory_mb, "MB", 8);
    report("80 downloads through \"-\", largest memory", b.cli({"-"}, many).memory_mb, "MB", 8);
}

} // namespace

int main() {
    try {
        const bench b;
        measure_single(b);
        measure_batch(b);
        measure_memory(b);
    } catch (const std::exception& e) {
        std::printf("cli_bench: %s\n", e.what());
        return 1;
    }
    return 0;
}
