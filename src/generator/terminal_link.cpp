#include "generator/terminal_link.h"

#include "runtime/failure.h"
#include "runtime/files.h"

#include <string>
#include <system_error>
#include <utility>

namespace desk {

namespace {

[[noreturn]] void fail(const std::filesystem::path& link, const std::string& why) {
    throw runtime_failure(failure::path_file_access_error, utf8_from_path(link) + " " + why);
}

} // namespace

terminal_link::terminal_link(const std::filesystem::path& link, std::filesystem::path terminal)
    : link_(std::filesystem::absolute(link)), terminal_(std::move(terminal)) {
    std::error_code error;
    const std::filesystem::file_status there = std::filesystem::symlink_status(link_, error);
    if (std::filesystem::exists(there)) {
        if (!std::filesystem::is_symlink(there)) fail(link, "is there already and is no symbolic link");
        std::filesystem::remove(link_, error);
    }
    std::filesystem::create_symlink(terminal_, link_, error);
    if (error) fail(link, "can't be made a link: " + error.message());
}

terminal_link::~terminal_link() {
    std::error_code error;
    if (std::filesystem::read_symlink(link_, error) == terminal_ && !error) std::filesystem::remove(link_, error);
}

void expect_no_hardware(const std::filesystem::path& link) {
    std::error_code error;
    const std::filesystem::path target = std::filesystem::read_symlink(link, error);
    if (!error && target.parent_path() != "/dev/pts")
        fail(link, "leads to " + utf8_from_path(target) + ", which stays: name another LINK");
}

} // namespace desk
