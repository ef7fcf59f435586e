#include "batch/edid_file.h"

#include "runtime/failure.h"
#include "support/expect_failure.h"
#include "support/temporary_directory.h"
#include "support/translation_fixture.h"

#include <gtest/gtest.h>

#ifndef _WIN32
#include <sys/stat.h>
#endif

#include <algorithm>
#include <cstddef>
#include <string>

namespace desk::batch {
namespace {

using test::failure_of;

/// The bytes of a file that begins like an EDID.
std::string bytes(std::size_t count) {
    std::string data("\x00\xFF\xFF\xFF\xFF\xFF\xFF\x00", 8);
    for (std::size_t i = data.size(); i < count; ++i)
        data.push_back(static_cast<char>(i * 7 + 3));
    return data.substr(0, count);
}
std::string as_hex(const std::string& data) {
    const std::string digits = "0123456789ABCDEF";
    std::string text;
    for (const int code : test::codes_of(data))
        text += {digits[static_cast<std::size_t>(code / 16)], digits[static_cast<std::size_t>(code % 16)], ' '};
    return text;
}
/// The first 256 of these bytes, padded with FF.
edid_buffer filled_up(const std::string& data) {
    edid_buffer edid{};
    edid.fill(0xFF);
    for (std::size_t i = 0; i < std::min(data.size(), edid.size()); ++i)
        edid.at(i) = static_cast<std::uint8_t>(data[i]);
    return edid;
}

class edid_file_test : public testing::Test {
protected:
    edid_file read(const std::string& content, file_kind kind) const {
        directory.put("file", content);
        return read_edid_file(directory / "file", kind);
    }
    void expect_edid(const std::string& content, file_kind kind, const std::string& data, const std::string& remark) {
        const edid_file file = read(content, kind);
        EXPECT_EQ(file.edid, filled_up(data));
        EXPECT_EQ(file.remark, remark);
    }
    /// Why a file can't be read.
    std::string complaint_of(const std::string& content, file_kind kind) const {
        try {
            read(content, kind);
        } catch (const runtime_failure& f) {
            return f.sentence();
        }
        return "";
    }
    test::temporary_directory directory;
};

TEST_F(edid_file_test, holds_two_blocks) {
    const std::string data = bytes(256);
    expect_edid(data, file_kind::bin, data, "");
    expect_edid(as_hex(data), file_kind::hex, data, "");
    expect_edid("a capture " + data, file_kind::ddc, data, "");
}

TEST_F(edid_file_test, has_a_second_block_of_ff_for_one) {
    const std::string data = bytes(128);
    const std::string remark = "its EDID has 128 bytes; block 1 counts as FF";
    expect_edid(data, file_kind::bin, data, remark);
    expect_edid(as_hex(data), file_kind::hex, data, remark);
    expect_edid(std::string(200, 'x') + data, file_kind::ddc, data, remark);
}

TEST_F(edid_file_test, is_taken_from_its_header_on_in_a_capture) {
    const std::string data = bytes(128);
    // the bytes before it begin as a header does
    for (std::size_t count = 0; count < 8; ++count)
        expect_edid(data.substr(0, count) + std::string(128 - count, 'x') + data, file_kind::ddc, data,
                    "its EDID has 128 bytes; block 1 counts as FF");
}

TEST_F(edid_file_test, is_filled_up) {
    for (const std::size_t count : {1U, 8U, 127U, 129U, 255U}) {
        const std::string remark =
            "its EDID has " + std::to_string(count) + " bytes; missing bytes up to 256 count as FF";
        expect_edid(bytes(count), file_kind::bin, bytes(count), remark);
        expect_edid(as_hex(bytes(count)), file_kind::hex, bytes(count), remark);
    }
}

TEST_F(edid_file_test, is_cut_after_two_blocks) {
    for (const std::size_t count : {257U, 384U, 512U, 5000U}) {
        const std::string remark =
            "its EDID has " + std::to_string(count) + " bytes; the first two blocks are reported";
        expect_edid(bytes(count), file_kind::bin, bytes(count), remark);
        expect_edid(as_hex(bytes(count)), file_kind::hex, bytes(count), remark);
    }
}

TEST_F(edid_file_test, must_hold_a_byte) {
    EXPECT_EQ(complaint_of("", file_kind::bin), "it is empty.");
    EXPECT_EQ(complaint_of("", file_kind::ddc), "it is empty.");
    EXPECT_EQ(complaint_of("", file_kind::hex), "it contains no bytes.");
    EXPECT_EQ(complaint_of("// nothing but a comment\r\n", file_kind::hex), "it contains no bytes.");
}

TEST_F(edid_file_test, must_have_no_x_in_a_wrong_place) {
    EXPECT_EQ(complaint_of("12 x34", file_kind::hex), "an X is misplaced.");
}

TEST_F(edid_file_test, must_end_with_an_edid_in_a_capture) {
    EXPECT_EQ(complaint_of(std::string(400, 'x'), file_kind::ddc),
              "the capture does not end with an EDID: there is no header.");
    EXPECT_EQ(failure_of([&] { read(bytes(255), file_kind::ddc); }), failure::bad_record_number);
}

TEST_F(edid_file_test, must_be_of_a_known_kind) {
    EXPECT_EQ(complaint_of(bytes(256), file_kind::unknown), "its extension is neither .hex, .bin nor .ddc.");
}

TEST_F(edid_file_test, must_not_be_very_long) {
    const std::size_t longest = 16UL * 1024 * 1024;
    EXPECT_TRUE(complaint_of(std::string(longest + 1, '\0'), file_kind::bin)
                    .ends_with(" can't be read: it is longer than 16 MB."));
    EXPECT_EQ(complaint_of(std::string(longest, '\0'), file_kind::bin), "");
}

TEST_F(edid_file_test, must_be_there) {
    EXPECT_EQ(failure_of([&] { read_edid_file(directory / "missing.bin", file_kind::bin); }), failure::file_not_found);
    EXPECT_EQ(failure_of([&] { read_edid_file(directory.path(), file_kind::bin); }), failure::path_file_access_error);
}

#ifndef _WIN32
TEST_F(edid_file_test, must_be_a_file_that_ends) {
    const std::filesystem::path pipe = directory / "pipe.bin";
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    for (const std::filesystem::path& endless : {pipe, std::filesystem::path("/dev/zero")})
        EXPECT_EQ(failure_of([&] { read_edid_file(endless, file_kind::bin); }), failure::path_file_access_error);
}
#endif

#ifdef __linux__
TEST_F(edid_file_test, must_be_readable_to_its_end) {
    // the first byte of a program's memory file can't be read
    EXPECT_EQ(failure_of([] { read_edid_file("/proc/self/mem", file_kind::bin); }), failure::path_file_access_error);
}
#endif

} // namespace
} // namespace desk::batch
