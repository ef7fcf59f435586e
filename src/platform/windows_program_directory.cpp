#include "platform/program_directory.h"
#include "runtime/windows_api.h"

#include <string>

namespace desk {

std::filesystem::path program_directory() {
    std::wstring path(MAX_PATH, L'\0');
    DWORD length = 0;
    while ((length = GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()))) == path.size())
        path.resize(path.size() * 2);
    path.resize(length);
    return std::filesystem::path(path).parent_path();
}

} // namespace desk
