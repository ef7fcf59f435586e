#pragma once

#include <filesystem>
#include <functional>
#include <system_error>

namespace desk {

/// Throws if what has this path belongs to another owner and must stay.
using expect_replaceable = std::function<void(const std::filesystem::path&)>;
/// Whether this program created what has this path.
using is_ours = std::function<bool(const std::filesystem::path&)>;

/// Calls `make` with names in the folder of `name` until one is free, and returns that one. `make` reports a name in
/// use as std::errc::file_exists. Throws failure::path_file_access_error for any other error.
std::filesystem::path make_beside(const std::filesystem::path& name,
                                  const std::function<std::error_code(const std::filesystem::path&)>& make);

/// Renames `made`, which this program created in the same folder, to `name`. Replaces what has that name only if
/// `check` does not throw, even if another program puts something there meanwhile. On failure `made` is removed and the
/// exception passed on; throws failure::path_file_access_error if the system refuses.
void take_name(const std::filesystem::path& made, const std::filesystem::path& name, const expect_replaceable& check,
               const is_ours& ours);

/// Removes what has this name if it is `ours`. What another program puts there meanwhile stays.
void give_up_name(const std::filesystem::path& name, const is_ours& ours) noexcept;

} // namespace desk
