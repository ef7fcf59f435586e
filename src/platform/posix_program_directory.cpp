#include "platform/program_directory.h"

namespace desk {

std::filesystem::path program_directory() {
    std::error_code error;
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", error);
    return error ? std::filesystem::current_path() : program.parent_path();
}

} // namespace desk
