// The generations of Wi-Fi by the Wi-Fi Alliance's numbers.
#ifndef HALVANE_AIR_GENERATION_H
#define HALVANE_AIR_GENERATION_H

#include <cstdint>

#include "halvane/base/cxx20.h"

namespace halvane::air {

// The values are the numbers. Wi-Fi 6E is Wi-Fi 6 at 6 GHz.
enum class Generation : std::uint8_t { Legacy = 0, WiFi4 = 4, WiFi5 = 5, WiFi6 = 6, WiFi7 = 7 };

}  // namespace halvane::air

#endif
