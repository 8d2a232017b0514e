// Packets as captures hold them.
#ifndef TESTS_CAPTURE_PACKETS_H
#define TESTS_CAPTURE_PACKETS_H

#include <cstdint>

#include "halvane/capture/fcs.h"

#include "tests/support/hostile_bytes.h"

namespace halvane::testing {

// A beacon of 02:00:00:00:00:01 with an SSID of one letter; no radio header, no frame check
// sequence.
inline Bytes beaconPacket() {
    return {
        0x80, 0x00,                                // beacon; no flags
        0x00, 0x00,                                // duration
        0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF,        // address 1, receiver: broadcast
        0x02, 0x00, 0x00, 0x00, 0x00, 0x01,        // address 2, transmitter
        0x02, 0x00, 0x00, 0x00, 0x00, 0x01,        // address 3, BSSID
        0x10, 0x00,                                // sequence number 1, fragment 0
        0,    0,    0,    0,    0,    0,    0, 0,  // timestamp
        0x64, 0x00, 0x01, 0x00,                    // 100 TU, ESS
        0x00, 0x01, 0x61,                          // SSID "a"
    };
}

// The frame behind a radiotap header of 10 octets, which holds these flags and a signal of -60 dBm.
inline Bytes withRadiotap(std::uint8_t flags, const Bytes& frame) {
    Bytes packet = {0x00, 0x00, 0x0A, 0x00, 0x22, 0x00, 0x00, 0x00, flags, 0xC4};
    packet.insert(packet.end(), frame.begin(), frame.end());
    return packet;
}

// The octets of the frame's check sequence, as they follow the frame.
inline Bytes fcsOf(const Bytes& frame) {
    const std::uint32_t number = capture::frameCheckSequence(frame);
    Bytes octets;
    for (int shift = 0; shift < 32; shift += 8) {
        octets.push_back(static_cast<std::uint8_t>(number >> shift));
    }
    return octets;
}

}  // namespace halvane::testing

#endif
