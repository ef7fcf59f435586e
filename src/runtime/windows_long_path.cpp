#include "runtime/windows_long_path.h"

#include "runtime/windows_api.h"

#include <string>

namespace desk {

namespace {

/// Shorter than the limit for folders, which is 248.
constexpr std::size_t longest_short_path = 240;

/// Absolute, without "..", with native separators: a path with the prefix is taken literally.
std::wstring full_path(const std::filesystem::path& path) {
    std::wstring full(GetFullPathNameW(path.c_str(), 0, nullptr, nullptr), L'\0');
    const DWORD length = GetFullPathNameW(path.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr);
    full.resize(length < full.size() ? length : 0);
    return full;
}

} // namespace

std::filesystem::path without_length_limit(const std::filesystem::path& path) {
    const std::wstring full = full_path(path);
    if (full.size() <= longest_short_path || full.starts_with(L"\\\\?\\") || full.starts_with(L"\\\\.\\")) return path;
    if (full.starts_with(L"\\\\")) return L"\\\\?\\UNC" + full.substr(1);
    return L"\\\\?\\" + full;
}

} // namespace desk
