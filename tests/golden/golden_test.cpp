// Compares all that the translation and the report say about each EDID of this folder with its file. README.md has the
// form of a file.

#include "golden_file.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <iterator>

namespace desk::golden {
namespace {

class golden : public testing::TestWithParam<std::filesystem::path> {};

TEST_P(golden, is_what_the_desk_says) {
    const golden_file file(GetParam());
    const auto expected = sections_of(file.expected());
    const auto said = sections_of(said_about(file.edid()));
    for (std::size_t i = 0; i < std::min(expected.size(), said.size()); ++i) {
        ASSERT_EQ(expected[i].name, said[i].name);
        const auto [line, other] =
            std::mismatch(expected[i].all.begin(), expected[i].all.end(), said[i].all.begin(), said[i].all.end());
        if (line != expected[i].all.end() || other != said[i].all.end())
            ADD_FAILURE() << expected[i].name << ", line " << line - expected[i].all.begin() << "\n  expected "
                          << (line == expected[i].all.end() ? "no more" : *line) << "\n  said     "
                          << (other == said[i].all.end() ? "no more" : *other);
    }
    EXPECT_EQ(expected.size(), said.size());
}

INSTANTIATE_TEST_SUITE_P(files, golden, testing::ValuesIn(golden_files(GOLDEN_FILES)),
                         [](const auto& info) { return info.param.stem().string(); });

TEST(golden_folder, is_in_the_corpus_of_the_fuzzer) {
    for (const std::filesystem::path& path : golden_files(GOLDEN_FILES)) {
        const golden_file file(path);
        std::ifstream corpus(std::filesystem::path(FUZZ_CORPUS) / (file.name() + ".bin"), std::ios::binary);
        const std::string bytes{std::istreambuf_iterator<char>(corpus), {}};
        const edid_buffer edid = file.edid();
        EXPECT_EQ(bytes, std::string(edid.begin(), edid.end())) << file.name() << ": tests/golden/update puts it there";
    }
}

TEST(golden_folder, holds_at_least_eighty_edids) { EXPECT_GE(golden_files(GOLDEN_FILES).size(), 80U); }

} // namespace
} // namespace desk::golden
