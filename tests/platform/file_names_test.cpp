#include "platform/file_names.h"

#include <gtest/gtest.h>

namespace desk {
namespace {

TEST(folded_name, ignores_case) {
    EXPECT_EQ(folded_name("Monitor-7.HEX"), folded_name("mONITOR-7.hex"));
    EXPECT_EQ(folded_name(""), folded_name(""));
}

TEST(folded_name, distinguishes_all_other_characters) {
    for (const char* other : {"b.hex", "a.bin", "a-hex", "a.hex ", "", "\xC3\xA4.hex"})
        EXPECT_NE(folded_name("a.hex"), folded_name(other)) << other;
    EXPECT_NE(folded_name("\xC3\xA4.hex"), folded_name("\xC3\xB6.hex"));
}

#ifdef _WIN32
TEST(folded_name, ignores_case_beyond_ascii) {
    EXPECT_EQ(folded_name("\xC3\x84\xD0\x96.hex"), folded_name("\xC3\xA4\xD0\xB6.hex"));
}
#endif

} // namespace
} // namespace desk
