#include "edid/buffers.h"

#include "support/edid_fixture.h"

#include <gtest/gtest.h>

namespace desk {
namespace {

TEST(edid_buffers, hold_zeros_at_first) {
    const edid_buffers buffers;
    for (const edid_buffer* buffer : {&buffers.write_buff, &buffers.read_buff, &buffers.trans_buff})
        EXPECT_EQ(*buffer, test::buffer_of("", 0));
}

TEST(edid_buffers, are_chosen_by_a_byte) {
    edid_buffers buffers;
    EXPECT_EQ(&buffers.of(1), &buffers.write_buff);
    EXPECT_EQ(&buffers.of(2), &buffers.read_buff);
    for (const int other : {0, 3, 4, 255})
        EXPECT_EQ(&buffers.of(static_cast<std::uint8_t>(other)), &buffers.trans_buff) << other;
}

TEST(edid_buffers, count_the_places_at_which_write_and_read_differ) {
    edid_buffers buffers;
    EXPECT_EQ(buffers.different_bytes(), 0);
    buffers.read_buff[255] = 1;
    EXPECT_EQ(buffers.different_bytes(), 1);
    buffers.write_buff[0] = 200;
    EXPECT_EQ(buffers.different_bytes(), 2);
    buffers.write_buff[255] = 1;
    EXPECT_EQ(buffers.different_bytes(), 1);
    buffers.write_buff.fill(7);
    EXPECT_EQ(buffers.different_bytes(), 256);
}

} // namespace
} // namespace desk
