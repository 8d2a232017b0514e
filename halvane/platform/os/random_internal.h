// The system's cryptographic random generator, replaceable so that tests know what comes of it.
//
// Threads: both functions may be called from any thread.
#ifndef HALVANE_PLATFORM_OS_RANDOM_INTERNAL_H
#define HALVANE_PLATFORM_OS_RANDOM_INTERNAL_H

#include <cstdint>
#include <span>

namespace halvane {

// Fills all of `values`.
using RandomSource = void (*)(std::span<std::uint32_t> values);

// Random values, by the system's generator or the source that replaces it.
void fillRandom(std::span<std::uint32_t> values);

// Puts `source` in the system generator's place for the whole process; null puts that back.
void replaceRandomSource(RandomSource source);

}  // namespace halvane

#endif
