// The blocks of a pcapng file, one after the other, with every length checked
// (https://www.ietf.org/archive/id/draft-ietf-opsawg-pcapng-03.html, 3 and 4).
//
// A reader belongs to one thread at a time. It keeps at most one block, of at most kLargestBlock
// octets, and none of a kind that it passes over.
#ifndef TOOLS_HALVANE_INPUT_PCAPNG_BLOCK_H
#define TOOLS_HALVANE_INPUT_PCAPNG_BLOCK_H

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <utility>

#include "halvane/base/result.h"

#include "tools/halvane/input/input_stream.h"
#include "tools/halvane/input/ordered_cursor.h"

namespace halvane::tool {

enum class BlockType : std::uint32_t {
    PassedOver = 0,  // in a file, a reserved number
    Interface = 1,
    ObsoletePacket = 2,
    SimplePacket = 3,
    EnhancedPacket = 6,
    Section = 0x0A0D0D0A,
};

struct Block {
    BlockType type{};
    OrderedCursor body;  // of the section's byte order
};

class BlockReader {
  public:
    // Other blocks may have any length. Files of many programs stay below it.
    static constexpr std::uint32_t kLargestBlock = 16 << 20;

    explicit BlockReader(std::unique_ptr<InputStream> stream) : stream_(std::move(stream)) {}

    // Returns the next block; its body is valid until the next call. A block that is of no type
    // above is read to its end and returned as PassedOver, without its body. Absent at the end of
    // the file. The error is that of fault().
    Result<std::optional<Block>, std::string> next();

    // Returns whether the next block is one of a packet.
    bool isPacketNext();

    // Returns whether the file ends in the middle of a packet's block, the last one.
    bool isPacketCut() const { return isPacketCut_; }

    // Names the last block: "block 7 at octet 1044: TEXT".
    std::string fault(const std::string& text) const;

    // Of the file, up to the end of the last block where it is not compressed.
    std::uint64_t bytesRead() const {
        return stream_->fileOffset() + (stream_->isCompressed() ? 0 : unconsumed_);
    }

  private:
    using Fault = std::optional<std::string>;

    struct Header {
        std::uint32_t type = 0;
        std::uint32_t length = 0;
    };

    Result<Header, std::string> readHeader();
    Fault readByteOrder(std::span<const std::uint8_t> start);
    Result<OrderedCursor, std::string> readBody(const Header& header);
    Fault passOver(const Header& header);
    std::string cutFault(const Header& header, std::uint64_t kept);

    std::unique_ptr<InputStream> stream_;
    bool isBigEndian_ = false;
    bool isPacketCut_ = false;
    std::uint64_t count_ = 0;
    std::uint64_t start_ = 0;     // of the last block
    std::size_t unconsumed_ = 0;  // of the last block
};

}  // namespace halvane::tool

#endif
