#include "platform/windows_program_directory.h"

#include "platform/first_files.h"
#include "platform/program_directory.h"
#include "runtime/failure.h"
#include "runtime/files.h"
#include "runtime/windows_api.h"

#include <optional>
#include <string>
#include <system_error>

namespace desk {

namespace {

std::filesystem::path folder_of_program() {
    std::wstring path(MAX_PATH, L'\0');
    DWORD length = 0;
    while ((length = GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()))) == path.size())
        path.resize(path.size() * 2);
    path.resize(length);
    return std::filesystem::path(path).parent_path();
}

} // namespace

std::filesystem::path own_directory_of(const std::filesystem::path& program_folder) {
    const std::optional<std::filesystem::path> first_files =
        first_files_in(program_folder / "first_files", program_folder);
    if (!first_files) return program_folder;
    return while_doing([] { return "The program's own directory"; },
                       [&] {
                           std::filesystem::path own_directory = user_data_directory();
                           copy_missing_first_files(own_directory, *first_files);
                           return own_directory;
                       });
}

std::filesystem::path program_directory() { return own_directory_of(folder_of_program()); }

std::filesystem::path user_data_directory() {
    std::wstring local(MAX_PATH, L'\0');
    DWORD length = 0;
    while ((length = GetEnvironmentVariableW(L"LOCALAPPDATA", local.data(), static_cast<DWORD>(local.size()))) >
           local.size())
        local.resize(length);
    local.resize(length);
    if (local.empty())
        throw runtime_failure(failure::path_file_access_error, "LOCALAPPDATA names no folder for the desk's data");
    std::filesystem::path folder = std::filesystem::path(local) / "VELOTRACE Desk";
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    if (error)
        throw runtime_failure(failure::path_file_access_error,
                              "the folder " + utf8_from_path(folder) + " can't be created: " + error.message());
    return folder;
}

} // namespace desk
