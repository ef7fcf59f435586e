#pragma once

#include "batch/report_run.h"
#include "report/text/report_text.h"
#include "runtime/windows_1252.h"
#include "support/fake_machine.h"
#include "support/temporary_directory.h"
#include "support/translation_fixture.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace desk::batch {

using test::cea_edid;
using test::edid_of;
using test::text_descriptor;
using test::usual_edid;
using strings = std::vector<std::string>;

/// An EDID with this name.
inline edid_buffer named_edid(const std::string& name) {
    return edid_of({{72, text_descriptor(0xFC, name)}}, usual_edid());
}

class report_run_test : public testing::Test {
protected:
    void put(const std::string& name, const edid_buffer& edid, std::size_t count = 256) const {
        std::filesystem::create_directories((directory / name).parent_path());
        directory.put(name, std::string(edid.begin(), edid.begin() + static_cast<std::ptrdiff_t>(count)));
    }
    std::string path(const std::string& name) const { return utf8_from_path(directory / name); }
    /// Reports on these files and folders of the directory.
    bool run(const strings& names, unsigned jobs = 1, const std::string& output_folder = "") {
        strings paths;
        for (const std::string& name : names)
            paths.push_back(path(name));
        options wanted;
        wanted.jobs = jobs;
        wanted.format = format;
        wanted.output_folder = output_folder.empty() ? "" : path(output_folder);
        reports.clear();
        messages.clear();
        progress.clear();
        result = run_reports(find_input_files(paths), wanted, dates, output());
        return result.all_well();
    }
    run_output output() {
        return {[this](std::string_view bytes) {
                    reports.emplace_back(bytes);
                    return reports.size() < taken_reports;
                },
                [this](std::string_view text) { messages.emplace_back(text); },
                [this](std::size_t done, std::size_t count) { progress.emplace_back(done, count); }};
    }
    /// The bytes of an EDID's report.
    std::string report_of(const edid_buffer& edid) {
        std::string text;
        translation_tables tables;
        double sn_value = 0;
        report_build(text, edid, tables, sn_value, date_text(dates.moment), time_text(dates.moment));
        return bytes_from_text(text + "\r\n");
    }

    test::temporary_directory directory;
    test::fixed_calendar dates;
    output_format format = output_format::text;
    run_result result;
    strings reports;
    strings messages;
    std::vector<std::pair<std::size_t, std::size_t>> progress;
    std::size_t taken_reports = 1000000; ///< the output fails at this number
};

class run_into_folder : public report_run_test {
protected:
    run_into_folder() { std::filesystem::create_directory(directory / "out"); }
    std::string written(const std::string& name) const { return directory.content("out/" + name); }
    std::size_t written_count() const {
        std::size_t count = 0;
        for ([[maybe_unused]] const auto& entry : std::filesystem::directory_iterator(directory / "out"))
            ++count;
        return count;
    }
};

} // namespace desk::batch
