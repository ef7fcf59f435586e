#include "edid/format/file_readers.h"

#include "runtime/text.h"
#include "support/edid_fixture.h"
#include "support/expect_failure.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <utility>

namespace desk {
namespace {

using test::byte_at;
using test::edid_header;
using test::failure_of;
using test::some_bytes;

constexpr std::size_t lengths[] = {0, 1, 20, 127, 128, 129, 255, 256, 257, 300};

/// Records the bytes, and the other calls as marks in `events`.
class noted_bytes final : public byte_receiver {
public:
    std::string data;
    std::string events; ///< "8|8|3": eight bytes, the end of a line, ...

    void take(std::uint8_t byte) override {
        data.push_back(static_cast<char>(byte));
        ++after_mark_;
    }
    void finish_line() override { mark("|"); }
    void start_again() override { mark(" again "); }
    void finish_one_block() override { mark(" one block"); }
    std::string all_events() const { return events + (after_mark_ == 0 ? "" : std::to_string(after_mark_)); }

private:
    void mark(const char* what) {
        events += (after_mark_ == 0 ? "" : std::to_string(after_mark_)) + what;
        after_mark_ = 0;
    }
    int after_mark_ = 0;
};

struct reading {
    noted_bytes bytes;
    bool accepted = false;
};

reading hex_reading(std::string_view file) {
    reading r;
    r.accepted = read_hex(file, r.bytes);
    return r;
}

/// The bytes of a HEX file that is accepted, in hexadecimal: "00 FF ".
std::string bytes_of_hex(std::string_view file) {
    const reading r = hex_reading(file);
    EXPECT_TRUE(r.accepted) << file;
    std::string text;
    for (std::size_t i = 0; i < r.bytes.data.size(); ++i)
        text += hex2(static_cast<std::uint8_t>(byte_at(r.bytes.data, i))) + " ";
    return text;
}

/// A way to write bytes down in a HEX file.
struct notation {
    const char* name;
    const char* in_front; ///< of each byte
    const char* after;
    bool upper;
    const char* comment; ///< of each line
};

void PrintTo(const notation& as, std::ostream* out) { *out << as.name; }

const notation notations[] = {
    {"digits_alone", "", "", true, ""},
    {"spaces", "", " ", true, ""},
    {"lower_case", "", " ", false, ""},
    {"tabs", "\t", "", true, ""},
    {"tabs_after", "", "\t\t", true, "\t"},
    {"commas", "", ",", true, ""},
    {"commas_and_spaces", " ", " , ", true, ""},
    {"prefixes", "0x", " ", true, ""},
    {"prefixes_alone", "0x", "", true, ""},
    {"c_language", "0x", ",", true, " //7F"},
    {"large_prefixes", "0X", ", ", false, "/ 0X x zz"},
    {"brackets", "[", "]", true, " /12 34"},
    {"letters", "g", "h", false, "//"},
    {"semicolons", "", ";", true, "\t// comment \t"},
};

/// Bytes in lines of this many, each line but the last with this end.
std::string written(std::string_view data, const notation& as, std::size_t bytes_of_line, const std::string& end) {
    std::string file;
    for (std::size_t i = 0; i < data.size(); ++i) {
        if (i % bytes_of_line == 0 && i > 0) file += as.comment + end;
        const std::string digits = hex2(static_cast<std::uint8_t>(byte_at(data, i)));
        file += as.in_front + (as.upper ? digits : lower_case(digits)) + as.after;
    }
    return file;
}

class hex_notation : public testing::TestWithParam<notation> {};

INSTANTIATE_TEST_SUITE_P(read_hex, hex_notation, testing::ValuesIn(notations),
                         [](const auto& as) { return std::string(as.param.name); });

TEST_P(hex_notation, is_read_in_every_length_and_with_every_line_end) {
    for (const std::size_t length : lengths) {
        const std::string data = some_bytes(length);
        for (const std::size_t of_line : {1U, 7U, 8U, 16U, 1000U}) {
            for (const char* end : {"\r\n", "\n", "\r", "\r\n\r\n", " \n", "\n\t\n", "\r\r"}) {
                for (const char* last_end : {"", end}) {
                    const reading r = hex_reading(written(data, GetParam(), of_line, end) + last_end);
                    ASSERT_TRUE(r.accepted);
                    ASSERT_EQ(r.bytes.data, data) << length << " bytes in lines of " << of_line;
                }
            }
        }
    }
}

TEST_P(hex_notation, finishes_each_line_once) {
    for (const char* end : {"\r\n", "\n", "\r", "\r\n\r\n"}) {
        for (const char* last_end : {"", end}) {
            const reading r = hex_reading(written(some_bytes(20), GetParam(), 8, end) + last_end);
            ASSERT_EQ(r.bytes.all_events(), "8|8|4|");
        }
    }
}

TEST(read_hex, skips_a_line_of_16_megabytes_of_tabs_at_once) {
    const std::string tabs(std::size_t{16} * 1024 * 1024, '\t');
    EXPECT_EQ(bytes_of_hex(tabs + "A1" + tabs), "A1 ");
}

TEST(read_hex, accepts_a_file_without_any_byte) {
    for (const char* file : {"", "\r\n", "\n\n", " \t\r\n\t", "// FF\r\n/FF", "g;h\n", "//\n"})
        EXPECT_EQ(bytes_of_hex(file), "") << file;
}

TEST(read_hex, skips_an_empty_line_without_any_effect) {
    EXPECT_EQ(hex_reading("11\r\n\r\n \t \n// FF\n\t/\n22\n").bytes.all_events(), "1|1|");
}

TEST(read_hex, reads_digits_and_separators_in_words_and_signs) {
    const std::pair<const char*, const char*> files[] = {
        {"A,B,", "0A 0B "}, // a separator completes a digit
        {"0xA,0xB;", "0A 0B "},
        {"1 2\t3-4g5\x80", "01 02 03 04 05 "},
        {"  1 2 (3)", "01 02 03 "},
        {",, ;AB,  ,CD--", "AB CD "},
        {"\"12\",\"3 4\"", "12 03 04 "},
        {"ABC\nDEF\n", "AB DE "}, // a line's end completes none
        {"11 / 22 / 33\n44 // 55 x\n", "11 44 "},
        {"1/2", ""},
        {"11 // x\n22 /x\n", "11 22 "},
        {"DATA", "DA "},
        {"DATA ", "DA 0A "},
        {"block", "0B 0C "},
        {"11 0x\n22", "11 22 "}, // a prefix without digits is nothing
        {"0x // 33\n0X\n", ""},
        {"0x0x12", "12 "},
        {"0x,12 0x 34", "12 34 "},
    };
    for (const auto& [file, bytes] : files)
        EXPECT_EQ(bytes_of_hex(file), bytes) << file;
}

TEST(read_hex, drops_a_single_digit_at_the_end_of_a_line) {
    for (const std::string end : {"", "\r\n", "\n", "\r", "//D"}) {
        for (const char* before : {"", "  ", "\t"})
            EXPECT_EQ(bytes_of_hex(before + ("AB C" + end)), "AB ");
        EXPECT_EQ(bytes_of_hex("AB 0x1" + end), "AB ");
        EXPECT_EQ(bytes_of_hex("C" + end), "");
    }
}

TEST(read_hex, completes_a_single_digit_at_a_space_or_tab_that_cleaning_removes) {
    for (const std::string end : {" ", "\t", "  ", "\t ", " \r\n", "\t\r\n", " //D", "\t/D", " \t // D \n"}) {
        EXPECT_EQ(bytes_of_hex("AB C" + end), "AB 0C ") << end;
        EXPECT_EQ(bytes_of_hex("C" + end), "0C ") << end;
        EXPECT_EQ(bytes_of_hex("AB CD" + end), "AB CD ") << "only a pending digit is completed";
    }
}

TEST(read_hex, refuses_an_x_out_of_place) {
    for (const char* file :
         {"x12", "X", "00x12", "0x12x", "1x2", "Ax12", "fx", "0 x12", "0xx12", "a0x12", ",x", "10x", "0\nx12"})
        EXPECT_FALSE(hex_reading(file).accepted) << file;
}

TEST(read_hex, stops_at_the_x_and_does_not_finish_its_line) {
    const reading r = hex_reading("A1 A2\r\nB1 x B2\r\nC1\r\n");
    EXPECT_FALSE(r.accepted);
    EXPECT_EQ(r.bytes.data, "\xA1\xA2\xB1");
    EXPECT_EQ(r.bytes.all_events(), "2|1");
}

TEST(read_hex, counts_cr_lf_as_one_end_and_lf_cr_as_two) {
    EXPECT_EQ(hex_reading("11\r\n22\n\r33").bytes.all_events(), "1|1|1|");
    EXPECT_EQ(bytes_of_hex("1\r2\n3\r\n4 "), "04 ");
}

TEST(read_bin, gives_every_byte_of_every_length) {
    for (const std::size_t length : lengths) {
        noted_bytes bytes;
        EXPECT_EQ(read_bin(some_bytes(length), bytes), length > 0);
        EXPECT_EQ(bytes.data, some_bytes(length));
        EXPECT_EQ(bytes.all_events(), length == 0 ? "" : std::to_string(length)) << "nothing but bytes comes";
    }
}

TEST(read_bin, treats_no_byte_as_an_end) {
    const std::string data("\r\n\0\x1A/x \xFF", 8);
    noted_bytes bytes;
    EXPECT_TRUE(read_bin(data, bytes));
    EXPECT_EQ(bytes.data, data);
}

/// This many bytes, beginning with the header.
std::string with_header(std::size_t length) { return edid_header + some_bytes(length - edid_header.size()); }

struct capture {
    reading read;
    int other_looks = 0;
};

struct tired_of_looking {};

/// Reads a capture; the third look at the same place is the last one.
capture read_capture(std::string_view file) {
    capture c;
    const auto another_look = [&] {
        if (++c.other_looks == 3) throw tired_of_looking();
    };
    c.read.accepted = read_ddc(file, c.read.bytes, another_look);
    return c;
}

TEST(read_ddc, gives_the_last_256_bytes_after_any_junk) {
    const std::string edid = with_header(256);
    for (const std::size_t junk : {0U, 1U, 44U, 128U, 1000U}) {
        const capture c = read_capture(std::string(junk, '\x55') + edid);
        EXPECT_TRUE(c.read.accepted);
        EXPECT_EQ(c.read.bytes.data, edid) << junk;
        EXPECT_EQ(c.read.bytes.all_events(), "256");
    }
}

TEST(read_ddc, gives_the_last_128_bytes_if_256_have_no_header) {
    const std::string block = with_header(128);
    for (const std::size_t junk : {128U, 129U, 172U, 1000U}) {
        const capture c = read_capture(std::string(junk, '\x55') + block);
        EXPECT_TRUE(c.read.accepted);
        EXPECT_EQ(c.read.bytes.data, block) << junk;
        EXPECT_EQ(c.read.bytes.all_events(), " again 128 one block");
        EXPECT_EQ(c.other_looks, 0);
    }
}

TEST(read_ddc, starts_again_at_each_of_the_eight_places_of_the_header) {
    const std::string block = with_header(128);
    for (std::size_t wrong = 0; wrong < 8; ++wrong) {
        std::string first = with_header(128);
        first[wrong] = static_cast<char>(~first[wrong]);
        const capture c = read_capture(first + block);
        EXPECT_EQ(c.read.bytes.data, first.substr(0, wrong) + block);
        EXPECT_EQ(c.read.bytes.all_events(), (wrong == 0 ? "" : std::to_string(wrong)) + " again 128 one block");
    }
}

TEST(read_ddc, does_not_look_at_the_ninth_byte) {
    for (const char ninth : {'\x00', '\xFF'}) {
        const std::string edid = edid_header + ninth + some_bytes(247);
        EXPECT_EQ(read_capture(edid).read.bytes.all_events(), "256");
    }
}

TEST(read_ddc, prefers_the_header_of_the_last_256_bytes) {
    const capture c = read_capture(with_header(128) + with_header(128));
    EXPECT_EQ(c.read.bytes.data, with_header(128) + with_header(128));
    EXPECT_EQ(c.read.bytes.all_events(), "256");
}

TEST(read_ddc, finds_no_header_elsewhere) {
    const std::string edid = with_header(256);
    for (const std::size_t trailing : {1U, 127U, 129U})
        EXPECT_THROW(read_capture(edid + std::string(trailing, '\x55')), tired_of_looking) << trailing;
    EXPECT_EQ(read_capture(std::string(9, '\x55') + with_header(128) + std::string(128, '\x55')).other_looks, 0)
        << "this one is 256 bytes before the end";
}

TEST(read_ddc, looks_again_and_again_if_neither_place_has_the_header) {
    noted_bytes bytes;
    int looks = 0;
    const auto another_look = [&] {
        if (++looks == 3) throw tired_of_looking();
    };
    const std::string file = std::string(128, '\x55') + edid_header.substr(0, 5) + std::string(123, '\x66');
    EXPECT_THROW(read_ddc(file, bytes, another_look), tired_of_looking);
    EXPECT_EQ(looks, 3);
    EXPECT_EQ(bytes.all_events(), " again 5 again 5 again 5") << "the looks come before what is void";
}

TEST(read_ddc, fails_for_less_than_256_bytes_even_with_a_good_block) {
    for (const std::size_t length : {1U, 20U, 127U, 128U, 129U, 255U}) {
        noted_bytes bytes;
        const std::string file = with_header(256).substr(0, length);
        EXPECT_EQ(failure_of([&] { read_ddc(file, bytes, [] {}); }), failure::bad_record_number) << length;
        EXPECT_EQ(bytes.all_events(), "");
    }
}

TEST(read_ddc, refuses_an_empty_file) {
    const capture c = read_capture("");
    EXPECT_FALSE(c.read.accepted);
    EXPECT_EQ(c.read.bytes.all_events(), "");
}

} // namespace
} // namespace desk
