#include "report_run_fixture.h"

#include "runtime/files.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <filesystem>
#include <mutex>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace desk::batch {
namespace {

TEST_F(report_run_test, has_the_report_and_a_line_end_for_each_file) {
    put("a.bin", usual_edid());
    put("b.bin", cea_edid(4));
    EXPECT_TRUE(run({"a.bin", "b.bin"}));
    EXPECT_EQ(reports, (strings{report_of(usual_edid()), report_of(cea_edid(4))}));
    EXPECT_TRUE(reports.at(0).ends_with("\r\n\r\nEND.\r\n"));
    EXPECT_TRUE(messages.empty());
}

TEST_F(report_run_test, keeps_the_order_for_any_number_of_jobs) {
    strings names;
    strings expected;
    for (int i = 0; i < 300; ++i) {
        const std::string name = "E" + std::to_string(i);
        put(name, named_edid(name));
        names.push_back(name);
        expected.push_back(report_of(named_edid(name)));
    }
    for (const unsigned jobs : {1U, 2U, 3U, 16U, 400U, 0U}) {
        EXPECT_TRUE(run(names, jobs));
        EXPECT_EQ(reports, expected) << jobs;
        EXPECT_TRUE(messages.empty());
    }
}

/// Counts simultaneous callers; the first one waits a while for a second one.
class meeting_calendar final : public calendar {
public:
    explicit meeting_calendar(std::chrono::milliseconds patience) : patience_(patience) {}

    std::size_t most = 0;

    std::tm now() override {
        std::unique_lock lock(mutex_);
        most = std::max(most, ++present_);
        arrival_.notify_all();
        arrival_.wait_for(lock, patience_, [this] { return most > 1; });
        patience_ = std::chrono::milliseconds(0);
        --present_;
        return {};
    }

private:
    std::chrono::milliseconds patience_;
    std::mutex mutex_;
    std::condition_variable arrival_;
    std::size_t present_ = 0;
};

TEST_F(report_run_test, works_on_as_many_files_at_a_time_as_are_wanted) {
    strings paths;
    for (int i = 0; i < 20; ++i) {
        put("E" + std::to_string(i), usual_edid());
        paths.push_back(path("E" + std::to_string(i)));
    }
    for (const unsigned jobs : {1U, 2U}) {
        meeting_calendar meeting(std::chrono::milliseconds(jobs == 1 ? 20 : 5000));
        options wanted;
        wanted.jobs = jobs;
        EXPECT_TRUE(run_reports(find_input_files(paths), wanted, meeting, output()).all_well());
        EXPECT_EQ(meeting.most, jobs);
    }
}

TEST_F(report_run_test, reports_its_progress) {
    strings names;
    for (int i = 0; i < 150; ++i) {
        names.push_back("E" + std::to_string(i));
        put(names.back(), usual_edid());
    }
    EXPECT_TRUE(run(names));
    std::size_t before = 0;
    for (const auto& [done, count] : progress) {
        EXPECT_GT(done, before);
        EXPECT_EQ(count, 150U);
        before = done;
    }
    EXPECT_EQ(before, 150U);
    EXPECT_GT(progress.size(), 1U) << "not at the end alone";
}

TEST_F(report_run_test, begins_each_report_with_fresh_tables) {
    const edid_buffer with_blocks = cea_edid(6, {{132, {0x41, 60}}});
    put("a", with_blocks);
    put("b", cea_edid(4));
    put("c", with_blocks);
    EXPECT_TRUE(run({"a", "b", "c"}));
    EXPECT_EQ(reports, (strings{report_of(with_blocks), report_of(cea_edid(4)), report_of(with_blocks)}));
}

TEST_F(report_run_test, writes_a_byte_for_each_character) {
    put("a", edid_of({{18, {255, 80}}}, named_edid("\xE4\x80")));
    EXPECT_TRUE(run({"a"}));
    EXPECT_EQ(test::value_after("EDID Version = ", reports.at(0)), "?.\x80");
    EXPECT_EQ(test::value_after("Monitor Name = ", reports.at(0)), "\xE4\x80");
}

TEST_F(report_run_test, reports_how_it_completed_a_short_file) {
    put("a.bin", usual_edid(), 128);
    EXPECT_TRUE(run({"a.bin"}));
    EXPECT_EQ(messages, strings{path("a.bin") + ": its EDID has 128 bytes; block 1 counts as FF."});
    edid_buffer filled = usual_edid();
    std::fill(filled.begin() + 128, filled.end(), 0xFF);
    EXPECT_EQ(reports, strings{report_of(filled)});
}

using failing_run = report_run_test;

TEST_F(failing_run, continues_after_an_unreadable_file) {
    put("a.bin", usual_edid());
    directory.put("empty.bin", "");
    put("c.txt", usual_edid());
    put("d.bin", cea_edid(0));
    EXPECT_FALSE(run({"a.bin", "missing.hex", "empty.bin", "c.txt", "d.bin"}));
    EXPECT_EQ(reports, (strings{report_of(usual_edid()), report_of(cea_edid(0))}));
    ASSERT_EQ(messages.size(), 3U);
    EXPECT_TRUE(messages[0].starts_with(path("missing.hex") + ": "));
    EXPECT_EQ(messages[1], path("empty.bin") + ": it is empty.");
    EXPECT_TRUE(messages[2].starts_with(path("c.txt") + ": "));
}

TEST_F(failing_run, reports_the_failure_and_the_report_so_far) {
    put("a.bin", edid_of({{23, {255}}}, usual_edid()));
    put("b.bin", usual_edid());
    EXPECT_FALSE(run({"a.bin", "b.bin"}));
    EXPECT_EQ(reports, strings{report_of(usual_edid())});
    ASSERT_EQ(messages.size(), 1U);
    EXPECT_TRUE(messages[0].starts_with(path("a.bin") + ": run-time error 6: Overflow. ")) << messages[0];
    EXPECT_NE(messages[0].find(" The report so far:\nEDID Analysis Report \r\n"), std::string::npos);
    EXPECT_TRUE(messages[0].ends_with("Gamma Value = "));
}

TEST_F(failing_run, reports_any_other_failure_of_a_file) {
    class broken_calendar final : public calendar {
    public:
        std::tm now() override { throw std::runtime_error("the date can't be had"); }
    } broken;
    put("a.bin", usual_edid());
    options wanted;
    wanted.jobs = 1;
    EXPECT_FALSE(run_reports(find_input_files({path("a.bin"), path("a.bin")}), wanted, broken, output()).all_well());
    EXPECT_TRUE(reports.empty());
    EXPECT_EQ(messages, strings(2, path("a.bin") + ": the date can't be had."));
}

TEST_F(failing_run, looks_for_no_older_report_without_a_folder) {
    put("a.bin", edid_of({{23, {255}}}, usual_edid()));
    directory.put("a.txt", "EDID Analysis Report \r\nof another day");
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(directory.path());
    EXPECT_FALSE(run({"a.bin"}));
    std::filesystem::current_path(before);
    EXPECT_EQ(messages.size(), 1U);
}

TEST_F(failing_run, carries_nothing_over_from_file_to_file) {
    strings names;
    strings expected;
    for (int i = 0; i < 200; ++i) {
        names.push_back("E" + std::to_string(i));
        const bool good = i < 100;
        put(names.back(), good ? named_edid(names.back()) : edid_of({{23, {255}}}, usual_edid()), good ? 128 : 256);
        expected.push_back(path(names.back()) + (good ? ": its EDID has 128 bytes; block 1 counts as FF."
                                                      : ": run-time error 6: Overflow. "));
    }
    for (const unsigned jobs : {1U, 2U}) {
        EXPECT_FALSE(run(names, jobs));
        EXPECT_EQ(reports.size(), 100U);
        ASSERT_EQ(messages.size(), 200U);
        for (std::size_t i = 0; i < messages.size(); ++i)
            EXPECT_TRUE(messages[i].starts_with(expected[i])) << messages[i];
    }
}

TEST_F(failing_run, reports_problems_with_the_named_inputs_first) {
    std::filesystem::create_directory(directory / "empty");
    put("a.bin", usual_edid(), 128);
    EXPECT_FALSE(run({"a.bin", "empty"}));
    EXPECT_EQ(messages.front(), path("empty") + ": there is no EDID file in this folder.");
    EXPECT_EQ(reports.size(), 1U);
}

TEST_F(failing_run, stops_if_the_output_fails) {
    for (const char* name : {"a", "b", "c", "d"})
        put(name, usual_edid());
    taken_reports = 2;
    EXPECT_FALSE(run({"a", "b", "c", "d"}));
    EXPECT_EQ(reports.size(), 2U);
    EXPECT_EQ(messages, strings{"writing to standard output failed."});
}

TEST_F(run_into_folder, writes_a_file_for_each_report) {
    put("in/a.bin", named_edid("A"));
    put("in/b", named_edid("B"));
    for (const unsigned jobs : {1U, 4U}) {
        EXPECT_TRUE(run({"in"}, jobs, "out"));
        EXPECT_TRUE(reports.empty());
        EXPECT_TRUE(messages.empty());
        EXPECT_EQ(written("a.txt"), report_of(named_edid("A")));
        EXPECT_EQ(written("b.txt"), report_of(named_edid("B")));
        EXPECT_EQ(written_count(), 2U);
    }
}

TEST_F(run_into_folder, replaces_no_other_report) {
    put("a.hex.bin", named_edid("X"));
    directory.put("a.hex", "00");
    put("a.bin", named_edid("Y"));
    EXPECT_FALSE(run({"a.hex.bin", "a.hex", "a.bin"}, 4, "out"));
    EXPECT_EQ(written("a.hex.txt"), report_of(named_edid("X")));
    EXPECT_EQ(written_count(), 2U);
    EXPECT_EQ(messages.back(), path("a.hex") + ": another file's report is already in " + path("out/a.hex.txt") + ".");
    EXPECT_EQ(result.reports, 2U);
    EXPECT_EQ(result.failures, 1U);
}

TEST_F(run_into_folder, gives_a_shared_name_to_the_first_report_that_is_written) {
    directory.put("a.hex.bin", "");
    directory.put("a.hex", "00");
    put("a.bin", named_edid("Y"));
    for (const unsigned jobs : {1U, 4U}) {
        EXPECT_FALSE(run({"a.hex.bin", "a.hex", "a.bin"}, jobs, "out"));
        EXPECT_FALSE(written("a.hex.txt").empty());
        EXPECT_EQ(messages.front(), path("a.hex.bin") + ": it is empty.");
        EXPECT_EQ(result.failures, 1U);
        std::filesystem::remove(directory / "out/a.hex.txt");
    }
}

TEST_F(run_into_folder, writes_the_reports_of_files_with_one_name_in_different_folders) {
    std::filesystem::create_directories(directory / "card0-DP-1");
    directory.put("card0-DP-1/edid", "");
    put("card0-DP-2/edid", named_edid("X"));
    put("card0-DP-3/edid", named_edid("Y"));
    EXPECT_FALSE(run({"card0-DP-1/edid", "card0-DP-2/edid", "card0-DP-3/edid"}, 2, "out"));
    EXPECT_EQ(written("card0-DP-2_edid.txt"), report_of(named_edid("X")));
    EXPECT_EQ(written("card0-DP-3_edid.txt"), report_of(named_edid("Y")));
    EXPECT_EQ(messages, strings{path("card0-DP-1/edid") + ": it is empty."});
}

TEST_F(report_run_test, counts_reports_and_failures) {
    put("a.bin", usual_edid());
    put("b.bin", edid_of({{23, {255}}}, usual_edid()));
    std::filesystem::create_directory(directory / "empty");
    EXPECT_FALSE(run({"a.bin", "b.bin", "missing.bin", "empty"}));
    EXPECT_EQ(result.reports, 1U);
    EXPECT_EQ(result.failures, 3U);
}

TEST_F(run_into_folder, writes_no_report_that_fails) {
    put("a.bin", edid_of({{23, {255}}}, usual_edid()));
    EXPECT_FALSE(run({"a.bin"}, 1, "out"));
    EXPECT_EQ(written_count(), 0U);
}

TEST_F(run_into_folder, removes_the_leftovers_of_an_interrupted_run) {
    put("a.bin", usual_edid());
    directory.put("out/velotrace1A2B3C4D.new", "EDID Analy");
    std::filesystem::last_write_time(directory / "out/velotrace1A2B3C4D.new",
                                     std::filesystem::file_time_type::clock::now() - std::chrono::minutes(2));
    EXPECT_TRUE(run({"a.bin"}, 1, "out"));
    EXPECT_EQ(written_count(), 1U);
}

TEST_F(run_into_folder, replaces_the_report_of_an_earlier_run) {
    put("a.bin", usual_edid());
    directory.put("out/a.txt", "EDID Analysis Report \r\nof another day");
    EXPECT_TRUE(run({"a.bin"}, 1, "out"));
    EXPECT_EQ(written("a.txt"), report_of(usual_edid()));
}

TEST_F(run_into_folder, replaces_only_reports) {
    put("notes", usual_edid());
    for (const char* text : {"what the operator wrote", "", "EDID Analysis"}) {
        directory.put("out/notes.txt", text);
        EXPECT_FALSE(run({"notes"}, 1, "out"));
        EXPECT_EQ(written("notes.txt"), text);
        EXPECT_EQ(messages,
                  strings{path("notes") + ": " + path("out/notes.txt") + " is not a report and is not replaced."});
    }
}

TEST_F(run_into_folder, reports_an_older_report_beside_a_failure) {
    put("a.bin", edid_of({{23, {255}}}, usual_edid()));
    directory.put("out/a.txt", "EDID Analysis Report \r\nof another day");
    EXPECT_FALSE(run({"a.bin"}, 1, "out"));
    ASSERT_EQ(messages.size(), 2U);
    EXPECT_EQ(messages[1], path("out/a.txt") + " is an older report.");
    EXPECT_EQ(written("a.txt"), "EDID Analysis Report \r\nof another day");
}

TEST_F(run_into_folder, reports_where_it_can_not_write) {
    put("a.bin", usual_edid());
    put("b.bin", usual_edid());
    EXPECT_FALSE(run({"a.bin", "b.bin"}, 1, "missing"));
    ASSERT_EQ(messages.size(), 2U);
    EXPECT_TRUE(messages[0].starts_with(path("a.bin") + ": "));
    EXPECT_TRUE(messages[1].starts_with(path("b.bin") + ": "));
}

TEST_F(run_into_folder, leaves_the_output_alone_if_it_can_not_write) {
    put("x/a.bin", usual_edid());
    put("y/a.bin", usual_edid());
    EXPECT_TRUE(run({"x/a.bin", "y/a.bin"}, 1, "out"));
    EXPECT_TRUE(reports.empty()) << "they are in the folder";
    EXPECT_FALSE(run({"x/a.bin"}, 1, "missing"));
    EXPECT_TRUE(reports.empty()) << "there is no such folder";
}

} // namespace
} // namespace desk::batch
