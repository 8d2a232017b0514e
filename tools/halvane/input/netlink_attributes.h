// The attributes of a netlink message, one after the other, with every length checked
// (https://docs.kernel.org/userspace-api/netlink/intro.html). Numbers have the machine's byte
// order.
//
// A value that borrows its bytes. Threads: as for a span.
#ifndef TOOLS_HALVANE_INPUT_NETLINK_ATTRIBUTES_H
#define TOOLS_HALVANE_INPUT_NETLINK_ATTRIBUTES_H

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "tools/halvane/input/ordered_cursor.h"

namespace halvane::tool {

struct NetlinkAttribute {
    std::uint16_t type = 0;  // without its flags
    std::span<const std::uint8_t> value{};

    // The value as a number. Absent if it has another size.
    std::optional<std::uint8_t> u8() const;
    std::optional<std::uint16_t> u16() const;
    std::optional<std::uint32_t> u32() const;
    std::optional<std::uint64_t> u64() const;
};

class NetlinkAttributes {
  public:
    // The attributes of a message, or those within a nested one.
    explicit NetlinkAttributes(std::span<const std::uint8_t> bytes);

    // The next attribute. Absent behind the last, and where the bytes end inside of one.
    std::optional<NetlinkAttribute> next();

    // Whether next() found that the bytes end inside of an attribute.
    bool areBroken() const { return areBroken_; }

  private:
    OrderedCursor cursor_;
    bool areBroken_ = false;
};

// A message of generic netlink: what follows the header of netlink.
struct GenericMessage {
    std::uint8_t command = 0;
    NetlinkAttributes attributes;
};

// Absent if the bytes do not hold the header.
std::optional<GenericMessage> readGenericMessage(std::span<const std::uint8_t> bytes);

// Attributes of a message to be sent. A nested one is made of those of another list.
class NetlinkAttributeList {
  public:
    // REQUIRES: `value` has at most 65531 octets.
    void add(std::uint16_t type, std::span<const std::uint8_t> value);
    void add(std::uint16_t type, std::uint32_t value);
    void add(std::uint16_t type, const NetlinkAttributeList& nested);

    const std::vector<std::uint8_t>& bytes() const { return bytes_; }

  private:
    std::vector<std::uint8_t> bytes_;
};

}  // namespace halvane::tool

#endif
