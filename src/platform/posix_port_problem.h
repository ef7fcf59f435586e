#pragma once

#include "platform/posix_processes.h"

#include <filesystem>
#include <optional>
#include <string>

#include <sys/types.h>

namespace desk {

// Why a port cannot be used: one sentence for the operator, without a full stop, with a remedy if known.

/// The target of a port's link, without control characters.
std::string shown_name(const std::filesystem::path& device);

/// `device` could not be opened, with errno `error`.
std::string problem_of_opening(const std::filesystem::path& device, int error,
                               const process_table& processes = process_table());

/// The device is open but can't be `what` ("used as a serial port"), with errno `error`.
std::string problem_of_use(const std::filesystem::path& device, const std::string& what, int error);

/// The path is not a device but, for example, a file.
std::string problem_of_file(const std::filesystem::path& device);

std::string problem_of_holder(const std::filesystem::path& device, const std::optional<process_info>& holder);

/// The terminal is in use by `at_work`; without it, the desk was started from that terminal.
std::string problem_of_terminal(const std::filesystem::path& device, const std::optional<process_info>& at_work);

/// Permissions of a device and of this process.
struct device_rights {
    std::string owner;
    std::string group;
    bool group_may = false; ///< read and write
    bool group_is_root = false;
    bool in_group = false; ///< this process has the group
    bool listed = false;   ///< the group database lists the user, which takes effect at the next login
};

std::string problem_of_rights(const device_rights& rights);

} // namespace desk
