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
using test::download_test;
using test::lit;
using test::look_of;
using test::strings;

/// What Download in the panel asks beyond the refresh: an answer, and the button that it lights.
struct panel_query {
    const char* query;
    const char* answer;
    int lit;
    int (*lit_of)(const panel&);
};

template <auto Group>
int lit_in(const panel& p) {
    return lit(p.*Group);
}

constexpr int dark = -1;
const std::vector<panel_query> panel_queries = {
    {"ASC999", "ASC003", 2, lit_in<&panel::cmd_asc>},     {"PCM999", "PCM002", 1, lit_in<&panel::cmd_lpcm>},
    {"CSC999", "CSC001", 0, lit_in<&panel::cmd_csc>},     {"DEE999", "DEE003", 2, lit_in<&panel::cmd_deep>},
    {"ATO999", "ATO001", 1, lit_in<&panel::cmd_auto_go>}, {"FAV999", "FAV000", 0, lit_in<&panel::cmd_fav>},
};

class panel_download : public download_test {
protected:
    panel_download() {
        answers = {{"TIM999", "TIM007"}, {"PAT999", "PAT005"}, {"OUT999", "OUT004"}, {"HDC999", "HDC001"}};
        for (const panel_query& q : panel_queries) {
            answers[q.query] = q.answer;
            queries.emplace_back(q.query);
        }
    }
    std::vector<int> lights() const {
        std::vector<int> all;
        for (const panel_query& q : panel_queries)
            all.push_back(q.lit_of(switches));
        return all;
    }
    static std::vector<int> expected_lights() {
        std::vector<int> all;
        for (const panel_query& q : panel_queries)
            all.push_back(q.lit);
        return all;
    }
    strings queries{"TIM999", "PAT999", "OUT999", "HDC999"};
};

TEST_F(panel_download, refreshes_the_labels_and_then_lights_every_group) {
    press_in(6);
    EXPECT_EQ(m.port.take_written(), queries);
    EXPECT_EQ(labels(), (strings{"[07] timing", "[05] pattern", "HDMI", "ON"}));
    EXPECT_EQ(lit(switches.cmd_out), 3);
    EXPECT_EQ(lit(switches.cmd_hdcp), 1);
    EXPECT_EQ(lights(), expected_lights());
    EXPECT_TRUE(m.boxes.all.empty());
    EXPECT_EQ(look(), "grey enabled");
}

TEST_F(panel_download, reads_the_audio_source_from_one_character_and_the_rest_from_three) {
    for (const panel_query& q : panel_queries)
        answers[q.query] = std::string(q.answer).replace(4, 2, "12");
    press_in(6);
    std::vector<int> expected(panel_queries.size(), dark);
    expected.front() = 1;
    EXPECT_EQ(lights(), expected);
}

TEST_F(panel_download, darkens_the_groups_for_values_that_they_do_not_have) {
    press_in(6);
    for (const panel_query& q : panel_queries)
        answers[q.query] = std::string(q.answer).replace(3, 3, "254");
    press_in(6);
    EXPECT_EQ(lights(), std::vector<int>(panel_queries.size(), dark));
}

TEST_F(panel_download, sends_no_further_query_and_shows_no_box_if_the_refresh_fails) {
    for (std::size_t failing = 0; failing < 4; ++failing) {
        const std::string answer = std::exchange(answers[queries[failing]], "");
        press_in(6);
        strings sent(queries.begin(), queries.begin() + static_cast<int>(failing) + 1);
        sent.push_back(queries[failing]);
        EXPECT_EQ(m.port.take_written(), sent);
        EXPECT_EQ(look(), "grey enabled") << queries[failing];
        answers[queries[failing]] = answer;
    }
    EXPECT_TRUE(m.boxes.all.empty());
}

TEST_F(panel_download, reports_a_failed_link_only_in_the_label) {
    unplugged = true;
    press_in(6);
    EXPECT_EQ(labels(), (strings{"Link Error", "", "", ""}));
    EXPECT_TRUE(m.boxes.all.empty());
}

TEST_F(panel_download, stops_with_a_box_at_each_group_that_fails_and_leaves_it_as_it_was) {
    for (std::size_t failing = 0; failing < panel_queries.size(); ++failing) {
        const std::string query = panel_queries[failing].query;
        const std::string answer = std::exchange(answers[query], "");
        switches.cmd_reset.on_click();
        m.port.take_written();
        press_in(6);
        strings sent(queries.begin(), queries.begin() + static_cast<int>(failing) + 5);
        sent.push_back(query);
        EXPECT_EQ(m.port.take_written(), sent);
        std::vector<int> expected = expected_lights();
        std::fill(expected.begin() + static_cast<int>(failing), expected.end(), dark);
        EXPECT_EQ(lights(), expected) << query;
        expect_one_box();
        EXPECT_EQ(look(), "grey enabled") << query;
        answers[query] = answer;
        press_in(6);
        answers[query] = "";
        press_in(6);
        expect_one_box();
        EXPECT_EQ(lights(), expected_lights()) << query << " leaves its group lit";
        answers[query] = answer;
    }
}

TEST_F(panel_download, refreshes_through_the_refresh_button_while_downloading) {
    film([this] { return look() + ", refresh " + look_of(status.cmd_refresh); });
    answers["PAT999"] = "";
    press_in(6);
    const std::string both = "red disabled, downloading, refresh red disabled";
    EXPECT_EQ(frames,
              (strings{"grey disabled, refresh grey enabled", "red disabled, downloading, refresh grey disabled", both,
                       "TIM999: " + both, both, "PAT999: " + both, both, "PAT999: " + both, both,
                       "grey enabled, refresh grey enabled"}));
}

TEST_F(panel_download, compares_no_letters) {
    answers["TIM999"] = "PAT007";
    answers["FAV999"] = "ATO001";
    press_in(6);
    EXPECT_EQ(status.lab_timing.caption, "[07] timing");
    EXPECT_EQ(lit(switches.cmd_fav), 1);
}

TEST_F(panel_download, shows_the_box_of_a_closed_port_once) {
    link.cmd_disconn_click();
    press_in(6);
    EXPECT_EQ(m.boxes.all, boxes{test::box_disconnected});
}

} // namespace
} // namespace desk
