#include "platform/posix_port_problem.h"

#include "runtime/files.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <system_error>
#include <vector>

#include <grp.h>
#include <sys/stat.h>
#include <unistd.h>

namespace desk {

namespace fs = std::filesystem;

namespace {

constexpr int longest_chain = 8;

std::string plain(const fs::path& path) { return without_control_characters(utf8_from_path(path)); }

std::string group_name(gid_t group) {
    std::array<char, 16384> memory{};
    ::group entry{};
    ::group* found = nullptr;
    if (::getgrgid_r(group, &entry, memory.data(), memory.size(), &found) == 0 && found != nullptr)
        return found->gr_name;
    return std::to_string(group);
}

bool has_group(gid_t group) {
    std::vector<gid_t> groups(static_cast<std::size_t>(std::max(0, ::getgroups(0, nullptr))));
    if (::getgroups(static_cast<int>(groups.size()), groups.data()) < 0) groups.clear();
    return ::getegid() == group || std::find(groups.begin(), groups.end(), group) != groups.end();
}

/// Whether the group database lists this process's user in the group.
bool is_listed_in_group(gid_t group) {
    const std::string user = user_name(::geteuid());
    std::array<char, 16384> memory{};
    ::group entry{};
    ::group* found = nullptr;
    if (::getgrgid_r(group, &entry, memory.data(), memory.size(), &found) != 0 || found == nullptr) return false;
    for (char** member = found->gr_mem; *member != nullptr; ++member) {
        if (user == *member) return true;
    }
    return false;
}

constexpr const char* another_port = ": choose another port";
constexpr const char* close_it_there = ": close the port there";

/// For example "com1 leads to /dev/serial/by-id/adapter, which is not there: plug it in, or ..."
std::string problem_of_absence(const fs::path& device) {
    std::string text = plain(device);
    fs::path link = device;
    std::error_code error;
    const char* joint = " leads to ";
    for (int i = 0; i < longest_chain; ++i) {
        const fs::path target = fs::read_symlink(link, error);
        if (error) break;
        text += joint + plain(target);
        joint = ", which leads to ";
        link = link.parent_path() / target;
    }
    return link == device ? text + " is not there: plug the adapter in, or make a com link to it"
                          : text + ", which is not there: plug it in, or point the link to another device";
}

device_rights rights_of(const struct stat& status) {
    constexpr mode_t read_and_write = S_IRGRP | S_IWGRP;
    return {.owner = user_name(status.st_uid),
            .group = group_name(status.st_gid),
            .group_may = (status.st_mode & read_and_write) == read_and_write,
            .group_is_root = status.st_gid == 0,
            .in_group = has_group(status.st_gid),
            .listed = is_listed_in_group(status.st_gid)};
}

} // namespace

std::string shown_name(const fs::path& device) {
    std::error_code error;
    const fs::path real = fs::canonical(device, error);
    return plain(error ? device : real);
}

std::string problem_of_opening(const fs::path& device, int error, const process_table& processes) {
    if (error == ENOENT) return problem_of_absence(device);
    if (error == EBUSY) return problem_of_holder(device, processes.holder_of(device));
    std::string text = shown_name(device) + " can't be opened: " + std::strerror(error);
    struct stat status {};
    if (error == EACCES && ::stat(device.c_str(), &status) == 0) text += ": " + problem_of_rights(rights_of(status));
    return text;
}

std::string problem_of_use(const fs::path& device, const std::string& what, int error) {
    std::string text = shown_name(device) + " can't be " + what + ": " + std::strerror(error);
    // the system has names for serial ports that do not exist
    if (error == EIO || error == ENOTTY) text += another_port;
    return text;
}

std::string problem_of_file(const fs::path& device) {
    return shown_name(device) + " is not a serial port" + another_port;
}

std::string problem_of_holder(const fs::path& device, const std::optional<process_info>& holder) {
    return shown_name(device) + " is in use by " + (holder ? holder->text() : "another program") + close_it_there;
}

std::string problem_of_terminal(const fs::path& device, const std::optional<process_info>& at_work) {
    if (!at_work) return shown_name(device) + " is the terminal that the desk was started from" + another_port;
    return shown_name(device) + " is a terminal that " + at_work->text() + " works at" + another_port;
}

std::string problem_of_rights(const device_rights& rights) {
    if (!rights.group_may || rights.group_is_root) return "the device is for the user " + rights.owner + " alone";
    if (rights.in_group) return "the device's group " + rights.group + " is yours, but something else denies access";
    if (rights.listed) return "your user was added to the group " + rights.group + ": log out and in again";
    return "add your user to the group " + rights.group;
}

} // namespace desk
