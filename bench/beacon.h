// The frame that several benchmarks decode, or print.
#ifndef BENCH_BEACON_H
#define BENCH_BEACON_H

#include <cstddef>
#include <cstdint>
#include <span>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/number.h"
#include "halvane/ie/mac.h"

namespace bench {

inline constexpr std::uint8_t kBeacon[] = {
    0x80, 0x00, 0x00, 0x00,                                             // beacon, duration
    0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF,                                 // to everyone
    0x02, 0x1A, 0x2B, 0x3C, 0x4D, 0x5E,                                 // from
    0x02, 0x1A, 0x2B, 0x3C, 0x4D, 0x5E,                                 // BSSID
    0x10, 0x00,                                                         // sequence control
    1, 2, 3, 4, 5, 6, 7, 8, 0x64, 0x00, 0x11, 0x04,                     // time stamp,
                                                                        // interval,
                                                                        // capabilities
    0, 12, 'n', 'e', 'i', 'g', 'h', 'b', 'o', 'u', 'r', '-', '1', '2',  // SSID
    1, 8, 0x82, 0x84, 0x8B, 0x96, 0x0C, 0x12, 0x18, 0x24,               // supported rates
    3, 1, 6,                                                            // DS Parameter Set
    5, 4, 0, 1, 0, 0,                                                   // TIM
    7, 6, 'D', 'E', ' ', 1, 13, 20,                                     // country
    42, 1, 0,                                                           // ERP
    50, 4, 0x30, 0x48, 0x60, 0x6C,                                      // extended rates
    48, 20, 1, 0, 0x00, 0x0F, 0xAC, 4, 1, 0, 0x00, 0x0F, 0xAC, 4,       // RSN
    1, 0, 0x00, 0x0F, 0xAC, 2, 0, 0,                                    // PSK
    45, 26, 0xEF, 0x19, 0x1B, 0xFF, 0xFF, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 0, 0, 0,
    0, 0, 0, 0,                                                                   // HT Capabilities
    61, 22, 6, 0x05, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0,  // HT Operation
    127, 10, 0, 0, 8, 0, 0, 0, 0, 0x40, 0, 0,  // Extended Capabilities
    221, 24, 0x00, 0x50, 0xF2, 2, 1, 1, 0x80, 0, 3, 0xA4, 0, 0, 0x27, 0xA4, 0, 0, 0x42, 0x43, 0x5E,
    0, 0x62, 0x32, 0x2F, 0,  // WMM
};
static_assert(sizeof(kBeacon) == 200);

// The length of the part before the elements.
inline constexpr std::size_t kFixedSize = 36;

inline halvane::HalvaneMAC decodedBeacon() {
    using namespace halvane;
    const std::span frame(kBeacon);
    auto record = HalvaneMAC::initWithMAC_withCapabilityField_withInformationElements(
        ByteBuffer(frame.subspan(16, 6)), 0x0411, ByteBuffer(frame.subspan(kFixedSize)));
    record.setChannel(Number(6));
    record.setRSSI(Number(-61));
    record.setBeaconInterval(Number(100));
    return record;
}

}  // namespace bench

#endif
