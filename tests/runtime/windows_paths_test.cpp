#include "runtime/files.h"

#include <gtest/gtest.h>

namespace desk {
namespace {

TEST(a_path, is_converted_from_and_to_utf_8) {
    EXPECT_EQ(path_from_utf8("C:\\Prüf\\電😀.bin").native(), L"C:\\Pr\u00FCf\\\u96FB\U0001F600.bin");
    EXPECT_EQ(utf8_from_path(L"C:\\Pr\u00FCf\\\u96FB\U0001F600.bin"), "C:\\Prüf\\電😀.bin");
    EXPECT_EQ(path_from_utf8("").native(), L"");
    EXPECT_EQ(utf8_from_path(L""), "");
}

TEST(a_path, that_is_no_text_has_replacement_characters) {
    EXPECT_EQ(path_from_utf8("\xFF.bin").native(), L"\uFFFD.bin");
    const std::wstring half_a_pair{wchar_t{0xD800}, L'a'};
    EXPECT_EQ(utf8_from_path(half_a_pair), "\uFFFDa");
}

} // namespace
} // namespace desk
