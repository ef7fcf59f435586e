#include "report/page/collection_charts.h"

#include "drawing/bar_chart.h"

#include <algorithm>
#include <map>
#include <vector>

namespace desk::page {

namespace {

using drawing::bar;
using drawing::markup_writer;

/// Every year from the first to the last, those without a display too.
std::vector<bar> years_of(std::span<const index_row> rows) {
    std::map<int, std::size_t> counts;
    for (const index_row& r : rows)
        if (r.year != 0) ++counts[r.year];
    std::vector<bar> bars;
    if (counts.empty()) return bars;
    for (int year = counts.begin()->first; year <= counts.rbegin()->first; ++year) {
        const auto found = counts.find(year);
        bars.push_back({std::to_string(year), found == counts.end() ? 0 : found->second});
    }
    return bars;
}

/// The most frequent ones, the others as one bar.
std::vector<bar> resolutions_of(std::span<const index_row> rows) {
    constexpr std::size_t most_bars = 8;
    std::map<std::pair<std::uint32_t, std::uint32_t>, std::size_t> counts;
    for (const index_row& r : rows)
        if (r.width != 0) ++counts[{r.width, r.height}];
    std::vector<bar> bars;
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

void write_chart(markup_writer& out, std::string_view title, std::span<const bar> bars, bool upright) {
    if (bars.empty()) return;
    out.begin("figure");
    out.begin("h3").text(title).end();
    if (upright)
        drawing::draw_columns(out, bars, title);
    else
        drawing::draw_bars(out, bars, title);
    out.end();
}

} // namespace

void write_collection_charts(markup_writer& out, std::span<const index_row> rows) {
    out.begin("div", "columns");
    write_chart(out, "Displays by year", years_of(rows), true);
    write_chart(out, "Best mode", resolutions_of(rows), false);
    write_chart(out, "Most severe finding", findings_of(rows), false);
    write_chart(out, "Desk report", outcomes_of(rows), false);
    out.end();
}

} // namespace desk::page
