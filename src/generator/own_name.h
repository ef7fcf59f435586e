#pragma once

#include <filesystem>
#include <functional>
#include <system_error>

namespace desk {

/// Throws where what has this path belongs to somebody else and must stay.
using expect_replaceable = std::function<void(const std::filesystem::path&)>;
/// Whether this program made what has this path.
using is_ours = std::function<bool(const std::filesystem::path&)>;

/// Calls `make` with names in the folder of `name` until one is free, and gives that. `make` reports a name that
/// something else has as std::errc::file_exists. Throws failure::path_file_access_error for any other error.
std::filesystem::path make_beside(const std::filesystem::path& name,
                                  const std::function<std::error_code(const std::filesystem::path&)>& make);

/// Renames `made`, which this program made in the same folder, to `name`. What has that name already is replaced if
/// `check` does not throw, even if another program puts something there at this moment. If it fails, `made` is removed
/// and the exception passed on; throws failure::path_file_access_error where the system refuses.
void take_name(const std::filesystem::path& made, const std::filesystem::path& name, const expect_replaceable& check,
               const is_ours& ours);

/// Removes what has this name if it is `ours`. What another program puts there at this moment stays.
void give_up_name(const std::filesystem::path& name, const is_ours& ours) noexcept;

} // namespace desk
