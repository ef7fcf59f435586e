#include "link/exchange.h"

#include "support/expect_failure.h"
#include "support/link_fixture.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>
#include <vector>

namespace desk {
namespace {

using test::failure_of;
using test::link_test;
using test::sentence_of;
using strings = std::vector<std::string>;

class receiver : public link_test {
protected:
    /// Whether the answer is accepted in this view, in this mode.
    bool accepted(int view, bool download, const std::string& answer) {
        link.view_mode = static_cast<std::int16_t>(view);
        link.download_mode = download;
        link.rx_count = 0;
        link.rx_text.clear();
        link.rx_done = false;
        receive(answer);
        return link.rx_done;
    }
};

TEST_F(receiver, ticks_every_20_milliseconds_and_is_off_at_first) {
    EXPECT_EQ(link.tim_rx.interval, 20);
    EXPECT_FALSE(link.tim_rx.enabled);
}

TEST_F(receiver, does_nothing_on_a_tick_without_new_bytes) {
    link.tim_rx.enabled = true;
    link.rx_text = "TIM001";
    link.rx_count = 6;
    link.tim_rx_timer();
    EXPECT_FALSE(link.rx_done);
    EXPECT_EQ(m.events.pumps, 0);
    EXPECT_TRUE(link.tim_rx.enabled);
}

TEST_F(receiver, is_off_while_it_pumps_and_reads) {
    link.tim_rx.enabled = true;
    std::vector<bool> enabled_at_pump;
    std::vector<std::size_t> waiting_at_pump;
    m.events.on_pump = [&] {
        enabled_at_pump.push_back(link.tim_rx.enabled);
        waiting_at_pump.push_back(m.port.waiting.size());
    };
    receive("TIM001");
    EXPECT_EQ(enabled_at_pump, (std::vector<bool>{false, true}));
    EXPECT_EQ(waiting_at_pump, (std::vector<std::size_t>{6, 0}));
}

TEST_F(receiver, counts_every_byte_as_one_character) {
    receive(std::string_view("A\0\xFFz", 4));
    EXPECT_EQ(link.rx_count, 4);
    EXPECT_EQ(link.rx_text, std::string("A\0\xFFz", 4));
    receive("B");
    EXPECT_EQ(link.rx_count, 5);
    EXPECT_EQ(link.rx_text, std::string("A\0\xFFzB", 5));
}

TEST_F(receiver, accepts_three_letters_and_three_digits_in_every_view) {
    for (const int view : {0, 1, 2, 3, 4, 5, 6, 254}) {
        EXPECT_TRUE(accepted(view, false, "TIM001")) << view;
        EXPECT_TRUE(accepted(view, false, "???000more")) << view;
        EXPECT_FALSE(accepted(view, false, "TIM00")) << view;
        EXPECT_FALSE(accepted(view, false, "TIM0x1")) << view;
    }
}

TEST_F(receiver, accepts_the_same_during_a_download_in_other_views) {
    for (const int view : {0, 6, 254}) {
        EXPECT_TRUE(accepted(view, true, "OUT001")) << view;
        EXPECT_FALSE(accepted(view, true, "OUT0x1")) << view;
        EXPECT_FALSE(accepted(view, true, "OUT00")) << view;
    }
}

TEST_F(receiver, counts_characters_during_a_download_in_these_views) {
    link.fav_timing_count = 3;
    link.fav_pattern_count = 2;
    struct {
        int view;
        std::size_t length;
        const char* usual; ///< accepted without a download
    } const cases[] = {{2, 18, "FT+001"}, {3, 12, "FP+001"}, {4, 18, "ESC001"}, {5, 768, "ATI005"}};
    for (const auto& [view, length, usual] : cases) {
        EXPECT_FALSE(accepted(view, true, std::string(length - 1, '1'))) << view;
        for (const char c : {'x', '\0'})
            EXPECT_TRUE(accepted(view, true, std::string(length, c))) << view;
        EXPECT_TRUE(accepted(view, true, std::string(length + 1, 'x'))) << view;
        EXPECT_TRUE(accepted(view, false, usual)) << view;
    }
}

TEST_F(receiver, counts_18_characters_for_the_motion_string_pattern) {
    selected_pattern = 41;
    EXPECT_FALSE(accepted(1, true, "MOT99912345678901"));
    EXPECT_TRUE(accepted(1, true, "MOT999123456789012"));
    EXPECT_TRUE(accepted(1, false, "PAT041"));
    for (const int other : {1, 13, 40, 42}) {
        selected_pattern = other;
        EXPECT_TRUE(accepted(1, true, "CRR128")) << other;
    }
}

TEST_F(receiver, accepts_the_first_byte_if_no_timing_is_expected_and_nothing_without_a_byte) {
    link.fav_timing_count = 0;
    EXPECT_TRUE(accepted(2, true, "x"));
    EXPECT_FALSE(accepted(2, true, ""));
}

TEST_F(receiver, counts_over_several_arrivals) {
    link.fav_timing_count = 2;
    EXPECT_FALSE(accepted(2, true, "FT+001"));
    receive("FT-00");
    EXPECT_FALSE(link.rx_done);
    receive("2");
    EXPECT_TRUE(link.rx_done);
}

TEST_F(receiver, revokes_the_acceptance_after_a_wrong_digit) {
    link.rx_done = true;
    receive("TIM0A1");
    EXPECT_FALSE(link.rx_done);
}

TEST_F(receiver, counts_in_16_bits) {
    receive(std::string(32767, '1'));
    EXPECT_EQ(link.rx_count, 32767);
    EXPECT_EQ(failure_of([&] { receive("1"); }), failure::overflow);
    EXPECT_EQ(sentence_of([&] { receive("1"); }),
              "Counting the bytes that the generator has sent: 32768 does not fit into a 16-bit number.");
}

TEST_F(receiver, works_out_the_count_in_16_bits) {
    link.fav_timing_count = 5461;
    EXPECT_FALSE(accepted(2, true, "x"));
    link.fav_timing_count = 5462;
    EXPECT_EQ(failure_of([&] { accepted(2, true, "x"); }), failure::overflow);
}

} // namespace
} // namespace desk
