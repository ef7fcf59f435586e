#pragma once

#include <filesystem>
#include <string>

namespace desk {

/// The simulator's pipes have this prefix and a unique end.
inline constexpr const char* simulator_pipe_prefix = R"(\\.\pipe\velotrace_sim_)";

/// The file of a port that names the simulator's pipe, for the lifetime of this. At the end it is removed only if it
/// still names that pipe: another program may have written it.
class pipe_link {
public:
    /// Writes `file`. Replaces only a file that names the pipe of another simulator. Throws
    /// failure::path_file_access_error if the file has any other content, with the reason, or can't be written.
    pipe_link(const std::filesystem::path& file, std::string pipe);
    ~pipe_link();
    pipe_link(const pipe_link&) = delete;
    pipe_link& operator=(const pipe_link&) = delete;

private:
    std::filesystem::path file_;
    std::string pipe_;
};

} // namespace desk
