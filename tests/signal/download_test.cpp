#include "signal/download.h"

#include "support/download_fixture.h"
#include "support/expect_failure.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <utility>
#include <vector>

namespace desk {
namespace {

using test::boxes;
using test::checked_rows;
using test::download_test;
using test::failure_of;
using test::strings;

TEST_F(download_test, sends_nothing_in_the_views_without_it) {
    for (const int row : {13, 41}) {
        rows.lstv_pattern.select(row);
        for (const int view : {0, 4, 254}) {
            press_in(view);
            EXPECT_TRUE(m.port.take_written().empty()) << view;
            EXPECT_EQ(look(), "grey enabled") << view;
        }
    }
    EXPECT_TRUE(m.boxes.all.empty());
}

TEST_F(download_test, sends_nothing_for_a_pattern_without_extras) {
    for (const int row : {1, 12, 14, 40, 42}) {
        rows.lstv_pattern.select(row);
        press_in(1);
        EXPECT_TRUE(m.port.take_written().empty()) << row;
    }
    EXPECT_TRUE(m.boxes.all.empty());
}

TEST_F(download_test, is_disabled_then_red_and_downloading_until_its_last_pump) {
    film([this] { return look(); });
    const std::vector<std::pair<int, std::string>> queries = {{2, "FT+999"}, {3, "FP+999"}, {5, "ATS999"}};
    for (const auto& [view, query] : queries) {
        frames.clear();
        answers[query] = "";
        press_in(view);
        EXPECT_EQ(frames, (strings{"grey disabled", query + ": red disabled, downloading", "red disabled, downloading",
                                   query + ": red disabled, downloading", "red disabled, downloading",
                                   "box: red disabled, downloading", "grey enabled"}));
    }
}

TEST_F(download_test, pumps_at_its_start_and_end_if_it_sends_nothing) {
    film([this] { return look(); });
    press_in(0);
    EXPECT_EQ(frames, (strings{"grey disabled", "grey enabled"}));
}

class custom_string : public download_test {
protected:
    custom_string() {
        rows.lstv_pattern.select(41);
        desk_area.txt_motion_str.text = "as before";
    }
    /// The text of the box after a download of these characters.
    std::string downloaded(const std::string& held) {
        answers["MOT999"] = "MOT999" + held;
        press_in(1);
        return desk_area.txt_motion_str.text;
    }
};

TEST_F(custom_string, is_the_text_up_to_a_nul_or_to_position_18) {
    const std::vector<std::pair<std::string, std::string>> cases = {{"abcdefghijkl", "abcdefghijkl"},
                                                                    {"abcdefghijklMNO", "abcdefghijkl"},
                                                                    {"  a  b      ", "  a  b      "},
                                                                    {"Gr\xFCn \x80\xE9\xFFwxyz", "Grün €éÿwxyz"},
                                                                    {std::string("abc\0defghijk", 12), "abc"},
                                                                    {std::string("abcdefghijk\0", 12), "abcdefghijk"},
                                                                    {std::string("a\0\0\0\0\0\0\0\0\0\0\0", 12), "a"},
                                                                    {std::string("\0bcdefghijkl", 12), ""}};
    for (const auto& [held, text] : cases) {
        EXPECT_EQ(downloaded(held), text);
        EXPECT_EQ(m.port.take_written(), strings{"MOT999"});
        EXPECT_EQ(look(), "grey enabled");
    }
    EXPECT_TRUE(m.boxes.all.empty());
}

TEST_F(custom_string, stays_for_an_answer_with_another_start) {
    for (const char* answer :
         {"MOT001abcdefghijkl", "XOT999abcdefghijkl", "mot999abcdefghijkl", "MOT998abcdefghijkl"}) {
        answers["MOT999"] = answer;
        press_in(1);
        EXPECT_EQ(desk_area.txt_motion_str.text.get(), "as before") << answer;
        EXPECT_EQ(m.port.take_written(), strings{"MOT999"}) << answer;
        expect_one_box();
        EXPECT_EQ(look(), "grey enabled") << answer;
    }
}

TEST_F(custom_string, stays_if_fewer_than_18_characters_come) {
    EXPECT_EQ(downloaded("abcdefghijk"), "as before");
    EXPECT_EQ(m.port.take_written(), twice("MOT999"));
    expect_one_box();
    EXPECT_EQ(look(), "grey enabled");
}

class color_download : public download_test {
protected:
    color_download() {
        rows.lstv_pattern.select(13);
        rows.show_pattern_extras();
        answers = {{"CSC999", "CSC001"}, {"CRR999", "CRR010"}, {"CRG999", "CRG020"}, {"CRB999", "CRB255"}};
        for (slider& bar : desk_area.hsr_color_setting)
            bar.place(99);
    }
    strings captions() const {
        strings all;
        for (const label& l : desk_area.lab_color_setting)
            all.push_back(l.caption);
        return all;
    }
    /// Slider and text of each of the four.
    strings values() const {
        strings all;
        for (std::size_t i = 0; i < 4; ++i)
            all.push_back(std::to_string(desk_area.hsr_color_setting.at(i).value()) + " " +
                          desk_area.txt_color_setting.at(i).text.get());
        return all;
    }
    void expect_controls(bool enabled) {
        for (const slider& bar : desk_area.hsr_color_setting)
            EXPECT_EQ(bar.enabled, enabled);
        for (const text_box& box : desk_area.txt_color_setting)
            EXPECT_EQ(box.enabled, enabled);
    }
};

TEST_F(color_download, fills_the_controls_and_enables_them) {
    press_in(1);
    EXPECT_EQ(m.port.take_written(), (strings{"CSC999", "CRR999", "CRG999", "CRB999"})) << "the sliders don't send";
    EXPECT_EQ(values(), (strings{"10 10", "20 20", "255 255", "20 20"})) << "grey mirrors the second channel";
    EXPECT_EQ(colors.channels, (std::array<std::uint8_t, 3>{10, 20, 255}));
    expect_controls(true);
    EXPECT_TRUE(m.boxes.all.empty());
    EXPECT_EQ(look(), "grey enabled");
}

TEST_F(color_download, names_the_channels_by_the_color_space) {
    const std::vector<std::pair<std::string, bool>> cases = {{"CSC001", true},  {"CSC002", false}, {"CSC003", false},
                                                             {"CSC000", false}, {"CSC100", false}, {"CSC011", false},
                                                             {"CSC0001", true}};
    for (const auto& [answer, is_rgb] : cases) {
        answers["CSC999"] = answer;
        press_in(1);
        EXPECT_EQ(colors.color_mode, is_rgb ? 1 : 2) << answer;
        EXPECT_EQ(captions(), is_rgb ? (strings{"Red", "Green", "Blue", "Grey"}) : (strings{"Cr", "Y", "Cb", "Grey"}))
            << answer;
        EXPECT_EQ(values(), (strings{"10 10", "20 20", "255 255", "20 20"})) << answer;
    }
}

TEST_F(color_download, lets_the_sliders_send_again_after_it) {
    press_in(1);
    m.port.take_written();
    desk_area.hsr_color_setting[0].set_value(7);
    EXPECT_EQ(m.port.take_written(), strings{"CRR007"});
}

TEST_F(color_download, is_silent_if_the_generator_has_no_values) {
    for (const char* answer : {"CRR300", "CRR1300"}) {
        answers["CRR999"] = answer;
        press_in(1);
        EXPECT_EQ(m.port.take_written(), (strings{"CSC999", "CRR999"})) << answer;
        EXPECT_EQ(values(), strings(4, "99 ")) << answer;
        EXPECT_EQ(captions(), (strings{"Red", "Green", "Blue", "Grey"})) << answer;
        expect_controls(false);
        EXPECT_EQ(look(), "grey enabled") << answer;
    }
    EXPECT_TRUE(m.boxes.all.empty());
}

TEST_F(color_download, keeps_what_it_has_read_before_a_failure) {
    struct {
        const char* query;
        strings sent;
        strings captions;
        strings values;
    } const cases[] = {
        {"CSC999", {"CSC999", "CSC999"}, strings(4, "?"), strings(4, "99 ")},
        {"CRR999", {"CSC999", "CRR999", "CRR999"}, {"Red", "Green", "Blue", "Grey"}, strings(4, "99 ")},
        {"CRG999",
         {"CSC999", "CRR999", "CRG999", "CRG999"},
         {"Red", "Green", "Blue", "Grey"},
         {"10 10", "99 ", "99 ", "99 "}},
        {"CRB999",
         {"CSC999", "CRR999", "CRG999", "CRB999", "CRB999"},
         {"Red", "Green", "Blue", "Grey"},
         {"10 10", "20 20", "99 ", "20 20"}},
    };
    colors.color_mode = 1;
    for (const auto& failing : cases) {
        const std::string answer = std::exchange(answers[failing.query], "");
        press_in(1);
        EXPECT_EQ(m.port.take_written(), failing.sent);
        EXPECT_EQ(colors.color_mode, 1) << failing.query;
        EXPECT_EQ(captions(), failing.captions) << failing.query;
        EXPECT_EQ(values(), failing.values) << failing.query;
        expect_controls(false);
        expect_one_box();
        EXPECT_EQ(look(), "grey enabled") << failing.query;
        answers[failing.query] = answer;
    }
}

TEST_F(color_download, takes_answers_with_any_letters) {
    answers = {{"CSC999", "XXX001"}, {"CRR999", "YYY001"}, {"CRG999", "ZZZ002"}, {"CRB999", "AAA003"}};
    press_in(1);
    EXPECT_EQ(values(), (strings{"1 1", "2 2", "3 3", "2 2"}));
}

struct favorite_kind {
    const char* name;
    int view;
    std::int16_t exchange::*count;
    list_view catalogue::*list;
    list_view catalogue::*other_list;
    const char* query;
};

void PrintTo(const favorite_kind& kind, std::ostream* out) { *out << kind.name; }

class favorite_download : public download_test, public testing::WithParamInterface<favorite_kind> {
protected:
    favorite_download() { link.*GetParam().count = 3; }
    void answer_with(const std::string& records) {
        answers[GetParam().query] = records;
        press_in(GetParam().view);
    }
    list_view& list() { return rows.*GetParam().list; }
};

INSTANTIATE_TEST_SUITE_P(download, favorite_download,
                         testing::Values(favorite_kind{"timings", 2, &exchange::fav_timing_count,
                                                       &catalogue::lstv_timing, &catalogue::lstv_pattern, "FT+999"},
                                         favorite_kind{"patterns", 3, &exchange::fav_pattern_count,
                                                       &catalogue::lstv_pattern, &catalogue::lstv_timing, "FP+999"}),
                         [](const auto& kind) { return std::string(kind.param.name); });

TEST_P(favorite_download, checks_and_unchecks_the_rows) {
    list().set_checked(2, true);
    answer_with("FT+001FT-002FT+003");
    EXPECT_EQ(m.port.take_written(), strings{GetParam().query});
    EXPECT_EQ(checked_rows(list()), (std::vector{1, 3}));
    EXPECT_TRUE(checked_rows(rows.*GetParam().other_list).empty());
    EXPECT_TRUE(m.boxes.all.empty());
    EXPECT_EQ(look(), "grey enabled");
}

TEST_P(favorite_download, takes_the_row_from_the_record_and_not_from_its_place) {
    for (const int row : {1, 2, 12, 20})
        list().set_checked(row, true);
    answer_with("FT+030FT-012FT-002");
    EXPECT_EQ(checked_rows(list()), (std::vector{1, 20, 30}));
}

TEST_P(favorite_download, unchecks_for_any_sign_but_plus) {
    for (const char* sign : {"-", " ", "x", "0", "*"}) {
        for (const int row : {1, 2, 3})
            list().set_checked(row, true);
        answer_with(std::string("FT+001FT") + sign + "002FT+003");
        EXPECT_EQ(checked_rows(list()), (std::vector{1, 3})) << sign;
    }
}

TEST_P(favorite_download, ignores_the_letters_of_a_record) {
    answer_with("++-001xy+002  +003");
    EXPECT_EQ(checked_rows(list()), (std::vector{2, 3}));
}

TEST_P(favorite_download, lets_the_last_record_of_a_row_win) {
    answer_with("FT+005FT+006FT-005");
    EXPECT_EQ(checked_rows(list()), std::vector{6});
}

TEST_P(favorite_download, reads_as_many_records_as_there_are_rows) {
    answer_with("FT-001FT-002FT-003FT+004");
    EXPECT_TRUE(checked_rows(list()).empty());
}

TEST_P(favorite_download, leaves_the_selection) {
    list().select(9);
    answer_with("FT+001FT-002FT-003");
    EXPECT_EQ(list().selected(), 9);
}

TEST_P(favorite_download, changes_nothing_if_a_character_is_missing) {
    list().set_checked(2, true);
    answer_with("FT+001FT-002FT+00");
    EXPECT_EQ(m.port.take_written(), twice(GetParam().query));
    EXPECT_EQ(checked_rows(list()), std::vector{2});
    expect_one_box();
    EXPECT_EQ(look(), "grey enabled");
}

TEST_P(favorite_download, ends_the_program_for_a_row_that_the_list_does_not_have) {
    for (const char* row : {"000", "046", "0A2", "999", "xyz"}) {
        EXPECT_EQ(failure_of([&] { answer_with(std::string("FT+001FT+") + row + "FT+003"); }),
                  failure::index_out_of_bounds)
            << row;
        EXPECT_EQ(checked_rows(list()), std::vector{1}) << "what was filled before stays";
    }
}

TEST_P(favorite_download, is_one_query_with_the_two_special_patterns_too) {
    for (const int row : {13, 41}) {
        rows.lstv_pattern.select(row);
        answer_with("FT+001FT-002FT-003");
        EXPECT_EQ(m.port.take_written(), strings{GetParam().query}) << row;
    }
}

class autorun_download : public download_test {
protected:
    /// A record of 24 characters with its three fields.
    static std::string record(const std::string& timing, const std::string& pattern, const std::string& interval) {
        return "ATN001ATT" + timing + "ATP" + pattern + "ATI" + interval;
    }
    static std::string records(std::size_t count, const std::string& each) {
        std::string all;
        for (std::size_t i = 0; i < count; ++i)
            all += each;
        return all;
    }
    void answer_with(const std::string& text) {
        answers["ATS999"] = text;
        press_in(5);
    }
};

TEST_F(autorun_download, fills_all_32_rows) {
    std::string text;
    for (int i = 1; i <= 32; ++i) {
        const std::string two = (i < 10 ? "0" : "") + std::to_string(i);
        text += record(i <= 30 ? "0" + two : "001", "0" + two, "1" + two);
    }
    answer_with(text);
    EXPECT_EQ(m.port.take_written(), strings{"ATS999"});
    ASSERT_EQ(steps.lstv_auto.row_count(), 32);
    for (int i = 1; i <= 32; ++i)
        EXPECT_EQ(autorun_row(i), (strings{std::to_string(i), test::numbered(i <= 30 ? i : 1, "timing"),
                                           test::numbered(i, "pattern"), std::to_string(100 + i)}));
    EXPECT_TRUE(m.boxes.all.empty());
    EXPECT_EQ(look(), "grey enabled");
}

TEST_F(autorun_download, takes_an_interval_of_0_for_an_unused_row) {
    steps.lstv_auto.set_sub_item(7, 1, "[12] timing");
    answer_with(records(32, record("999", "000", "000")));
    ASSERT_EQ(steps.lstv_auto.row_count(), 32);
    for (int i = 1; i <= 32; ++i)
        EXPECT_EQ(autorun_row(i), unused_row(i));
}

TEST_F(autorun_download, mixes_used_and_unused_rows) {
    answer_with(record("012", "007", "600") + record("001", "001", "000") + record("030", "045", "007") +
                records(29, record("001", "001", "000")));
    EXPECT_EQ(autorun_row(1), (strings{"1", "[12] timing", "[07] pattern", "600"}));
    EXPECT_EQ(autorun_row(2), unused_row(2));
    EXPECT_EQ(autorun_row(3), (strings{"3", "[30] timing", "[45] pattern", "7"})) << "any interval is a plain number";
    EXPECT_EQ(autorun_row(4), unused_row(4));
}

TEST_F(autorun_download, reads_these_positions_of_a_record_and_no_other) {
    answer_with(records(32, "999999999012999007999010"));
    EXPECT_EQ(autorun_row(1), (strings{"1", "[12] timing", "[07] pattern", "10"}));
    EXPECT_EQ(autorun_row(32), (strings{"32", "[12] timing", "[07] pattern", "10"}));
}

TEST_F(autorun_download, names_the_rows_by_their_place_in_the_lists) {
    rows.lstv_timing.add_row("[99] after the catalogue");
    answer_with(records(32, record("031", "002", "010")));
    EXPECT_EQ(autorun_row(1), (strings{"1", "[99] after the catalogue", "[02] pattern", "10"}));
}

TEST_F(autorun_download, reads_nothing_after_the_32nd_record) {
    answer_with(records(33, record("001", "001", "010")));
    EXPECT_EQ(steps.lstv_auto.row_count(), 32);
}

TEST_F(autorun_download, leaves_the_table_if_a_character_is_missing) {
    steps.lstv_auto.set_sub_item(7, 1, "[12] timing");
    answer_with(records(32, record("001", "001", "010")).substr(1));
    EXPECT_EQ(m.port.take_written(), twice("ATS999"));
    EXPECT_EQ(steps.lstv_auto.row_count(), 32);
    EXPECT_EQ(autorun_row(7), (strings{"7", "[12] timing", "", "0"}));
    expect_one_box();
    EXPECT_EQ(look(), "grey enabled");
}

TEST_F(autorun_download, pumps_with_the_list_empty) {
    answers["ATS999"] = records(32, record("001", "001", "010"));
    film([this] { return std::to_string(steps.lstv_auto.row_count()); });
    press_in(5);
    EXPECT_EQ(frames, (strings{"32", "ATS999: 32", "32", "0", "32"}));
}

TEST_F(autorun_download, ignores_the_editors_buttons_while_the_list_is_empty) {
    answers["ATS999"] = records(32, record("012", "007", "010"));
    int presses = 0;
    m.events.on_pump = [&] {
        if (steps.lstv_auto.row_count() != 0) return;
        ++presses;
        steps.cmd_replace.on_click();
        steps.cmd_delete.on_click();
        steps.lstv_auto.on_double_click();
    };
    press_in(5);
    EXPECT_EQ(presses, 1);
    EXPECT_EQ(steps.lstv_auto.row_count(), 32);
    EXPECT_EQ(autorun_row(1), (strings{"1", "[12] timing", "[07] pattern", "10"}));
}

TEST_F(autorun_download, ends_the_program_for_a_row_that_the_lists_do_not_have) {
    const std::vector<std::string> cases = {record("000", "001", "010"), record("031", "001", "010"),
                                            record("001", "000", "010"), record("001", "046", "010")};
    for (const std::string& wrong : cases)
        EXPECT_EQ(failure_of([&] { answer_with(records(32, wrong)); }), failure::index_out_of_bounds) << wrong;
}

TEST_F(download_test, reports_a_closed_port_and_the_failed_query) {
    link.cmd_disconn_click();
    press_in(2);
    EXPECT_EQ(m.boxes.all, (boxes{test::box_disconnected, test::box_link_error}));
    EXPECT_EQ(look(), "grey enabled");
}

} // namespace
} // namespace desk
