#include "tools/halvane/ssid_argument.h"

#include <optional>

namespace halvane::tool {

namespace {

constexpr std::size_t kMaxSize = 32;

}  // namespace

std::variant<ByteBuffer, UsageError> ssidOf(const std::string& argument, bool isHex) {
    const auto ssid =
        isHex ? ByteBuffer::fromHex(argument) : std::optional(ByteBuffer::fromText(argument));
    if (!ssid) return UsageError{"'" + argument + "' is no hexadecimal text of an SSID"};
    if (ssid->empty() || ssid->size() > kMaxSize) {
        return UsageError{"an SSID has 1 to 32 octets, not " + std::to_string(ssid->size())};
    }
    return *ssid;
}

}  // namespace halvane::tool
