#include <cerrno>
#include <exception>
#include <features.h>
#include <stdlib.h>
#include <sys/random.h>

#include "halvane/platform/os/random_internal.h"

#ifdef __GLIBC_PREREQ
#define HALVANE_HAS_ARC4RANDOM __GLIBC_PREREQ(2, 36)
#else
#define HALVANE_HAS_ARC4RANDOM 0
#endif

namespace halvane {

#if HALVANE_HAS_ARC4RANDOM

void fillRandom(std::span<std::uint32_t> values) {
    ::arc4random_buf(values.data(), values.size_bytes());
}

#else

// If the kernel returns no random data, the process ends, as in arc4random: any other data would be
// mistaken for random.
void fillRandom(std::span<std::uint32_t> values) {
    auto bytes = std::as_writable_bytes(values);
    while (!bytes.empty()) {
        const ssize_t count = ::getrandom(bytes.data(), bytes.size(), 0);
        if (count < 0 && errno != EINTR) std::terminate();
        if (count > 0) bytes = bytes.subspan(static_cast<std::size_t>(count));
    }
}

#endif

}  // namespace halvane
