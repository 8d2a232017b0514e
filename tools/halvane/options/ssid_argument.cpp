#include "tools/halvane/options/ssid_argument.h"

#include <optional>

#include "halvane/base/byte_buffer.h"

namespace halvane::tool {

Result<Ssid, UsageError> ssidOf(const std::string& argument, bool isHex) {
    const auto octets =
        isHex ? ByteBuffer::fromHex(argument) : std::optional(ByteBuffer::fromText(argument));
    if (!octets) return Unexpected(UsageError{"the SSID is not hexadecimal text"});
    const auto ssid = Ssid::fromBytes(octets->bytes());
    if (!ssid || ssid->empty()) {
        return Unexpected(UsageError{"an SSID has 1 to " + std::to_string(Ssid::kMaxSize) +
                                     " octets, not " + std::to_string(octets->size())});
    }
    return *ssid;
}

}  // namespace halvane::tool
