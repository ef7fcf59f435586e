// Measures saving the desk's files so that they survive a power loss.

#include "report.h"
#include "runtime/files.h"
#include "support/temporary_directory.h"

#include <chrono>
#include <cstdio>
#include <string>
#include <vector>

namespace {

using clock_type = std::chrono::steady_clock;

double save_ms(const std::filesystem::path& file, std::size_t size, desk::outlives worst) {
    constexpr int saves = 200;
    std::vector<double> times;
    for (int i = 0; i < saves; ++i) {
        const std::string content(size, static_cast<char>('a' + i % 2));
        const auto start = clock_type::now();
        desk::replace_whole_file(file, content, worst);
        times.push_back(std::chrono::duration<double, std::milli>(clock_type::now() - start).count());
    }
    return desk::bench::median(times);
}

void measure(const char* what, std::size_t size) {
    const desk::test::temporary_directory directory;
    std::printf("%s of %zu bytes, replaced 200 times\n", what, size);
    desk::bench::report("  survives a killed program, median",
                        save_ms(directory / "f", size, desk::outlives::killed_program), "ms", 1);
    desk::bench::report("  survives a power loss, median", save_ms(directory / "f", size, desk::outlives::power_loss),
                        "ms", 50);
}

} // namespace

int main() {
    measure("a settings file", 300);
    measure("a HEX file", 926);
    measure("a report", 7500);
    return 0;
}
