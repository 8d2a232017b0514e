#include "tools/halvane/options/ssid_argument.h"

#include <optional>

#include "halvane/model/bss_limits.h"

namespace halvane::tool {

std::variant<ByteBuffer, UsageError> ssidOf(const std::string& argument, bool isHex) {
    const auto ssid =
        isHex ? ByteBuffer::fromHex(argument) : std::optional(ByteBuffer::fromText(argument));
    if (!ssid) return UsageError{"the SSID is not hexadecimal text"};
    if (ssid->empty() || ssid->size() > kBSSMaxSSIDSize) {
        return UsageError{"an SSID has 1 to " + std::to_string(kBSSMaxSSIDSize) + " octets, not " +
                          std::to_string(ssid->size())};
    }
    return *ssid;
}

}  // namespace halvane::tool
