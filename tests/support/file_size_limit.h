#pragma once

#ifndef _WIN32

#include <csignal>
#include <sys/resource.h>

namespace desk::test {

/// While it lives, no file can grow beyond `bytes`: writes end halfway, as on a full disk.
class file_size_limit {
public:
    explicit file_size_limit(rlim_t bytes) : signal_before_(std::signal(SIGXFSZ, SIG_IGN)) {
        getrlimit(RLIMIT_FSIZE, &before_);
        rlimit limited = before_;
        limited.rlim_cur = bytes;
        setrlimit(RLIMIT_FSIZE, &limited);
    }
    file_size_limit(const file_size_limit&) = delete;
    file_size_limit& operator=(const file_size_limit&) = delete;
    ~file_size_limit() {
        setrlimit(RLIMIT_FSIZE, &before_);
        std::signal(SIGXFSZ, signal_before_);
    }

private:
    void (*signal_before_)(int);
    rlimit before_{};
};

} // namespace desk::test

#endif
