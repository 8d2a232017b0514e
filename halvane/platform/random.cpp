#include <atomic>
#include <cerrno>
#include <exception>
#include <stdlib.h>
#include <sys/random.h>

#include "halvane/platform/random_internal.h"

namespace halvane {

namespace {

std::atomic<RandomSource> replacement = nullptr;

#if defined(__GLIBC__) && !__GLIBC_PREREQ(2, 36)

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

#else

void fillBySystem(std::span<std::uint32_t> values) {
    ::arc4random_buf(values.data(), values.size_bytes());
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
