#include "batch/report_run.h"

#include "batch/edid_file.h"
#include "edid/format/buffer.h"
#include "edid/format/file_kind.h"
#include "report/text/report_text.h"
#include "runtime/failure.h"
#include "runtime/files.h"
#include "runtime/text.h"
#include "runtime/windows_1252.h"
#include "translate/decode/translation_tables.h"

#include <algorithm>
#include <atomic>
#include <exception>
#include <filesystem>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

namespace desk::batch {

namespace {

/// The result for a file.
struct outcome {
    bool reported = false;
    std::string report; ///< bytes for standard output
    std::vector<std::string> messages;
};

/// Writes the report of a file.
class reporter {
public:
    reporter(const input_files& inputs, const options& wanted, calendar& dates)
        : inputs_(inputs), wanted_(wanted), dates_(dates) {}

    void work_on(const input_file& file, outcome& result) const {
        result = {};
        const std::string path = inputs_.path_of(file);
        try {
            build(path, read(path, kind_by_extension(file.name), result), result);
            if (result.reported && saves()) save(file, result);
        } catch (const runtime_failure& f) {
            fail(result, path + ": " + f.sentence());
        } catch (const std::exception& e) {
            fail(result, path + ": " + e.what() + ".");
        }
        if (!result.reported && saves()) warn_of_older_report(file, result);
    }

private:
    static edid_buffer read(const std::string& path, file_kind kind, outcome& result) {
        const edid_file file = read_edid_file(path_from_utf8(path), kind);
        if (!file.remark.empty()) result.messages.push_back(path + ": " + file.remark + ".");
        return file.edid;
    }

    void build(const std::string& path, const edid_buffer& edid, outcome& result) const {
        const std::tm now = dates_.now();
        std::string report_text;
        translation_tables tables;
        double sn_value = 0;
        try {
            report_build(report_text, edid, tables, sn_value, date_text(now), time_text(now));
            result.report = bytes_from_text(report_text + std::string(line_end));
            result.reported = true;
        } catch (const runtime_failure& f) {
            result.messages.push_back(path + ": run-time error " + std::to_string(f.number()) + ": " +
                                      std::string(f.text()) + ". " + f.sentence() + " The report so far:\n" +
                                      report_text);
        }
    }

    bool saves() const { return !wanted_.output_folder.empty(); }

    std::filesystem::path report_path(const input_file& file) const {
        return path_from_utf8(wanted_.output_folder) / path_from_utf8(std::string(report_name(file)) + ".txt");
    }

    void save(const input_file& file, outcome& result) const {
        const std::filesystem::path path = report_path(file);
        if (file.name_taken)
            throw runtime_failure(failure::file_already_open,
                                  "another file's report is already in " + utf8_from_path(path));
        // only an older report is overwritten
        if (std::filesystem::exists(std::filesystem::file_status(type_of_file(path))) && !is_report(path)) {
            throw runtime_failure(failure::path_file_access_error,
                                  utf8_from_path(path) + " is not a report and is not replaced");
        }
        // waiting for the disk thousands of times would take minutes, and a report can be rebuilt
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

    void warn_of_older_report(const input_file& file, outcome& result) const {
        const std::filesystem::path path = report_path(file);
        if (!file.name_taken && type_of_file(path) == std::filesystem::file_type::regular && is_report(path))
            result.messages.push_back(utf8_from_path(path) + " is an older report.");
    }

    const input_files& inputs_;
    const options& wanted_;
    calendar& dates_;
};

/// Calls `work` for 0 to `count` - 1, in up to `jobs` threads.
void share_out(std::size_t jobs, std::size_t count, const std::function<void(std::size_t)>& work) {
    std::atomic<std::size_t> next = 0;
    const auto work_until_done = [&] {
        for (std::size_t i = next++; i < count; i = next++)
            work(i);
    };
    std::vector<std::thread> helpers;
    try {
        for (std::size_t j = 1; j < std::min(jobs, count); ++j)
            helpers.emplace_back(work_until_done);
    } catch (const std::system_error&) {
        // the system allows no more threads: the existing ones do all the work
    }
    work_until_done();
    for (std::thread& helper : helpers)
        helper.join();
}

} // namespace

bool run_reports(const input_files& inputs, const options& wanted, calendar& dates, const run_output& output) {
    // limits how many results are in memory at a time
    constexpr std::size_t files_of_job = 64;
    const std::size_t jobs =
        std::max<std::size_t>(wanted.jobs != 0 ? wanted.jobs : std::thread::hardware_concurrency(), 1);
    bool all_well = inputs.problems.empty();
    if (!wanted.output_folder.empty()) remove_left_behind(path_from_utf8(wanted.output_folder));
    for (const std::string& problem : inputs.problems)
        output.message(problem);
    const reporter one(inputs, wanted, dates);
    std::vector<outcome> outcomes(std::min(jobs * files_of_job, inputs.files.size()));
    for (std::size_t first = 0; first < inputs.files.size(); first += outcomes.size()) {
        const std::size_t count = std::min(outcomes.size(), inputs.files.size() - first);
        share_out(jobs, count, [&](std::size_t i) { one.work_on(inputs.files[first + i], outcomes[i]); });
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
