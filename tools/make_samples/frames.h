// Builders of 802.11 frames and of the radio headers that captures put before them.
#ifndef TOOLS_MAKE_SAMPLES_FRAMES_H
#define TOOLS_MAKE_SAMPLES_FRAMES_H

#include <cstdint>
#include <optional>

#include "tools/make_samples/bytes.h"

namespace halvane::samples {

// Capability information, IEEE 802.11-2020 9.4.1.4.
inline constexpr std::uint16_t kESS = 0x0001, kPrivacy = 0x0010, kShortPreamble = 0x0020,
                               kShortSlotTime = 0x0400, kRadioMeasurement = 0x1000;

struct Network {
    std::uint8_t number = 0;  // the address is 02:1A:00:00:00:<number>
    std::uint16_t capabilities = kESS;
    Bytes elements{};
};

Bytes beacon(const Network& network);
Bytes probeResponse(const Network& network);
Bytes acknowledgement();
Bytes dataFrame(const Network& network);

// The second octet of Frame Control.
inline constexpr std::uint8_t kMoreFragments = 0x04, kProtected = 0x40, kHTControl = 0x80;
Bytes withFlags(Bytes frame, std::uint8_t flags);
Bytes withHTControl(const Bytes& frame);  // flag and field
Bytes withFCS(const Bytes& frame);
Bytes withBadFCS(const Bytes& frame);

// The values of the radio headers. Each kind of header writes those for which it has a field.
struct Radio {
    std::uint8_t channel = 1;
    std::uint16_t frequencyMHz = 2412;
    std::int8_t signalDBm = -60;
    std::int8_t noiseDBm = -95;
};

// The radiotap flags of a frame that ends in its frame check sequence, and of a damaged one.
inline constexpr std::uint8_t kFCSAtEnd = 0x10, kBadFCS = 0x40;

Bytes radiotap(const Radio& radio, std::uint8_t flags = 0);
Bytes radiotapOfTwoAntennas(const Radio& radio, std::int8_t otherSignalDBm, std::uint8_t flags);
Bytes prism(const Radio& radio, Order order);
Bytes avs(const Radio& radio);
Bytes ppi(const Radio& radio, bool hasFCS);

}  // namespace halvane::samples

#endif
