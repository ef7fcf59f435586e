#pragma once

#ifndef _WIN32

#include <gtest/gtest.h>

#include <exception>
#include <string>
#include <vector>

#include <grp.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace desk::test {

/// A user by numbers; needs no account.
struct user {
    uid_t number;
    gid_t group;
    std::vector<gid_t> other_groups = {};
};

inline constexpr gid_t lab = 64300;
inline const user alice{64301, 64301, {lab}};
inline const user bob{64302, 64302, {lab}};
inline const user carol{64303, 64303}; ///< not in the lab group

inline bool can_be_others() { return ::geteuid() == 0; }

/// Runs `work` in a process of another user with umask 077, and returns its result. Needs root.
template <class Work>
std::string as_user(const user& who, Work&& work) {
    int ends[2] = {-1, -1};
    EXPECT_EQ(::pipe(ends), 0);
    const pid_t child = ::fork();
    if (child == 0) {
        ::umask(077);
        std::string result = "the process can't change its user";
        if (::setgroups(who.other_groups.size(), who.other_groups.data()) == 0 &&
            ::setresgid(who.group, who.group, who.group) == 0 && ::setresuid(who.number, who.number, who.number) == 0) {
            try {
                result = work();
            } catch (const std::exception& e) {
                result = e.what();
            }
        }
        const ssize_t written = ::write(ends[1], result.data(), result.size());
        ::_exit(written < 0 ? 1 : 0);
    }
    ::close(ends[1]);
    std::string result;
    char piece[1024];
    for (ssize_t got = 0; (got = ::read(ends[0], piece, sizeof piece)) > 0;)
        result.append(piece, static_cast<std::size_t>(got));
    ::close(ends[0]);
    int status = 0;
    EXPECT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
    return result;
}

} // namespace desk::test

#endif
