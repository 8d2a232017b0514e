#include "tools/make_samples/frames.h"

#include <cstddef>

#include "halvane/capture/fcs.h"

namespace halvane::samples {

namespace {

constexpr std::size_t kHeaderSize = 24;
constexpr std::uint16_t kBeaconInterval = 100;  // TU
const Bytes kBroadcast(6, 0xFF);
const Bytes kClient = {0x02, 0x1A, 0x00, 0x00, 0xFF, 0x01};

Bytes address(const Network& network) {
    return {0x02, 0x1A, 0x00, 0x00, 0x00, network.number};
}

// IEEE 802.11-2020 9.3.3.1 and the fixed fields of 9.3.3.2.
Bytes managementFrame(std::uint8_t kind, const Bytes& receiver, const Network& network) {
    const std::uint64_t upTime = 1000000ull * network.number;  // microseconds
    return join({Bytes{kind, 0x00}, le16(0), receiver, address(network), address(network),
                 le16(0x0010ull * network.number),  // sequence control: fragment 0
                 le64(upTime), le16(kBeaconInterval), le16(network.capabilities),
                 network.elements});
}

bool isIn5GHz(const Radio& radio) {
    return radio.frequencyMHz >= 5000;
}

std::uint16_t channelFlags(const Radio& radio) {
    return isIn5GHz(radio) ? 0x0140 : 0x00A0;  // OFDM in 5 GHz, CCK in 2 GHz
}

std::uint8_t lowestRate(const Radio& radio) {
    return isIn5GHz(radio) ? 12 : 2;  // 500 kb/s
}

Bytes level(std::int8_t dBm) {
    return {static_cast<std::uint8_t>(dBm)};
}

// For the headers that hold a level as a signed 32-bit number.
std::uint64_t extended(std::int8_t dBm) {
    return static_cast<std::uint64_t>(std::int64_t{dBm});
}

}  // namespace

Bytes beacon(const Network& network) {
    return managementFrame(0x80, kBroadcast, network);
}

Bytes probeResponse(const Network& network) {
    return managementFrame(0x50, kClient, network);
}

Bytes acknowledgement() {
    return join({Bytes{0xD4, 0x00}, le16(0), kClient});
}

Bytes dataFrame(const Network& network) {
    // SNAP, with the EtherType that IEEE 802 keeps for local experiments.
    return join({Bytes{0x08, 0x01}, le16(0x2C), address(network), kClient, address(network),
                 le16(0x0010), Bytes{0xAA, 0xAA, 0x03, 0x00, 0x00, 0x00, 0x88, 0xB5},
                 text("nothing to see")});
}

Bytes withFlags(Bytes frame, std::uint8_t flags) {
    frame.at(1) |= flags;
    return frame;
}

Bytes withHTControl(const Bytes& frame) {
    const auto body = frame.begin() + kHeaderSize;
    return withFlags(join({Bytes(frame.begin(), body), le32(0), Bytes(body, frame.end())}),
                     kHTControl);
}

Bytes withFCS(const Bytes& frame) {
    return join({frame, le32(capture::frameCheckSequence(frame))});
}

Bytes withBadFCS(const Bytes& frame) {
    return join({frame, le32(~capture::frameCheckSequence(frame))});
}

Bytes radiotap(const Radio& radio, std::uint8_t flags) {
    const Bytes fields =
        join({u8(flags), u8(lowestRate(radio)), le16(radio.frequencyMHz), le16(channelFlags(radio)),
              level(radio.signalDBm), level(radio.noiseDBm)});
    constexpr std::uint32_t kPresent = 0x0000006E;  // flags, rate, channel, signal, noise
    return join({le16(0), le16(8 + fields.size()), le32(kPresent), fields});
}

Bytes radiotapOfTwoAntennas(const Radio& radio, std::int8_t otherSignalDBm, std::uint8_t flags) {
    const Bytes fields =
        join({u8(flags), u8(lowestRate(radio)), le16(radio.frequencyMHz), le16(channelFlags(radio)),
              level(radio.signalDBm), u8(0), level(radio.signalDBm), u8(0),  // signal, antenna 0
              level(otherSignalDBm), u8(1)});                                // signal, antenna 1
    constexpr std::uint32_t kNextWord = 0xA0000000;  // one more, from bit 0 again
    constexpr std::uint32_t kFrame = 0x0000082E, kAntenna = 0x00000820;
    return join({le16(0), le16(16 + fields.size()), le32(kFrame | kNextWord),
                 le32(kAntenna | kNextWord), le32(kAntenna), fields});
}

Bytes prism(const Radio& radio, Order order) {
    const auto field = [order](std::uint64_t value, std::size_t size) {
        return number(value, size, order);
    };
    const std::uint64_t values[] = {0,  // host time
                                    0,  // MAC time
                                    radio.channel,
                                    0,  // RSSI
                                    0,  // signal quality
                                    extended(radio.signalDBm),
                                    extended(radio.noiseDBm),
                                    lowestRate(radio),
                                    0,   // received, not transmitted
                                    0};  // frame length
    Bytes header = join({field(0x44, 4), field(144, 4), text("wlan0"), Bytes(11, 0)});
    std::uint64_t identifier = 0x44;
    for (const std::uint64_t value : values) {
        identifier += 0x10000;
        header = join({header, field(identifier, 4), field(0, 2), field(4, 2), field(value, 4)});
    }
    return header;
}

Bytes avs(const Radio& radio) {
    return join({
        be32(0x80211001), be32(64),     // version 1, length
        be64(0), be64(0),               // MAC time, host time
        be32(isIn5GHz(radio) ? 5 : 6),  // PHY type: OFDM, ERP
        be32(radio.channel),
        be32(5ull * lowestRate(radio)),  // 100 kb/s
        be32(0), be32(0),                // antenna, priority
        be32(2),                         // levels in dBm
        be32(extended(radio.signalDBm)), be32(extended(radio.noiseDBm)),
        be32(2),  // long preamble
        be32(1),  // CCK
    });
}

Bytes ppi(const Radio& radio, bool hasFCS) {
    const Bytes common =
        join({le64(0), le16(hasFCS ? 1 : 0), le16(lowestRate(radio)), le16(radio.frequencyMHz),
              le16(channelFlags(radio)), le16(0), level(radio.signalDBm), level(radio.noiseDBm)});
    return join({le16(0), le16(8 + 4 + common.size()), le32(105),  // version, length, link type
                 le16(2), le16(common.size()), common});
}

}  // namespace halvane::samples
