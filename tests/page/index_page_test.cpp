#include "report/page/index_page.h"
#include "report/page/page_frame.h"
#include "support/display_edid.h"
#include "support/strict_xml.h"
#include "support/utf8.h"

#include <gtest/gtest.h>

#include <map>

namespace desk::page {
namespace {

index_row row(std::string page, std::string model, std::string maker = "DEL") {
    index_row r;
    r.page = std::move(page);
    r.model = std::move(model);
    r.maker = std::move(maker);
    return r;
}

using pages = std::map<std::string, std::string>;

pages written(std::vector<index_row> rows, std::size_t rows_of_page = most_rows, std::size_t missing = 0) {
    pages all;
    write_index(
        rows, missing, "1.0",
        [&](const std::string& name, std::string_view page) {
            EXPECT_EQ(test::strict_xml(page).fault, "") << name;
            EXPECT_TRUE(page.starts_with(start_of_page));
            EXPECT_TRUE(all.emplace(name, page).second) << name << " is written twice";
        },
        rows_of_page);
    return all;
}

std::size_t count(const std::string& text, std::string_view part) {
    std::size_t n = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1))
        ++n;
    return n;
}

TEST(index, has_a_row_for_each_display) {
    index_row tv = row("tv.html", "TV <1>");
    tv.width = 3840;
    tv.height = 2160;
    tv.rate_mhz = 59940;
    tv.diagonal = 553;
    tv.year = 2020;
    tv.errors = 1;
    tv.warnings = 2;
    tv.hdr = true;
    tv.desk_fails = true;
    tv.failure = 6;
    const pages all = written({row("a.html", "A"), tv});
    ASSERT_EQ(all.size(), 1U);
    const std::string& index = all.at("index.html");
    EXPECT_EQ(count(index, "<tr data-hdr"), 2U);
    EXPECT_NE(index.find("<tr data-hdr=\"yes\" data-findings=\"error\" data-desk=\"ends\">"), std::string::npos);
    EXPECT_NE(index.find("<a href=\"tv.html\">TV &lt;1&gt;</a>"), std::string::npos);
    EXPECT_NE(index.find("3840\xC2\xA0\xC3\x97\xC2\xA0"
                         "2160, 59.94 Hz"),
              std::string::npos);
    EXPECT_NE(index.find("<td class=\"number\" data-k=\"55.3\">55.3</td>"), std::string::npos);
    EXPECT_NE(index.find("1 with HDR"), std::string::npos);
    EXPECT_NE(index.find("error 6"), std::string::npos);
}

TEST(index, counts_the_years_around_most_displays) {
    const auto made_in = [](std::uint16_t year) {
        index_row r = row("a.html", "A");
        r.year = year;
        return r;
    };
    const auto chart_of = [](const std::string& index) {
        const std::size_t begin = index.find("Displays by year: ");
        return index.substr(begin, index.find('"', begin) - begin);
    };
    EXPECT_EQ(chart_of(written({made_in(2012), made_in(2010), made_in(2012), made_in(0)}).at("index.html")),
              "Displays by year: 2010: 1, 2012: 2.");
    const std::string index = written({made_in(2012), made_in(2245), made_in(1990), made_in(2012)}).at("index.html");
    EXPECT_EQ(chart_of(index), "Displays by year: 1990: 1, 2012: 2.");
    EXPECT_NE(index.find("<figcaption>1 display of other years</figcaption>"), std::string::npos);
}

TEST(index, of_no_display_is_a_page) {
    const pages all = written({}, most_rows, 3);
    EXPECT_NE(all.at("index.html").find("3 files without a page"), std::string::npos);
}

TEST(index, beyond_its_most_rows_is_split_by_maker) {
    std::vector<index_row> rows;
    for (int i = 0; i < 5; ++i)
        rows.push_back(row("d" + std::to_string(i) + ".html", "D", "DEL"));
    rows.push_back(row("x.html", "X", "@[\\"));
    rows.push_back(row("a.html", "A", "ACR"));
    rows.push_back(row("y.html", "Y", ""));
    const pages all = written(rows, 2);
    std::vector<std::string> names;
    for (const auto& [name, page] : all)
        names.push_back(name);
    EXPECT_EQ(names, (std::vector<std::string>{"index-ACR.html", "index-DEL-2.html", "index-DEL-3.html",
                                               "index-DEL.html", "index-other.html", "index.html"}));
    EXPECT_EQ(count(all.at("index-DEL.html"), "<tr data-hdr"), 2U);
    EXPECT_EQ(count(all.at("index-DEL-3.html"), "<tr data-hdr"), 1U);
    EXPECT_EQ(count(all.at("index-other.html"), "<tr data-hdr"), 2U);
    EXPECT_NE(all.at("index-DEL.html").find("href=\"index-DEL-3.html\""), std::string::npos);
    EXPECT_NE(all.at("index.html").find("<a href=\"index-DEL.html\">DEL</a>"), std::string::npos);
    EXPECT_NE(all.at("index.html").find("8 displays"), std::string::npos);
    for (const auto& [name, page] : all)
        for (const std::string& link : test::strict_xml(page).links)
            EXPECT_TRUE(!link.starts_with("index") || all.contains(link)) << name << " links to " << link;
}

TEST(index, allows_nothing_but_its_own_style_and_script) {
    const std::string index = written({row("a.html", "A")}).at("index.html");
    EXPECT_NE(index.find("script-src &#39;sha256-"), std::string::npos);
    EXPECT_EQ(index.find("unsafe"), std::string::npos);
    EXPECT_EQ(count(index, "<script>"), 1U);
    EXPECT_FALSE(test::strict_xml(index).attributes.contains("src"));
}

TEST(index, shows_hostile_names_as_texts) {
    const std::string right_to_left = "a" + test::utf8(0x202E) + "gnp";
    for (const std::string& name : {std::string("<script>alert(1)</script>"), std::string("\"onclick=\"x"),
                                    right_to_left, std::string("\x1B[31m"), std::string("\xFF'&")}) {
        const std::string index = written({row(name + ".html", name, "<&>")}).at("index.html");
        EXPECT_EQ(count(index, "<script>"), 1U);
        EXPECT_FALSE(test::strict_xml(index).attributes.contains("onclick"));
    }
}

TEST(row_of_a_display, is_small) {
    EXPECT_LE(sizeof(index_row), 200U) << "with its page's name on the heap below 300 bytes";
}

TEST(row_of_a_display, has_its_facts) {
    const auto edid = test::display_edid().finished();
    const facts::display_facts facts = facts::read_display_facts(edid);
    const index_row r = row_of({"a.bin", "", edid, facts, {"", 9, "", "", ""}, "1.0"}, "a.html");
    EXPECT_EQ(r.page, "a.html");
    EXPECT_EQ(r.model, "TEST");
    EXPECT_EQ(r.maker, "DEL");
    EXPECT_EQ(r.diagonal, 272); // hypot(600, 340) / 25.4
    EXPECT_EQ(r.year, 2020);
    EXPECT_EQ(r.width, 1920U);
    EXPECT_EQ(r.rate_mhz, 60000U);
    EXPECT_FALSE(r.hdr);
    EXPECT_TRUE(r.desk_fails);
    EXPECT_EQ(r.failure, 9);
    EXPECT_EQ(r.errors + r.warnings + r.notes, 0);
}

TEST(file_name_of_a_page, never_belongs_to_the_index) {
    EXPECT_EQ(page_file_name("a"), "a.html");
    EXPECT_EQ(page_file_name("index"), "_index.html");
    EXPECT_EQ(page_file_name("Index-DEL"), "_Index-DEL.html");
    EXPECT_EQ(page_file_name("_index"), "__index.html");
    EXPECT_EQ(page_file_name("_a"), "_a.html");
    EXPECT_EQ(page_file_name(""), ".html");
}

TEST(link, encodes_everything_that_has_a_meaning_in_an_address) {
    EXPECT_EQ(href_of("a-b_1.html"), "a-b_1.html");
    EXPECT_EQ(href_of("a b#c?d%e/f:g"), "a%20b%23c%3Fd%25e%2Ff%3Ag");
    EXPECT_EQ(href_of("\xC3\xA4"), "%C3%A4");
    EXPECT_EQ(href_of("javascript:x"), "javascript%3Ax");
}

} // namespace
} // namespace desk::page
