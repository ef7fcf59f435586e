#include "generator/faulty_generator.h"

#include "support/text_of_answer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <map>
#include <optional>
#include <string>

namespace desk {
namespace {

using namespace std::chrono_literals;

using test::text_of;

class faulty_generator_test : public testing::Test {
protected:
    /// Makes every later answer faulty in this way.
    void always(fault f) { line.follow({100, 1, {f}}); }

    std::string tell(std::string_view command) { return text_of(line.command(command)); }

    simulated_generator generator{76, 48};
    faulty_generator line{generator};
};

TEST_F(faulty_generator_test, changes_nothing_by_default) {
    EXPECT_EQ(tell("TIM007"), "TIM007");
    EXPECT_EQ(line.last(), fault::none);
    EXPECT_TRUE(line.counts().empty());
}

TEST_F(faulty_generator_test, loses_answers_to_commands_that_are_carried_out) {
    always(fault::drop);
    EXPECT_EQ(tell("TIM007"), "");
    EXPECT_EQ(generator.state.timing, 7);
    EXPECT_EQ(line.last(), fault::drop);
}

TEST_F(faulty_generator_test, repeats_answers) {
    always(fault::repeat);
    EXPECT_EQ(tell("TIM007"), "TIM007TIM007");
    EXPECT_EQ(tell("ERD001").size(), 2U * (6 + 256));
}

TEST_F(faulty_generator_test, garbles_some_bytes_and_keeps_their_number) {
    always(fault::garble);
    for (int i = 0; i < 50; ++i) {
        const std::string bad = tell("TIM007");
        EXPECT_EQ(bad.size(), 6U);
        EXPECT_NE(bad, "TIM007");
    }
}

TEST_F(faulty_generator_test, delays_answers_within_a_try) {
    always(fault::delay);
    for (int i = 0; i < 50; ++i) {
        const std::chrono::milliseconds late = line.command("TIM007").front().pause - 1ms;
        EXPECT_GE(late, 50ms);
        EXPECT_LT(late, 700ms);
    }
}

TEST_F(faulty_generator_test, sends_late_answers_after_the_try) {
    always(fault::late);
    for (int i = 0; i < 50; ++i) {
        const std::chrono::milliseconds late = line.command("TIM007").front().pause - 1ms;
        EXPECT_GE(late, 800ms);
        EXPECT_LT(late, 3000ms);
    }
}

TEST_F(faulty_generator_test, shortens_answers) {
    always(fault::shorten);
    for (int i = 0; i < 50; ++i) {
        const std::string start = tell("TIM007");
        EXPECT_LT(start.size(), 6U);
        EXPECT_TRUE(std::string("TIM007").starts_with(start));
    }
}

TEST_F(faulty_generator_test, shortens_an_answer_of_two_parts_from_its_end) {
    always(fault::shorten);
    bool cut_into_the_echo = false;
    for (int i = 0; i < 2000; ++i) {
        const answer parts = line.command("ERD001");
        ASSERT_EQ(parts.size(), 2U);
        if (parts[0].data.size() == 6) continue;
        cut_into_the_echo = true;
        EXPECT_TRUE(parts[1].data.empty());
    }
    EXPECT_TRUE(cut_into_the_echo);
}

TEST_F(faulty_generator_test, lengthens_answers) {
    always(fault::lengthen);
    for (int i = 0; i < 50; ++i) {
        const std::string more = tell("TIM007");
        EXPECT_GT(more.size(), 6U);
        EXPECT_LE(more.size(), 22U);
        EXPECT_TRUE(more.starts_with("TIM007"));
    }
}

TEST_F(faulty_generator_test, falls_silent_for_some_answers) {
    line.follow({10, 1, {fault::silent}});
    int longest = 0;
    int lost = 0;
    for (int i = 0; i < 1000; ++i) {
        lost = tell("TIM007").empty() ? lost + 1 : 0;
        longest = std::max(longest, lost);
    }
    EXPECT_GT(longest, 3) << "of ten answers one begins a silence: four in a row by chance alone are rare";
    EXPECT_EQ(generator.state.timing, 7);
}

TEST_F(faulty_generator_test, speaks_again_with_another_plan) {
    // eight of nine silences are longer than one answer
    for (std::uint64_t seed = 1; seed <= 10; ++seed) {
        line.follow({100, seed, {fault::silent}});
        EXPECT_EQ(tell("TIM007"), "");
        line.follow({100, 1, {fault::delay}});
        EXPECT_EQ(tell("TIM007"), "TIM007") << seed;
    }
}

TEST_F(faulty_generator_test, reports_once_for_how_long_the_cable_is_out) {
    always(fault::unplug);
    EXPECT_EQ(tell("TIM007"), "");
    const std::optional<std::chrono::milliseconds> absence = line.take_absence();
    ASSERT_TRUE(absence);
    EXPECT_GE(*absence, 200ms);
    EXPECT_LT(*absence, 5000ms);
    EXPECT_FALSE(line.take_absence());
}

TEST_F(faulty_generator_test, forgets_what_it_says_it_has_stored) {
    tell("TIM003");
    always(fault::forget);
    EXPECT_EQ(tell("TIM007"), "TIM007");
    EXPECT_EQ(generator.state.timing, 3);
    EXPECT_EQ(line.last(), fault::forget);
    EXPECT_EQ(text_of(line.raw_block("EWR001", bytes(256, 1))), "EWR002");
    EXPECT_NE(generator.state.sinks[0].edid, bytes(256, 1));
    EXPECT_EQ(tell("ERS001"), "ERS001ERS002");
    EXPECT_NE(generator.state.sinks[0].edid, bytes(256, 0xFF));
    EXPECT_EQ(tell("FT+007"), "FT+007");
    EXPECT_FALSE(generator.state.favorite_timings.at(6));
}

TEST_F(faulty_generator_test, stores_something_else) {
    always(fault::miswrite);
    EXPECT_EQ(tell("TIM007"), "TIM007");
    EXPECT_EQ(generator.state.timing, 8);
    EXPECT_EQ(tell("TIM076"), "TIM076");
    EXPECT_EQ(generator.state.timing, 75) << "there is no next";
    EXPECT_EQ(tell("OUT004"), "OUT004");
    EXPECT_EQ(generator.state.output_format, 3);
    EXPECT_EQ(tell("FT+007"), "FT+007");
    EXPECT_FALSE(generator.state.favorite_timings.at(6));
    EXPECT_TRUE(generator.state.favorite_timings.at(7));
    EXPECT_EQ(text_of(line.raw_block("EWR001", bytes(256, 1))), "EWR002");
    const bytes held = generator.state.sinks[0].edid.value();
    EXPECT_EQ(std::count(held.begin(), held.end(), 1), 255);
}

TEST_F(faulty_generator_test, does_not_store_a_block_that_is_confirmed_later) {
    always(fault::forget);
    EXPECT_EQ(text_of(line.raw_block("MOT001", bytes(12, 'x'))), "");
    EXPECT_EQ(generator.state.custom_string[0], 'V');
    EXPECT_EQ(line.last(), fault::forget);
}

TEST_F(faulty_generator_test, does_not_falsify_queries) {
    for (const fault lie : {fault::forget, fault::miswrite}) {
        always(lie);
        const generator_state before = generator.state;
        for (const char* query : {"TIM999", "ATI999", "VER001", "ATS999", "ERD001"}) {
            EXPECT_NE(tell(query), "") << query;
            EXPECT_EQ(line.last(), fault::none) << query;
            EXPECT_TRUE(generator.state == before) << query;
        }
    }
    EXPECT_TRUE(line.counts().empty());
}

TEST_F(faulty_generator_test, does_not_count_unanswered_commands) {
    simulated_generator generator_2{76, 48};
    faulty_generator line_2{generator_2};
    line.follow({50, 1, {fault::drop}});
    line_2.follow({50, 1, {fault::drop}});
    for (int i = 0; i < 50; ++i) {
        EXPECT_EQ(tell("ABC123"), "");
        EXPECT_EQ(line.last(), fault::none);
        EXPECT_EQ(tell("TIM007"), text_of(line_2.command("TIM007")));
    }
}

TEST_F(faulty_generator_test, counts_by_kind) {
    always(fault::drop);
    tell("TIM007");
    tell("TIM007");
    always(fault::repeat);
    tell("TIM007");
    EXPECT_EQ(line.counts(), (std::map<fault, int>{{fault::drop, 2}, {fault::repeat, 1}}));
}

} // namespace
} // namespace desk
