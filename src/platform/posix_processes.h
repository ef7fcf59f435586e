#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include <sys/types.h>

namespace desk {

/// A running process.
struct process_info {
    int id = 0;
    std::string name; ///< the program's name, without control characters
    std::string user;

    /// For example "bash (process 1234, user bob)".
    std::string text() const;
};

/// The machine's processes, as far as this user can see them: on Linux from /proc, elsewhere none.
class process_table {
public:
    explicit process_table(std::filesystem::path proc = "/proc") : proc_(std::move(proc)) {}

    /// A process with this controlling terminal: the shell rather than its children.
    std::optional<process_info> at_terminal(dev_t terminal) const;

    /// The process that has locked this device, else one that has it open.
    std::optional<process_info> holder_of(const std::filesystem::path& device) const;

private:
    std::optional<process_info> process(int id) const;
    std::optional<process_info> locker_of(dev_t file_system, ino_t file) const;
    std::optional<process_info> opener_of(dev_t device) const;

    std::filesystem::path proc_;
};

/// The name of a user, or the number ("1001") if it has none.
std::string user_name(uid_t user);

/// Replaces each control character by "?", so that a terminal can show the text.
std::string without_control_characters(std::string text);

} // namespace desk
