#include "edid/byte_step.h"
#include "edid/format/file_readers.h"
#include "edid/format/file_writers.h"
#include "support/edid_fixture.h"
#include "support/expect_failure.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <string>

namespace desk {
namespace {

using test::failure_of;
using test::needed_by;
using test::window_text_of;

/// The raw EDIDs in the folder that the environment variable EDID_CORPUS names.
class corpus : public test::edid_fixture {
protected:
    void SetUp() override {
        if (std::getenv("EDID_CORPUS") == nullptr) GTEST_SKIP() << "EDID_CORPUS names no folder of EDIDs";
    }
    template <class Work>
    static void for_each_edid(Work work) {
        int count = 0;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(std::getenv("EDID_CORPUS"))) {
            if (!entry.is_regular_file() || entry.file_size() < 128) continue;
            SCOPED_TRACE(entry.path());
            work(read_whole_file(entry.path()));
            ++count;
        }
        EXPECT_GT(count, 0) << "the folder holds no EDID";
    }
    static bool can_not_be_right(std::string_view data, std::size_t block) {
        return data.size() >= 128 * (block + 1) && needed_by(data, block) == 256;
    }
    std::string read_again(std::string_view file, bool (*read)(std::string_view, byte_receiver&)) {
        view.txt_write.text = "";
        byte_step step(view, texts, byte_step::append::line_by_line);
        EXPECT_TRUE(read(file, step));
        step.finish_line();
        return bin_of(view.txt_write.text.get());
    }
};

TEST_F(corpus, is_shown_or_ends_in_the_overflow_of_a_block_that_can_not_be_right) {
    for_each_edid([this](const std::string& data) {
        view.txt_write.text = "";
        byte_step step(view, texts, byte_step::append::at_once);
        const auto failed = failure_of([&] { EXPECT_TRUE(read_bin(data, step)); });
        if (can_not_be_right(data, 0) || can_not_be_right(data, 1)) {
            EXPECT_EQ(failed, failure::overflow);
        } else {
            EXPECT_EQ(failed, std::nullopt);
            EXPECT_EQ(view.txt_write.text.get(), window_text_of(data));
            for (std::size_t block = 0; block < std::min<std::size_t>(data.size() / 128, 2); ++block)
                EXPECT_EQ(view.lab_write_checksum.at(block).caption, test::checksum_text(data, block));
        }
    });
}

TEST_F(corpus, is_the_same_when_it_is_written_in_each_format_and_read_again) {
    for_each_edid([this](const std::string& whole) {
        const std::string data = whole.substr(0, std::min<std::size_t>(whole.size(), 256) / 8 * 8);
        if (can_not_be_right(data, 0) || can_not_be_right(data, 1)) return;
        const std::string text = window_text_of(data);
        EXPECT_EQ(read_again(bin_of(text), read_bin), data);
        EXPECT_EQ(read_again(simple_hex_of(text), read_hex), data);
        EXPECT_EQ(read_again(c_language_hex_of(text), read_hex), data);
    });
}

} // namespace
} // namespace desk
