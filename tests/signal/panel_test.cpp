#include "signal/panel.h"

#include "support/signal_fixture.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <vector>

namespace desk {
namespace {

using test::boxes;
using test::look_of;
using test::strings;
using buttons = std::vector<button*>;

template <auto Group>
buttons members_of(panel& switches) {
    buttons members;
    for (button& b : switches.*Group)
        members.push_back(&b);
    return members;
}

struct panel_group {
    const char* name;
    buttons (*members)(panel&);
    void (panel::*paint)(int);
    const char* letters;
    int first_argument; ///< the argument of the first button, and the value that lights it
};

void PrintTo(const panel_group& group, std::ostream* out) { *out << group.name; }

const std::vector<panel_group> groups = {
    {"cmd_out", &members_of<&panel::cmd_out>, &panel::paint_out, "OUT", 1},
    {"cmd_hdcp", &members_of<&panel::cmd_hdcp>, &panel::paint_hdcp, "HDC", 0},
    {"cmd_asc", &members_of<&panel::cmd_asc>, &panel::paint_asc, "ASC", 1},
    {"cmd_lpcm", &members_of<&panel::cmd_lpcm>, &panel::paint_lpcm, "PCM", 1},
    {"cmd_csc", &members_of<&panel::cmd_csc>, &panel::paint_csc, "CSC", 1},
    {"cmd_deep", &members_of<&panel::cmd_deep>, &panel::paint_deep, "DEE", 1},
    {"cmd_auto_go", &members_of<&panel::cmd_auto_go>, &panel::paint_auto, "ATO", 0},
    {"cmd_fav", &members_of<&panel::cmd_fav>, &panel::paint_fav, "FAV", 0},
};

class panel_test : public test::signal_fixture {
protected:
    panel_test() { enter(6); }
    static strings looks(const buttons& members) {
        strings all;
        for (const button* b : members)
            all.push_back(look_of(*b));
        return all;
    }
    /// The looks of `count` idle buttons, one of them lit.
    static strings rest_with(std::size_t count, int lit) {
        strings all(count, "grey enabled");
        if (lit >= 0 && lit < static_cast<int>(count)) all.at(static_cast<std::size_t>(lit)) = "green enabled";
        return all;
    }
    static strings dark(std::size_t count) { return rest_with(count, -1); }
    strings looks_of_all() {
        strings all;
        for (const panel_group& g : groups) {
            for (const std::string& look : looks(g.members(switches)))
                all.push_back(look);
        }
        return all;
    }
    void light_first_of_all() {
        for (const panel_group& g : groups)
            (switches.*g.paint)(g.first_argument);
    }
};

class panel_groups : public panel_test, public testing::WithParamInterface<panel_group> {
protected:
    /// The group's command for a member.
    static std::string command_of(std::size_t index) {
        return std::string(GetParam().letters) + "00" +
               std::to_string(GetParam().first_argument + static_cast<int>(index));
    }
    /// The looks of the other groups.
    strings others() {
        strings all;
        for (const panel_group& g : groups) {
            if (g.name == std::string(GetParam().name)) continue;
            for (const std::string& look : looks(g.members(switches)))
                all.push_back(look);
        }
        return all;
    }
    void paint(int value) { (switches.*GetParam().paint)(value); }

    buttons members = GetParam().members(switches);
};

INSTANTIATE_TEST_SUITE_P(panel, panel_groups, testing::ValuesIn(groups),
                         [](const auto& group) { return std::string(group.param.name); });

TEST_P(panel_groups, light_the_button_of_the_value_and_no_other) {
    for (const int value : {-1, 0, 1, 254, 1, 999, 2, 3, 4, 5}) {
        paint(value);
        EXPECT_EQ(looks(members), rest_with(members.size(), value - GetParam().first_argument)) << value;
    }
}

TEST_P(panel_groups, are_recoloured_by_their_painter_and_nothing_else) {
    for (button* b : members) {
        b->back_color = 255;
        b->enabled = false;
    }
    const strings others_before = others();
    paint(999);
    EXPECT_EQ(looks(members), strings(members.size(), "grey disabled"));
    EXPECT_EQ(others(), others_before);
    EXPECT_TRUE(m.port.take_written().empty());
    EXPECT_EQ(labels(), strings(4, ""));
}

TEST_P(panel_groups, send_the_command_of_the_pressed_button_and_light_it) {
    for (std::size_t i = 0; i < members.size(); ++i) {
        members[i]->on_click();
        EXPECT_EQ(m.port.take_written().front(), command_of(i));
        EXPECT_EQ(looks(members), rest_with(members.size(), static_cast<int>(i)));
    }
    EXPECT_TRUE(m.boxes.all.empty());
}

TEST_P(panel_groups, have_the_pressed_button_red_and_disabled_from_before_the_first_pump) {
    film([this] { return look_of(*members.back()); });
    unplugged = true;
    members.back()->on_click();
    const std::string sent = command_of(members.size() - 1) + ": red disabled";
    EXPECT_EQ(frames, (strings{"red disabled", sent, "red disabled", sent, "red disabled"}));
    EXPECT_EQ(look_of(*members.back()), "grey enabled");
}

TEST_P(panel_groups, keep_the_light_and_the_other_buttons_until_the_answer) {
    paint(GetParam().first_argument);
    strings seen;
    m.events.in(5, [&] { seen = looks(members); });
    members.back()->on_click();
    strings expected = rest_with(members.size(), 0);
    expected.back() = "red disabled";
    EXPECT_EQ(seen, expected);
}

TEST_P(panel_groups, go_dark_without_a_box_if_the_press_fails) {
    light_first_of_all();
    const strings others_before = others();
    unplugged = true;
    members.back()->on_click();
    EXPECT_EQ(m.port.take_written(), strings(2, command_of(members.size() - 1)));
    EXPECT_EQ(looks(members), dark(members.size())) << "the earlier light does not come back";
    EXPECT_EQ(others(), others_before);
    EXPECT_TRUE(m.boxes.all.empty());
}

TEST_P(panel_groups, go_dark_after_the_box_of_a_closed_port) {
    paint(GetParam().first_argument);
    link.cmd_disconn_click();
    members.back()->on_click();
    EXPECT_EQ(m.boxes.all, boxes{test::box_disconnected});
    EXPECT_EQ(looks(members), dark(members.size()));
}

TEST_P(panel_groups, can_be_pressed_again_after_a_failure) {
    unplugged = true;
    members.front()->on_click();
    unplugged = false;
    members.front()->on_click();
    EXPECT_EQ(looks(members), rest_with(members.size(), 0));
}

class status_labels : public panel_test {};

TEST_F(status_labels, show_the_caption_of_the_output_format) {
    const strings captions{"PC", "HD", "DVI", "HDMI"};
    for (std::size_t i = 0; i < captions.size(); ++i) {
        switches.cmd_out.at(i).on_click();
        EXPECT_EQ(labels(), (strings{"", "", captions.at(i), ""}));
    }
}

TEST_F(status_labels, show_whether_hdcp_is_on) {
    switches.cmd_hdcp[1].on_click();
    EXPECT_EQ(labels(), (strings{"", "", "", "ON"}));
    switches.cmd_hdcp[0].on_click();
    EXPECT_EQ(labels(), (strings{"", "", "", "OFF"}));
}

TEST_F(status_labels, show_the_failed_press_of_their_own_group) {
    unplugged = true;
    switches.cmd_out[1].on_click();
    EXPECT_EQ(labels(), (strings{"", "", "Link Error", ""}));
    status.lab_out.caption = "HD";
    switches.cmd_hdcp[1].on_click();
    EXPECT_EQ(labels(), (strings{"", "", "HD", "Link Error"}));
}

TEST_F(status_labels, do_not_change_with_the_other_groups) {
    for (const bool silent : {false, true}) {
        unplugged = silent;
        set_labels("as before");
        switches.cmd_asc[1].on_click();
        switches.cmd_lpcm[1].on_click();
        switches.cmd_csc[1].on_click();
        switches.cmd_deep[1].on_click();
        switches.cmd_auto_go[1].on_click();
        switches.cmd_fav[1].on_click();
        EXPECT_EQ(labels(), strings(4, "as before"));
    }
}

class lpcm_channels : public panel_test {
protected:
    buttons sources = members_of<&panel::cmd_asc>(switches);
    buttons channels = members_of<&panel::cmd_lpcm>(switches);
};

TEST_F(lpcm_channels, are_asked_for_at_once_after_each_audio_source) {
    for (std::size_t i = 0; i < sources.size(); ++i) {
        sources[i]->on_click();
        EXPECT_EQ(m.port.take_written(), (strings{"ASC00" + std::to_string(i + 1), "PCM999"}));
    }
}

TEST_F(lpcm_channels, are_asked_for_by_no_other_group) {
    for (const panel_group& g : groups) {
        g.members(switches).front()->on_click();
        const std::size_t sent = m.port.take_written().size();
        EXPECT_EQ(sent, g.name == std::string("cmd_asc") ? 2U : 1U) << g.name;
    }
}

TEST_F(lpcm_channels, are_lit_by_the_last_three_characters_of_the_answer) {
    const std::vector<std::pair<std::string, int>> cases = {{"PCM001", 0},  {"PCM002", 1},  {"PCM003", 2},
                                                            {"PCM000", -1}, {"PCM004", -1}, {"PCM100", -1},
                                                            {"PCM012", -1}, {"PCM0003", 2}, {"PCM00002 ", 1}};
    for (const auto& [answer, lit] : cases) {
        switches.paint_lpcm(1);
        answers["PCM999"] = answer;
        sources[0]->on_click();
        EXPECT_EQ(looks(channels), rest_with(3, lit)) << answer;
        EXPECT_TRUE(m.boxes.all.empty()) << answer;
    }
}

TEST_F(lpcm_channels, stay_as_they_were_if_the_question_fails) {
    switches.paint_lpcm(2);
    answers["PCM999"] = "";
    sources[1]->on_click();
    EXPECT_EQ(m.boxes.all, boxes{test::box_link_error});
    EXPECT_EQ(looks(sources), rest_with(3, 1));
    EXPECT_EQ(looks(channels), rest_with(3, 1));
}

TEST_F(lpcm_channels, are_not_asked_for_if_the_source_was_not_taken) {
    unplugged = true;
    switches.paint_lpcm(2);
    sources[1]->on_click();
    EXPECT_EQ(m.port.take_written(), (strings{"ASC002", "ASC002"}));
    EXPECT_EQ(looks(channels), rest_with(3, 1));
}

TEST_F(lpcm_channels, are_asked_for_with_the_source_lit_and_still_disabled) {
    film([this] { return look_of(*sources[2]); });
    answers["PCM999"] = "";
    sources[2]->on_click();
    EXPECT_EQ(frames, (strings{"red disabled", "ASC003: red disabled", "red disabled", "PCM999: green disabled",
                               "green disabled", "PCM999: green disabled", "green disabled", "box: green disabled"}));
    EXPECT_EQ(look_of(*sources[2]), "green enabled");
}

TEST_F(lpcm_channels, are_dark_and_silent_if_the_generator_refuses_the_choice) {
    for (std::size_t i = 0; i < channels.size(); ++i) {
        switches.paint_lpcm(1);
        answers["PCM00" + std::to_string(i + 1)] = "PCM100";
        channels[i]->on_click();
        EXPECT_EQ(looks(channels), dark(3));
        EXPECT_EQ(m.port.take_written().size(), 1U) << "a refusal is an answer";
    }
    EXPECT_TRUE(m.boxes.all.empty());
}

TEST_F(lpcm_channels, are_refused_only_by_the_whole_answer) {
    for (const char* answer : {"PCM1000", "PCM101", "PCM000"}) {
        answers["PCM002"] = answer;
        channels[1]->on_click();
        EXPECT_EQ(looks(channels), rest_with(3, 1)) << answer;
    }
}

class reset_button : public panel_test {
protected:
    reset_button() {
        light_first_of_all();
        set_labels("as before");
        rows.cur_timing = 7;
        rows.cur_pattern = 8;
    }
};

TEST_F(reset_button, makes_the_panel_dark_and_empties_the_labels) {
    switches.cmd_reset.on_click();
    EXPECT_EQ(m.port.take_written(), strings{"RST001"});
    EXPECT_EQ(looks_of_all(), dark(looks_of_all().size()));
    EXPECT_EQ(labels(), strings(4, ""));
    EXPECT_TRUE(m.boxes.all.empty());
}

TEST_F(reset_button, leaves_the_known_rows) {
    switches.cmd_reset.on_click();
    EXPECT_EQ(rows.cur_timing, 7);
    EXPECT_EQ(rows.cur_pattern, 8);
}

TEST_F(reset_button, changes_nothing_if_it_is_not_answered) {
    const strings before = looks_of_all();
    unplugged = true;
    switches.cmd_reset.on_click();
    EXPECT_EQ(m.boxes.all, boxes{test::box_link_error});
    EXPECT_EQ(looks_of_all(), before);
    EXPECT_EQ(labels(), strings(4, "as before"));
    EXPECT_EQ(look_of(switches.cmd_reset), "grey enabled");
}

TEST_F(reset_button, is_disabled_first_and_red_after_the_pump) {
    film([this] { return look_of(switches.cmd_reset); });
    unplugged = true;
    switches.cmd_reset.on_click();
    EXPECT_EQ(frames, (strings{"grey disabled", "RST001: red disabled", "red disabled", "RST001: red disabled",
                               "red disabled", "box: red disabled"}));
    EXPECT_EQ(look_of(switches.cmd_reset), "grey enabled");
}

TEST_F(reset_button, waits_long_for_its_answer) {
    answers["RST001"] = "";
    m.events.in(3000, [this] { m.port.arrive("RST001"); });
    switches.cmd_reset.on_click();
    EXPECT_EQ(m.port.take_written(), strings{"RST001"});
    EXPECT_EQ(labels(), strings(4, ""));
}

TEST_F(reset_button, reports_a_closed_port_twice) {
    link.cmd_disconn_click();
    switches.cmd_reset.on_click();
    EXPECT_EQ(m.boxes.all, (boxes{test::box_disconnected, test::box_link_error}));
    EXPECT_EQ(labels(), strings(4, "as before"));
}

} // namespace
} // namespace desk
