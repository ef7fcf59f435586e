#include "runtime/files.h"

#include <gtest/gtest.h>

namespace desk {
namespace {

TEST(a_path, keeps_its_bytes) {
    for (const char* const name : {"/tmp/Prüf/電😀.bin", "\xFF.bin", ""}) {
        EXPECT_EQ(path_from_utf8(name).native(), name);
        EXPECT_EQ(utf8_from_path(std::filesystem::path(name)), name);
    }
}

} // namespace
} // namespace desk
