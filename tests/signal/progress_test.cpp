// The progress of long work on the line, read at every pump.

#include "support/signal_fixture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace desk {
namespace {

class progress_of_work : public test::signal_fixture {
protected:
    progress_of_work() : signal_fixture(20, 10) {
        m.events.on_pump = [this] {
            if (link.progress.at_work()) seen.push_back(link.progress.fraction());
            tries = std::max(tries, link.tries);
        };
    }
    /// The fractions as they were seen, each once.
    std::vector<double> steps() const {
        std::vector<double> all = seen;
        all.erase(std::unique(all.begin(), all.end()), all.end());
        return all;
    }
    static std::vector<double> parts_of(int count, int from = 0) {
        std::vector<double> all;
        for (int i = from; i < count; ++i)
            all.push_back(static_cast<double>(i) / count);
        return all;
    }

    std::vector<double> seen;
    int tries = 0;
};

TEST_F(progress_of_work, counts_the_rows_of_favorites_that_are_sent) {
    enter(2);
    rows.lstv_timing.set_checked(3, true);
    desk_area.cmd_run.on_click();
    EXPECT_EQ(steps(), parts_of(20));
    EXPECT_FALSE(link.progress.at_work());
}

TEST_F(progress_of_work, counts_the_rows_of_the_autorun_list_that_are_sent) {
    enter(5);
    desk_area.cmd_run.on_click();
    EXPECT_EQ(steps(), parts_of(32));
}

TEST_F(progress_of_work, counts_the_bytes_of_a_long_answer) {
    enter(2);
    answers["FT+999"] = "";
    // half of the answer and then the rest
    std::string answer;
    for (int i = 1; i <= 20; ++i)
        answer += i < 10 ? "FT-00" + std::to_string(i) : "FT-0" + std::to_string(i);
    m.events.in(40, [&] { m.port.arrive(answer.substr(0, 60)); });
    m.events.in(200, [&] { m.port.arrive(answer.substr(60)); });
    desk_area.cmd_download.on_click();
    EXPECT_EQ(steps(), (std::vector<double>{0, 0.5, 1}));
}

TEST_F(progress_of_work, counts_the_questions_of_refresh) {
    for (const char* letters : {"TIM", "PAT", "OUT", "HDC"})
        answers[std::string(letters) + "999"] = std::string(letters) + "001";
    status.cmd_refresh.on_click();
    EXPECT_EQ(steps(), parts_of(4));
}

TEST_F(progress_of_work, never_goes_back_in_the_download_of_the_panel) {
    for (const char* letters : {"TIM", "PAT", "OUT", "HDC", "ASC", "PCM", "CSC", "DEE", "ATO", "FAV"})
        answers[std::string(letters) + "999"] = std::string(letters) + "001";
    enter(6);
    desk_area.cmd_download.on_click();
    EXPECT_TRUE(std::is_sorted(seen.begin(), seen.end()));
    EXPECT_EQ(steps().size(), m.port.take_written().size()) << "the first four within the first step of the rest";
    EXPECT_GT(seen.back(), 0.85);
}

TEST_F(progress_of_work, ends_with_the_exchange_that_fails) {
    enter(2);
    answers["FT-002"] = "";
    desk_area.cmd_run.on_click();
    EXPECT_EQ(steps(), (std::vector<double>{0, 0.05}));
    EXPECT_FALSE(link.progress.at_work());
}

TEST_F(progress_of_work, counts_how_often_a_command_was_sent) {
    link.tx_cmd("TIM001");
    EXPECT_EQ(tries, 1);
    unplugged = true;
    link.tx_cmd("TIM001");
    EXPECT_EQ(tries, 2);
    EXPECT_EQ(link.tries, 0);
}

TEST_F(progress_of_work, keeps_the_tries_of_an_interrupted_exchange) {
    answers["TIM001"] = "";
    int after_the_inner_one = -1;
    // in the second try, which begins after 150 rounds of 5 ms
    m.events.in(1000, [&] {
        link.tx_cmd("PAT001");
        after_the_inner_one = link.tries;
    });
    link.tx_cmd("TIM001");
    EXPECT_EQ(after_the_inner_one, 2);
}

} // namespace
} // namespace desk
