#include "edid/format/file_kind.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace desk {
namespace {

using named_kinds = std::vector<std::pair<std::string, file_kind>>;

TEST(kind_by_extension, ignores_the_case_and_takes_no_extension_as_raw_bytes) {
    for (const auto& [name, kind] : named_kinds{
             {"a.hex", file_kind::hex},
             {"a.HEX", file_kind::hex},
             {"a.bin", file_kind::bin},
             {"a.Bin", file_kind::bin},
             {"a.ddc", file_kind::ddc},
             {"a.DDC", file_kind::ddc},
             {"edid", file_kind::bin},
             {".hidden", file_kind::bin},
             {"a.b.hex", file_kind::hex},
             {"a.hex.txt", file_kind::unknown},
             {"a.txt", file_kind::unknown},
             {"a.", file_kind::unknown},
             {"a.hexa", file_kind::unknown},
             {"a.xhex", file_kind::unknown},
             {"ahex", file_kind::bin},
         })
        EXPECT_EQ(kind_by_extension(name), kind) << name;
}

TEST(kind_by_last_characters, needs_no_point) {
    for (const auto& [name, kind] : named_kinds{
             {"/a/b.hex", file_kind::hex},
             {"C:\\b.HeX", file_kind::hex},
             {"b.bin", file_kind::bin},
             {"b.ddc", file_kind::ddc},
             {"edidhex", file_kind::hex},
             {"a.xhex", file_kind::hex},
             {"DDC", file_kind::ddc},
             {"bin", file_kind::bin},
             {"b.hexa", file_kind::unknown},
             {"edid", file_kind::unknown},
             {"ex", file_kind::unknown},
             {"", file_kind::unknown},
         })
        EXPECT_EQ(kind_by_last_characters(name), kind) << name;
}

} // namespace
} // namespace desk
