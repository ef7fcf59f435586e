#include "batch/input_files.h"
#include "batch/options.h"
#include "batch/report_run.h"
#include "platform/command_line.h"
#include "runtime/files.h"
#include "runtime/version.h"

#include <chrono>
#include <cmath>
#include <exception>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace desk;

/// A count on the terminal's last line, cleared for messages.
class progress_line {
public:
    void show(std::size_t done, std::size_t count) {
        if (!on_terminal_) return;
        shown_ = std::to_string(done) + " of " + std::to_string(count);
        overwrite_terminal_line(shown_);
    }
    void clear() {
        if (shown_.empty()) return;
        overwrite_terminal_line(std::string(shown_.size(), ' '));
        overwrite_terminal_line("");
        shown_.clear();
    }

private:
    const bool on_terminal_ = standard_error_is_a_terminal();
    std::string shown_;
};

std::string counted(std::size_t count, const std::string& what) {
    return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

void write_summary(const batch::run_result& run, std::chrono::duration<double> time) {
    const auto tenths = std::lround(time.count() * 10);
    write_to_standard_error("edid_report: " + counted(run.reports, "report") + ", " + counted(run.failures, "failure") +
                            ", " + std::to_string(tenths / 10) + "." + std::to_string(tenths % 10) + " seconds\n");
}

int report(const batch::options& wanted) {
    if (!wanted.output_folder.empty()) {
        std::error_code error;
        std::filesystem::create_directories(path_from_utf8(wanted.output_folder), error);
        if (error) {
            write_to_standard_error("edid_report: the folder " + wanted.output_folder +
                                    " can't be created: " + error.message() + "\n");
            return 1;
        }
    }
    progress_line progress;
    local_calendar dates;
    const batch::run_output output{
        [&](std::string_view bytes) {
            progress.clear();
            return write_to_standard_output(bytes);
        },
        [&](std::string_view text) {
            progress.clear();
            write_to_standard_error("edid_report: " + std::string(text) + "\n");
        },
        [&](std::size_t done, std::size_t count) { progress.show(done, count); },
    };
    const auto start = std::chrono::steady_clock::now();
    const batch::run_result run = batch::run_reports(batch::find_input_files(wanted.inputs), wanted, dates, output);
    progress.clear();
    if (standard_error_is_a_terminal()) write_summary(run, std::chrono::steady_clock::now() - start);
    return run.all_well() ? 0 : 1;
}

} // namespace

int main(int argument_count, char** arguments) {
    try {
        const batch::options wanted = batch::options_of(program_arguments(argument_count, arguments));
        if (wanted.help) return write_to_standard_output(batch::help_text) ? 0 : 1;
        if (wanted.version) return write_to_standard_output(version_line("edid_report")) ? 0 : 1;
        return report(wanted);
    } catch (const batch::usage_error& e) {
        write_to_standard_error("edid_report: " + std::string(e.what()) + "; see edid_report --help\n");
        return 2;
    } catch (const std::exception& e) {
        write_to_standard_error("edid_report: " + std::string(e.what()) + "\n");
        return 1;
    }
}
