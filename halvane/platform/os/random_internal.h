// The system's cryptographic random generator.
//
// Threads: the function may be called from any thread.
#ifndef HALVANE_PLATFORM_OS_RANDOM_INTERNAL_H
#define HALVANE_PLATFORM_OS_RANDOM_INTERNAL_H

#include <cstdint>
#include <span>

namespace halvane {

// Fills `values` with random numbers.
void fillRandom(std::span<std::uint32_t> values);

}  // namespace halvane

#endif
