#include "generator/pipe_link.h"

#include "platform/port_file.h"
#include "runtime/failure.h"
#include "runtime/files.h"

#include <optional>
#include <system_error>
#include <utility>

namespace desk {

namespace {

[[noreturn]] void file_fails(const std::filesystem::path& file, const std::string& why) {
    throw runtime_failure(failure::path_file_access_error, utf8_from_path(file) + " " + why);
}

std::optional<std::string> device_in(const std::filesystem::path& file) {
    try {
        return device_of_port_file(file);
    } catch (const runtime_failure&) {
        file_fails(file, "already exists and is not the file of a port: choose another LINK");
    }
}

} // namespace

pipe_link::pipe_link(const std::filesystem::path& file, std::string pipe)
    : file_(std::filesystem::absolute(file)), pipe_(std::move(pipe)) {
    const std::string content = pipe_ + "\r\n";
    const std::error_code error = write_new_file(file_, content, outlives::killed_program, open_to::others);
    if (!error) return;
    if (error != std::errc::file_exists) file_fails(file, "can't be created: " + error.message());
    const std::optional<std::string> device = device_in(file_);
    if (device && !device->starts_with(simulator_pipe_prefix))
        file_fails(file, "names " + *device + " and is not replaced: choose another LINK");
    replace_whole_file(file_, content, outlives::killed_program);
}

pipe_link::~pipe_link() {
    try {
        if (device_of_port_file(file_) == pipe_) std::filesystem::remove(file_);
    } catch (const std::exception&) {
        // the file stays: nobody loses anything
    }
}

} // namespace desk
