#include "generator/sink_edids.h"

#include "runtime/failure.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>

namespace desk {
namespace {

int sum_of_block(const bytes& edid, std::ptrdiff_t block) {
    return std::accumulate(edid.begin() + block * 128, edid.begin() + (block + 1) * 128, 0);
}

TEST(sink_edids, base_blocks_have_header_and_checksum) {
    const bytes header{0x00, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0x00};
    for (const int sink : {1, 2, 3}) {
        const bytes edid = first_sink_edid(sink);
        ASSERT_EQ(edid.size(), 256U) << sink;
        EXPECT_TRUE(std::equal(header.begin(), header.end(), edid.begin())) << sink;
        EXPECT_EQ(sum_of_block(edid, 0) % 256, 0) << sink;
        // the desk cannot distinguish a checksum of 0 from 256
        EXPECT_NE(edid[127], 0) << sink;
        EXPECT_LE(edid[23], 155) << sink;
    }
}

TEST(sink_edids, digital_sinks_have_a_cea_block) {
    for (const int sink : {1, 2}) {
        const bytes edid = first_sink_edid(sink);
        EXPECT_EQ(edid[126], 1) << sink;
        EXPECT_EQ(edid[128], 0x02) << sink;
        EXPECT_EQ(edid[129], 0x03) << sink;
        EXPECT_EQ(sum_of_block(edid, 1) % 256, 0) << sink;
        EXPECT_NE(edid[255], 0) << sink;
        // the data blocks end exactly where the timings begin
        std::size_t at = 132;
        const std::size_t end = 128U + edid[130];
        while (at < end)
            at += (edid[at] & 0x1FU) + 1U;
        EXPECT_EQ(at, end) << sink;
        EXPECT_NE(edid[end] | edid[end + 1], 0) << sink;
    }
}

TEST(sink_edids, the_analogue_sink_has_an_erased_block_1) {
    const bytes edid = first_sink_edid(3);
    EXPECT_EQ(edid[126], 0);
    EXPECT_TRUE(std::all_of(edid.begin() + 128, edid.end(), [](std::uint8_t b) { return b == 0xFF; }));
    EXPECT_EQ(edid[20] & 0x80, 0);
}

TEST(sink_edids, first_timing_reads_as_meant) {
    // 1920 x 1080 at 60 Hz: 148.5 MHz, blanking 280 and 45
    const bytes edid = first_sink_edid(1);
    EXPECT_EQ(edid[54] + 256 * edid[55], 14850);
    EXPECT_EQ(edid[56] + 256 * (edid[58] >> 4), 1920);
    EXPECT_EQ(edid[57] + 256 * (edid[58] & 15), 280);
    EXPECT_EQ(edid[59] + 256 * (edid[61] >> 4), 1080);
    EXPECT_EQ(edid[60] + 256 * (edid[61] & 15), 45);
    EXPECT_EQ(edid[62] + 256 * (edid[65] >> 6), 88);
    EXPECT_EQ(edid[63] + 256 * ((edid[65] >> 4) & 3), 44);
    EXPECT_EQ(edid[64] >> 4, 4);
    EXPECT_EQ(edid[64] & 15, 5);
}

TEST(sink_edids, there_are_three) {
    EXPECT_THROW(first_sink_edid(0), runtime_failure);
    EXPECT_THROW(first_sink_edid(4), runtime_failure);
}

} // namespace
} // namespace desk
