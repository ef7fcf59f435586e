#include "platform/program_directory.h"
#include "runtime/failure.h"
#include "runtime/files.h"
#include "runtime/windows_api.h"

#include <string>
#include <system_error>

namespace desk {

std::filesystem::path program_directory() {
    std::wstring path(MAX_PATH, L'\0');
    DWORD length = 0;
    while ((length = GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()))) == path.size())
        path.resize(path.size() * 2);
    path.resize(length);
    return std::filesystem::path(path).parent_path();
}

std::filesystem::path user_data_directory() {
    std::wstring local(MAX_PATH, L'\0');
    DWORD length = 0;
    while ((length = GetEnvironmentVariableW(L"LOCALAPPDATA", local.data(), static_cast<DWORD>(local.size()))) >
           local.size())
        local.resize(length);
    local.resize(length);
    if (local.empty())
        throw runtime_failure(failure::path_file_access_error, "LOCALAPPDATA names no folder for the desk's data");
    std::filesystem::path folder = std::filesystem::path(local) / "velotrace-desk";
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    if (error)
        throw runtime_failure(failure::path_file_access_error,
                              "the folder " + utf8_from_path(folder) + " can't be created: " + error.message());
    return folder;
}

} // namespace desk
