#include "translate/decode/header.h"

#include "support/translation_fixture.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace desk {
namespace {

using test::edid_of;

const std::vector<int> good_header = {0x00, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0x00};

TEST(header, is_that_of_a_vesa_basic_block) {
    EXPECT_TRUE(is_vesa_basic_block(edid_of({{0, good_header}})));
    EXPECT_TRUE(is_vesa_basic_block(edid_of({{0, good_header}, {8, {1, 2, 3}}, {128, {2}}})));
    EXPECT_FALSE(is_vesa_basic_block({}));
}

TEST(header, must_have_each_of_its_eight_bytes) {
    for (std::size_t i = 0; i < good_header.size(); ++i)
        EXPECT_FALSE(is_vesa_basic_block(edid_of({{0, good_header}, {i, {0x7F}}}))) << i;
}

} // namespace
} // namespace desk
