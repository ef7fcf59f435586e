#include "programmer/frm_diag.h"

#include "controls/operator_actions.h"
#include "support/edid_fixture.h"
#include "support/expect_failure.h"

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace desk {
namespace {

using test::buffer_of;
using test::failure_of;
using test::good_edid;
using test::looks;
using test::looks_of;
using test::some_bytes;
using test::strings;
using test::window_text_of;

class frm_diag_test : public test::edid_fixture {
protected:
    frm_diag& made() {
        diag = std::make_unique<frm_diag>(fields, buffers, texts, serial, transfers, m.events);
        return *diag;
    }
    frm_diag& opened(std::int16_t diag_mode) {
        fields.diag_mode = diag_mode;
        made().load();
        return *diag;
    }
    /// The names of the controls that are visible and in no frame.
    strings visible_pages() const {
        strings names;
        for (const control* c : diag->form.controls()) {
            if (c->parent == nullptr && c->visible) names.push_back(c->full_name());
        }
        return names;
    }
    std::unique_ptr<frm_diag> diag;
};

TEST_F(frm_diag_test, has_its_captions) {
    const std::map<std::string, std::string> captions = {
        {"fra_sum", "SUM"},
        {"cmd_checksum", "CHECKSUM"},
        {"chk_4digits", "Show lower 4 digits of checksum only"},
        {"opt_unused(0)", "0x00"},
        {"opt_unused(1)", "0xFF"},
        {"lab_unused", "Unused Bytes"},
        {"lab_eeprom", "EEPROM Size"},
        {"lab_checksum", ""},
        {"fra_save_hex", "HEX Type"},
        {"opt_hex_type(0)", "save simple-type HEX"},
        {"opt_hex_type(1)", "save C-language-type HEX"},
        {"fra_auto", "AUTO"},
        {"lab_sn", "Serial No."},
        {"cmd_add", "+"},
        {"cmd_sub", "-"},
        {"chk_write", "WRITE"},
        {"chk_verify", "VERIFY"},
        {"chk_auto_sn", "Auto SN."},
        {"cmd_run", "RUN"},
        {"lab_pass", ""},
        {"lab_pass_sn", ""},
    };
    const looks shown = looks_of(made().form);
    for (const auto& [name, caption] : captions)
        EXPECT_EQ(shown.at(name + ".caption"), caption) << name;
    EXPECT_EQ(shown.at("form.caption"), "EDID");
    EXPECT_EQ(diag->form.name, "frm_diag");
}

TEST_F(frm_diag_test, has_each_control_in_its_frame) {
    const std::map<std::string, strings> pages = {
        {"fra_sum",
         {"cmd_checksum", "chk_4digits", "opt_unused(0)", "opt_unused(1)", "lab_unused", "lab_eeprom", "cbo_eeprom",
          "lab_checksum"}},
        {"fra_save_hex", {"opt_hex_type(0)", "opt_hex_type(1)"}},
        {"fra_auto",
         {"lab_sn", "txt_sn", "cmd_add", "cmd_sub", "chk_write", "chk_verify", "chk_auto_sn", "cmd_run", "txt_auto_msg",
          "lab_pass", "lab_pass_sn"}},
    };
    std::size_t count = 5; // the three frames, cmd_ok and txt_test
    for (const auto& [frame_name, names] : pages) {
        for (const std::string& name : names) {
            const control* c = made().form.find(name);
            ASSERT_NE(c, nullptr) << name;
            ASSERT_NE(c->parent, nullptr) << name;
            EXPECT_EQ(c->parent->name, frame_name) << name;
        }
        count += names.size();
    }
    EXPECT_EQ(made().form.controls().size(), count);
}

TEST_F(frm_diag_test, shows_none_of_its_pages_before_it_is_loaded) {
    made();
    EXPECT_EQ(visible_pages(), strings{});
    EXPECT_FALSE(diag->run.cmd_run.visible);
    EXPECT_FALSE(diag->form.visible);
    EXPECT_TRUE(diag->opt_hex_type[0].value);
    EXPECT_FALSE(diag->opt_hex_type[1].value);
    EXPECT_EQ(diag->run.chk_write.value, 1);
    EXPECT_EQ(diag->run.chk_verify.value, 1);
    EXPECT_EQ(diag->run.chk_auto_sn.value, 0);
}

TEST_F(frm_diag_test, lets_the_operator_type_the_number_and_no_message) {
    made();
    EXPECT_FALSE(diag->run.txt_sn.locked);
    EXPECT_EQ(diag->run.txt_sn.font, text_font::fixed);
    EXPECT_TRUE(diag->run.txt_auto_msg.locked);
    EXPECT_TRUE(diag->run.txt_auto_msg.multi_line);
    EXPECT_EQ(diag->run.lab_pass.font, text_font::large_bold);
}

TEST_F(frm_diag_test, shows_the_page_of_its_mode) {
    struct page {
        std::int16_t mode;
        const char* shown;
        const char* cmd_ok_caption;
        const char* fra_sum_caption;
    };
    for (const page f : {page{1, "fra_save_hex", "OK", "SUM"}, page{2, "fra_auto", "CANCEL", "SUM"},
                         page{5, "fra_sum", "EXIT", "[ WRITE ] Checksum of programmer"},
                         page{6, "fra_sum", "EXIT", "[ READ ] Checksum of programmer"}}) {
        opened(f.mode);
        EXPECT_EQ(visible_pages(), (strings{f.shown, "cmd_ok"})) << f.mode;
        EXPECT_EQ(diag->cmd_ok.caption, f.cmd_ok_caption);
        EXPECT_EQ(diag->fra_sum.caption, f.fra_sum_caption);
        EXPECT_EQ(diag->run.cmd_run.visible, f.mode == 2);
        EXPECT_EQ(fields.diag_mode, f.mode);
    }
}

TEST_F(frm_diag_test, shows_nothing_in_any_other_mode) {
    for (const std::int16_t mode : {std::int16_t{0}, diag::none, std::int16_t{4}, std::int16_t{7}}) {
        opened(mode);
        EXPECT_EQ(visible_pages(), strings{}) << mode;
        EXPECT_EQ(diag->cbo_eeprom.list_count(), 0);
    }
}

class sum : public frm_diag_test {
protected:
    void choose(std::uint8_t size_index, std::uint8_t unused_index, std::uint8_t four_digits) {
        fields.eeprom_size_index = size_index;
        fields.unused_byte_index = unused_index;
        fields.checksum_4digits = four_digits;
    }
    std::string shown_sum() {
        diag->cmd_checksum.on_click();
        return diag->lab_checksum.caption;
    }
    /// The sum over `write_buff`, filled with one byte, with these choices.
    std::string sum_of(std::uint8_t byte, std::uint8_t size_index, std::uint8_t unused_index,
                       std::uint8_t four_digits = 0) {
        buffers.write_buff.fill(byte);
        choose(size_index, unused_index, four_digits);
        opened(5);
        return shown_sum();
    }
};

TEST_F(sum, offers_four_sizes) {
    for (const std::int16_t mode : {diag::write_checksum, diag::read_checksum}) {
        EXPECT_EQ(opened(mode).cbo_eeprom.items(), (strings{" 2 KBits( 256 Bytes)", " 4 KBits( 512 Bytes)",
                                                            " 8 KBits(1024 Bytes)", "16 KBits(2048 Bytes)"}));
    }
}

TEST_F(sum, shows_the_choices_that_were_kept) {
    for (std::uint8_t size = 0; size < 4; ++size) {
        for (const std::uint8_t on : {std::uint8_t{0}, std::uint8_t{1}}) {
            choose(size, on, static_cast<std::uint8_t>(1 - on));
            fields.diag_mode = 5;
            remember();
            opened(5);
            EXPECT_EQ(diag->cbo_eeprom.list_index(), size);
            EXPECT_EQ(diag->txt_test.text.get(), diag->cbo_eeprom.item(size));
            EXPECT_EQ(diag->opt_unused[0].value, on == 0);
            EXPECT_EQ(diag->opt_unused[1].value, on == 1);
            EXPECT_EQ(diag->chk_4digits.value, 1 - on);
            EXPECT_EQ(diag->lab_checksum.caption, "");
            EXPECT_EQ(changed(), strings{}) << "all are kept as they were";
        }
    }
}

TEST_F(sum, keeps_a_choice_as_soon_as_it_is_made) {
    choose(0, 0, 0);
    opened(6);
    remember();
    choose_item(diag->cbo_eeprom, 2);
    EXPECT_EQ(fields.eeprom_size_index, 2);
    EXPECT_EQ(diag->txt_test.text, " 8 KBits(1024 Bytes)");
    EXPECT_EQ(changed(), strings{"eeprom_size_index"});
    click(diag->opt_unused[1]);
    EXPECT_EQ(fields.unused_byte_index, 1);
    EXPECT_EQ(changed(), (strings{"eeprom_size_index", "unused_byte_index"}));
    click(diag->chk_4digits);
    EXPECT_EQ(fields.checksum_4digits, 1);
    EXPECT_EQ(changed(), (strings{"checksum_4digits", "eeprom_size_index", "unused_byte_index"}));
    click(diag->opt_unused[0]);
    click(diag->chk_4digits);
    EXPECT_EQ(changed(), strings{"eeprom_size_index"});
}

TEST_F(sum, fails_for_kept_choices_that_are_not_there) {
    choose(4, 0, 0);
    EXPECT_EQ(failure_of([&] { opened(5); }), failure::invalid_property_value);
    choose(0, 2, 0);
    EXPECT_EQ(failure_of([&] { opened(5); }), failure::subscript_out_of_range);
    choose(0, 0, 2);
    EXPECT_EQ(failure_of([&] { opened(6); }), failure::invalid_property_value);
    EXPECT_EQ(failure_of([&] { opened(1); }), std::nullopt) << "the other pages don't look at them";
    EXPECT_EQ(failure_of([&] { opened(2); }), std::nullopt);
}

TEST_F(sum, adds_the_filling_of_each_size) {
    EXPECT_EQ(sum_of(0xFF, 0, 1), "0xFF00");
    EXPECT_EQ(sum_of(0xFF, 1, 1), "0x1FE00");
    EXPECT_EQ(sum_of(0xFF, 2, 1), "0x3FC00");
    EXPECT_EQ(sum_of(0xFF, 3, 1), "0x7F800");
    EXPECT_EQ(sum_of(0x00, 3, 1), "0x6F900");
    for (std::uint8_t size = 0; size < 4; ++size) {
        EXPECT_EQ(sum_of(0xFF, size, 0), "0xFF00");
        EXPECT_EQ(sum_of(0x00, size, 0), "0x0");
        EXPECT_EQ(sum_of(0x01, size, 0), "0x100");
    }
}

TEST_F(sum, shows_only_its_lower_four_digits_if_that_is_checked) {
    EXPECT_EQ(sum_of(0xFF, 3, 1, 1), "0xF800");
    EXPECT_EQ(sum_of(0x00, 0, 0, 1), "0x0000");
    EXPECT_EQ(sum_of(0x01, 0, 0, 1), "0x0100");
    EXPECT_EQ(sum_of(0xFF, 0, 0, 1), "0xFF00");
    EXPECT_EQ(sum_of(0x81, 1, 1, 1), "0x8000") << "33024 and 65280";
}

TEST_F(sum, takes_every_byte_of_the_buffer) {
    for (std::size_t i = 0; i < 256; ++i) {
        buffers.write_buff.fill(0);
        buffers.write_buff.at(i) = 0xAB;
        opened(5);
        ASSERT_EQ(shown_sum(), "0xAB") << i;
    }
}

TEST_F(sum, is_computed_from_its_side) {
    choose(0, 0, 0);
    buffers.write_buff.fill(1);
    buffers.read_buff.fill(2);
    buffers.trans_buff.fill(3);
    opened(5);
    EXPECT_EQ(shown_sum(), "0x100");
    opened(6);
    EXPECT_EQ(shown_sum(), "0x200");
    fields.diag_mode = 2;
    EXPECT_EQ(shown_sum(), "0x200") << "any other mode";
}

TEST_F(sum, follows_the_choices_at_the_next_press) {
    EXPECT_EQ(sum_of(0xFF, 0, 0), "0xFF00");
    choose_item(diag->cbo_eeprom, 3);
    click(diag->opt_unused[1]);
    EXPECT_EQ(diag->lab_checksum.caption, "0xFF00");
    EXPECT_EQ(shown_sum(), "0x7F800");
    click(diag->chk_4digits);
    EXPECT_EQ(shown_sum(), "0xF800");
}

TEST_F(sum, changes_nothing_but_its_label) {
    buffers.write_buff = buffer_of(some_bytes(256));
    opened(5);
    remember();
    const looks before = looks_of(diag->form);
    diag->cmd_checksum.on_click();
    looks expected = before;
    expected["lab_checksum.caption"] = diag->lab_checksum.caption;
    EXPECT_EQ(looks_of(diag->form), expected);
    EXPECT_NE(expected, before);
    EXPECT_EQ(changed(), strings{});
}

class closing : public frm_diag_test {
protected:
    closing() {
        view.txt_write.text = window_text_of(good_edid());
        buffers.write_buff.fill(0x33);
    }
    void press_ok() {
        diag->form.visible = true;
        diag->cmd_ok.on_click();
    }
};

TEST_F(closing, chooses_the_hex_style) {
    opened(1);
    press_ok();
    EXPECT_EQ(fields.hex_type, 1);
    opened(1);
    click(diag->opt_hex_type[1]);
    press_ok();
    EXPECT_EQ(fields.hex_type, 2);
    opened(1);
    EXPECT_TRUE(diag->opt_hex_type[0].value) << "the style is asked for anew each time";
    press_ok();
    EXPECT_EQ(fields.hex_type, 1);
}

TEST_F(closing, ends_its_mode_and_its_window) {
    for (const std::int16_t mode : {diag::hex_style, diag::automatic_run, diag::write_checksum, diag::read_checksum}) {
        opened(mode);
        press_ok();
        EXPECT_EQ(fields.diag_mode, 3) << mode;
        EXPECT_FALSE(diag->form.visible) << mode;
    }
}

TEST_F(closing, takes_the_bytes_from_the_text_only_after_the_automatic_run) {
    const std::map<std::int16_t, strings> changes = {
        {1, {"diag_mode", "hex_type"}}, {2, {"diag_mode", "write_buff"}}, {5, {"diag_mode"}}, {6, {"diag_mode"}}};
    for (const auto& [mode, expected] : changes) {
        fields.hex_type = 0;
        buffers.write_buff.fill(0x33);
        opened(mode);
        remember();
        press_ok();
        EXPECT_EQ(changed(), expected) << mode;
        EXPECT_EQ(buffers.write_buff, mode == diag::automatic_run ? buffer_of(good_edid()) : buffer_of("", 0x33));
    }
}

TEST_F(closing, fails_for_a_text_of_more_than_256_bytes_after_the_automatic_run) {
    view.txt_write.text = window_text_of(some_bytes(257));
    opened(2);
    EXPECT_EQ(failure_of([&] { press_ok(); }), failure::subscript_out_of_range);
    EXPECT_EQ(buffers.write_buff, buffer_of(some_bytes(256)));
    EXPECT_EQ(fields.diag_mode, 2);
    EXPECT_TRUE(diag->form.visible);
}

TEST_F(closing, has_no_other_way_out) {
    made();
    EXPECT_FALSE(diag->form.on_close);
}

} // namespace
} // namespace desk
