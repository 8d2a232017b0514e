#include "halvane/utils/convert/uuid.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "halvane/base/ascii_internal.h"
#include "halvane/utils/scan/scanf.h"
#include "halvane/utils/text/cursor_internal.h"

namespace {

using UUID = std::array<std::uint8_t, kUUIDSize>;

UUID loaded(const void* bytes) {
    UUID uuid;
    std::memcpy(uuid.data(), bytes, uuid.size());
    return uuid;
}

void reverseFields(UUID& uuid) {
    std::reverse(uuid.begin(), uuid.begin() + 4);
    std::reverse(uuid.begin() + 4, uuid.begin() + 6);
    std::reverse(uuid.begin() + 6, uuid.begin() + 8);
}

}  // namespace

char* UUIDtoCString(const void* bytes, bool isLittleEndian, char* buffer) {
    UUID uuid = loaded(bytes);
    if (isLittleEndian) reverseFields(uuid);
    char* to = buffer;
    for (std::size_t i = 0; i < uuid.size(); ++i) {
        if (i == 4 || i == 6 || i == 8 || i == 10) *to++ = '-';
        *to++ = halvane::kLowerHexDigits[uuid[i] >> 4];
        *to++ = halvane::kLowerHexDigits[uuid[i] & 0x0F];
    }
    *to = '\0';
    return buffer;
}

HalvaneStatus StringToUUID(const char* text, std::size_t length, bool isLittleEndian, void* bytes) {
    if (text == nullptr) return kStatusUnsupported;
    // One character more than allowed shows that the text is too long.
    const std::string_view input = halvane::startOf(text, length, kUUIDTextSize);
    if (input.size() != kUUIDTextSize - 1) return kStatusWrongLength;

    UUID u;
    std::int32_t count = 0;
    SNScanF(input.data(), input.size(),
            "%2hhx%2hhx%2hhx%2hhx-%2hhx%2hhx-%2hhx%2hhx-%2hhx%2hhx-"
            "%2hhx%2hhx%2hhx%2hhx%2hhx%2hhx%n",
            &u[0], &u[1], &u[2], &u[3], &u[4], &u[5], &u[6], &u[7], &u[8], &u[9], &u[10], &u[11],
            &u[12], &u[13], &u[14], &u[15], &count);
    if (count != kUUIDTextSize - 1) return kStatusMalformed;
    if (isLittleEndian) reverseFields(u);
    std::memcpy(bytes, u.data(), u.size());
    return kStatusOK;
}

void EndianSwapUUIDMove(const void* source, void* destination) {
    UUID uuid = loaded(source);
    reverseFields(uuid);
    std::memcpy(destination, uuid.data(), uuid.size());
}
