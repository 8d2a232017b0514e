#include "tools/halvane/input/plain_pcap.h"

#include <algorithm>

#include "tools/halvane/input/ordered_cursor.h"

namespace halvane::tool {

namespace {

// https://www.ietf.org/archive/id/draft-ietf-opsawg-pcap-04.html, 4.
constexpr std::uint32_t kMicroseconds = 0xA1B2C3D4;
constexpr std::uint32_t kNanoseconds = 0xA1B23C4D;
constexpr std::uint32_t kSecond = 1'000'000'000;  // nanoseconds

// libpcap refuses longer records, whatever the file's header allows.
constexpr std::uint32_t kLongestRecord = 262'144;

// Nanoseconds of the fractions of a second; absent for another magic.
std::optional<std::uint32_t> unitOf(std::uint32_t magic) {
    if (magic == kMicroseconds) return 1000;
    if (magic == kNanoseconds) return 1;
    return std::nullopt;
}

}  // namespace

std::optional<PlainPcap> PlainPcap::of(InputStream& stream) {
    const auto start = stream.peek(kPcapFileHeaderSize);
    for (const bool isBigEndian : {false, true}) {
        OrderedCursor header(start, isBigEndian);
        const auto unit = unitOf(header.u32().value_or(0));
        const bool isVersion24 = header.u16() == 2u && header.u16() == 4u;
        header.take(8);  // reserved
        const auto snapshotLength = header.u32();
        if (!unit || !isVersion24 || !snapshotLength) continue;
        PlainPcap file;
        file.isBigEndian_ = isBigEndian;
        file.unit_ = *unit;
        // 0 means that the length is not limited: libpcap decides what it is then.
        file.longestRecord_ = std::min(*snapshotLength, kLongestRecord);
        return file;
    }
    return std::nullopt;
}

std::optional<PlainPcapRecord> PlainPcap::next(InputStream& stream) const {
    auto octets = stream.peek(kPcapRecordHeaderSize);
    OrderedCursor header(octets, isBigEndian_);
    const auto seconds = header.u32();
    const auto fraction = header.u32();
    const auto length = header.u32();
    const auto originalLength = header.u32();
    if (!originalLength || *length > *originalLength || *length > longestRecord_) {
        return std::nullopt;
    }
    const std::uint64_t nanoseconds = std::uint64_t{*fraction} * unit_;
    if (nanoseconds >= kSecond) return std::nullopt;

    const std::size_t size = kPcapRecordHeaderSize + *length;
    if (octets.size() < size) octets = stream.peek(size);
    if (octets.size() < size) return std::nullopt;
    stream.consume(size);
    return PlainPcapRecord{
        .bytes = octets.subspan(kPcapRecordHeaderSize, *length),
        .originalLength = *originalLength,
        .time = std::int64_t{*seconds} * kSecond + static_cast<std::int64_t>(nanoseconds)};
}

}  // namespace halvane::tool
