#include "tools/halvane/input/netlink_attributes.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <linux/netlink.h>

namespace halvane::tool {

namespace {

constexpr bool kIsBigEndian = std::endian::native == std::endian::big;
constexpr std::size_t kHeaderSize = 4;

template <typename Number>
void append(std::vector<std::uint8_t>& bytes, Number number) {
    const auto octets = std::bit_cast<std::array<std::uint8_t, sizeof number>>(number);
    bytes.insert(bytes.end(), octets.begin(), octets.end());
}

}  // namespace

std::optional<std::uint8_t> NetlinkAttribute::u8() const {
    return value.size() == 1 ? std::optional(value.front()) : std::nullopt;
}

std::optional<std::uint16_t> NetlinkAttribute::u16() const {
    if (value.size() != sizeof(std::uint16_t)) return std::nullopt;
    return OrderedCursor(value, kIsBigEndian).u16();
}

std::optional<std::uint32_t> NetlinkAttribute::u32() const {
    if (value.size() != sizeof(std::uint32_t)) return std::nullopt;
    return OrderedCursor(value, kIsBigEndian).u32();
}

std::optional<std::uint64_t> NetlinkAttribute::u64() const {
    if (value.size() != sizeof(std::uint64_t)) return std::nullopt;
    return OrderedCursor(value, kIsBigEndian).u64();
}

NetlinkAttributes::NetlinkAttributes(std::span<const std::uint8_t> bytes)
    : cursor_(bytes, kIsBigEndian) {}

std::optional<NetlinkAttribute> NetlinkAttributes::next() {
    if (areBroken_ || cursor_.remaining() == 0) return std::nullopt;
    const auto length = cursor_.u16();  // with the header
    const auto type = cursor_.u16();
    const auto value =
        type && *length >= kHeaderSize ? cursor_.take(*length - kHeaderSize) : std::nullopt;
    if (!value) {
        areBroken_ = true;
        return std::nullopt;
    }
    // The last one may end without its padding.
    cursor_.take(std::min<std::size_t>((4 - *length % 4) % 4, cursor_.remaining()));
    return NetlinkAttribute{static_cast<std::uint16_t>(*type & NLA_TYPE_MASK), *value};
}

std::optional<GenericMessage> readGenericMessage(std::span<const std::uint8_t> bytes) {
    OrderedCursor cursor(bytes, kIsBigEndian);
    const auto command = cursor.u8();
    cursor.u8();  // the family's version
    cursor.u16();
    const auto attributes = cursor.take(cursor.remaining());
    if (!attributes) return std::nullopt;
    return GenericMessage{*command, NetlinkAttributes(*attributes)};
}

void NetlinkAttributeList::add(std::uint16_t type, std::span<const std::uint8_t> value) {
    append(bytes_, static_cast<std::uint16_t>(kHeaderSize + value.size()));
    append(bytes_, type);
    bytes_.insert(bytes_.end(), value.begin(), value.end());
    bytes_.resize((bytes_.size() + 3) / 4 * 4);
}

void NetlinkAttributeList::add(std::uint16_t type, std::uint32_t value) {
    add(type, std::bit_cast<std::array<std::uint8_t, sizeof value>>(value));
}

void NetlinkAttributeList::add(std::uint16_t type, const NetlinkAttributeList& nested) {
    add(static_cast<std::uint16_t>(type | NLA_F_NESTED), nested.bytes_);
}

}  // namespace halvane::tool
