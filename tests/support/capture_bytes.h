// Capture files, octet by octet, as tests need them: right, odd or wrong.
#ifndef TESTS_SUPPORT_CAPTURE_BYTES_H
#define TESTS_SUPPORT_CAPTURE_BYTES_H

#include <cstddef>
#include <cstdint>
#include <optional>

#include "tests/support/hostile_bytes.h"

namespace halvane::testing {

// Whether a capture file is written by a little- or a big-endian host.
enum class Order { Little, Big };

inline void append(Bytes& bytes, const Bytes& more) {
    bytes.insert(bytes.end(), more.begin(), more.end());
}

inline void appendNumber(Bytes& bytes, std::uint64_t value, std::size_t size, Order order) {
    for (std::size_t i = 0; i < size; ++i) {
        const std::size_t shift = 8 * (order == Order::Little ? i : size - 1 - i);
        bytes.push_back(static_cast<std::uint8_t>(value >> shift));
    }
}

// A beacon of 02:00:00:00:00:<last>, with an SSID of one letter.
inline Bytes beaconFrame(std::uint8_t last = 1) {
    Bytes frame = {0x80, 0x00, 0x00, 0x00, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0x02,
                   0x00, 0x00, 0x00, 0x00, last, 0x02, 0x00, 0x00, 0x00, 0x00, last};
    append(frame, {0x10, 0x00});              // sequence 1, fragment 0
    append(frame, {0, 0, 0, 0, 0, 0, 0, 0});  // timestamp
    append(frame, {0x64, 0x00, 0x01, 0x00});  // 100 TU, ESS
    append(frame, {0x00, 0x01, 0x61});        // SSID "a"
    return frame;
}

// A pcapng file that grows block by block.
class PcapngBytes {
  public:
    static constexpr unsigned kBare = 105, kRadiotap = 127, kEthernet = 1;

    explicit PcapngBytes(Order order = Order::Little) : order_(order) { addSection(order); }

    const Bytes& bytes() const { return bytes_; }

    // A number of the file's byte order.
    Bytes number(std::uint64_t value, std::size_t size) const {
        Bytes octets;
        appendNumber(octets, value, size, order_);
        return octets;
    }

    Bytes option(unsigned code, const Bytes& value) const {
        Bytes octets = number(code, 2);
        append(octets, number(value.size(), 2));
        append(octets, value);
        octets.resize((octets.size() + 3) / 4 * 4);
        return octets;
    }

    PcapngBytes& addBlock(std::uint32_t type, const Bytes& body,
                          std::optional<std::uint32_t> trailer = std::nullopt) {
        const std::size_t padding = (4 - body.size() % 4) % 4;
        const std::size_t size = 12 + body.size() + padding;
        append(bytes_, number(type, 4));
        append(bytes_, number(size, 4));
        append(bytes_, body);
        bytes_.insert(bytes_.end(), padding, 0);
        append(bytes_, number(trailer.value_or(static_cast<std::uint32_t>(size)), 4));
        return *this;
    }

    PcapngBytes& addSection(Order order, unsigned major = 1, const Bytes& options = {}) {
        order_ = order;
        Bytes body = number(0x1A2B3C4D, 4);
        append(body, number(major, 2));
        append(body, number(0, 2));
        append(body, number(UINT64_MAX, 8));
        append(body, options);
        return addBlock(0x0A0D0D0A, body);
    }

    PcapngBytes& addInterface(unsigned linkType, const Bytes& options = {},
                              std::uint32_t snapshotLength = 65535) {
        Bytes body = number(linkType, 2);
        append(body, number(0, 2));
        append(body, number(snapshotLength, 4));
        append(body, options);
        return addBlock(1, body);
    }

    PcapngBytes& addPacket(std::uint32_t interface, const Bytes& packet, std::uint64_t ticks = 0,
                           const Bytes& options = {}, std::size_t notKept = 0) {
        Bytes body = number(interface, 4);
        append(body, packetBody(packet, ticks, options, notKept));
        return addBlock(6, body);
    }

    PcapngBytes& addObsoletePacket(unsigned interface, const Bytes& packet,
                                   std::uint64_t ticks = 0) {
        Bytes body = number(interface, 2);
        append(body, number(7, 2));  // drops
        append(body, packetBody(packet, ticks, {}, 0));
        return addBlock(2, body);
    }

    PcapngBytes& addSimplePacket(const Bytes& packet, std::size_t originalLength) {
        Bytes body = number(originalLength, 4);
        append(body, packet);
        return addBlock(3, body);
    }

  private:
    Bytes packetBody(const Bytes& packet, std::uint64_t ticks, const Bytes& options,
                     std::size_t notKept) const {
        Bytes body = number(ticks >> 32, 4);
        append(body, number(ticks & 0xFFFFFFFF, 4));
        append(body, number(packet.size(), 4));
        append(body, number(packet.size() + notKept, 4));
        append(body, packet);
        body.resize((body.size() + 3) / 4 * 4);
        append(body, options);
        return body;
    }

    Order order_;
    Bytes bytes_;
};

}  // namespace halvane::testing

#endif
