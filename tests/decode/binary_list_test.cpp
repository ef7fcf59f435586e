#include "translate/decode/binary_list.h"

#include "support/translation_fixture.h"

#include <gtest/gtest.h>

#include <numeric>
#include <string>

namespace desk {
namespace {

TEST(binary_list, has_eight_bytes_to_a_line_and_the_address_of_the_last) {
    edid_buffer counted{};
    std::iota(counted.begin(), counted.end(), std::uint8_t{0});
    for (const std::size_t block : {0U, 1U}) {
        const std::string text = test::text_of([&](std::string& shown) { print_binary_list(shown, counted, block); });
        EXPECT_EQ(text, test::list_of(counted, block));
        EXPECT_TRUE(text.starts_with(block == 0 ? "00 01 02 03 04 05 06 07 //7\r\n08 09 0A 0B 0C 0D 0E 0F //F\r\n10 "
                                                : "80 81 82 83 84 85 86 87 //87\r\n88 "));
        EXPECT_TRUE(text.ends_with(block == 0 ? " 7F //7F\r\n" : " FF //FF\r\n"));
    }
}

} // namespace
} // namespace desk
