#include "signal/color_settings.h"

#include "runtime/text.h"
#include "runtime/windows_1252.h"
#include "support/signal_fixture.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <tuple>
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

TEST_F(color_sliders, report_a_closed_port_and_still_show_the_value) {
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

TEST_F(color_boxes, send_three_digits_and_keep_the_typed_text) {
    const std::vector<std::tuple<std::string, std::string, int>> cases = {
        {"7", "CRB007", 7}, {"42", "CRB042", 42}, {"0", "CRB000", 0}, {"0255", "CRB255", 255}, {"  19 ", "CRB019", 19}};
    for (const auto& [typed, sent, value] : cases) {
        type(2, typed);
        EXPECT_EQ(m.port.take_written(), strings{sent});
        EXPECT_EQ(bar(2).value(), value);
        EXPECT_EQ(box(2).text.get(), typed);
        expect_all_selected(2, static_cast<int>(typed.size()));
    }
}

TEST_F(color_boxes, send_nothing_for_a_text_that_is_no_number_up_to_255_and_select_it) {
    bar(0).place(90);
    for (const std::string& typed : strings{"", "   ", "256", "999", "1000", "99999", "-1", "+7", "1.0", "1E1", "1 2",
                                            "12a", "\t7", "&H10", "７", "²", std::string(400, '9')}) {
        for (const bool downloading : {false, true}) {
            link.download_mode = downloading;
            type(0, typed);
            EXPECT_TRUE(m.port.take_written().empty()) << typed;
            EXPECT_EQ(box(0).text.get(), typed);
            EXPECT_EQ(bar(0).value(), 90) << typed;
            EXPECT_EQ(link.download_mode, downloading) << typed;
            expect_all_selected(0, static_cast<int>(character_count(typed)));
        }
    }
    EXPECT_TRUE(m.boxes.all.empty());
}

TEST_F(color_boxes, send_a_number_after_any_number_of_zeros) {
    const std::string zeros(400, '0');
    type(0, zeros + "255");
    type(0, zeros + "7");
    type(0, zeros);
    EXPECT_EQ(m.port.take_written(), (strings{"CRR255", "CRR007", "CRR000"}));
    type(0, zeros + "256");
    EXPECT_TRUE(m.port.take_written().empty());
    EXPECT_EQ(bar(0).value(), 0);
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

TEST_F(color_boxes, move_only_their_own_slider_and_leave_the_other_texts) {
    for (const int mode : {0, 1, 2}) {
        colors.color_mode = static_cast<std::uint8_t>(mode);
        type(1, "66");
        EXPECT_EQ(values(), (std::vector{0, 66, 0, 0})) << mode;
        EXPECT_EQ(texts(), (strings{"as before", "66", "as before", "as before"})) << mode;
        m.port.take_written();
    }
}

TEST_F(color_boxes, give_the_trimmed_grey_text_to_the_other_boxes_in_rgb) {
    colors.color_mode = 1;
    for (const char* typed : {"0200", " 8 "}) {
        type(3, typed);
        const std::string trimmed = trim(typed);
        EXPECT_EQ(texts(), (strings{trimmed, trimmed, trimmed, typed}));
    }
    EXPECT_EQ(values(), (std::vector{0, 0, 0, 8}));
    EXPECT_EQ(m.port.take_written(), (strings{"CRY200", "CRY008"}));
}

TEST_F(color_boxes, give_neutral_colour_differences_beside_the_grey_text_in_any_other_mode) {
    for (const int mode : {0, 2}) {
        colors.color_mode = static_cast<std::uint8_t>(mode);
        type(3, "200");
        EXPECT_EQ(texts(), (strings{"128", "200", "128", "200"})) << mode;
        EXPECT_EQ(m.port.take_written(), strings{"CRY200"}) << mode;
    }
}

TEST_F(color_boxes, take_the_text_before_they_pump_and_move_the_slider_after_it) {
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

TEST_F(color_boxes, report_a_closed_port_and_still_move_the_slider) {
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
