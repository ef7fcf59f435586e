#include "edid/window_text.h"

#include "support/edid_fixture.h"
#include "support/expect_failure.h"

#include <gtest/gtest.h>

#include <string>

namespace desk {
namespace {

using test::buffer_of;
using test::checksum_text;
using test::failure_of;
using test::good_edid;
using test::mended;
using test::needing_256;
using test::some_bytes;
using test::strings;
using test::window_text_of;

constexpr std::uint8_t trans = 0;
constexpr std::uint8_t another = 255;

class window_text_test : public test::edid_fixture {
protected:
    window_text_test() {
        for (edid_buffer* buffer : {&buffers.write_buff, &buffers.read_buff, &buffers.trans_buff})
            buffer->fill(0x33);
    }
    /// Both windows hold an EDID with a wrong checksum, and all that works on them is enabled.
    void fill_both_windows() {
        open_bytes("a.bin", some_bytes(256));
        view.cmd_read.on_click();
    }
};

class taken_bytes : public window_text_test {};

TEST_F(taken_bytes, of_the_write_window_are_filled_up_with_ff) {
    for (const std::size_t length : {0U, 1U, 7U, 8U, 20U, 127U, 128U, 129U, 255U, 256U}) {
        view.txt_write.text = window_text_of(some_bytes(length));
        buffers.write_buff.fill(0x33);
        remember();
        texts.win2buff(1, 1);
        EXPECT_EQ(buffers.write_buff, buffer_of(some_bytes(length), 0xFF)) << length;
        EXPECT_EQ(changed(), strings{"write_buff"}) << "no checksum is looked at";
    }
}

TEST_F(taken_bytes, of_the_read_window_keep_the_old_ones_after_them) {
    view.txt_write.text = window_text_of(good_edid());
    for (const std::size_t length : {0U, 1U, 20U, 128U, 255U, 256U}) {
        view.txt_read.text = window_text_of(some_bytes(length));
        for (const std::uint8_t buff_type : {buff::read, trans, another}) {
            buffers.of(buff_type).fill(0x33);
            remember();
            texts.win2buff(buff_type, 1);
            EXPECT_EQ(buffers.of(buff_type), buffer_of(some_bytes(length), 0x33)) << length;
            EXPECT_EQ(changed(), length == 0 ? strings{} : strings{buff_type == 2 ? "read_buff" : "trans_buff"});
        }
    }
}

TEST_F(taken_bytes, come_from_the_same_window_for_any_win_type) {
    view.txt_write.text = "11 ";
    view.txt_read.text = "22 ";
    for (const int win_type : {0, 1, 2, 7}) {
        texts.win2buff(1, win_type);
        texts.win2buff(2, win_type);
        EXPECT_EQ(buffers.write_buff, buffer_of("\x11", 0xFF));
        EXPECT_EQ(buffers.read_buff, buffer_of("\x22", 0x33));
    }
}

TEST_F(taken_bytes, fail_at_the_257th_with_256_stored) {
    for (const std::size_t length : {257U, 300U, 512U}) {
        const std::string data = some_bytes(length);
        view.txt_write.text = window_text_of(data);
        view.txt_read.text = window_text_of(data);
        for (const std::uint8_t buff_type : {buff::write, buff::read, trans}) {
            buffers.of(buff_type).fill(0x33);
            EXPECT_EQ(failure_of([&] { texts.win2buff(buff_type, 1); }), failure::subscript_out_of_range);
            EXPECT_EQ(buffers.of(buff_type), buffer_of(data));
        }
    }
}

TEST_F(taken_bytes, may_be_followed_by_a_comment) {
    view.txt_write.text = window_text_of(some_bytes(256)) + "\r\n//107\r\n\r\n/";
    texts.win2buff(1, 1);
    EXPECT_EQ(buffers.write_buff, buffer_of(some_bytes(256)));
}

TEST_F(taken_bytes, are_those_that_a_buffer_was_shown_with) {
    test::random_edids random(3);
    for (int i = 0; i < 300; ++i) {
        const std::string data = random.next();
        buffers.read_buff = buffer_of(data);
        texts.buff2win(2, 2);
        ASSERT_EQ(view.txt_read.text.get(), window_text_of(data));
        buffers.read_buff.fill(0);
        texts.win2buff(2, 2);
        ASSERT_EQ(buffers.read_buff, buffer_of(data));
        view.txt_write.text = view.txt_read.text;
        texts.win2buff(1, 1);
        ASSERT_EQ(buffers.write_buff, buffer_of(data));
    }
}

class shown_buffer : public window_text_test {
protected:
    /// Shows these bytes in the READ window and gives its two checksum labels.
    strings read_labels(const std::string& data) {
        buffers.read_buff = buffer_of(data);
        texts.buff2win(2, 2);
        strings labels;
        for (const label& l : view.lab_read_checksum)
            labels.push_back(l.caption.get() + " " + std::to_string(l.fore_color.get()));
        return labels;
    }
};

TEST_F(shown_buffer, is_chosen_by_the_first_and_the_window_by_the_second_value) {
    struct choice {
        std::uint8_t buff_type;
        int win_type;
        edid_buffer edid_buffers::*buffer;
        text_box workbench_frame::*shown;
    };
    for (const choice c : {choice{1, 1, &edid_buffers::write_buff, &workbench_frame::txt_write},
                           choice{1, 2, &edid_buffers::write_buff, &workbench_frame::txt_read},
                           choice{2, 1, &edid_buffers::read_buff, &workbench_frame::txt_write},
                           choice{2, 0, &edid_buffers::read_buff, &workbench_frame::txt_read},
                           choice{0, 1, &edid_buffers::trans_buff, &workbench_frame::txt_write},
                           choice{7, 3, &edid_buffers::trans_buff, &workbench_frame::txt_read}}) {
        view.txt_write.text = "";
        view.txt_read.text = "";
        const std::string data = mended(mended(some_bytes(256), 0), 1);
        for (edid_buffer* buffer : {&buffers.write_buff, &buffers.read_buff, &buffers.trans_buff})
            *buffer = buffer_of(good_edid());
        buffers.*c.buffer = buffer_of(data);
        texts.buff2win(c.buff_type, c.win_type);
        EXPECT_EQ((view.*c.shown).text.get(), window_text_of(data));
        EXPECT_EQ(view.txt_write.text.get().empty(), c.win_type != 1);
        EXPECT_EQ(view.txt_read.text.get().empty(), c.win_type == 1);
    }
}

TEST_F(shown_buffer, reports_what_each_block_needs_and_not_what_it_has) {
    const std::string good = good_edid();
    EXPECT_EQ(read_labels(good), (strings{checksum_text(good, 0) + " 0", checksum_text(good, 1) + " 0"}));
    std::string wrong = good;
    wrong[127] = static_cast<char>(wrong[127] + 1);
    EXPECT_EQ(read_labels(wrong), (strings{checksum_text(wrong, 0) + " 192", checksum_text(wrong, 1) + " 0"}));
    wrong[255] = static_cast<char>(wrong[255] - 1);
    EXPECT_EQ(read_labels(wrong), (strings{checksum_text(wrong, 0) + " 192", checksum_text(wrong, 1) + " 192"}));
    EXPECT_EQ(read_labels(good), (strings{checksum_text(good, 0) + " 0", checksum_text(good, 1) + " 0"}));
}

TEST_F(shown_buffer, on_the_read_side_offers_no_repair) {
    texts.recover_sum = {7, 8};
    view.cmd_recover[1].visible = true;
    remember();
    read_labels(some_bytes(256));
    EXPECT_EQ(changed(), (strings{"lab_read_checksum(0).caption", "lab_read_checksum(0).fore_color",
                                  "lab_read_checksum(1).caption", "lab_read_checksum(1).fore_color", "read_buff",
                                  "txt_read.text"}));
}

TEST_F(shown_buffer, on_the_write_side_offers_the_repair_of_a_wrong_block) {
    std::string data = good_edid();
    data[127] = static_cast<char>(data[127] + 1);
    buffers.write_buff = buffer_of(data);
    view.cmd_recover[1].visible = true;
    texts.recover_sum = {7, 8};
    remember();
    texts.buff2win(1, 1);
    EXPECT_EQ(changed(), (strings{"cmd_recover(0).visible", "cmd_recover(1).visible", "lab_write_checksum(0).caption",
                                  "lab_write_checksum(0).fore_color", "lab_write_checksum(1).caption", "recover_sum",
                                  "txt_write.text"}));
    EXPECT_TRUE(view.cmd_recover[0].visible);
    EXPECT_FALSE(view.cmd_recover[1].visible);
    EXPECT_EQ(texts.recover_sum[0], test::needed_by(data, 0));
    EXPECT_EQ(texts.recover_sum[1], 8) << "a right block leaves what is kept";
    EXPECT_EQ(view.lab_write_checksum[0].fore_color, 192U);
}

TEST_F(shown_buffer, on_the_write_side_fails_at_a_block_that_needs_256) {
    for (const std::size_t block : {0U, 1U}) {
        const std::string data = needing_256(good_edid(), block);
        buffers.trans_buff = buffer_of(data);
        texts.recover_sum = {7, 8};
        for (button& repair : view.cmd_recover)
            repair.visible = false;
        EXPECT_EQ(failure_of([&] { texts.buff2win(0, 1); }), failure::overflow);
        EXPECT_EQ(view.txt_write.text.get(), window_text_of(data.substr(0, 128 * block + 127)));
        EXPECT_EQ(view.lab_write_checksum.at(block).caption, block == 0 ? "BK0=100 Error." : "BK1=100 Error.");
        EXPECT_EQ(view.lab_write_checksum.at(block).fore_color, 192U);
        EXPECT_EQ(texts.recover_sum, (std::array<std::uint8_t, 2>{7, 8}));
        EXPECT_FALSE(view.cmd_recover.at(block).visible);
    }
}

TEST_F(window_text_test, has_only_two_blocks) {
    EXPECT_EQ(failure_of([&] { texts.show_write_checksum({2, 7, false}); }), failure::subscript_out_of_range);
}

TEST_F(window_text_test, enables_what_sends_and_disables_the_whole_write_side) {
    remember();
    texts.enable_write_side(true);
    EXPECT_EQ(changed(), (strings{"cmd_verify.enabled", "cmd_w_auto.enabled", "cmd_write.enabled"}));
    view.cmd_write_translate.enabled = true;
    view.cmd_sum_write.enabled = true;
    texts.enable_write_side(true);
    EXPECT_TRUE(view.cmd_write_translate.enabled);
    EXPECT_TRUE(view.cmd_sum_write.enabled);
    remember();
    texts.enable_write_side(false);
    EXPECT_EQ(changed(), (strings{"cmd_sum_write.enabled", "cmd_verify.enabled", "cmd_w_auto.enabled",
                                  "cmd_write.enabled", "cmd_write_translate.enabled"}));
}

TEST_F(window_text_test, pumps_once_after_enabling) {
    film([this] { return std::string(view.cmd_w_auto.enabled ? "enabled" : "disabled"); });
    const int pumps = m.events.pumps;
    texts.enable_write_side(true);
    texts.enable_write_side(false);
    EXPECT_EQ(frames, (strings{"enabled", "disabled"}));
    EXPECT_EQ(m.events.pumps, pumps + 2);
}

TEST_F(window_text_test, clears_the_read_window_and_keeps_its_bytes_and_labels) {
    fill_both_windows();
    remember();
    view.cmd_clear_read.on_click();
    EXPECT_EQ(changed(), (strings{"cmd_read_translate.enabled", "cmd_sum_read.enabled", "txt_read.text"}));
    EXPECT_EQ(view.txt_read.text, "");
}

TEST_F(window_text_test, clears_the_write_window_and_keeps_its_bytes_labels_repairs_and_name) {
    fill_both_windows();
    remember();
    view.cmd_clear_file.on_click();
    EXPECT_EQ(changed(),
              (strings{"cmd_sum_write.enabled", "cmd_verify.enabled", "cmd_w_auto.enabled", "cmd_write.enabled",
                       "cmd_write_translate.enabled", "form.caption", "txt_write.text"}));
    EXPECT_EQ(view.txt_write.text, "");
    EXPECT_EQ(form.caption, "VELOTRACE ");
}

TEST_F(window_text_test, pumps_with_the_write_window_cleared_and_its_side_disabled) {
    fill_both_windows();
    film([this] {
        return "[" + view.txt_write.text.get() + "] " + form.caption.get() +
               (view.cmd_write.enabled ? "enabled" : "disabled");
    });
    view.cmd_clear_file.on_click();
    EXPECT_EQ(frames, strings{"[] VELOTRACE disabled"});
}

TEST(checksum_caption, has_the_block_the_value_and_the_verdict) {
    EXPECT_EQ(checksum_caption(0, 0x3C, " Correct."), "BK0=3C Correct.");
    EXPECT_EQ(checksum_caption(1, 0x0A, " Modified."), "BK1=A Modified.");
    EXPECT_EQ(checksum_caption(1, 256, " Error."), "BK1=100 Error.");
}

} // namespace
} // namespace desk
