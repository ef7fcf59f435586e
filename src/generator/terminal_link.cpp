#include "generator/terminal_link.h"

#include "generator/own_name.h"
#include "runtime/failure.h"
#include "runtime/files.h"

#include <algorithm>
#include <string>
#include <system_error>
#include <utility>

namespace desk {

namespace fs = std::filesystem;

namespace {

[[noreturn]] void link_fails(const fs::path& link, const std::string& why) {
    throw runtime_failure(failure::path_file_access_error, utf8_from_path(link) + " " + why);
}

bool is_pseudo_terminal(const fs::path& target) {
    const std::string number = target.filename().string();
    return target.parent_path() == "/dev/pts" && !number.empty() &&
           std::all_of(number.begin(), number.end(), [](char c) { return c >= '0' && c <= '9'; });
}

/// `there` is what currently has the name `link`.
void expect_link_of_simulator(const fs::path& there, const fs::path& link) {
    std::error_code error;
    const fs::file_status status = fs::symlink_status(there, error);
    if (!fs::exists(status)) return;
    if (!fs::is_symlink(status)) link_fails(link, "already exists and is not a symbolic link");
    // only one step: a link to another link belongs to the operator, wherever that leads
    const fs::path target = fs::read_symlink(there, error);
    if (!error && !is_pseudo_terminal(target))
        link_fails(link, "leads to " + utf8_from_path(target) + " and is not replaced: choose another LINK");
}

fs::path new_link_beside(const fs::path& link, const fs::path& terminal) {
    return make_beside(link, [&](const fs::path& beside) {
        std::error_code error;
        fs::create_symlink(terminal, beside, error);
        return error;
    });
}

} // namespace

terminal_link::terminal_link(const fs::path& link, fs::path terminal)
    : link_(fs::absolute(link)), terminal_(std::move(terminal)) {
    expect_link_of_simulator(link_, link);
    take_name(
        new_link_beside(link_, terminal_), link_, [&](const fs::path& there) { expect_link_of_simulator(there, link); },
        [this](const fs::path& there) { return is_this(there); });
}

terminal_link::~terminal_link() {
    give_up_name(link_, [this](const fs::path& there) { return is_this(there); });
}

bool terminal_link::is_this(const fs::path& link) const {
    std::error_code error;
    return fs::read_symlink(link, error) == terminal_ && !error;
}

} // namespace desk
