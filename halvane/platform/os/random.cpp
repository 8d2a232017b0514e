#include <atomic>
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

namespace {

std::atomic<RandomSource> replacement = nullptr;

#if HALVANE_HAS_ARC4RANDOM

void fillBySystem(std::span<std::uint32_t> values) {
    ::arc4random_buf(values.data(), values.size_bytes());
}

#else

// Where the kernel gives nothing the process ends, as it does in arc4random: there is nothing to go
// on with that would not be taken for random.
void fillBySystem(std::span<std::uint32_t> values) {
    auto bytes = std::as_writable_bytes(values);
    while (!bytes.empty()) {
        const ssize_t count = ::getrandom(bytes.data(), bytes.size(), 0);
        if (count < 0 && errno != EINTR) std::terminate();
        if (count > 0) bytes = bytes.subspan(static_cast<std::size_t>(count));
    }
}

#endif

}  // namespace

void fillRandom(std::span<std::uint32_t> values) {
    const RandomSource source = replacement.load(std::memory_order_relaxed);
    source != nullptr ? source(values) : fillBySystem(values);
}

void replaceRandomSource(RandomSource source) {
    replacement.store(source, std::memory_order_relaxed);
}

}  // namespace halvane
