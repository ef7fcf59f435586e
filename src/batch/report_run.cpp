#include "batch/report_run.h"

#include "batch/edid_file.h"
#include "edid/buffers.h"
#include "edid/serial_number.h"
#include "edid/shared_fields.h"
#include "report/report_builder.h"
#include "runtime/failure.h"
#include "runtime/files.h"
#include "runtime/text.h"
#include "runtime/windows_1252.h"
#include "translate/translation_tables.h"

#include <algorithm>
#include <atomic>
#include <deque>
#include <exception>
#include <filesystem>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

namespace desk::batch {

namespace {

/// What became of a file.
struct outcome {
    bool reported = false;
    std::string report; ///< bytes for standard output
    std::vector<std::string> messages;
};

/// All that one report needs; it is used again for the next one.
class reporter {
public:
    reporter(const input_files& inputs, const options& wanted, calendar& dates)
        : inputs_(inputs), wanted_(wanted), dates_(dates) {}

    void work_on(const input_file& file, outcome& result) {
        result = {};
        const std::string path = inputs_.path_of(file);
        try {
            read(path, kind_of(file.name), result);
            build(path, result);
            if (result.reported && saves()) save(file, result);
        } catch (const runtime_failure& f) {
            fail(result, path + ": " + f.sentence());
        } catch (const std::exception& e) {
            fail(result, path + ": " + e.what() + ".");
        }
        if (!result.reported && saves()) tell_of_older_report(file, result);
    }

private:
    void read(const std::string& path, file_kind kind, outcome& result) {
        const edid_file file = read_edid_file(path_from_utf8(path), kind);
        buffers_.trans_buff = file.edid;
        if (!file.remark.empty()) result.messages.push_back(path + ": " + file.remark + ".");
    }

    void build(const std::string& path, outcome& result) {
        const std::tm now = dates_.now();
        // each file begins with fresh tables, whatever was reported before
        tables_ = {};
        try {
            builder_.report_build(date_text(now), time_text(now));
            result.report = bytes_from_text(builder_.report_text + std::string(line_end));
            result.reported = true;
        } catch (const runtime_failure& f) {
            result.messages.push_back(path + ": run-time error " + std::to_string(f.number()) + ": " +
                                      std::string(f.text()) + ". " + f.sentence() + " The report so far:\n" +
                                      builder_.report_text);
        }
    }

    bool saves() const { return !wanted_.output_folder.empty(); }

    std::filesystem::path report_path(const input_file& file) const {
        return path_from_utf8(wanted_.output_folder) / path_from_utf8(std::string(report_name(file)) + ".txt");
    }

    void save(const input_file& file, outcome& result) {
        const std::filesystem::path path = report_path(file);
        if (file.name_taken)
            throw runtime_failure(failure::file_already_open, "another file has its report in " + utf8_from_path(path));
        // what somebody has written is not lost
        std::error_code unknown;
        if (std::filesystem::exists(path, unknown) && !is_report(path)) {
            throw runtime_failure(failure::path_file_access_error,
                                  utf8_from_path(path) + " is not a report and is not replaced");
        }
        // thousands of waits for the disk would take minutes, and a report can be made again
        replace_whole_file(path, result.report, outlives::killed_program);
        result.report.clear();
    }

    static bool is_report(const std::filesystem::path& path) {
        try {
            return read_start_of_file(path, report_title.size()) == report_title;
        } catch (const runtime_failure&) {
            return false;
        }
    }

    static void fail(outcome& result, std::string message) {
        result.reported = false;
        result.report.clear();
        result.messages.push_back(std::move(message));
    }

    void tell_of_older_report(const input_file& file, outcome& result) const {
        const std::filesystem::path path = report_path(file);
        std::error_code unknown;
        if (!file.name_taken && std::filesystem::is_regular_file(path, unknown) && is_report(path))
            result.messages.push_back(utf8_from_path(path) + " is an older report.");
    }

    const input_files& inputs_;
    const options& wanted_;
    calendar& dates_;
    edid_buffers buffers_;
    shared_fields fields_;
    translation_tables tables_;
    serial_number serial_{buffers_, fields_};
    report_builder builder_{buffers_, tables_, serial_, fields_};
};

/// Lets each reporter take the next file until all of `count` are done.
void share_out(std::deque<reporter>& reporters, std::size_t count,
               const std::function<void(reporter&, std::size_t)>& work) {
    std::atomic<std::size_t> next = 0;
    const auto work_until_done = [&](reporter& r) {
        for (std::size_t i = next++; i < count; i = next++)
            work(r, i);
    };
    std::vector<std::thread> helpers;
    try {
        for (std::size_t j = 1; j < std::min(reporters.size(), count); ++j)
            helpers.emplace_back(work_until_done, std::ref(reporters[j]));
    } catch (const std::system_error&) {
        // the machine gives no more of them: those that are there do all
    }
    work_until_done(reporters.front());
    for (std::thread& helper : helpers)
        helper.join();
}

} // namespace

bool run_reports(const input_files& inputs, const options& wanted, calendar& dates, const run_output& output) {
    // so many files are held at a time, however many there are
    constexpr std::size_t files_of_job = 64;
    const std::size_t jobs =
        std::max<std::size_t>(wanted.jobs != 0 ? wanted.jobs : std::thread::hardware_concurrency(), 1);
    bool all_well = inputs.problems.empty();
    if (!wanted.output_folder.empty()) remove_left_behind(path_from_utf8(wanted.output_folder));
    for (const std::string& problem : inputs.problems)
        output.message(problem);
    std::deque<reporter> reporters; // they stay where they are: their parts know each other
    for (std::size_t j = 0; j < std::clamp<std::size_t>(inputs.files.size(), 1, jobs); ++j)
        reporters.emplace_back(inputs, wanted, dates);
    std::vector<outcome> outcomes(std::min(reporters.size() * files_of_job, inputs.files.size()));
    for (std::size_t first = 0; first < inputs.files.size(); first += outcomes.size()) {
        const std::size_t count = std::min(outcomes.size(), inputs.files.size() - first);
        share_out(reporters, count,
                  [&](reporter& r, std::size_t i) { r.work_on(inputs.files[first + i], outcomes[i]); });
        for (std::size_t i = 0; i < count; ++i) {
            const outcome& result = outcomes[i];
            all_well = all_well && result.reported;
            for (const std::string& message : result.messages)
                output.message(message);
            if (!result.report.empty() && !output.report(result.report)) {
                output.message("writing to standard output failed.");
                return false;
            }
        }
        output.progress(first + count, inputs.files.size());
    }
    return all_well;
}

} // namespace desk::batch
