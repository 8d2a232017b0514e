#include <cerrno>
#include <new>
#include <pthread.h>

#include "halvane/platform/os/process_internal.h"

namespace halvane {

std::string programName() {
    return program_invocation_short_name;
}

std::atomic<std::uint32_t> HomeProcess::forks_ = 0;

// If the handler cannot be installed, the next object tries again.
void HomeProcess::watchForks() {
    static const bool isWatching = [] {
        if (::pthread_atfork(nullptr, nullptr, [] { ++forks_; }) != 0) throw std::bad_alloc();
        return true;
    }();
    static_cast<void>(isWatching);
}

}  // namespace halvane
