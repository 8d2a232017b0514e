#include "tools/halvane/input/capture_format.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include "halvane/base/byte_cursor.h"

namespace halvane::tool {

namespace {

// Of a Section Header Block, the same in both byte orders
// (https://www.ietf.org/archive/id/draft-ietf-opsawg-pcapng-03.html, 4.1).
constexpr std::uint32_t kPcapngMagic = 0x0A0D0D0A;

// Microseconds, nanoseconds, and the variants that libpcap reads.
constexpr std::array<std::uint32_t, 5> kPcapMagics = {0xA1B2C3D4, 0xA1B23C4D, 0xA1B2CD34,
                                                      0xA1B234CD, 0xA12B3C4D};

bool isPcapMagic(std::uint32_t number) {
    return std::ranges::find(kPcapMagics, number) != kPcapMagics.end();
}

}  // namespace

std::optional<CaptureFormat> captureFormat(InputStream& stream) {
    const ByteCursor start(stream.peek(4));
    const auto little = ByteCursor(start).u32le();
    const auto big = ByteCursor(start).u32be();
    if (!little || !big) return std::nullopt;
    if (*little == kPcapngMagic) return CaptureFormat::Pcapng;
    if (isPcapMagic(*little) || isPcapMagic(*big)) return CaptureFormat::Pcap;
    return std::nullopt;
}

}  // namespace halvane::tool
