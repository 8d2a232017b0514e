// A limit on file sizes, as `ulimit -f` sets it. It is for a child process, because it cannot be
// undone.
#ifndef TESTS_SUPPORT_FILE_SIZE_LIMIT_H
#define TESTS_SUPPORT_FILE_SIZE_LIMIT_H

#include <csignal>
#include <sys/resource.h>

namespace halvane::testing {

// From now on a write beyond that many bytes raises SIGXFSZ, which ends the process.
inline bool limitFileSize(rlim_t bytes) {
    const rlimit limit{bytes, bytes};
    return ::signal(SIGXFSZ, SIG_DFL) != SIG_ERR && ::setrlimit(RLIMIT_FSIZE, &limit) == 0;
}

// Whether that signal would still end the process, and is not pending.
inline bool isFileSizeSignalUntouched() {
    sigset_t pending;
    sigset_t blocked;
    struct sigaction action {};
    ::sigpending(&pending);
    ::pthread_sigmask(SIG_SETMASK, nullptr, &blocked);
    ::sigaction(SIGXFSZ, nullptr, &action);
    return sigismember(&pending, SIGXFSZ) == 0 && sigismember(&blocked, SIGXFSZ) == 0 &&
           action.sa_handler == SIG_DFL;
}

}  // namespace halvane::testing

#endif
