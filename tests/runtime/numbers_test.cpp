#include "runtime/numbers.h"

#include "support/expect_failure.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <limits>
#include <utility>

namespace desk {
namespace {

using test::failure_of;

constexpr double not_a_number = std::numeric_limits<double>::quiet_NaN();
constexpr double infinite = std::numeric_limits<double>::infinity();

TEST(assigning_a_floating_value, rounds_to_nearest_and_ties_to_even) {
    for (const auto& [given, expected] : std::initializer_list<std::pair<double, int>>{{0.5, 0},
                                                                                       {1.5, 2},
                                                                                       {2.5, 2},
                                                                                       {3.5, 4},
                                                                                       {-0.5, 0},
                                                                                       {-1.5, -2},
                                                                                       {-2.5, -2},
                                                                                       {2.499999, 2},
                                                                                       {2.500001, 3},
                                                                                       {-2.500001, -3}})
        EXPECT_EQ(to_integer(given), expected) << given;
    EXPECT_EQ(to_byte(126.5), 126);
    EXPECT_EQ(to_byte(127.5), 128);
    EXPECT_EQ(to_long(1000000.5), 1000000);
    EXPECT_EQ(to_long(1000001.5), 1000002);
}

TEST(a_byte, holds_0_to_255_after_rounding) {
    EXPECT_EQ(to_byte(0), 0);
    EXPECT_EQ(to_byte(255), 255);
    EXPECT_EQ(to_byte(255.4), 255);
    EXPECT_EQ(to_byte(-0.5), 0);
    for (const double value : {255.5, 256.0, -0.6, -1.0, 1e300, -1e300})
        EXPECT_EQ(failure_of([&] { to_byte(value); }), failure::overflow) << value;
}

TEST(an_integer, has_16_bits) {
    EXPECT_EQ(to_integer(32767), 32767);
    EXPECT_EQ(to_integer(-32768), -32768);
    EXPECT_EQ(to_integer(32767.4), 32767);
    for (const double value : {32767.5, 32768.0, -32768.6, -32769.0})
        EXPECT_EQ(failure_of([&] { to_integer(value); }), failure::overflow) << value;
}

TEST(a_long, has_32_bits) {
    EXPECT_EQ(to_long(2147483647.0), 2147483647);
    EXPECT_EQ(to_long(-2147483648.0), std::numeric_limits<std::int32_t>::min());
    for (const double value : {2147483647.5, 2147483648.0, -2147483649.0})
        EXPECT_EQ(failure_of([&] { to_long(value); }), failure::overflow) << value;
}

TEST(assigning_a_floating_value, fails_unless_finite) {
    for (const double value : {not_a_number, infinite, -infinite}) {
        EXPECT_EQ(failure_of([&] { to_byte(value); }), failure::overflow);
        EXPECT_EQ(failure_of([&] { to_integer(value); }), failure::overflow);
        EXPECT_EQ(failure_of([&] { to_long(value); }), failure::overflow);
    }
}

TEST(divide, divides) {
    EXPECT_EQ(divide(1, 8), 0.125);
    EXPECT_EQ(divide(0, 5), 0);
    EXPECT_EQ(divide(-9, 3), -3);
}

TEST(divide, fails_for_zero) {
    EXPECT_EQ(failure_of([] { divide(5, 0); }), failure::division_by_zero);
    EXPECT_EQ(failure_of([] { divide(-5, 0); }), failure::division_by_zero);
    EXPECT_EQ(failure_of([] { divide(0, 0); }), failure::overflow);
}

} // namespace
} // namespace desk
