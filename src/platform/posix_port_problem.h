#pragma once

#include "platform/posix_processes.h"

#include <filesystem>
#include <optional>
#include <string>

#include <sys/types.h>

namespace desk {

// Why a port can't be used, for the operator: one sentence without its full stop, with what helps where that is known.

/// The device that a port's link leads to, for a sentence: without control characters.
std::string shown_name(const std::filesystem::path& device);

/// `device` could not be opened; `error` is the system's number of the reason.
std::string problem_of_opening(const std::filesystem::path& device, int error,
                               const process_table& processes = process_table());

/// The device was opened and can't be `what` ("used as a serial port"); `error` is the system's number of the reason.
std::string problem_of_use(const std::filesystem::path& device, const std::string& what, int error);

/// Something else has the device's name, such as a file.
std::string problem_of_file(const std::filesystem::path& device);

/// Another program holds the device.
std::string problem_of_holder(const std::filesystem::path& device, const std::optional<process_found>& holder);

/// Somebody works at the terminal; none: the desk itself was started from it.
std::string problem_of_terminal(const std::filesystem::path& device, const std::optional<process_found>& at_work);

/// Who may use a device, and who asks.
struct device_rights {
    std::string owner;
    std::string group;
    bool group_may = false; ///< read and write
    bool group_is_root = false;
    bool in_group = false; ///< this process has the group
    bool listed = false;   ///< the machine's list has the user in the group: it holds from the next login on
};

/// Permission was denied.
std::string problem_of_rights(const device_rights& rights);

} // namespace desk
