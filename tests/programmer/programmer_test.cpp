#include "programmer/programmer.h"

#include "controls/kinds.h"
#include "controls/operator_actions.h"
#include "support/edid_fixture.h"
#include "support/expect_failure.h"

#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

namespace desk {
namespace {

using test::buffer_of;
using test::failure_of;
using test::good_edid;
using test::look_of;
using test::strings;
using test::window_text_of;

class programmer_test : public test::edid_fixture {
protected:
    programmer_test() {
        buffers.write_buff = buffer_of(good_edid());
        view.txt_write.text = window_text_of(good_edid());
        view.cmd_write.back_color = 255;
        view.cmd_write.enabled = false;
        m.windows.on_show = [this](window& w) {
            shown = &w;
            modes.push_back(fields.diag_mode);
            if (while_open) while_open();
            press("cmd_ok");
            EXPECT_FALSE(w.visible);
        };
    }
    template <class Control>
    Control& in_window(const std::string& name) {
        auto* found = as<Control>(shown->find(name));
        if (found == nullptr) throw std::runtime_error("the window has no " + name);
        return *found;
    }
    void press(const std::string& name) { in_window<button>(name).on_click(); }

    programmer options{m.host, view, fields, buffers, texts, serial, transfers, saver};
    window* shown = nullptr;
    std::vector<std::int16_t> modes; ///< `diag_mode` each time that a window is shown
    std::function<void()> while_open;
};

TEST_F(programmer_test, opens_its_window_in_the_mode_of_the_button) {
    view.cmd_sum_write.on_click();
    view.cmd_sum_read.on_click();
    view.cmd_w_auto.on_click();
    EXPECT_EQ(modes, (std::vector<std::int16_t>{5, 6, 2}));
    EXPECT_EQ(fields.diag_mode, 3);
}

TEST_F(programmer_test, loads_its_window_before_it_shows_it) {
    while_open = [this] {
        EXPECT_EQ(in_window<label>("lab_checksum").caption, "");
        EXPECT_TRUE(in_window<frame>("fra_sum").visible);
        EXPECT_EQ(in_window<button>("cmd_ok").caption, "EXIT");
        EXPECT_TRUE(shown->visible);
        press("cmd_checksum");
        EXPECT_NE(in_window<label>("lab_checksum").caption.get(), "");
    };
    view.cmd_sum_write.on_click();
    view.cmd_sum_read.on_click();
    EXPECT_EQ(modes.size(), 2U);
}

TEST_F(programmer_test, enables_write_after_each_of_its_buttons) {
    for (const button* pressed : {&view.cmd_sum_write, &view.cmd_sum_read, &view.cmd_w_auto}) {
        view.cmd_write.back_color = 255;
        view.cmd_write.enabled = false;
        while_open = [this] { EXPECT_EQ(look_of(view.cmd_write), "red disabled") << "not yet"; };
        pressed->on_click();
        EXPECT_EQ(look_of(view.cmd_write), "grey enabled");
    }
}

TEST_F(programmer_test, changes_nothing_else_for_a_sum) {
    for (const button* pressed : {&view.cmd_sum_write, &view.cmd_sum_read}) {
        view.cmd_write.enabled = false;
        view.cmd_write.back_color = 255;
        while_open = [this] { press("cmd_checksum"); };
        remember();
        pressed->on_click();
        EXPECT_EQ(changed(), (strings{"cmd_write.back_color", "cmd_write.enabled"}));
    }
}

TEST_F(programmer_test, keeps_the_choices_of_a_sum_for_the_next_opening) {
    while_open = [this] {
        choose_item(in_window<combo_box>("cbo_eeprom"), 2);
        click(in_window<option_button>("opt_unused(1)"));
        click(in_window<check_box>("chk_4digits"));
    };
    view.cmd_sum_write.on_click();
    while_open = [this] {
        EXPECT_EQ(in_window<combo_box>("cbo_eeprom").list_index(), 2);
        EXPECT_TRUE(in_window<option_button>("opt_unused(1)").value);
        EXPECT_FALSE(in_window<option_button>("opt_unused(0)").value);
        EXPECT_EQ(in_window<check_box>("chk_4digits").value, 1);
    };
    view.cmd_sum_read.on_click();
    EXPECT_EQ(modes.size(), 2U);
}

TEST_F(programmer_test, asks_for_the_style_of_a_hex_file) {
    save(view.cmd_save_read, "none.bin", 2);
    EXPECT_TRUE(modes.empty()) << "there is nothing to save";
    save(view.cmd_save_write, "simple.hex", 1);
    EXPECT_EQ(modes, std::vector<std::int16_t>{1});
    EXPECT_EQ(directory.content("simple.hex"), window_text_of(good_edid()) + "\r\n");
    while_open = [this] {
        EXPECT_TRUE(in_window<option_button>("opt_hex_type(0)").value);
        click(in_window<option_button>("opt_hex_type(1)"));
    };
    save(view.cmd_save_write, "c.hex", 1);
    EXPECT_TRUE(directory.content("c.hex").starts_with("0x00,0xFF,0xFF,0xFF,0xFF,0xFF,0xFF,0x00, //7\r\n"));
    EXPECT_EQ(look_of(view.cmd_write), "red disabled") << "WRITE is left as it was";
    EXPECT_EQ(fields.diag_mode, 3);
}

TEST_F(programmer_test, fails_before_it_shows_a_choice_that_is_not_there) {
    fields.eeprom_size_index = 4;
    EXPECT_EQ(failure_of([&] { view.cmd_sum_write.on_click(); }), failure::invalid_property_value);
    EXPECT_TRUE(modes.empty());
    EXPECT_EQ(look_of(view.cmd_write), "red disabled");
}

TEST_F(programmer_test, reports_in_its_window_and_elsewhere_after_it_closes) {
    while_open = [this] {
        EXPECT_TRUE(in_window<button>("cmd_run").visible);
        in_window<check_box>("chk_verify").value = 0;
        press("cmd_run");
        EXPECT_EQ(in_window<label>("lab_pass").caption, "PASS");
        EXPECT_EQ(look_of(view.cmd_write), "red disabled");
    };
    view.cmd_w_auto.on_click();
    EXPECT_FALSE(view.fra_compare.visible);
    EXPECT_EQ(look_of(view.cmd_write), "grey enabled");
    EXPECT_EQ(transfers.frm_diag.txt_auto_msg, nullptr);
    EXPECT_EQ(transfers.frm_diag.cmd_ok, nullptr);
    view.cmd_write.on_click();
    EXPECT_TRUE(view.fra_compare.visible);
    EXPECT_EQ(view.txt_msg.text, "Writing WRITE data ...\r\nEWR002 Write completely .");
}

TEST_F(programmer_test, has_a_fresh_window_each_time) {
    while_open = [this] {
        in_window<check_box>("chk_auto_sn").value = 1;
        in_window<text_box>("txt_sn").text = "77";
    };
    view.cmd_w_auto.on_click();
    while_open = [this] {
        EXPECT_EQ(in_window<check_box>("chk_auto_sn").value, 0);
        EXPECT_NE(in_window<text_box>("txt_sn").text.get(), "77");
        EXPECT_EQ(in_window<label>("lab_pass").caption, "");
    };
    view.cmd_w_auto.on_click();
    EXPECT_EQ(modes.size(), 2U);
}

TEST_F(programmer_test, keeps_a_closed_window_while_another_opens_before_its_procedure_continues) {
    while_open = [this] {
        if (modes.size() > 1) return;
        window* const first = shown;
        press("cmd_ok");
        view.cmd_sum_read.on_click();
        EXPECT_NE(shown, first);
        EXPECT_EQ(first->caption, "EDID");
        shown = first;
    };
    view.cmd_sum_write.on_click();
    EXPECT_EQ(modes, (std::vector<std::int16_t>{5, 6}));
    EXPECT_EQ(fields.diag_mode, 3);
    EXPECT_EQ(look_of(view.cmd_write), "grey enabled");
}

} // namespace
} // namespace desk
