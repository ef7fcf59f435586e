#include "report/page/index_page.h"

#include "report/page/collection_charts.h"
#include "report/page/page_frame.h"
#include "report/page/words.h"
#include "runtime/path_text.h"
#include "runtime/text.h"

#include <algorithm>
#include <tuple>
#include <vector>

namespace desk::page {

namespace {

/// The displays of one maker.
struct maker_group {
    std::string id; ///< three letters, or "other" for makers without a valid id
    std::string name;
    std::span<const index_row> rows;
    std::size_t pages = 1;

    std::string file_name(std::size_t page) const {
        return "index-" + id + (page == 0 ? "" : "-" + std::to_string(page + 1)) + ".html";
    }
};

bool is_valid_id(std::string_view maker) {
    return maker.size() == 3 && std::all_of(maker.begin(), maker.end(), [](char c) { return c >= 'A' && c <= 'Z'; });
}

/// A cell with the number that it sorts by; without a value it is empty and last.
void write_number(markup_writer& out, bool has_value, double key, std::string_view words) {
    out.begin("td", "number").attribute("data-k", has_value ? drawing::number_text(key, 3) : "");
    out.text(has_value ? words : std::string_view()).end();
}

void write_findings_cell(markup_writer& out, const index_row& row) {
    constexpr double of_error = 1e6;
    constexpr double of_warning = 1e3;
    out.begin("td").attribute("data-k",
                              drawing::number_text(row.errors * of_error + row.warnings * of_warning + row.notes, 0));
    const auto chip = [&](std::string_view level, std::uint16_t count) {
        if (count == 0) return;
        out.begin("span", "chip " + std::string(level)).text(count_words(count, level)).end();
    };
    chip("error", row.errors);
    chip("warning", row.warnings);
    chip("note", row.notes);
    if (row.errors + row.warnings + row.notes == 0) out.begin("span", "chip good").text("none").end();
    out.end();
}

void write_desk_cell(markup_writer& out, const index_row& row) {
    out.begin("td").attribute("data-k", row.desk_fails ? row.failure + 1 : 0);
    if (row.desk_fails)
        out.begin("span", "chip error").text("error " + std::to_string(row.failure)).end();
    else
        out.text("complete");
    out.end();
}

std::string_view most_severe(const index_row& row) {
    return row.errors > 0 ? "error" : row.warnings > 0 ? "warning" : row.notes > 0 ? "note" : "none";
}

void write_row(markup_writer& out, const index_row& row) {
    out.markup("\n");
    out.begin("tr").attribute("data-hdr", row.hdr ? "yes" : "no").attribute("data-findings", most_severe(row));
    out.attribute("data-desk", row.desk_fails ? "ends" : "reports");
    out.begin("th").attribute("scope", "row");
    out.begin("a").attribute("href", href_of(row.page)).text(row.model).end();
    out.begin("small").text(without_extension(row.page)).end();
    out.end();
    out.begin("td", "maker").text(row.maker_name.empty() ? std::string_view(row.maker) : row.maker_name).end();
    write_number(out, row.diagonal != 0, row.diagonal / 10.0, drawing::fixed_text(row.diagonal / 10.0, 1));
    write_number(out, row.year != 0, row.year, std::to_string(row.year));
    constexpr double most_rate = 4e9;
    write_number(out, row.width != 0, static_cast<double>(row.width) * row.height + row.rate_mhz / most_rate,
                 resolution_words(row.width, row.height, row.interlaced) + ", " + rate_words(row.rate_mhz / 1000.0));
    out.begin("td").text(row.hdr ? "HDR" : "").end();
    write_findings_cell(out, row);
    write_desk_cell(out, row);
    out.end();
}

void write_choice(markup_writer& out, std::string_view name, std::string_view label,
                  std::initializer_list<std::pair<std::string_view, std::string_view>> options) {
    out.begin("label").text(label);
    out.begin("select").attribute("name", name);
    for (const auto& [value, words] : options)
        out.begin("option").attribute("value", value).text(words).end();
    out.end();
    out.end();
}

/// The filters work with the script alone, which shows them.
void begin_filters(markup_writer& out) {
    out.begin("form", "filters").attribute("hidden", "hidden");
    out.begin("label").text("Search");
    out.begin("input")
        .attribute("name", "words")
        .attribute("type", "search")
        .attribute("autocomplete", "off")
        .end_void();
    out.end();
}

void end_filters(markup_writer& out) {
    out.begin("output", "shown").end();
    out.end();
}

void write_displays(markup_writer& out, std::span<const index_row> rows) {
    begin_section(out, "displays", "Displays");
    begin_filters(out);
    write_choice(out, "hdr", "HDR", {{"", "all"}, {"yes", "with HDR"}, {"no", "without"}});
    write_choice(out, "findings", "Findings",
                 {{"", "all"}, {"error", "errors"}, {"error warning", "errors or warnings"}, {"none", "none"}});
    write_choice(out, "desk", "Desk", {{"", "all"}, {"reports", "complete report"}, {"ends", "ends with an error"}});
    end_filters(out);
    begin_table(out, "sortable", "All displays on this page");
    table_head(out, {"Display", "Maker", "#Size, in", "#Year", "#Best mode", "HDR", "Findings", "Desk"});
    out.begin("tbody");
    for (const index_row& row : rows)
        write_row(out, row);
    out.end();
    end_table(out);
    out.end();
}

std::size_t count_of(std::span<const index_row> rows, bool (*has)(const index_row&)) {
    return static_cast<std::size_t>(std::count_if(rows.begin(), rows.end(), has));
}

void write_counts(markup_writer& out, std::span<const index_row> rows, std::size_t missing) {
    out.begin("ul", "chips");
    const auto chip = [&](std::string_view class_name, const std::string& words) {
        out.begin("li");
        out.begin("span", "chip " + std::string(class_name)).text(words).end();
        out.end();
    };
    chip("note", count_words(rows.size(), "display"));
    chip("note", std::to_string(count_of(rows, [](const index_row& r) { return r.hdr; })) + " with HDR");
    const std::size_t faulty = count_of(rows, [](const index_row& r) { return r.errors > 0; });
    chip(faulty > 0 ? "error" : "good", std::to_string(faulty) + " with errors");
    const std::size_t failed = count_of(rows, [](const index_row& r) { return r.desk_fails; });
    chip(failed > 0 ? "warning" : "good", std::to_string(failed) + (failed == 1 ? " ends the desk" : " end the desk"));
    if (missing > 0) chip("error", count_words(missing, "file") + " without a page");
    out.end();
}

/// The links from a maker's page to the summary and to the maker's other pages.
void write_links(markup_writer& out, const maker_group& group, std::size_t shown) {
    out.begin("nav").attribute("aria-label", "Index");
    out.begin("a", "up").attribute("href", "index.html").text("All makers").end();
    for (std::size_t page = 0; page < group.pages && group.pages > 1; ++page) {
        out.begin("a").attribute("href", href_of(group.file_name(page)));
        if (page == shown) out.attribute("aria-current", "page");
        out.text(std::to_string(page + 1)).end();
    }
    out.end();
}

void begin_index(markup_writer& out, std::string_view title, const maker_group* group, std::size_t page) {
    begin_page(out, title, "index", true);
    if (group != nullptr) write_links(out, *group, page);
    out.begin("main");
    out.begin("header").begin("h1").text(title).end();
}

void write_overview(markup_writer& out, std::span<const index_row> rows) {
    begin_section(out, "overview", "Overview");
    write_collection_charts(out, rows);
    out.end();
}

std::string foot_words(std::string_view version) { return "edid_report " + std::string(version); }

std::string page_of_displays(std::span<const index_row> rows, std::size_t missing, std::string_view version,
                             const maker_group* group, std::size_t page) {
    std::string text;
    constexpr std::size_t size_of_row = 640;
    text.reserve(rows.size() * size_of_row + 32768);
    markup_writer out(text);
    std::string title = group == nullptr ? "Displays" : group->name;
    if (group != nullptr && group->pages > 1)
        title += ", " + std::to_string(page + 1) + " of " + std::to_string(group->pages);
    begin_index(out, title, group, page);
    write_counts(out, rows, missing);
    out.end();
    write_overview(out, rows);
    write_displays(out, rows);
    out.end();
    end_page(out, foot_words(version), true);
    return text;
}

std::vector<maker_group> groups_of(std::span<const index_row> rows, std::size_t rows_of_page) {
    std::vector<maker_group> groups;
    const auto id_of = [](const index_row& r) { return is_valid_id(r.maker) ? r.maker : std::string("other"); };
    for (std::size_t i = 0; i < rows.size();) {
        const std::string id = id_of(rows[i]);
        const std::size_t begin = i;
        while (i < rows.size() && id_of(rows[i]) == id)
            ++i;
        const std::span<const index_row> own = rows.subspan(begin, i - begin);
        std::string name = id == "other"               ? "without a valid id"
                           : own[0].maker_name.empty() ? id
                                                       : std::string(own[0].maker_name);
        groups.push_back({id, std::move(name), own, (own.size() + rows_of_page - 1) / rows_of_page});
    }
    return groups;
}

void write_makers(markup_writer& out, std::span<const maker_group> groups) {
    begin_section(out, "makers", "Makers");
    begin_filters(out);
    end_filters(out);
    begin_table(out, "sortable", "All makers, each with pages of its own");
    table_head(out, {"Maker", "Id", "#Displays", "#With HDR", "#With errors", "#End the desk"});
    out.begin("tbody");
    for (const maker_group& g : groups) {
        out.markup("\n");
        out.begin("tr");
        out.begin("th").attribute("scope", "row");
        out.begin("a").attribute("href", href_of(g.file_name(0))).text(g.name).end();
        out.end();
        out.element("td", g.id);
        for (const std::size_t count : {g.rows.size(), count_of(g.rows, [](const index_row& r) { return r.hdr; }),
                                        count_of(g.rows, [](const index_row& r) { return r.errors > 0; }),
                                        count_of(g.rows, [](const index_row& r) { return r.desk_fails; })})
            write_number(out, true, static_cast<double>(count), std::to_string(count));
        out.end();
    }
    out.end();
    end_table(out);
    out.end();
}

std::string page_of_makers(std::span<const index_row> rows, std::span<const maker_group> groups, std::size_t missing,
                           std::string_view version) {
    std::string text;
    markup_writer out(text);
    begin_index(out, "Displays", nullptr, 0);
    write_counts(out, rows, missing);
    out.end();
    write_overview(out, rows);
    write_makers(out, groups);
    out.end();
    end_page(out, foot_words(version), true);
    return text;
}

} // namespace

std::string page_file_name(std::string_view report_name) {
    // names that already have the mark get one more, so that no two become equal
    const std::string_view unmarked =
        report_name.substr(std::min(report_name.find_first_not_of('_'), report_name.size()));
    const bool could_be_index = lower_case(unmarked.substr(0, 5)) == "index";
    return (could_be_index ? "_" : "") + std::string(report_name) + ".html";
}

void write_index(std::span<index_row> rows, std::size_t missing, std::string_view version, const page_saver& save,
                 std::size_t rows_of_page) {
    if (rows.size() <= rows_of_page) return save("index.html", page_of_displays(rows, missing, version, nullptr, 0));
    std::sort(rows.begin(), rows.end(), [](const index_row& a, const index_row& b) {
        return std::forward_as_tuple(!is_valid_id(a.maker), a.maker, a.model, a.page) <
               std::forward_as_tuple(!is_valid_id(b.maker), b.maker, b.model, b.page);
    });
    const std::vector<maker_group> groups = groups_of(rows, rows_of_page);
    save("index.html", page_of_makers(rows, groups, missing, version));
    for (const maker_group& g : groups)
        for (std::size_t page = 0; page < g.pages; ++page) {
            const std::size_t begin = page * rows_of_page;
            const std::size_t count = std::min(rows_of_page, g.rows.size() - begin);
            save(g.file_name(page), page_of_displays(g.rows.subspan(begin, count), 0, version, &g, page));
        }
}

} // namespace desk::page
