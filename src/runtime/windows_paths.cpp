#include "runtime/files.h"
#include "runtime/windows_api.h"

namespace desk {

// The standard library's own conversions throw if a name is no text; any program can create such a file.

std::filesystem::path path_from_utf8(std::string_view text) {
    const int length = static_cast<int>(text.size());
    std::wstring wide(text.size(), L'\0');
    const int count = MultiByteToWideChar(CP_UTF8, 0, text.data(), length, wide.data(), length);
    wide.resize(static_cast<std::size_t>(count));
    return wide;
}

std::string utf8_from_path(const std::filesystem::path& path) {
    const std::wstring& wide = path.native();
    const int length = static_cast<int>(wide.size());
    constexpr int most_bytes = 3; // for one character of UTF-16
    std::string text(wide.size() * most_bytes, '\0');
    const int count =
        WideCharToMultiByte(CP_UTF8, 0, wide.data(), length, text.data(), length * most_bytes, nullptr, nullptr);
    text.resize(static_cast<std::size_t>(count));
    return text;
}

} // namespace desk
