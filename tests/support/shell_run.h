#pragma once

#include "support/temporary_directory.h"

#include <cstdlib>
#include <string>

#ifndef _WIN32
#include <sys/wait.h>
#endif

namespace desk::test {

struct shell_run {
    int status = -1; ///< -1: killed by a signal
    std::string out;
    std::string err;
};

/// Runs a shell command; its output goes into files of `folder`.
inline shell_run run_in_shell(const std::string& command, const temporary_directory& folder) {
    const auto quoted = [&](const char* name) { return "\"" + (folder / name).string() + "\""; };
    const int status = std::system((command + " >" + quoted("out") + " 2>" + quoted("err")).c_str());
#ifdef _WIN32
    return {status, folder.content("out"), folder.content("err")};
#else
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, folder.content("out"), folder.content("err")};
#endif
}

} // namespace desk::test
