#include "report_run_fixture.h"

#include <nlohmann/json.hpp>

#include <filesystem>
#include <string>

namespace desk::batch {
namespace {

using json_run = run_into_folder;

TEST_F(json_run, has_one_object_a_line_for_each_file) {
    put("a.bin", usual_edid());
    put("b.bin", edid_of({{23, {255}}}, usual_edid()), 128);
    format = output_format::json;
    EXPECT_TRUE(run({"a.bin", "b.bin"})) << "a run-time failure of the desk's report is no failure";
    EXPECT_TRUE(messages.empty());
    ASSERT_EQ(reports.size(), 2U);
    for (const std::string& line : reports)
        EXPECT_EQ(line.find('\n'), line.size() - 1);
    const auto good = nlohmann::json::parse(reports.at(0));
    EXPECT_EQ(good["file"], path("a.bin"));
    EXPECT_EQ(good["size"], 256);
    EXPECT_EQ(good["desk"]["failure"], nullptr);
    EXPECT_EQ(bytes_from_text(good["desk"]["text"].get<std::string>()) + "\r\n", report_of(usual_edid()));
    const auto bad = nlohmann::json::parse(reports.at(1));
    EXPECT_EQ(bad["size"], 128);
    EXPECT_EQ(bad["desk"]["failure"], 6);
    EXPECT_TRUE(bad["desk"]["text"].get<std::string>().ends_with("Gamma Value = "));
}

TEST_F(json_run, has_the_digest_of_the_file) {
    // FIPS 180-4: the digest of "abc"
    directory.put("edid", "abc");
    format = output_format::json;
    EXPECT_TRUE(run({"edid"}));
    EXPECT_EQ(nlohmann::json::parse(reports.at(0))["sha256"],
              "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
}

TEST_F(json_run, describes_all_blocks) {
    directory.put("edid", std::string(384, '\0'));
    format = output_format::json;
    EXPECT_TRUE(run({"edid"}));
    EXPECT_EQ(nlohmann::json::parse(reports.at(0))["facts"]["checksums"].size(), 3U);
}

TEST_F(json_run, writes_files_and_replaces_only_its_own) {
    put("a.bin", usual_edid());
    format = output_format::json;
    EXPECT_TRUE(run({"a.bin"}, 1, "out"));
    EXPECT_TRUE(written("a.json").starts_with("{\"file\":"));
    EXPECT_TRUE(run({"a.bin"}, 1, "out"));
    directory.put("out/a.json", "{\"notes\":1}");
    EXPECT_FALSE(run({"a.bin"}, 1, "out"));
    EXPECT_EQ(written("a.json"), "{\"notes\":1}");
}

TEST_F(json_run, reports_a_file_that_holds_no_edid) {
    directory.put("empty.bin", "");
    format = output_format::json;
    EXPECT_FALSE(run({"empty.bin"}));
    EXPECT_TRUE(reports.empty());
    EXPECT_EQ(messages, strings{path("empty.bin") + ": it is empty."});
}

using html_run = run_into_folder;

TEST_F(html_run, writes_a_page_for_each_file_and_an_index) {
    put("a.bin", usual_edid());
    put("b.bin", edid_of({{23, {255}}}, usual_edid()));
    format = output_format::html;
    for (const unsigned jobs : {1U, 4U}) {
        EXPECT_TRUE(run({"a.bin", "b.bin"}, jobs, "out")) << "a run-time failure of the desk's report is no failure";
        EXPECT_TRUE(messages.empty());
        EXPECT_TRUE(reports.empty());
        EXPECT_EQ(written_count(), 3U);
        EXPECT_EQ(written("a.html").find("Run-time error"), std::string::npos);
        EXPECT_NE(written("b.html").find("Run-time error 6: Overflow"), std::string::npos);
        EXPECT_NE(written("index.html").find("href=\"a.html\""), std::string::npos);
        EXPECT_NE(written("index.html").find("href=\"b.html\""), std::string::npos);
    }
}

TEST_F(html_run, counts_the_files_without_a_page) {
    put("a.bin", usual_edid());
    directory.put("empty.bin", "");
    format = output_format::html;
    EXPECT_FALSE(run({"a.bin", "empty.bin"}, 1, "out"));
    EXPECT_EQ(messages, strings{path("empty.bin") + ": it is empty."});
    EXPECT_NE(written("index.html").find("1 file without a page"), std::string::npos);
    EXPECT_EQ(result.reports, 1U);
    EXPECT_EQ(result.failures, 1U);
}

TEST_F(html_run, replaces_only_its_own_pages) {
    put("a.bin", usual_edid());
    format = output_format::html;
    directory.put("out/a.html", "<!DOCTYPE html><p>notes</p>");
    directory.put("out/index.html", "<!DOCTYPE html><p>my index</p>");
    EXPECT_FALSE(run({"a.bin"}, 1, "out"));
    EXPECT_EQ(written("a.html"), "<!DOCTYPE html><p>notes</p>");
    EXPECT_EQ(written("index.html"), "<!DOCTYPE html><p>my index</p>");
    EXPECT_EQ(messages.back(), "the index: " + path("out/index.html") + " is not a report and is not replaced.");
    std::filesystem::remove(directory / "out/a.html");
    std::filesystem::remove(directory / "out/index.html");
    EXPECT_TRUE(run({"a.bin"}, 1, "out"));
    EXPECT_TRUE(run({"a.bin"}, 1, "out")) << "pages of an earlier run are replaced";
}

TEST_F(html_run, keeps_a_file_of_the_name_of_the_index) {
    put("index.bin", named_edid("OWN NAME"));
    format = output_format::html;
    EXPECT_TRUE(run({"index.bin"}, 1, "out"));
    EXPECT_NE(written("_index.html").find("<h1>OWN NAME</h1>"), std::string::npos);
    EXPECT_NE(written("index.html").find("href=\"_index.html\""), std::string::npos);
}

TEST_F(html_run, shows_all_blocks) {
    directory.put("edid", std::string(384, '\0'));
    format = output_format::html;
    EXPECT_TRUE(run({"edid"}, 1, "out"));
    EXPECT_NE(written("edid.html").find("<h3>Block 2</h3>"), std::string::npos);
}

} // namespace
} // namespace desk::batch
