#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>

#include <unistd.h>

namespace desk::test {

struct process_resources {
    std::size_t memory_kib = 0; ///< resident, without file-backed pages
    std::size_t descriptors = 0;
};

/// From /proc, so on Linux only. `id`: a process id.
inline process_resources resources_of_process(const std::string& id) {
    const std::filesystem::path process = "/proc/" + id;
    std::size_t pages = 0;
    std::size_t resident = 0;
    std::size_t shared = 0;
    std::ifstream(process / "statm") >> pages >> resident >> shared;
    const auto page_kib = static_cast<std::size_t>(::sysconf(_SC_PAGESIZE)) / 1024;
    const std::filesystem::directory_iterator open_files(process / "fd");
    return {(resident - shared) * page_kib,
            static_cast<std::size_t>(std::distance(begin(open_files), end(open_files)))};
}

/// How long the process has waited for a processor.
inline std::chrono::nanoseconds starvation_of_process(int id) {
    std::int64_t running = 0;
    std::int64_t waiting = 0;
    std::ifstream("/proc/" + std::to_string(id) + "/schedstat") >> running >> waiting;
    return std::chrono::nanoseconds(waiting);
}

inline process_resources resources_of_this_process() { return resources_of_process("self"); }

/// Repeats `work` and reports its resources. False: after the first tenth the process grew by more than
/// `most_growth_kib` or by a descriptor.
template <class Work>
bool stays_flat(int count, std::size_t most_growth_kib, Work work) {
    for (int i = 0; i < count / 10; ++i)
        work();
    const process_resources first = resources_of_this_process();
    for (int i = count / 10; i < count; ++i)
        work();
    const process_resources last = resources_of_this_process();
    std::cout << count << " times: " << first.memory_kib << " KiB and " << first.descriptors
              << " descriptors after the first tenth, " << last.memory_kib << " KiB and " << last.descriptors
              << " at the end" << std::endl;
    return last.memory_kib <= first.memory_kib + most_growth_kib && last.descriptors == first.descriptors;
}

} // namespace desk::test
