#pragma once

#include "batch/input_files.h"
#include "batch/options.h"
#include "platform/local_date_time.h"

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

namespace desk::batch {

/// Receives the output of a run.
struct run_output {
    std::function<bool(std::string_view bytes)> report; ///< a report for standard output; false: writing failed
    std::function<void(std::string_view text)> message; ///< a message for standard error
    std::function<void(std::size_t done, std::size_t count)> progress;
};

/// The result of a run.
struct run_result {
    std::size_t reports = 0;
    std::size_t failures = 0; ///< files without a report, and named files or folders that are none
    bool stopped = false;     ///< writing to standard output failed

    bool all_well() const { return failures == 0 && !stopped; }
};

/// Reports on every file, in the given order whatever the number of jobs.
run_result run_reports(const input_files& inputs, const options& wanted, calendar& dates, const run_output& output);

} // namespace desk::batch
