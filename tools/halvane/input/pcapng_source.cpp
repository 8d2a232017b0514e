// pcapng (https://www.ietf.org/archive/id/draft-ietf-opsawg-pcapng-03.html).
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "halvane/base/result.h"
#include "halvane/capture/link_type.h"

#include "tools/halvane/input/input_stream.h"
#include "tools/halvane/input/link_type_name.h"
#include "tools/halvane/input/ordered_cursor.h"
#include "tools/halvane/input/packet_source.h"
#include "tools/halvane/input/pcapng_block.h"
#include "tools/halvane/input/pcapng_time.h"

namespace halvane::tool {

namespace {

// As much as any program captures of a packet.
constexpr std::uint32_t kLargestPacket = 256 << 10;
// Of one section; bounds what is kept of them.
constexpr std::size_t kMostInterfaces = 65536;

struct Interface {
    std::optional<capture::LinkType> linkType{};  // absent if it is not 802.11
    std::uint32_t snapshotLength = 0;             // 0: without a limit
    std::uint8_t resolution = 6;
    std::int64_t offset = 0;
    bool endsInFCS = false;
};

// A packet as its block describes it.
struct StoredPacket {
    std::uint32_t interface = 0;
    std::optional<std::uint64_t> ticks{};
    std::uint32_t originalLength = 0;
    std::span<const std::uint8_t> bytes{};
    std::optional<std::uint32_t> flags{};
};

// The text of a fault of the block, or absent.
using BlockFault = std::optional<std::string>;

struct Option {
    std::uint16_t code = 0;
    OrderedCursor value;
};

// Reads an option, and absent behind the last. Sets `fault` if the option does not fit.
std::optional<Option> takeOption(OrderedCursor& cursor, BlockFault& fault) {
    if (cursor.remaining() == 0) return std::nullopt;
    const auto code = cursor.u16();
    const auto length = cursor.u16();
    if (code == 0 && length) return std::nullopt;  // opt_endofopt
    const auto value = length ? cursor.part(*length) : std::nullopt;
    if (!value || !cursor.skipPadding(*length)) {
        fault = "it ends inside an option";
        return std::nullopt;
    }
    return Option{*code, *value};
}

// Some programs write octets, as the text's example does, and others bits, as its words say. The
// sequence of 802.11 has four octets, so both mean the same.
bool isFCSLength(std::optional<std::uint8_t> length) {
    if (!length) return false;
    return *length == 4 || *length == 32;
}

BlockFault readInterfaceOptions(OrderedCursor cursor, Interface& interface) {
    enum : std::uint16_t { kResolution = 9, kFCSLength = 13, kOffset = 14 };
    BlockFault fault;
    while (auto option = takeOption(cursor, fault)) {
        switch (option->code) {
            case kResolution:
                interface.resolution = option->value.u8().value_or(interface.resolution);
                break;
            case kFCSLength:
                interface.endsInFCS = isFCSLength(option->value.u8());
                break;
            case kOffset:
                interface.offset = static_cast<std::int64_t>(option->value.u64().value_or(0));
                break;
            default:
                break;
        }
    }
    return fault;
}

BlockFault readPacketOptions(OrderedCursor cursor, StoredPacket& packet) {
    constexpr std::uint16_t kFlags = 2;
    BlockFault fault;
    while (auto option = takeOption(cursor, fault)) {
        if (option->code == kFlags) packet.flags = option->value.u32();
    }
    return fault;
}

// Reads `length` octets of a packet, of which the capture kept `kept`.
BlockFault takePacketBytes(OrderedCursor& cursor, std::optional<std::uint32_t> kept,
                           std::optional<std::uint32_t> length, StoredPacket& packet) {
    if (!kept || !length) return "it ends before its packet";
    if (*kept > kLargestPacket) {
        return "its packet of " + std::to_string(*kept) + " octets is above " +
               std::to_string(kLargestPacket);
    }
    const auto bytes = cursor.take(*kept);
    if (!bytes || !cursor.skipPadding(*kept)) {
        return "its packet of " + std::to_string(*kept) + " octets does not fit into it";
    }
    packet.bytes = *bytes;
    packet.originalLength = *length;
    return std::nullopt;
}

// The Enhanced Packet Block, and the obsolete Packet Block, which has two octets less for its
// interface and counts drops in them.
BlockFault readEnhancedPacket(const Block& block, StoredPacket& packet) {
    OrderedCursor cursor = block.body;
    if (block.type == BlockType::ObsoletePacket) {
        packet.interface = cursor.u16().value_or(0);
        cursor.u16();
    } else {
        packet.interface = cursor.u32().value_or(0);
    }
    const auto upper = cursor.u32();
    const auto lower = cursor.u32();
    if (upper && lower) packet.ticks = std::uint64_t{*upper} << 32 | *lower;
    const auto kept = cursor.u32();
    const auto length = cursor.u32();
    const auto fault = takePacketBytes(cursor, kept, length, packet);
    return fault ? fault : readPacketOptions(cursor, packet);
}

// The Simple Packet Block: of the first interface, without a time stamp, and as long as that
// interface's snapshot length lets it be.
BlockFault readSimplePacket(const Block& block, std::uint32_t snapshotLength,
                            StoredPacket& packet) {
    OrderedCursor cursor = block.body;
    const auto length = cursor.u32();
    auto kept = length;
    if (kept && snapshotLength != 0) kept = std::min(*kept, snapshotLength);
    return takePacketBytes(cursor, kept, length, packet);
}

class PcapngSource : public PacketSource {
  public:
    explicit PcapngSource(std::unique_ptr<InputStream> stream) : blocks_(std::move(stream)) {}

    // Reads the blocks before the first packet.
    std::optional<ReadingFault> open() {
        while (!blocks_.isPacketNext()) {
            const auto block = blocks_.next();
            if (!block) return ReadingFault("not a readable capture: " + block.error());
            if (!*block) return faultOfEndWithoutPackets();
            if (const auto fault = describe(**block)) {
                return ReadingFault("not a readable capture: " + blocks_.fault(*fault));
            }
        }
        return std::nullopt;
    }

    NextPacket next() override {
        for (;;) {
            const auto block = blocks_.next();
            if (!block) return Unexpected(faultOf(block.error()));
            if (!*block) return end();
            if (!isPacket(**block)) {
                if (const auto fault = describe(**block)) return Unexpected(beyond(*fault));
                continue;
            }
            StoredPacket stored;
            if (const auto fault = read(**block, stored)) return Unexpected(beyond(*fault));
            ++count_;
            const Interface& interface = interfaces_[stored.interface];
            if (interface.linkType) return std::optional(packetOf(stored, interface));
            ++foreignPackets_;
        }
    }

    std::uint64_t bytesRead() const override { return blocks_.bytesRead(); }

    std::optional<std::string> note() const override {
        if (foreignInterfaces_ == 0 || !hasWiFi_) return std::nullopt;
        const bool isOne = foreignInterfaces_ == 1;
        return std::to_string(foreignInterfaces_) + (isOne ? " interface is" : " interfaces are") +
               " not 802.11, but of link type " + linkTypeName(foreignLinkType_) +
               (hasSeveralForeign_ ? " and others" : "") + ": " + (isOne ? "its " : "their ") +
               std::to_string(foreignPackets_) +
               (foreignPackets_ == 1 ? " frame is passed over" : " frames are passed over");
    }

  private:
    static bool isPacket(const Block& block) {
        return block.type == BlockType::EnhancedPacket || block.type == BlockType::SimplePacket ||
               block.type == BlockType::ObsoletePacket;
    }

    BlockFault describe(const Block& block) {
        if (block.type == BlockType::Section) return beginSection(block);
        if (block.type == BlockType::Interface) return addInterface(block);
        return std::nullopt;
    }

    BlockFault beginSection(const Block& block) {
        OrderedCursor cursor = block.body;
        cursor.u32();  // byte-order magic
        const auto major = cursor.u16();
        const auto minor = cursor.u16();
        const auto length = cursor.u64();  // not needed: sections end where another begins
        if (!length) return "it ends before its section's length";
        if (major != 1) {
            return "its version is " + std::to_string(*major) + "." + std::to_string(*minor) +
                   ", not 1.0";
        }
        interfaces_.clear();
        return std::nullopt;
    }

    BlockFault addInterface(const Block& block) {
        OrderedCursor cursor = block.body;
        const auto number = cursor.u16();
        cursor.u16();
        const auto snapshotLength = cursor.u32();
        if (!number || !snapshotLength) return "it ends before its snapshot length";
        if (interfaces_.size() == kMostInterfaces) {
            return "its section has more than " + std::to_string(kMostInterfaces) + " interfaces";
        }
        Interface interface = {.linkType = capture::linkTypeOfNumber(*number),
                               .snapshotLength = *snapshotLength};
        if (auto fault = readInterfaceOptions(cursor, interface)) return fault;
        hasWiFi_ = hasWiFi_ || interface.linkType;
        if (!interface.linkType) countForeign(*number);
        interfaces_.push_back(interface);
        return std::nullopt;
    }

    void countForeign(int number) {
        if (foreignInterfaces_++ == 0) foreignLinkType_ = number;
        hasSeveralForeign_ = hasSeveralForeign_ || number != foreignLinkType_;
    }

    BlockFault read(const Block& block, StoredPacket& stored) const {
        auto fault = block.type == BlockType::SimplePacket
                         ? readSimplePacket(block, simpleSnapshotLength(), stored)
                         : readEnhancedPacket(block, stored);
        if (fault) return fault;
        if (stored.interface < interfaces_.size()) return std::nullopt;
        return "it is of interface " + std::to_string(stored.interface) + ", and " +
               std::to_string(interfaces_.size()) + " are described";
    }

    std::uint32_t simpleSnapshotLength() const {
        return interfaces_.empty() ? 0 : interfaces_.front().snapshotLength;
    }

    Packet packetOf(const StoredPacket& stored, const Interface& interface) const {
        Packet packet = {.number = count_,
                         .linkType = *interface.linkType,
                         .bytes = stored.bytes,
                         .originalLength = stored.originalLength,
                         .endsInFCS = interface.endsInFCS,
                         .interface = stored.interface};
        if (stored.ticks) {
            packet.time = nanosecondsOfTicks(*stored.ticks, interface.resolution, interface.offset);
        }
        // Of the packet itself; 0 is not known.
        const auto length = stored.flags ? (*stored.flags >> 5 & 0xF) : 0;
        if (length != 0) packet.endsInFCS = isFCSLength(static_cast<std::uint8_t>(length));
        return packet;
    }

    NextPacket end() const {
        if (!hasWiFi_ && foreignInterfaces_ > 0) return Unexpected(notWiFiFault(foreignLinkType_));
        return std::optional<Packet>();
    }

    std::optional<ReadingFault> faultOfEndWithoutPackets() const {
        if (hasWiFi_) return std::nullopt;
        if (foreignInterfaces_ > 0) return notWiFiFault(foreignLinkType_);
        return ReadingFault("not a readable capture: it describes no interface");
    }

    // `text` is that of the block reader.
    std::string faultOf(const std::string& text) const {
        return blocks_.isPacketCut() ? endsInFrame(count_) : beyondFrame(count_, text);
    }

    std::string beyond(const std::string& fault) const {
        return beyondFrame(count_, blocks_.fault(fault));
    }

    BlockReader blocks_;
    std::vector<Interface> interfaces_;  // of the section
    std::uint64_t count_ = 0;
    std::uint64_t foreignInterfaces_ = 0;
    std::uint64_t foreignPackets_ = 0;
    int foreignLinkType_ = 0;  // of the first
    bool hasSeveralForeign_ = false;
    bool hasWiFi_ = false;
};

}  // namespace

OpenedSource openPcapng(std::unique_ptr<InputStream> stream) {
    auto source = std::make_unique<PcapngSource>(std::move(stream));
    if (const auto fault = source->open()) return Unexpected(*fault);
    return OpenedSource(std::move(source));
}

}  // namespace halvane::tool
