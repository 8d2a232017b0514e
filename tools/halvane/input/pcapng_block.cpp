#include "tools/halvane/input/pcapng_block.h"

#include <algorithm>
#include <array>

#include "halvane/base/byte_cursor.h"

namespace halvane::tool {

namespace {

constexpr std::uint32_t kByteOrderMagic = 0x1A2B3C4D;
constexpr std::size_t kSmallestBlock = 12;  // type and length, and the length again
constexpr std::size_t kTrailer = 4;

constexpr std::array kTypes = {BlockType::Interface, BlockType::ObsoletePacket,
                               BlockType::SimplePacket, BlockType::EnhancedPacket,
                               BlockType::Section};

bool isKnown(std::uint32_t type) {
    return std::ranges::any_of(
        kTypes, [type](BlockType known) { return static_cast<std::uint32_t>(known) == type; });
}

bool isPacket(std::uint32_t type) {
    return isKnown(type) && type != static_cast<std::uint32_t>(BlockType::Interface) &&
           type != static_cast<std::uint32_t>(BlockType::Section);
}

}  // namespace

Result<std::optional<Block>, std::string> BlockReader::next() {
    stream_->consume(std::exchange(unconsumed_, 0));
    start_ = stream_->position();
    if (stream_->peek(1).empty()) {
        if (stream_->error()) return Unexpected(*stream_->error());
        return std::optional<Block>();
    }
    ++count_;
    const auto header = readHeader();
    if (!header) return Unexpected(header.error());
    if (isKnown(header->type)) {
        const auto body = readBody(*header);
        if (!body) return Unexpected(body.error());
        return std::optional(Block{static_cast<BlockType>(header->type), *body});
    }
    if (const Fault fault = passOver(*header)) return Unexpected(*fault);
    return std::optional(Block{BlockType::PassedOver, OrderedCursor({}, isBigEndian_)});
}

bool BlockReader::isPacketNext() {
    stream_->consume(std::exchange(unconsumed_, 0));
    const auto type = OrderedCursor(stream_->peek(4), isBigEndian_).u32();
    return type && isPacket(*type);
}

std::string BlockReader::fault(const std::string& text) const {
    return "block " + std::to_string(count_) + " at octet " + std::to_string(start_) + ": " + text;
}

// The fault of the compressed data, if it is that which ended the block.
std::string BlockReader::cutFault(const Header& header, std::uint64_t kept) {
    if (stream_->error()) return *stream_->error();
    isPacketCut_ = isPacket(header.type);
    return fault("the file is truncated: the block has " + std::to_string(kept) + " of its " +
                 std::to_string(header.length) + " octets");
}

Result<BlockReader::Header, std::string> BlockReader::readHeader() {
    const auto start = stream_->peek(kSmallestBlock);
    if (start.size() < kSmallestBlock) {
        if (stream_->error()) return Unexpected(*stream_->error());
        isPacketCut_ = isPacket(OrderedCursor(start, isBigEndian_).u32().value_or(0));
        return Unexpected(fault("the file is truncated: " + std::to_string(start.size()) +
                                " octets are no block"));
    }
    if (const Fault fault = readByteOrder(start)) return Unexpected(*fault);
    OrderedCursor cursor(start, isBigEndian_);
    const Header header = {cursor.u32().value_or(0), cursor.u32().value_or(0)};
    if (header.length < kSmallestBlock || header.length % 4 != 0) {
        return Unexpected(fault("its length of " + std::to_string(header.length) +
                                " octets is not 12 or more in steps of 4"));
    }
    return header;
}

// A Section Header Block tells the byte order behind its length.
BlockReader::Fault BlockReader::readByteOrder(std::span<const std::uint8_t> start) {
    ByteCursor cursor(start);
    if (cursor.u32le() != static_cast<std::uint32_t>(BlockType::Section)) return std::nullopt;
    cursor.skip(4);
    ByteCursor other(cursor);
    const auto little = cursor.u32le();
    const auto big = other.u32be();
    if (little != kByteOrderMagic && big != kByteOrderMagic) {
        return fault("its byte-order magic is neither of the two");
    }
    isBigEndian_ = big == kByteOrderMagic;
    return std::nullopt;
}

Result<OrderedCursor, std::string> BlockReader::readBody(const Header& header) {
    if (header.length > kLargestBlock) {
        return Unexpected(fault("its length of " + std::to_string(header.length) +
                                " octets is above " + std::to_string(kLargestBlock)));
    }
    const auto octets = stream_->peek(header.length);
    if (octets.size() < header.length) return Unexpected(cutFault(header, octets.size()));
    unconsumed_ = header.length;
    OrderedCursor cursor(octets.first(header.length), isBigEndian_);
    cursor.take(8);
    const auto body = cursor.part(header.length - kSmallestBlock);
    const auto trailer = cursor.u32();
    if (!body || trailer != header.length) {
        return Unexpected(
            fault("its lengths at both ends differ: " + std::to_string(header.length) + " and " +
                  std::to_string(trailer.value_or(0))));
    }
    return *body;
}

BlockReader::Fault BlockReader::passOver(const Header& header) {
    const std::uint64_t start = header.length - kTrailer;
    const std::uint64_t skipped = stream_->skip(start);
    const auto octets = stream_->peek(kTrailer);
    const auto trailer = OrderedCursor(octets, isBigEndian_).u32();
    if (!trailer) return cutFault(header, skipped + octets.size());
    if (*trailer != header.length) {
        return fault("its lengths at both ends differ: " + std::to_string(header.length) + " and " +
                     std::to_string(*trailer));
    }
    stream_->consume(kTrailer);
    return std::nullopt;
}

}  // namespace halvane::tool
