#include "edid/format/checksum_rule.h"

#include "support/edid_fixture.h"
#include "support/expect_failure.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace desk {
namespace {

using test::byte_at;

/// A rule after taking these bytes.
checksum_rule rule_after(std::string_view data) {
    checksum_rule rule;
    for (std::size_t i = 0; i < data.size(); ++i)
        rule.take(static_cast<std::uint8_t>(byte_at(data, i)));
    return rule;
}

TEST(needed_checksum, is_what_the_last_two_digits_lack_to_256) {
    EXPECT_EQ(needed_checksum(1), 255);
    EXPECT_EQ(needed_checksum(0xFF), 1);
    EXPECT_EQ(needed_checksum(0x1C4), 0x3C);
    EXPECT_EQ(needed_checksum(127 * 255), 127);
}

TEST(needed_checksum, is_256_for_a_multiple_of_256) {
    for (const int sum : {0, 256, 512, 0x7F00})
        EXPECT_EQ(needed_checksum(sum), 256) << sum;
}

TEST(checksum_rule, compares_the_last_byte_of_each_block_and_no_other) {
    checksum_rule rule;
    std::vector<std::size_t> compared;
    for (std::size_t i = 0; i < 600; ++i) {
        EXPECT_EQ(rule.count(), i);
        if (rule.compare(0)) compared.push_back(i);
        rule.take(0);
    }
    EXPECT_EQ(compared, (std::vector<std::size_t>{127, 255}));
}

TEST(checksum_rule, accepts_only_the_right_byte) {
    const std::string data = test::some_bytes(256);
    for (const std::size_t block : {0U, 1U}) {
        const checksum_rule rule = rule_after(data.substr(0, 128 * block + 127));
        const int needed = test::needed_by(data, block);
        for (int byte = 0; byte < 256; ++byte) {
            const auto sum = rule.compare(static_cast<std::uint8_t>(byte));
            ASSERT_TRUE(sum);
            EXPECT_EQ(sum->block, block);
            EXPECT_EQ(sum->needed, needed) << "whatever the byte is";
            EXPECT_EQ(sum->correct, byte == needed) << byte;
        }
    }
}

TEST(checksum_rule, restarts_at_block_1) {
    for (const char checksum : {'\0', '\x50'}) {
        const std::string block_0 = std::string(127, '\x11') + checksum;
        const auto sum = rule_after(block_0 + std::string(127, '\x02')).compare(2);
        ASSERT_TRUE(sum);
        EXPECT_EQ(sum->needed, 2) << "127 times 2 lacks 2 to 256";
        EXPECT_TRUE(sum->correct);
    }
}

TEST(checksum_rule, overflows_if_its_sum_does_not_fit_into_32_bits) {
    checksum_rule rule;
    const auto take_all = [&] {
        for (int i = 0; i < 8'421'000; ++i)
            rule.take(255);
    };
    EXPECT_EQ(test::failure_of(take_all), std::nullopt);
    EXPECT_EQ(test::failure_of(take_all), failure::overflow);
}

} // namespace
} // namespace desk
