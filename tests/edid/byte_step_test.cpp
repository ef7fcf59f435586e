#include "edid/byte_step.h"

#include "support/edid_fixture.h"
#include "support/expect_failure.h"

#include <gtest/gtest.h>

#include <string>

namespace desk {
namespace {

using test::checksum_text;
using test::failure_of;
using test::good_edid;
using test::needing_256;
using test::some_bytes;
using test::strings;
using test::window_text_of;
using append = byte_step::append;

class byte_step_test : public test::edid_fixture {
protected:
    static void take_all(byte_step& step, std::string_view data) {
        for (std::size_t i = 0; i < data.size(); ++i)
            step.take(static_cast<std::uint8_t>(test::byte_at(data, i)));
    }
    byte_step at_once{view, texts, append::at_once};
    byte_step line_by_line{view, texts, append::line_by_line};
};

TEST_F(byte_step_test, shows_each_byte_at_once) {
    const std::string data = some_bytes(300);
    for (std::size_t i = 0; i < data.size(); ++i) {
        take_all(at_once, data.substr(i, 1));
        ASSERT_EQ(view.txt_write.text.get(), window_text_of(data.substr(0, i + 1)));
    }
}

TEST_F(byte_step_test, shows_the_bytes_of_a_line_when_it_is_finished) {
    take_all(line_by_line, some_bytes(20));
    EXPECT_EQ(view.txt_write.text, "");
    line_by_line.finish_line();
    EXPECT_EQ(view.txt_write.text.get(), window_text_of(some_bytes(20)));
    line_by_line.finish_line();
    EXPECT_EQ(view.txt_write.text.get(), window_text_of(some_bytes(20))) << "each byte once";
    take_all(line_by_line, some_bytes(300).substr(20));
    EXPECT_EQ(view.txt_write.text.get(), window_text_of(some_bytes(20)));
    line_by_line.finish_line();
    EXPECT_EQ(view.txt_write.text.get(), window_text_of(some_bytes(300)));
}

TEST_F(byte_step_test, looks_at_the_two_checksums_when_they_come) {
    const std::string data = some_bytes(300);
    remember();
    take_all(at_once, data.substr(0, 127));
    EXPECT_EQ(changed(), strings{"txt_write.text"});
    take_all(at_once, data.substr(127, 1));
    EXPECT_EQ(changed(), (strings{"cmd_recover(0).visible", "lab_write_checksum(0).caption",
                                  "lab_write_checksum(0).fore_color", "recover_sum", "txt_write.text"}));
    remember();
    take_all(at_once, data.substr(128, 127));
    EXPECT_EQ(changed(), strings{"txt_write.text"});
    take_all(at_once, data.substr(255, 1));
    EXPECT_EQ(changed(), (strings{"cmd_recover(1).visible", "lab_write_checksum(1).caption",
                                  "lab_write_checksum(1).fore_color", "recover_sum", "txt_write.text"}));
    remember();
    take_all(at_once, data.substr(256));
    EXPECT_EQ(changed(), strings{"txt_write.text"});
}

TEST_F(byte_step_test, hides_the_repair_of_a_correct_block) {
    for (button& repair : view.cmd_recover)
        repair.visible = true;
    texts.recover_sum = {7, 8};
    view.lab_write_checksum[0].fore_color = 192;
    take_all(at_once, good_edid());
    EXPECT_FALSE(view.cmd_recover[0].visible);
    EXPECT_FALSE(view.cmd_recover[1].visible);
    EXPECT_EQ(texts.recover_sum, (std::array<std::uint8_t, 2>{7, 8}));
    EXPECT_EQ(view.lab_write_checksum[0].fore_color, 0U);
}

TEST_F(byte_step_test, fails_before_it_shows_the_byte_of_a_block_that_needs_256) {
    for (const std::size_t block : {0U, 1U}) {
        const std::string data = needing_256(good_edid(), block);
        const std::size_t last = 128 * block + 127;
        byte_step step(view, texts, append::at_once);
        view.txt_write.text = "";
        EXPECT_EQ(failure_of([&] { take_all(step, data); }), failure::overflow);
        EXPECT_EQ(view.txt_write.text.get(), window_text_of(data.substr(0, last)));
        EXPECT_EQ(view.lab_write_checksum.at(block).caption, checksum_text(data, block));
        EXPECT_FALSE(view.cmd_recover.at(block).visible);
        EXPECT_EQ(texts.recover_sum.at(block), 0);
    }
}

TEST_F(byte_step_test, does_not_show_the_line_that_fails) {
    const std::string data = needing_256(good_edid(), 0);
    take_all(line_by_line, data.substr(0, 120));
    line_by_line.finish_line();
    EXPECT_EQ(failure_of([&] { take_all(line_by_line, data.substr(120)); }), failure::overflow);
    EXPECT_EQ(view.txt_write.text.get(), window_text_of(data.substr(0, 120)));
}

TEST_F(byte_step_test, starts_again_with_its_count_its_sum_and_an_empty_window) {
    const std::string data = good_edid();
    take_all(at_once, "\x01\x02\x03");
    at_once.start_again();
    EXPECT_EQ(view.txt_write.text, "");
    take_all(at_once, data);
    EXPECT_EQ(view.txt_write.text.get(), window_text_of(data));
    EXPECT_EQ(view.lab_write_checksum[0].caption, checksum_text(data, 0));
    EXPECT_EQ(view.lab_write_checksum[1].caption, checksum_text(data, 1));
}

TEST_F(byte_step_test, fills_one_block_up_with_sixteen_lines_of_ff) {
    const std::string block = good_edid().substr(0, 128);
    take_all(at_once, block);
    view.lab_write_checksum[1].fore_color = 192;
    texts.recover_sum = {7, 8};
    view.cmd_recover[1].visible = true;
    remember();
    at_once.finish_one_block();
    std::string lines;
    for (const char* last :
         {"87", "8F", "97", "9F", "A7", "AF", "B7", "BF", "C7", "CF", "D7", "DF", "E7", "EF", "F7", "FF"})
        lines += std::string("FF FF FF FF FF FF FF FF //") + last + "\r\n";
    EXPECT_EQ(view.txt_write.text.get(), window_text_of(block) + lines);
    EXPECT_EQ(view.lab_write_checksum[1].caption, "Checksum BK1= Empty block FF for DVI");
    EXPECT_EQ(view.lab_write_checksum[1].fore_color, 0U);
    EXPECT_EQ(changed(),
              (strings{"lab_write_checksum(1).caption", "lab_write_checksum(1).fore_color", "txt_write.text"}));
}

} // namespace
} // namespace desk
