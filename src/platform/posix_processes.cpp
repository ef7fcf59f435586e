#include "platform/posix_processes.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

#include <pwd.h>
#include <sys/stat.h>
#ifdef __linux__
#include <sys/sysmacros.h>
#endif

namespace desk {

namespace fs = std::filesystem;

namespace {

std::optional<int> number_of(std::string_view word) {
    int number = 0;
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), number);
    if (error != std::errc() || end != word.data() + word.size()) return std::nullopt;
    return number;
}

std::vector<int> ids_in(const fs::path& folder) {
    std::vector<int> ids;
    std::error_code error;
    // entries vanish while they are read
    for (fs::directory_iterator i(folder, error), end; !error && i != end; i.increment(error)) {
        if (const std::optional<int> id = number_of(i->path().filename().native())) ids.push_back(*id);
    }
    std::sort(ids.begin(), ids.end());
    return ids;
}

/// Empty if the process has ended, even between opening and reading.
std::string content_of(const fs::path& path) {
    const std::ifstream file(path);
    std::ostringstream content;
    // unlike an iterator over the file, this does not throw on a read error
    content << file.rdbuf();
    return content.str();
}

/// Session and terminal from a process's "stat".
struct place {
    int session = 0;
    unsigned terminal = 0; // 0: none
};

std::optional<place> place_in(const std::string& stat) {
    // the name in parentheses may contain spaces and parentheses
    const std::size_t name_end = stat.rfind(')');
    if (name_end == std::string::npos) return std::nullopt;
    std::istringstream rest(stat.substr(name_end + 1));
    std::string state;
    int parent = 0;
    int group = 0;
    int session = 0;
    int terminal = 0;
    if (!(rest >> state >> parent >> group >> session >> terminal)) return std::nullopt;
    return place{.session = session, .terminal = static_cast<unsigned>(terminal)};
}

/// A device number as written in "stat".
unsigned number_in_stat(dev_t device) {
#ifdef __linux__
    const unsigned major_number = major(device);
    const unsigned minor_number = minor(device);
    return (minor_number & 0xFFU) | (major_number << 8U) | ((minor_number & ~0xFFU) << 12U);
#else
    return static_cast<unsigned>(device);
#endif
}

/// A file as written in /proc/locks: "00:18:5".
std::string name_in_locks(dev_t file_system, ino_t file) {
#ifdef __linux__
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), "%02x:%02x:%llu", major(file_system), minor(file_system),
                  static_cast<unsigned long long>(file));
    return text.data();
#else
    static_cast<void>(file_system);
    static_cast<void>(file);
    return "";
#endif
}

bool is_open_in(const fs::path& descriptors, dev_t device) {
    std::error_code error;
    for (fs::directory_iterator i(descriptors, error), end; !error && i != end; i.increment(error)) {
        std::error_code ignored;
        // stat of a file on a dead network drive never returns
        if (!fs::read_symlink(i->path(), ignored).native().starts_with("/dev/")) continue;
        struct stat status {};
        if (::stat(i->path().c_str(), &status) == 0 && S_ISCHR(status.st_mode) && status.st_rdev == device) return true;
    }
    return false;
}

} // namespace

std::string process_info::text() const { return name + " (process " + std::to_string(id) + ", user " + user + ")"; }

std::optional<process_info> process_table::at_terminal(dev_t terminal) const {
    std::optional<int> found;
    for (const int id : ids_in(proc_)) {
        const std::optional<place> at = place_in(content_of(proc_ / std::to_string(id) / "stat"));
        if (!at || at->terminal == 0 || at->terminal != number_in_stat(terminal)) continue;
        if (at->session == id) return process(id);
        if (!found) found = id;
    }
    return found ? process(*found) : std::nullopt;
}

std::optional<process_info> process_table::holder_of(const fs::path& device) const {
    struct stat status {};
    if (::stat(device.c_str(), &status) != 0) return std::nullopt;
    if (std::optional<process_info> locker = locker_of(status.st_dev, status.st_ino)) return locker;
    return opener_of(status.st_rdev);
}

std::optional<process_info> process_table::process(int id) const {
    const fs::path folder = proc_ / std::to_string(id);
    struct stat status {};
    std::string name = content_of(folder / "comm");
    if (name.ends_with('\n')) name.pop_back();
    if (name.empty() || ::stat(folder.c_str(), &status) != 0) return std::nullopt;
    return process_info{.id = id, .name = without_control_characters(name), .user = user_name(status.st_uid)};
}

std::optional<process_info> process_table::locker_of(dev_t file_system, ino_t file) const {
    const std::string wanted = name_in_locks(file_system, file);
    std::istringstream lines(content_of(proc_ / "locks"));
    for (std::string line; std::getline(lines, line);) {
        std::istringstream text(line);
        const std::vector<std::string> words{std::istream_iterator<std::string>(text), {}};
        // a waiting process has "->" before the lock type
        if (words.size() < 6 || words[1] != "FLOCK" || words[5] != wanted) continue;
        if (const std::optional<int> id = number_of(words[4])) return process(*id);
    }
    return std::nullopt;
}

std::optional<process_info> process_table::opener_of(dev_t device) const {
    for (const int id : ids_in(proc_)) {
        if (is_open_in(proc_ / std::to_string(id) / "fd", device)) return process(id);
    }
    return std::nullopt;
}

std::string user_name(uid_t user) {
    std::array<char, 4096> memory{};
    passwd entry{};
    passwd* found = nullptr;
    if (::getpwuid_r(user, &entry, memory.data(), memory.size(), &found) == 0 && found != nullptr)
        return found->pw_name;
    return std::to_string(user);
}

std::string without_control_characters(std::string text) {
    std::replace_if(
        text.begin(), text.end(), [](unsigned char c) { return c < 0x20 || c == 0x7F; }, '?');
    return text;
}

} // namespace desk
