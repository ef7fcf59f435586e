#include "batch/report_run.h"

#include "batch/display_json.h"
#include "batch/edid_file.h"
#include "edid/format/buffer.h"
#include "edid/format/file_kind.h"
#include "platform/file_names.h"
#include "platform/sha256.h"
#include "report/page/display_page.h"
#include "report/page/index_page.h"
#include "report/page/page_frame.h"
#include "report/text/report_text.h"
#include "runtime/failure.h"
#include "runtime/files.h"
#include "runtime/text.h"
#include "runtime/version.h"
#include "runtime/windows_1252.h"
#include "translate/decode/translation_tables.h"

#include <algorithm>
#include <atomic>
#include <exception>
#include <filesystem>
#include <optional>
#include <set>
#include <span>
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
    std::optional<page::index_row> row; ///< of a page
};

/// The desk's report, as far as it goes.
struct desk_report {
    desk_report(const edid_buffer& edid, const std::tm& now) {
        translation_tables tables;
        double sn_value = 0;
        try {
            report_build(text, edid, tables, sn_value, date_text(now), time_text(now));
        } catch (const runtime_failure& f) {
            failed = f;
        }
    }

    std::string text;
    std::optional<runtime_failure> failed;
};

bool begins_with(const std::filesystem::path& path, std::string_view start) {
    try {
        return read_start_of_file(path, start.size()) == start;
    } catch (const runtime_failure&) {
        return false;
    }
}

/// Replaces an older report, which begins with `start`, but no other file.
void replace_report(const std::filesystem::path& path, std::string_view report, std::string_view start) {
    if (std::filesystem::exists(std::filesystem::file_status(type_of_file(path))) && !begins_with(path, start)) {
        throw runtime_failure(failure::path_file_access_error,
                              utf8_from_path(path) + " is not a report and is not replaced");
    }
    // waiting for the disk thousands of times would take minutes, and a report can be rebuilt
    replace_whole_file(path, report, outlives::killed_program);
}

/// Writes the report of a file.
class reporter {
public:
    reporter(const input_files& inputs, const options& wanted, calendar& dates)
        : inputs_(inputs), wanted_(wanted), dates_(dates) {}

    void work_on(const input_file& file, outcome& result) const {
        result = {};
        const std::string path = inputs_.path_of(file);
        try {
            const std::string content = read_whole_file(path_from_utf8(path));
            const edid_file edid = edid_in(content, kind_by_extension(file.name));
            if (wanted_.format == output_format::json)
                describe(path, content, edid, result);
            else if (wanted_.format == output_format::html)
                lay_out(file, content, edid, result);
            else
                build(path, edid, result);
        } catch (const runtime_failure& f) {
            fail(result, path + ": " + f.sentence());
        } catch (const std::exception& e) {
            fail(result, path + ": " + e.what() + ".");
        }
        if (!file.shares_name) finish(file, result);
    }

    /// Saves a report to the folder for reports, if there is one.
    void finish(const input_file& file, outcome& result) const {
        if (!saves()) return;
        const std::string path = inputs_.path_of(file);
        try {
            if (result.reported) save(file, result);
        } catch (const runtime_failure& f) {
            fail(result, path + ": " + f.sentence());
        } catch (const std::exception& e) {
            fail(result, path + ": " + e.what() + ".");
        }
        if (!result.reported) warn_of_older_report(file, result);
    }

    /// The same for a file that shares its report's name: the first report that is written has it. Files must come in
    /// their order.
    void finish_in_order(const input_file& file, outcome& result) {
        if (!saves() || !file.shares_name) return;
        std::string name = folded_name(inputs_.report_name(file));
        if (!names_written_.contains(name)) {
            finish(file, result);
            if (result.reported) names_written_.insert(std::move(name));
        } else if (result.reported) {
            fail(result, inputs_.path_of(file) + ": another file's report is already in " +
                             utf8_from_path(report_path(file)) + ".");
        }
    }

private:
    void build(const std::string& path, const edid_file& file, outcome& result) const {
        if (!file.remark.empty()) result.messages.push_back(path + ": " + file.remark + ".");
        desk_report report(file.edid, dates_.now());
        if (!report.failed) {
            result.report = bytes_from_text(report.text + std::string(line_end));
            result.reported = true;
            return;
        }
        result.messages.push_back(path + ": run-time error " + std::to_string(report.failed->number()) + ": " +
                                  std::string(report.failed->text()) + ". " + report.failed->sentence() +
                                  " The report so far:\n" + report.text);
    }

    void describe(const std::string& path, std::string_view content, const edid_file& file, outcome& result) const {
        const desk_report report(file.edid, dates_.now());
        const std::string digest = digest_of(content);
        file_in_json about{path, digest, content.size(), std::nullopt, report.text};
        if (report.failed) about.failure = report.failed->number();
        append_json(result.report, about, facts::read_display_facts(file.bytes));
        result.report.push_back('\n');
        result.reported = true;
    }

    void lay_out(const input_file& file, std::string_view content, const edid_file& edid, outcome& result) const {
        const desk_report report(edid.edid, dates_.now());
        const facts::display_facts facts = facts::read_display_facts(edid.bytes);
        const std::string path = inputs_.path_of(file);
        const std::string digest = digest_of(content);
        std::string sentence;
        page::page_source source{path,           digest, edid.bytes, facts, {report.text, {}, {}, {}, edid.remark},
                                 build_version()};
        if (report.failed) {
            sentence = report.failed->sentence();
            source.desk.failure = report.failed->number();
            source.desk.failure_text = report.failed->text();
            source.desk.sentence = sentence;
        }
        page::append_display_page(result.report, source);
        result.row = page::row_of(source, page::page_file_name(inputs_.report_name(file)));
        result.reported = true;
    }

    static std::string digest_of(std::string_view content) {
        return sha256({reinterpret_cast<const std::uint8_t*>(content.data()), content.size()});
    }

    bool saves() const { return !wanted_.output_folder.empty(); }

    std::filesystem::path report_path(const input_file& file) const {
        return path_from_utf8(wanted_.output_folder) / path_from_utf8(file_name_of(inputs_.report_name(file)));
    }

    std::string file_name_of(const std::string& report_name) const {
        switch (wanted_.format) {
        case output_format::json:
            return report_name + ".json";
        case output_format::html:
            return page::page_file_name(report_name);
        default:
            return report_name + ".txt";
        }
    }

    void save(const input_file& file, outcome& result) const {
        const std::filesystem::path path = report_path(file);
        replace_report(path, result.report, start_of_report());
        result.report.clear();
    }

    std::string_view start_of_report() const {
        switch (wanted_.format) {
        case output_format::json:
            return start_of_json;
        case output_format::html:
            return page::start_of_page;
        default:
            return report_title;
        }
    }

    bool is_report(const std::filesystem::path& path) const { return begins_with(path, start_of_report()); }

    static void fail(outcome& result, std::string message) {
        result.reported = false;
        result.report.clear();
        result.messages.push_back(std::move(message));
    }

    void warn_of_older_report(const input_file& file, outcome& result) const {
        const std::filesystem::path path = report_path(file);
        if (type_of_file(path) == std::filesystem::file_type::regular && is_report(path))
            result.messages.push_back(utf8_from_path(path) + " is an older report.");
    }

    const input_files& inputs_;
    const options& wanted_;
    calendar& dates_;
    std::set<std::string> names_written_; ///< of files that share their report's name
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

/// False: a page of the index could not be saved.
bool save_index(std::vector<page::index_row>& rows, std::size_t missing, const options& wanted,
                const run_output& output) {
    try {
        page::write_index(rows, missing, build_version(), [&](const std::string& name, std::string_view text) {
            replace_report(path_from_utf8(wanted.output_folder) / path_from_utf8(name), text, page::start_of_page);
        });
        return true;
    } catch (const runtime_failure& f) {
        output.message("the index: " + f.sentence());
    } catch (const std::exception& e) {
        output.message("the index: " + std::string(e.what()) + ".");
    }
    return false;
}

} // namespace

run_result run_reports(const input_files& inputs, const options& wanted, calendar& dates, const run_output& output) {
    // limits how many results are in memory at a time
    constexpr std::size_t files_of_job = 64;
    const std::size_t jobs =
        std::max<std::size_t>(wanted.jobs != 0 ? wanted.jobs : std::thread::hardware_concurrency(), 1);
    run_result run;
    run.failures = inputs.problems.size();
    if (!wanted.output_folder.empty()) remove_left_behind(path_from_utf8(wanted.output_folder));
    for (const std::string& problem : inputs.problems)
        output.message(problem);
    reporter one(inputs, wanted, dates);
    std::vector<page::index_row> rows;
    if (wanted.format == output_format::html) rows.reserve(inputs.files.size());
    std::vector<outcome> outcomes(std::min(jobs * files_of_job, inputs.files.size()));
    for (std::size_t first = 0; first < inputs.files.size(); first += outcomes.size()) {
        const std::size_t count = std::min(outcomes.size(), inputs.files.size() - first);
        share_out(jobs, count, [&](std::size_t i) { one.work_on(inputs.files[first + i], outcomes[i]); });
        for (std::size_t i = 0; i < count; ++i) {
            outcome& result = outcomes[i];
            one.finish_in_order(inputs.files[first + i], result);
            ++(result.reported ? run.reports : run.failures);
            if (result.reported && result.row) rows.push_back(std::move(*result.row));
            for (const std::string& message : result.messages)
                output.message(message);
            if (!result.report.empty() && !output.report(result.report)) {
                output.message("writing to standard output failed.");
                run.stopped = true;
                return run;
            }
        }
        output.progress(first + count, inputs.files.size());
    }
    if (wanted.format == output_format::html && !save_index(rows, run.failures, wanted, output)) ++run.failures;
    return run;
}

} // namespace desk::batch
