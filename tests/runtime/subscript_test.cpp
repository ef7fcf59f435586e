#include "runtime/subscript.h"

#include "support/expect_failure.h"

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <type_traits>
#include <vector>

namespace desk {
namespace {

using test::failure_of;

TEST(an_element, is_found_by_its_subscript_from_0) {
    std::array<int, 3> numbers = {10, 20, 30};
    EXPECT_EQ(element(numbers, 0), 10);
    EXPECT_EQ(element(numbers, 1), 20);
    EXPECT_EQ(element(numbers, 2), 30);
}

TEST(an_element, is_a_reference_into_the_array) {
    std::array<int, 3> numbers = {10, 20, 30};
    element(numbers, 1) = 21;
    EXPECT_EQ(numbers, (std::array<int, 3>{10, 21, 30}));
    EXPECT_EQ(&element(numbers, 2), &numbers[2]);
}

TEST(an_element, of_a_constant_array_is_constant) {
    const std::array<int, 3> numbers = {10, 20, 30};
    EXPECT_EQ(element(numbers, 2), 30);
    static_assert(std::is_same_v<decltype(element(numbers, 2)), const int&>);
}

TEST(an_element, has_a_subscript_of_any_integer_type) {
    std::vector<std::string> names = {"a", "b"};
    EXPECT_EQ(element(names, std::uint8_t{1}), "b");
    EXPECT_EQ(element(names, std::int16_t{1}), "b");
    EXPECT_EQ(element(names, std::size_t{1}), "b");
    EXPECT_EQ(element(names, std::int64_t{1}), "b");
}

TEST(a_subscript, that_the_array_does_not_have_fails) {
    std::array<int, 4> numbers{};
    for (const int subscript : {-1, 4, 5, 254, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()})
        EXPECT_EQ(failure_of([&] { element(numbers, subscript); }), failure::subscript_out_of_range) << subscript;
    EXPECT_EQ(failure_of([&] { element(numbers, std::numeric_limits<std::size_t>::max()); }),
              failure::subscript_out_of_range);
    EXPECT_EQ(failure_of([&] { element(numbers, std::int64_t{1} << 32U); }), failure::subscript_out_of_range)
        << "it is not cut to 32 bits";
}

TEST(a_subscript, of_an_empty_array_always_fails) {
    std::vector<int> none;
    EXPECT_EQ(failure_of([&] { element(none, 0); }), failure::subscript_out_of_range);
}

TEST(a_subscript, is_reported_with_the_arrays_length) {
    const std::array<int, 4> numbers{};
    try {
        element(numbers, 7);
        FAIL() << "it did not fail";
    } catch (const runtime_failure& f) {
        EXPECT_EQ(f.number(), 9);
        EXPECT_NE(f.sentence().find("7"), std::string::npos) << f.sentence();
        EXPECT_NE(f.sentence().find("4"), std::string::npos) << f.sentence();
    }
}

} // namespace
} // namespace desk
