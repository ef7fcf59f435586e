#include "report/page/collection_charts.h"

#include "drawing/bar_chart.h"
#include "report/page/words.h"

#include <algorithm>
#include <array>
#include <map>
#include <numeric>
#include <vector>

namespace desk::page {

namespace {

using drawing::bar;
using drawing::markup_writer;

/// Consecutive years, those without a display too.
struct year_span {
    std::vector<bar> bars;
    std::size_t elsewhere = 0; ///< displays of other years
};

/// The years from the first to the last; if these are too many, those around most displays. A faulty EDID can state a
/// year up to 2245.
year_span years_of(std::span<const index_row> rows) {
    constexpr int first_year = 1990; // that of the code 0
    constexpr std::size_t year_count = 256;
    constexpr std::size_t most_years = 40;
    std::array<std::size_t, year_count + 1> before{}; // displays of all years before one
    std::array<std::size_t, year_count> counts{};
    for (const index_row& r : rows)
        if (r.year != 0) ++counts.at(static_cast<std::size_t>(r.year - first_year));
    std::partial_sum(counts.begin(), counts.end(), before.begin() + 1);
    std::size_t begin = 0;
    for (std::size_t i = 0; i + most_years <= year_count; ++i)
        if (before[i + most_years] - before[i] > before[begin + most_years] - before[begin]) begin = i;
    std::size_t end = begin + most_years;
    while (begin < end && counts[begin] == 0)
        ++begin;
    while (begin < end && counts[end - 1] == 0)
        --end;
    year_span years;
    for (std::size_t i = begin; i < end; ++i)
        years.bars.push_back({std::to_string(first_year + static_cast<int>(i)), counts[i]});
    years.elsewhere = before.back() - (before[end] - before[begin]);
    return years;
}

/// The most frequent ones, the others as one bar.
std::vector<bar> resolutions_of(std::span<const index_row> rows) {
    constexpr std::size_t most_bars = 8;
    std::map<std::pair<std::uint32_t, std::uint32_t>, std::size_t> counts;
    for (const index_row& r : rows)
        if (r.width != 0) ++counts[{r.width, r.height}];
    std::vector<bar> bars;
    bars.reserve(counts.size());
    for (const auto& [size, count] : counts)
        bars.push_back({std::to_string(size.first) + " \xC3\x97 " + std::to_string(size.second), count});
    std::stable_sort(bars.begin(), bars.end(), [](const bar& a, const bar& b) { return a.count > b.count; });
    if (bars.size() > most_bars) {
        bar others{"others", 0, "bar note"};
        for (std::size_t i = most_bars - 1; i < bars.size(); ++i)
            others.count += bars[i].count;
        bars.resize(most_bars - 1);
        bars.push_back(std::move(others));
    }
    return bars;
}

std::vector<bar> findings_of(std::span<const index_row> rows) {
    std::vector<bar> bars = {
        {"errors", 0, "bar error"}, {"warnings", 0, "bar warning"}, {"notes", 0, "bar note"}, {"none", 0, "bar good"}};
    for (const index_row& r : rows)
        ++bars[r.errors > 0 ? 0 : r.warnings > 0 ? 1 : r.notes > 0 ? 2 : 3].count;
    return bars;
}

std::vector<bar> outcomes_of(std::span<const index_row> rows) {
    std::map<int, std::size_t> failures;
    std::size_t reported = 0;
    for (const index_row& r : rows)
        if (r.desk_fails)
            ++failures[r.failure];
        else
            ++reported;
    std::vector<bar> bars = {{"complete", reported, "bar good"}};
    for (const auto& [number, count] : failures)
        bars.push_back({"error " + std::to_string(number), count, "bar error"});
    return bars;
}

void begin_chart(markup_writer& out, std::string_view title) {
    out.begin("figure");
    out.element("h3", title);
}

void write_bars(markup_writer& out, std::string_view title, std::span<const bar> bars) {
    if (bars.empty()) return;
    begin_chart(out, title);
    drawing::draw_bars(out, bars, title);
    out.end();
}

void write_years(markup_writer& out, std::span<const index_row> rows) {
    const year_span years = years_of(rows);
    if (years.bars.empty()) return;
    constexpr std::string_view title = "Displays by year";
    begin_chart(out, title);
    drawing::draw_columns(out, years.bars, title);
    if (years.elsewhere > 0) out.element("figcaption", count_words(years.elsewhere, "display") + " of other years");
    out.end();
}

} // namespace

void write_collection_charts(markup_writer& out, std::span<const index_row> rows) {
    out.begin("div", "columns");
    write_years(out, rows);
    write_bars(out, "Best mode", resolutions_of(rows));
    write_bars(out, "Most severe finding", findings_of(rows));
    write_bars(out, "Desk report", outcomes_of(rows));
    out.end();
}

} // namespace desk::page
