#include "signal/color_settings.h"

#include "support/signal_fixture.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

namespace desk {
namespace {

using test::strings;

class color_settings_test : public test::signal_fixture {
protected:
    color_settings_test() {
        enter(1);
        rows.lstv_pattern.select(13);
        for (text_box& box : desk_area.txt_color_setting)
            box.text = "as before";
    }
    slider& bar(int index) { return desk_area.hsr_color_setting.at(static_cast<std::size_t>(index)); }
    text_box& box(int index) { return desk_area.txt_color_setting.at(static_cast<std::size_t>(index)); }
    strings texts() {
        strings all;
        for (const text_box& b : desk_area.txt_color_setting)
            all.push_back(b.text);
        return all;
    }
    std::vector<int> values() const {
        std::vector<int> all;
        for (const slider& s : desk_area.hsr_color_setting)
            all.push_back(s.value());
        return all;
    }
    void drag(int index, int value) {
        bar(index).place(value);
        bar(index).on_scroll();
    }
    /// Types a text into a box and presses a key.
    void type(int index, const std::string& text, int key = 13) {
        box(index).text = text;
        box(index).on_key_press(key);
    }
};

class color_sliders : public color_settings_test {};

TEST_F(color_sliders, send_the_value_of_their_channel_and_show_it) {
    const strings letters{"CRR", "CRG", "CRB"};
    for (int i = 0; i < 3; ++i) {
        drag(i, 70 + i);
        EXPECT_EQ(m.port.take_written(), strings{letters.at(static_cast<std::size_t>(i)) + "07" + std::to_string(i)});
    }
    EXPECT_EQ(texts(), (strings{"70", "71", "72", "as before"}));
}

TEST_F(color_sliders, show_a_channel_the_same_in_each_color_mode) {
    for (const int mode : {0, 1, 2}) {
        colors.color_mode = static_cast<std::uint8_t>(mode);
        for (int i = 0; i < 3; ++i) {
            drag(i, 10 + i);
            EXPECT_EQ(box(i).text.get(), std::to_string(10 + i)) << mode;
        }
        EXPECT_EQ(box(3).text.get(), "as before") << mode;
    }
}

TEST_F(color_sliders, do_the_same_by_change_as_by_scroll) {
    for (int i = 0; i < 4; ++i) {
        bar(i).set_value(9);
        EXPECT_EQ(m.port.take_written().size(), 1U) << i;
        EXPECT_EQ(box(i).text.get(), "9") << i;
    }
}

TEST_F(color_sliders, send_three_digits_from_000_to_255) {
    for (const auto& [value, sent] : std::vector<std::pair<int, std::string>>{{255, "CRR255"}, {0, "CRR000"}}) {
        drag(0, value);
        EXPECT_EQ(m.port.take_written(), strings{sent});
        EXPECT_EQ(box(0).text.get(), std::to_string(value));
    }
}

TEST_F(color_sliders, run_from_0_to_255_in_large_steps_of_20) {
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(bar(i).minimum, 0);
        EXPECT_EQ(bar(i).maximum, 255);
        EXPECT_EQ(bar(i).large_step, 20);
    }
}

TEST_F(color_sliders, give_the_grey_value_to_all_boxes_in_rgb) {
    colors.color_mode = 1;
    drag(3, 200);
    EXPECT_EQ(texts(), strings(4, "200"));
    EXPECT_EQ(values(), (std::vector{0, 0, 0, 200})) << "the other sliders don't move";
    EXPECT_EQ(m.port.take_written(), strings{"CRY200"});
}

TEST_F(color_sliders, give_neutral_colour_differences_beside_the_grey_value_in_any_other_mode) {
    for (const int mode : {0, 2}) {
        colors.color_mode = static_cast<std::uint8_t>(mode);
        drag(3, 200);
        EXPECT_EQ(texts(), (strings{"128", "200", "128", "200"})) << mode;
        EXPECT_EQ(values(), (std::vector{0, 0, 0, 200})) << mode;
        EXPECT_EQ(m.port.take_written(), strings{"CRY200"}) << mode;
    }
}

TEST_F(color_sliders, do_nothing_while_a_download_runs) {
    link.download_mode = true;
    for (int i = 0; i < 4; ++i) {
        drag(i, 50);
        bar(i).set_value(51);
    }
    EXPECT_TRUE(m.port.take_written().empty());
    EXPECT_EQ(texts(), strings(4, "as before"));
    EXPECT_TRUE(link.download_mode);
}

TEST_F(color_sliders, do_nothing_for_an_index_above_3) {
    for (const int index : {4, 5, 254}) {
        colors.hsr_color_setting_change(index);
        EXPECT_TRUE(m.port.take_written().empty()) << index;
        EXPECT_EQ(texts(), strings(4, "as before")) << index;
    }
}

TEST_F(color_sliders, show_the_value_before_they_send_it) {
    film([this] { return box(0).text.get() + " " + box(3).text.get(); });
    drag(0, 5);
    drag(3, 6);
    EXPECT_EQ(frames, (strings{"CRR005: 5 as before", "CRY006: 128 6"}));
}

TEST_F(color_sliders, wait_for_no_answer) {
    const int pumps = m.events.pumps;
    const std::int64_t now = m.events.now;
    for (int value = 1; value <= 5; ++value)
        drag(1, value);
    EXPECT_EQ(m.port.take_written(), (strings{"CRG001", "CRG002", "CRG003", "CRG004", "CRG005"}));
    EXPECT_EQ(m.events.pumps, pumps);
    EXPECT_EQ(m.events.now, now);
    EXPECT_FALSE(link.tim_rx.enabled);
    EXPECT_TRUE(m.boxes.all.empty());
}

TEST_F(color_sliders, tell_of_a_closed_port_and_show_the_value_all_the_same) {
    link.cmd_disconn_click();
    drag(0, 33);
    EXPECT_EQ(m.boxes.all, std::vector{test::box_disconnected});
    EXPECT_EQ(box(0).text.get(), "33");
    EXPECT_EQ(bar(0).value(), 33);
}

TEST_F(color_sliders, note_the_color_that_they_choose) {
    using channels = std::array<std::uint8_t, 3>;
    colors.color_mode = 1;
    drag(0, 10);
    drag(1, 20);
    drag(2, 30);
    EXPECT_EQ(colors.channels, (channels{10, 20, 30}));
    drag(3, 40);
    EXPECT_EQ(colors.channels, (channels{40, 40, 40}));
    colors.color_mode = 2;
    drag(3, 50);
    EXPECT_EQ(colors.channels, (channels{128, 50, 128}));
    type(2, "7");
    type(0, "300");
    EXPECT_EQ(colors.channels, (channels{128, 50, 7})) << "a number that is not sent is not chosen";
    link.download_mode = true;
    drag(0, 1);
    EXPECT_EQ(colors.channels, (channels{128, 50, 7}));
}

class color_boxes : public color_settings_test {
protected:
    void expect_all_selected(int index, int length) {
        EXPECT_EQ(box(index).sel_start(), 0);
        EXPECT_EQ(box(index).sel_length(), length);
    }
};

TEST_F(color_boxes, select_their_text_when_they_get_the_focus) {
    for (int i = 0; i < 4; ++i) {
        box(i).text = std::string(static_cast<std::size_t>(i), '7');
        box(i).select(1, 0);
        box(i).set_focus();
        expect_all_selected(i, i);
    }
    EXPECT_TRUE(m.port.take_written().empty());
}

TEST_F(color_boxes, send_the_typed_number_on_enter) {
    const strings letters{"CRR", "CRG", "CRB", "CRY"};
    for (int i = 0; i < 4; ++i) {
        type(i, "255");
        EXPECT_EQ(m.port.take_written(), strings{letters.at(static_cast<std::size_t>(i)) + "255"});
        EXPECT_EQ(bar(i).value(), 255);
        expect_all_selected(i, 3);
    }
}

TEST_F(color_boxes, fill_up_a_short_number) {
    for (const auto& [typed, sent] :
         std::vector<std::pair<std::string, std::string>>{{"7", "CRR007"}, {"42", "CRR042"}, {"0", "CRR000"}}) {
        type(0, typed);
        EXPECT_EQ(m.port.take_written(), strings{sent});
        EXPECT_EQ(box(0).text.get(), typed) << "the box keeps what was typed";
    }
}

TEST_F(color_boxes, send_the_last_three_digits_of_a_longer_text) {
    type(0, "0255");
    EXPECT_EQ(m.port.take_written(), strings{"CRR255"});
    EXPECT_EQ(bar(0).value(), 255);
    EXPECT_EQ(box(0).text.get(), "0255");
    expect_all_selected(0, 4);
}

TEST_F(color_boxes, trim_blanks_for_the_number_and_keep_them_in_the_text) {
    type(2, "  19 ");
    EXPECT_EQ(m.port.take_written(), strings{"CRB019"});
    EXPECT_EQ(bar(2).value(), 19);
    EXPECT_EQ(box(2).text.get(), "  19 ");
    expect_all_selected(2, 5);
}

TEST_F(color_boxes, send_nothing_for_a_text_that_is_no_number_up_to_255) {
    bar(0).place(90);
    for (const char* typed :
         {"", "   ", "256", "999", "1000", "99999", "-1", "+7", "1.0", "1E1", "1 2", "12a", "\t7", "&H10", "７", "²"}) {
        type(0, typed);
        EXPECT_TRUE(m.port.take_written().empty()) << typed;
        EXPECT_EQ(box(0).text.get(), typed);
        EXPECT_EQ(bar(0).value(), 90) << typed;
        EXPECT_FALSE(link.download_mode) << typed;
    }
    EXPECT_TRUE(m.boxes.all.empty());
}

TEST_F(color_boxes, send_a_number_behind_any_count_of_zeros) {
    const std::string zeros(400, '0');
    type(0, zeros + "255");
    type(0, zeros + "7");
    type(0, zeros);
    EXPECT_EQ(m.port.take_written(), (strings{"CRR255", "CRR007", "CRR000"}));
    type(0, zeros + "256");
    EXPECT_TRUE(m.port.take_written().empty());
    EXPECT_EQ(bar(0).value(), 0);
}

TEST_F(color_boxes, send_nothing_for_a_number_of_any_length_above_255) {
    type(0, std::string(400, '9'));
    EXPECT_TRUE(m.port.take_written().empty());
    EXPECT_EQ(bar(0).value(), 0);
    expect_all_selected(0, 400);
}

TEST_F(color_boxes, leave_a_running_download_alone_with_an_invalid_text) {
    link.download_mode = true;
    type(0, "256");
    EXPECT_TRUE(link.download_mode);
}

TEST_F(color_boxes, select_an_invalid_text_for_retyping) {
    box(1).text = "256";
    box(1).select(3, 0);
    box(1).on_key_press(13);
    expect_all_selected(1, 3);
}

TEST_F(color_boxes, let_every_other_key_pass_untouched) {
    for (const int key : {8, 9, 10, 27, 32, 48, 57, 65, 254}) {
        box(0).text = "77";
        box(0).select(1, 0);
        box(0).on_key_press(key);
        EXPECT_EQ(box(0).sel_start(), 1) << key;
        EXPECT_EQ(box(0).text.get(), "77") << key;
        EXPECT_EQ(bar(0).value(), 0) << key;
    }
    EXPECT_TRUE(m.port.take_written().empty());
}

TEST_F(color_boxes, move_their_own_slider_alone_and_leave_the_other_texts) {
    for (const int mode : {0, 1, 2}) {
        colors.color_mode = static_cast<std::uint8_t>(mode);
        type(1, "66");
        EXPECT_EQ(values(), (std::vector{0, 66, 0, 0})) << mode;
        EXPECT_EQ(texts(), (strings{"as before", "66", "as before", "as before"})) << mode;
        m.port.take_written();
    }
}

TEST_F(color_boxes, give_the_grey_text_to_all_boxes_in_rgb) {
    colors.color_mode = 1;
    type(3, "0200");
    EXPECT_EQ(texts(), strings(4, "0200"));
    EXPECT_EQ(values(), (std::vector{0, 0, 0, 200}));
    EXPECT_EQ(m.port.take_written(), strings{"CRY200"});
}

TEST_F(color_boxes, give_the_trimmed_grey_text_to_the_other_boxes) {
    colors.color_mode = 1;
    type(3, " 8 ");
    EXPECT_EQ(texts(), (strings{"8", "8", "8", " 8 "}));
}

TEST_F(color_boxes, give_neutral_colour_differences_beside_the_grey_text_in_any_other_mode) {
    for (const int mode : {0, 2}) {
        colors.color_mode = static_cast<std::uint8_t>(mode);
        type(3, "200");
        EXPECT_EQ(texts(), (strings{"128", "200", "128", "200"})) << mode;
        EXPECT_EQ(m.port.take_written(), strings{"CRY200"}) << mode;
    }
}

TEST_F(color_boxes, take_the_text_before_they_pump_and_move_the_slider_behind_it) {
    film([this] {
        return std::to_string(bar(0).value()) + (link.download_mode ? " downloading " : " idle ") + box(0).text.get();
    });
    m.events.in(0, [this] { box(0).text = "9"; });
    type(0, "50");
    EXPECT_EQ(frames, (strings{"0 idle 50", "CRR050: 50 downloading 9"}));
    EXPECT_FALSE(link.download_mode);
}

TEST_F(color_boxes, wait_for_no_answer) {
    const std::int64_t pumps = m.events.pumps;
    type(0, "50");
    EXPECT_EQ(m.events.pumps, pumps + 1) << "the one before the number is looked at";
    EXPECT_FALSE(link.tim_rx.enabled);
}

TEST_F(color_boxes, tell_of_a_closed_port_and_move_the_slider_all_the_same) {
    link.cmd_disconn_click();
    type(0, "33");
    EXPECT_EQ(m.boxes.all, std::vector{test::box_disconnected});
    EXPECT_EQ(bar(0).value(), 33);
    EXPECT_EQ(box(0).text.get(), "33");
    EXPECT_FALSE(link.download_mode);
    expect_all_selected(0, 2);
}

} // namespace
} // namespace desk
