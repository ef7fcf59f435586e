#include "crash/robot_process.h"

#include <algorithm>
#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <stdexcept>

#include <fcntl.h>
#include <sys/ptrace.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace desk::test {

namespace {

/// Whether a descriptor is one of the desk's files: not its answers, and no pipe of the sanitizers.
bool is_saved_file(pid_t process, std::uint64_t descriptor) {
    const std::string link = "/proc/" + std::to_string(process) + "/fd/" + std::to_string(descriptor);
    return descriptor > STDERR_FILENO && std::filesystem::is_regular_file(link);
}

/// The name of a system call that changes files; empty for any other.
std::string changing_call(pid_t process, const __ptrace_syscall_info& info) {
    const auto flags = static_cast<int>(info.entry.args[2]);
    switch (info.entry.nr) {
    case SYS_openat:
        if ((flags & O_EXCL) != 0) return "create";
        return (flags & O_TRUNC) != 0 ? "cut" : "";
    case SYS_write:
    case SYS_writev:
        return is_saved_file(process, info.entry.args[0]) ? "write" : "";
    case SYS_fsync:
    case SYS_fdatasync:
        return "flush";
    case SYS_ftruncate:
    case SYS_truncate:
        return "cut";
    case SYS_fchmod:
    case SYS_fchmodat:
    case SYS_fchown:
    case SYS_fsetxattr:
    case SYS_fremovexattr:
        return "protect";
#ifdef SYS_rename
    case SYS_rename:
#endif
#ifdef SYS_renameat
    case SYS_renameat:
#endif
    case SYS_renameat2:
        return "rename";
#ifdef SYS_unlink
    case SYS_unlink:
#endif
    case SYS_unlinkat:
        return "remove";
    default:
        return "";
    }
}

} // namespace

robot_process::robot_process(const saving_desk& desk, bool traced) : desk_(desk) {
    child_ = ::fork();
    if (child_ == 0) start(traced);
    if (!traced) return;
    int status = 0;
    ::waitpid(child_, &status, 0);
    if (!WIFSTOPPED(status)) throw std::runtime_error("desk_robot can't be traced");
    ::ptrace(PTRACE_SETOPTIONS, child_, nullptr, PTRACE_O_TRACESYSGOOD | PTRACE_O_EXITKILL);
}

void robot_process::start(bool traced) const {
    const int script = ::open(desk_.script_file().c_str(), O_RDONLY);
    const int answers = ::open(desk_.answer_file().c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    ::dup2(script, STDIN_FILENO);
    ::dup2(answers, STDOUT_FILENO);
    // the leak search would also want to trace it
    const char* const options = std::getenv("ASAN_OPTIONS");
    ::setenv("ASAN_OPTIONS", (std::string(options == nullptr ? "" : options) + ":detect_leaks=0").c_str(), 1);
    if (traced) ::ptrace(PTRACE_TRACEME, 0, nullptr, nullptr);
    ::execl(DESK_ROBOT, "desk_robot", desk_.folder().c_str(), nullptr);
    ::_exit(127);
}

void robot_process::kill() {
    if (child_ < 0) return;
    ::kill(child_, SIGKILL);
    wait();
}

void robot_process::wait() {
    int status = 0;
    do
        ::waitpid(child_, &status, 0);
    while (WIFSTOPPED(status));
    child_ = -1;
}

std::string robot_process::run_to_call() {
    int signal = 0;
    while (true) {
        ::ptrace(PTRACE_SYSCALL, child_, nullptr, signal);
        int status = 0;
        ::waitpid(child_, &status, 0);
        if (!WIFSTOPPED(status)) {
            child_ = -1;
            return "";
        }
        const int why = WSTOPSIG(status);
        if (why != (SIGTRAP | 0x80)) {
            signal = why == SIGTRAP || why == SIGSTOP ? 0 : why;
            continue;
        }
        signal = 0;
        __ptrace_syscall_info info{};
        ::ptrace(PTRACE_GET_SYSCALL_INFO, child_, sizeof info, &info);
        if (info.op != PTRACE_SYSCALL_INFO_ENTRY) continue;
        if (const std::string name = changing_call(child_, info); !name.empty()) return name;
    }
}

std::size_t robot_process::answered() const {
    std::ifstream answers(desk_.answer_file(), std::ios::binary);
    return static_cast<std::size_t>(std::count(std::istreambuf_iterator<char>(answers), {}, '\n'));
}

} // namespace desk::test
