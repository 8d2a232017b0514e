#include "tools/make_samples/capture_file.h"

namespace halvane::samples {

namespace {

constexpr std::uint64_t kSecond = 1000000;                 // microseconds
constexpr std::uint64_t kStart = 1704067200ull * kSecond;  // 2024-01-01 00:00 UTC
constexpr std::uint64_t kStep = 102400;                    // 100 TU
constexpr std::uint32_t kSnapshotLength = 65535;

// A block of pcapng, https://www.ietf.org/archive/id/draft-ietf-opsawg-pcapng-02.html 3.1.
Bytes block(std::uint32_t type, Bytes body, Order order) {
    while (body.size() % 4 != 0) body.push_back(0);
    const Bytes size = number(12 + body.size(), 4, order);
    return join({number(type, 4, order), size, body, size});
}

}  // namespace

// https://www.ietf.org/archive/id/draft-ietf-opsawg-pcap-04.html
Bytes pcapFile(LinkType linkType, Order order, const std::vector<Packet>& packets) {
    const auto field = [order](std::uint64_t value, std::size_t size) {
        return number(value, size, order);
    };
    Bytes file = join({field(0xA1B2C3D4, 4), field(2, 2), field(4, 2),  // magic, version 2.4
                       field(0, 4), field(0, 4), field(kSnapshotLength, 4),
                       field(static_cast<std::uint16_t>(linkType), 4)});
    std::uint64_t time = kStart;
    for (const Packet& packet : packets) {
        const std::size_t size = packet.bytes.size();
        file = join({file, field(time / kSecond, 4), field(time % kSecond, 4), field(size, 4),
                     field(size + packet.notKept, 4), packet.bytes});
        time += kStep;
    }
    return file;
}

Bytes pcapngFile(LinkType linkType, Order order, const std::vector<Packet>& packets) {
    const auto field = [order](std::uint64_t value, std::size_t size) {
        return number(value, size, order);
    };
    const Bytes section = join({field(0x1A2B3C4D, 4), field(1, 2), field(0, 2),  // magic, version
                                field(UINT64_MAX, 8)});                          // length unstated
    const Bytes interface = join(
        {field(static_cast<std::uint16_t>(linkType), 2), field(0, 2), field(kSnapshotLength, 4)});
    Bytes file = join({block(0x0A0D0D0A, section, order), block(1, interface, order)});
    std::uint64_t time = kStart;
    for (const Packet& packet : packets) {
        const std::size_t size = packet.bytes.size();
        const Bytes body = join({field(0, 4), field(time >> 32, 4), field(time, 4), field(size, 4),
                                 field(size + packet.notKept, 4), packet.bytes});
        file = join({file, block(6, body, order)});  // enhanced packet
        time += kStep;
    }
    return file;
}

}  // namespace halvane::samples
