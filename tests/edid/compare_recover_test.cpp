#include "edid/compare_recover.h"

#include "runtime/text.h"
#include "support/edid_fixture.h"
#include "support/expect_failure.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

namespace desk {
namespace {

using test::boxes;
using test::buffer_of;
using test::failure_of;
using test::good_edid;
using test::mended;
using test::needed_by;
using test::some_bytes;
using test::strings;
using test::window_text_of;

const test::noted_boxes::shown box_empty{"READ or WRITE data is empty!", box_icon::critical, box_buttons::ok};

class comp : public test::edid_fixture {
protected:
    comp() {
        view.txt_write.text = "w";
        view.txt_read.text = "r";
        view.fra_compare.caption = "WRITE";
        view.lab_pass.caption = "PASS";
        view.txt_msg.text = "old";
    }
    /// The message of COMP for this number of differing bytes.
    std::string result_of(int different) {
        buffers.write_buff = buffer_of(some_bytes(256));
        buffers.read_buff = buffers.write_buff;
        for (int i = 0; i < different; ++i)
            buffers.read_buff.at(static_cast<std::size_t>(255 - i)) ^= 0x80U;
        view.cmd_compare.on_click();
        return view.txt_msg.text;
    }
};

TEST_F(comp, needs_a_text_in_both_windows) {
    for (const auto& [write, read] : {std::pair{"", ""}, {"w", ""}, {"", "r"}}) {
        view.txt_write.text = write;
        view.txt_read.text = read;
        view.fra_compare.caption = "WRITE";
        view.lab_pass.caption = "PASS";
        m.boxes.all.clear();
        remember();
        view.cmd_compare.on_click();
        EXPECT_EQ(m.boxes.all, boxes{box_empty});
        EXPECT_EQ(changed(), (strings{"boxes", "fra_compare.caption", "lab_pass.caption"}));
        EXPECT_EQ(view.fra_compare.caption, "COMPARE");
        EXPECT_EQ(view.lab_pass.caption, "");
    }
}

TEST_F(comp, has_its_caption_and_no_mark_when_its_box_comes) {
    view.txt_read.text = "";
    film([this] { return view.fra_compare.caption.get() + "[" + view.lab_pass.caption.get() + "]"; });
    view.cmd_compare.on_click();
    EXPECT_EQ(frames, strings{"box: COMPARE[]"});
}

TEST_F(comp, passes_if_all_bytes_are_the_same) {
    EXPECT_EQ(result_of(0), "Comparing ...\r\nMatch entirely.");
    EXPECT_EQ(view.fra_compare.caption, "COMPARE");
    EXPECT_TRUE(view.fra_compare.visible);
    EXPECT_TRUE(view.cmd_ok.enabled);
    EXPECT_EQ(view.lab_pass.caption, "PASS");
    EXPECT_EQ(view.lab_pass.fore_color, 65280U);
    EXPECT_TRUE(m.boxes.all.empty());
}

TEST_F(comp, fails_with_the_count_of_the_bytes_that_differ) {
    EXPECT_EQ(result_of(1), "Comparing ...\r\nThere are 1 wrong data!");
    EXPECT_EQ(view.lab_pass.caption, "FAIL");
    EXPECT_EQ(view.lab_pass.fore_color, 255U);
    EXPECT_TRUE(view.cmd_ok.enabled);
    EXPECT_EQ(result_of(3), "Comparing ...\r\nThere are 3 wrong data!");
    EXPECT_EQ(result_of(256), "Comparing ...\r\nThere are 256 wrong data!");
    EXPECT_EQ(result_of(0), "Comparing ...\r\nMatch entirely.");
}

TEST_F(comp, touches_its_frame_alone_and_sends_nothing) {
    result_of(5);
    view.lab_pass.caption = "";
    remember();
    result_of(4);
    EXPECT_EQ(changed(), (strings{"lab_pass.caption", "read_buff", "txt_msg.text"}));
    EXPECT_TRUE(m.port.take_written().empty());
    EXPECT_EQ(m.events.pumps, 1) << "that of the port's opening";
}

class repair : public test::edid_fixture {
protected:
    /// Opens these bytes and presses the R of a block.
    void repair_in(const std::string& data, std::size_t block) {
        open_bytes("a.bin", data);
        remember();
        view.cmd_recover.at(block).on_click();
    }
    std::string title() const { return "VELOTRACE  - " + path("a.bin"); }
    void expect_failure_of_block(std::size_t block, const std::string& text) {
        view.txt_write.text = "  " + text + " ";
        view.cmd_recover.at(block).visible = true;
        view.txt_read.text = text;
        remember();
        EXPECT_EQ(failure_of([&] { view.cmd_recover.at(block).on_click(); }), failure::invalid_procedure_call);
        EXPECT_EQ(changed(), strings{"txt_write.text"}) << "trimmed, and nothing more";
        EXPECT_EQ(view.txt_write.text, text);
    }
    const std::string wrong = some_bytes(256); ///< in both blocks
};

TEST_F(repair, puts_the_needed_pair_into_the_text_of_its_block) {
    for (const std::size_t block : {0U, 1U}) {
        const std::string number = std::to_string(block);
        repair_in(wrong, block);
        EXPECT_EQ(view.txt_write.text.get(), window_text_of(mended(wrong, block)));
        EXPECT_EQ(form.caption, title() + " *");
        EXPECT_EQ(view.lab_write_checksum.at(block).caption,
                  "BK" + number + "=" + hex(static_cast<std::uint32_t>(needed_by(wrong, block))) + " Modified.");
        EXPECT_EQ(view.lab_write_checksum.at(block).fore_color, 0U);
        EXPECT_FALSE(view.cmd_recover.at(block).visible);
        EXPECT_EQ(changed(), (strings{"cmd_recover(" + number + ").visible", "form.caption",
                                      "lab_write_checksum(" + number + ").caption",
                                      "lab_write_checksum(" + number + ").fore_color", "txt_write.text"}));
    }
    view.cmd_recover[0].on_click();
    EXPECT_EQ(form.caption, title() + " * *");
}

TEST_F(repair, writes_two_digits_into_the_text_and_no_leading_zero_into_the_label) {
    std::string data = mended(mended(good_edid(), 0), 1);
    for (const std::size_t block : {0U, 1U}) {
        const std::size_t place = 128 * block + 50;
        data[place] = static_cast<char>(test::byte_at(data, place) + needed_by(data, block) - 0x0A);
        data[128 * block + 127] = '\x55';
        repair_in(data, block);
        EXPECT_EQ(view.txt_write.text.get(), window_text_of(mended(data, block)));
        EXPECT_EQ(view.lab_write_checksum.at(block).caption, block == 0 ? "BK0=A Modified." : "BK1=A Modified.");
    }
}

TEST_F(repair, works_on_what_the_events_of_its_pump_have_left) {
    texts.recover_sum = {0x12, 0x34};
    m.events.on_pump = [this] {
        view.txt_write.text = "11 //7F\r\n22 //FF\r\n";
        texts.recover_sum = {0xAB, 0xCD};
    };
    view.txt_write.text = "33 44 //7F\r\n";
    view.cmd_recover[0].on_click();
    EXPECT_EQ(view.txt_write.text, "AB //7F\r\n22 //FF\r\n");
    EXPECT_EQ(view.lab_write_checksum[0].caption, "BK0=AB Modified.");
    view.txt_write.text = "33 44 //FF\r\n";
    view.cmd_recover[1].on_click();
    EXPECT_EQ(view.txt_write.text, "11 //7F\r\nCD //FF\r\n");
    EXPECT_EQ(view.lab_write_checksum[1].caption, "BK1=CD Modified.");
}

TEST_F(repair, keeps_the_character_before_its_mark_in_block_0_alone) {
    texts.recover_sum = {0xAB, 0xCD};
    view.txt_write.text = "11-//7F\r\n22-//FF\r\n";
    view.cmd_recover[0].on_click();
    EXPECT_EQ(view.txt_write.text, "AB-//7F\r\n22-//FF\r\n");
    view.cmd_recover[1].on_click();
    EXPECT_EQ(view.txt_write.text, "AB-//7F\r\nCD //FF\r\n");
}

TEST_F(repair, of_block_1_cuts_off_everything_after_it) {
    const std::string data = some_bytes(300);
    view.txt_write.text = window_text_of(data);
    texts.recover_sum = {0x12, 0x34};
    view.cmd_recover[1].on_click();
    EXPECT_EQ(view.txt_write.text.get(), window_text_of(data.substr(0, 255) + "\x34"));
}

TEST_F(repair, takes_the_first_line_with_its_mark) {
    texts.recover_sum = {0xAB, 0xCD};
    view.txt_write.text = "11 //7F\r\n22 //7F\r\n33 //FF\r\n44 //FF\r\n";
    view.cmd_recover[0].on_click();
    EXPECT_EQ(view.txt_write.text, "AB //7F\r\n22 //7F\r\n33 //FF\r\n44 //FF\r\n");
    view.cmd_recover[1].on_click();
    EXPECT_EQ(view.txt_write.text, "AB //7F\r\n22 //7F\r\nCD //FF\r\n");
}

TEST_F(repair, fails_without_the_line_of_its_mark) {
    expect_failure_of_block(0, "");
    expect_failure_of_block(1, "");
    expect_failure_of_block(0, "11 //FF\r\n");
    expect_failure_of_block(1, window_text_of(some_bytes(128)));
    expect_failure_of_block(0, "11 //7f\r\n");
}

TEST_F(repair, fails_without_three_characters_before_its_mark) {
    for (const char* in_front : {"", "1", "12"}) {
        expect_failure_of_block(0, std::string(in_front) + "//7F\r\n");
        expect_failure_of_block(1, std::string(in_front) + "//FF\r\n");
    }
}

TEST_F(repair, has_only_two_blocks) {
    view.txt_write.text = " " + window_text_of(wrong) + " ";
    remember();
    EXPECT_EQ(failure_of([&] { comparison.cmd_recover_click(2); }), failure::subscript_out_of_range);
    EXPECT_EQ(changed(), strings{"txt_write.text"});
    EXPECT_EQ(view.txt_write.text.get(), window_text_of(wrong)) << "trimmed, and nothing more";
}

} // namespace
} // namespace desk
