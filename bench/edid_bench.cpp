// Measures translation, report, facts, JSON and pages on one core, without windows: one EDID, and edid_report over many
// files.

#include "batch/display_json.h"
#include "edid/facts/display_facts.h"
#include "report.h"
#include "report/page/display_page.h"
#include "report/page/index_page.h"
#include "support/temporary_directory.h"
#include "support/translation_desk.h"

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>
#include <vector>

namespace {

using desk::bench::median;
using desk::bench::report;
using clock_type = std::chrono::steady_clock;

double us_since(clock_type::time_point start) {
    return std::chrono::duration<double, std::micro>(clock_type::now() - start).count();
}

/// Two full blocks: two names and two timings, every kind of data block, four more timings.
desk::edid_buffer full_edid() {
    const std::string detail = "023A801871382D40582C450008222100001E";
    const std::string blocks = "4A9004031F1305840113022309070715075066030C001000B8834F0000E2007FE3050300";
    std::string digits = "00FFFFFFFFFFFF0052740100785634121E140103803420780AEE91A3544C99260F505421080081C0814081809500"
                         "B300D1C0A940D1FC" +
                         detail + detail +
                         "000000FC0046554C4C0A20202020202020202020000000FD00323C1E500F000A2020202020200100"
                         "0203";
    digits.resize(252);
    digits += "0100";
    std::array<char, 3> offset{};
    std::snprintf(offset.data(), offset.size(), "%02X", static_cast<unsigned>(4 + blocks.size() / 2));
    digits += std::string("0203") + offset.data() + "F1" + blocks + detail + detail + detail + detail;
    digits.resize(512, '0');
    desk::edid_buffer edid;
    for (std::size_t i = 0; i < edid.size(); ++i)
        edid.at(i) = static_cast<std::uint8_t>(std::stoi(digits.substr(2 * i, 2), nullptr, 16));
    return edid;
}

void measure_report() {
    desk::test::translation_desk d;
    d.buffers.trans_buff = full_edid();
    std::vector<double> times;
    for (int i = 0; i < 20000; ++i) {
        const auto start = clock_type::now();
        d.report.report_build("01/02/06", "03:04:05");
        times.push_back(us_since(start));
    }
    std::printf("a report of %zu characters\n", d.report.report_text.size());
    report("report_build, median of 20000", median(times), "us", 25);
}

/// The time of `work` in microseconds: the median of many runs.
template <class Work>
double time_of(Work work) {
    std::vector<double> times;
    for (int i = 0; i < 20000; ++i) {
        const auto start = clock_type::now();
        work();
        times.push_back(us_since(start));
    }
    return median(times);
}

void measure_facts() {
    const desk::edid_buffer edid = full_edid();
    std::size_t findings = 0;
    report("read_display_facts, median of 20000",
           time_of([&] { findings = desk::facts::read_display_facts(edid).findings.size(); }), "us", 3);
    const desk::facts::display_facts facts = desk::facts::read_display_facts(edid);
    desk::test::translation_desk d;
    d.buffers.trans_buff = edid;
    d.report.report_build("01/02/06", "03:04:05");
    std::string json;
    const double time = time_of([&] {
        json.clear();
        desk::batch::append_json(json, {"edid.bin", std::string(64, 'a'), 256, std::nullopt, d.report.report_text},
                                 facts);
    });
    report("append_json, median of 20000", time, "us", 15);
    std::printf("  %zu findings, %zu timings, %zu modes, %zu characters of JSON\n", findings,
                facts.detailed_timings.size(), facts.modes.size(), json.size());
}

void measure_page() {
    const desk::edid_buffer edid = full_edid();
    const desk::facts::display_facts facts = desk::facts::read_display_facts(edid);
    desk::test::translation_desk d;
    d.buffers.trans_buff = edid;
    d.report.report_build("01/02/06", "03:04:05");
    const std::string digest(64, 'a');
    const desk::page::page_source source{"edid.bin", digest, edid, facts, {d.report.report_text, {}, {}, {}, {}},
                                         "1.0"};
    std::string page;
    const double time = time_of([&] {
        page.clear();
        desk::page::append_display_page(page, source);
    });
    report("append_display_page, median of 20000", time, "us", 150);
    std::printf("  %zu characters of HTML\n", page.size());
    std::vector<desk::page::index_row> rows(10000, desk::page::row_of(source, "a_file_of_a_display.html"));
    const auto start = clock_type::now();
    std::size_t size = 0;
    desk::page::write_index(rows, 0, "1.0", [&](const std::string&, std::string_view text) { size += text.size(); });
    std::printf("%-58s %9.2f ms\n", "write_index, 10000 rows", us_since(start) / 1000);
    std::printf("  %zu characters of HTML\n", size);
}

/// Runs edid_report over a folder with one job, to a folder or, if that is empty, to standard output; returns its
/// processor time in seconds, which other load does not lengthen, and its peak memory in MB.
std::pair<double, double> run_edid_report(const std::string& from, const std::string& to, const char* format) {
    std::fflush(stdout);
    const pid_t child = fork();
    if (child == 0) {
        if (!to.empty()) {
            execl(EDID_REPORT, "edid_report", "--format", format, "-j", "1", "-o", to.c_str(), from.c_str(), nullptr);
        } else if (std::freopen("/dev/null", "w", stdout) != nullptr) {
            execl(EDID_REPORT, "edid_report", "--format", format, "-j", "1", from.c_str(), nullptr);
        }
        _exit(127);
    }
    int status = 0;
    rusage used{};
    wait4(child, &status, 0, &used);
    if (status != 0) std::printf("  edid_report has FAILED\n");
    const auto seconds = [](const timeval& t) {
        return static_cast<double>(t.tv_sec) + static_cast<double>(t.tv_usec) / 1e6;
    };
    return {seconds(used.ru_utime) + seconds(used.ru_stime), static_cast<double>(used.ru_maxrss) / 1024};
}

void measure_batch(int count, double bound) {
    const desk::test::temporary_directory directory;
    const std::filesystem::path from = directory.path() / "edids";
    std::filesystem::create_directory(from);
    desk::edid_buffer edid = full_edid();
    for (int i = 0; i < count; ++i) {
        edid[12] = static_cast<std::uint8_t>(i);
        edid[13] = static_cast<std::uint8_t>(i / 256);
        std::ofstream(from / ("edid_" + std::to_string(i) + ".bin"), std::ios::binary)
            .write(reinterpret_cast<const char*>(edid.data()), edid.size());
    }
    std::printf("edid_report -j 1 over %d files\n", count);
    for (const std::filesystem::path& to : {std::filesystem::path(), directory.path() / "reports"}) {
        const auto [seconds, mb] = run_edid_report(from.string(), to.string(), "text");
        report(to.empty() ? "  to standard output" : "  to a folder", seconds, "s", bound);
        std::printf("%-58s %9.2f MB\n", "    its largest memory", mb);
    }
    const auto [seconds, mb] = run_edid_report(from.string(), directory.path() / "pages", "html");
    report("  pages to a folder", seconds, "s", bound * 2.5);
    std::printf("%-58s %9.2f MB\n", "    its largest memory", mb);
}

} // namespace

int main() {
    measure_report();
    measure_facts();
    measure_page();
    measure_batch(100, 0.1);
    measure_batch(10000, 2);
    return 0;
}
