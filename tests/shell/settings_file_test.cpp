#include "shell/settings_file.h"

#include "support/expect_failure.h"
#include "support/fake_machine.h"

#include <gtest/gtest.h>

#include <string>

namespace desk {
namespace {

using test::failure_of;

const std::string full =
    "3\r\n\"C:\\one.hex\"\r\n\"C:\\two, three.bin\"\r\n\"\"\r\n\"4\"\r\n\"5\"\r\n\"6\"\r\n\"7\"\r\n"
    "\"8\"\r\n\"9\"\r\n\"10\"\r\n1\r\n0\r\n255\r\n";

class settings_file : public testing::Test {
protected:
    std::string caption(std::size_t i) const { return edid.lab_pre_f.at(i).caption; }

    test::fake_machine m;
    exchange link{m.host};
    workbench_frame edid;
    shared_fields fields;
    stored_settings kept{link, edid, fields};
};

TEST_F(settings_file, holds_14_records) {
    kept.read(full);
    EXPECT_EQ(link.com_port, 3);
    EXPECT_EQ(caption(0), "C:\\one.hex");
    EXPECT_EQ(caption(1), "C:\\two, three.bin");
    EXPECT_EQ(caption(2), "");
    EXPECT_EQ(caption(9), "10");
    EXPECT_EQ(fields.eeprom_size_index, 1);
    EXPECT_EQ(fields.unused_byte_index, 0);
    EXPECT_EQ(fields.checksum_4digits, 255);
}

TEST_F(settings_file, is_written_as_it_was_read) {
    kept.read(full);
    EXPECT_EQ(kept.text(), full);
}

TEST_F(settings_file, is_written_from_what_the_desk_holds_now) {
    kept.read(full);
    link.com_port = 8;
    edid.lab_pre_f[0].caption = "new";
    fields.eeprom_size_index = 2;
    fields.unused_byte_index = 1;
    fields.checksum_4digits = 0;
    const std::string text = kept.text();
    EXPECT_TRUE(text.starts_with("8\r\n\"new\"\r\n\"C:\\two, three.bin\"\r\n")) << text;
    EXPECT_TRUE(text.ends_with("\"10\"\r\n2\r\n1\r\n0\r\n")) << text;
}

TEST_F(settings_file, can_have_any_line_ends) {
    for (const std::string end : {"\n", "\r", ",", "\r\n"}) {
        std::string text;
        for (std::size_t at = 0; at < full.size();) {
            const std::size_t next = full.find("\r\n", at);
            text += full.substr(at, next - at) + end;
            at = next + 2;
        }
        kept.read(text);
        EXPECT_EQ(kept.text(), full) << text;
    }
}

TEST_F(settings_file, can_begin_with_a_byte_order_mark) {
    kept.read("\xEF\xBB\xBF" + full);
    EXPECT_EQ(link.com_port, 3);
    EXPECT_EQ(kept.text(), full);
}

TEST_F(settings_file, keeps_strange_names_as_they_are) {
    const std::string names[] = {"/edid/24\" panel.hex",
                                 "/two\r\nlines.bin",
                                 "/a, b.hex",
                                 " leading space.hex",
                                 "/\x1B[31mred\x7F\x01.bin",
                                 "/t\xC3\xBCr.ddc",
                                 "/C1\xC2\x9B.hex",
                                 "/trailing \t",
                                 "\t",
                                 "/, and\nline"};
    kept.read(full);
    for (std::size_t i = 0; i < 10; ++i)
        edid.lab_pre_f.at(i).caption = names[i];
    const std::string text = kept.text();
    kept.read(text);
    for (std::size_t i = 0; i < 10; ++i)
        EXPECT_EQ(caption(i), names[i]);
    EXPECT_EQ(fields.checksum_4digits, 255);
    EXPECT_EQ(kept.text(), text);
}

TEST_F(settings_file, leaves_a_name_out_that_would_be_read_as_another_one) {
    for (const char* name : {"/a\",b", "\"quoted\"", "/a\"\nb", "/no utf-8 \xFF.hex"}) {
        kept.read(full);
        edid.lab_pre_f[1].caption = name;
        const std::string text = kept.text();
        EXPECT_EQ(caption(1), name) << "it stays in the running desk";
        kept.read(text);
        EXPECT_EQ(caption(0), "C:\\one.hex");
        EXPECT_EQ(caption(1), "") << "the third name has moved up";
        EXPECT_EQ(caption(2), "4");
        EXPECT_EQ(caption(8), "10");
        EXPECT_EQ(caption(9), "");
        EXPECT_EQ(link.com_port, 3);
        EXPECT_EQ(fields.eeprom_size_index, 1);
        EXPECT_EQ(fields.checksum_4digits, 255);
    }
}

TEST_F(settings_file, fails_if_records_are_missing) {
    for (const char* text : {"", "1\r\n", "1\r\n\"a\"\r\n", "1,a,b,c,d,e,f,g,h,i,j,0,0"})
        EXPECT_EQ(failure_of([&] { kept.read(text); }), failure::input_past_end_of_file) << text;
}

TEST_F(settings_file, fails_for_a_record_that_is_no_number) {
    EXPECT_EQ(failure_of([&] { kept.read("COM1\r\n"); }), failure::type_mismatch);
    EXPECT_EQ(failure_of([&] { kept.read("1,a,b,c,d,e,f,g,h,i,j,none,0,0"); }), failure::type_mismatch);
}

TEST_F(settings_file, fails_for_a_number_that_does_not_fit) {
    EXPECT_EQ(failure_of([&] { kept.read("32768\r\n"); }), failure::overflow);
    for (const char* bytes : {"256,0,0", "0,256,0", "0,0,256", "0,0,-1"}) {
        const std::string text = "1,a,b,c,d,e,f,g,h,i,j," + std::string(bytes);
        EXPECT_EQ(failure_of([&] { kept.read(text); }), failure::overflow) << bytes;
    }
}

} // namespace
} // namespace desk
