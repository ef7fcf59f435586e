#include "batch/edid_file.h"
#include "batch/input_files.h"
#include "support/translation_desk.h"
#include "translate/decode/header.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

namespace desk {
namespace {

void expect_told(const std::optional<runtime_failure>& failed) {
    EXPECT_TRUE(!failed || failed->sentence().size() > 10);
}

/// TRANS, every node and the report, each as far as it goes.
void translate(const edid_buffer& edid) {
    test::translation_desk d;
    const auto failed = d.translate(edid);
    expect_told(failed);
    for (int node = 1; !failed && node <= d.view.tree_edid.node_count(); ++node) {
        // a failure ends the program: the next node needs a fresh one
        test::translation_desk fresh;
        fresh.translate(edid);
        expect_told(fresh.click(node));
    }
    try {
        d.report.report_build("date", "time");
        EXPECT_TRUE(d.report.report_text.ends_with("END.") || !is_vesa_basic_block(edid));
    } catch (const runtime_failure& f) {
        expect_told(f);
        EXPECT_TRUE(d.report.report_text.starts_with("EDID Analysis Report \r\n"));
    }
}

// The raw EDIDs in the folder that the environment variable EDID_CORPUS names.
TEST(corpus, is_translated_and_reported_or_ends_in_a_listed_failure) {
    const char* const folder = std::getenv("EDID_CORPUS");
    if (folder == nullptr) GTEST_SKIP() << "EDID_CORPUS names no folder of EDIDs";
    const batch::input_files found = batch::find_input_files({folder});
    EXPECT_GT(found.files.size(), 0U) << "the folder holds no EDID";
    for (const batch::input_file& file : found.files) {
        SCOPED_TRACE(file.name);
        translate(batch::read_edid_file(found.path_of(file), kind_by_extension(file.name)).edid);
    }
}

} // namespace
} // namespace desk
