#include "translate/decode/data_block_table.h"

#include <gtest/gtest.h>

#include <set>
#include <string_view>

namespace desk {
namespace {

TEST(data_block_rows, have_each_their_own_node) {
    std::set<std::string_view> keys;
    for (const data_block_row& row : data_block_rows)
        EXPECT_TRUE(keys.insert(row.key).second) << row.key;
}

TEST(data_block_rows, end_with_the_one_that_fits_every_block) {
    for (const data_block_row& row : data_block_rows) {
        const bool fits_every_block = row.tag == data_block_row::any && row.extended_tag == data_block_row::any;
        EXPECT_EQ(fits_every_block, &row == &data_block_rows.back()) << row.key;
    }
}

} // namespace
} // namespace desk
