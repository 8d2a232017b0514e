// The records of a pcap file, read where they are in the stream, without libpcap's two copies of
// each.
//
// Only records that libpcap hands out unchanged are plain: of a file of version 2.4 in micro- or
// nanoseconds, whole, and no longer than the file's header and its own promise. Whatever else there
// is remains unread, for libpcap to decide.
#ifndef TOOLS_HALVANE_INPUT_PLAIN_PCAP_H
#define TOOLS_HALVANE_INPUT_PLAIN_PCAP_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

#include "tools/halvane/input/input_stream.h"

namespace halvane::tool {

inline constexpr std::size_t kPcapFileHeaderSize = 24;
inline constexpr std::size_t kPcapRecordHeaderSize = 16;

struct PlainPcapRecord {
    std::span<const std::uint8_t> bytes;
    std::size_t originalLength;
    std::int64_t time;  // nanoseconds since 1970-01-01 00:00 UTC
};

class PlainPcap {
  public:
    // Reads the header of the file, and leaves it unread. Absent if no record is plain.
    static std::optional<PlainPcap> of(InputStream& stream);

    // Takes the next record off the stream; its bytes are valid until the stream is used again.
    // Absent, with nothing taken, if it is not plain, and at the end.
    // REQUIRES: the stream is at the start of a record.
    std::optional<PlainPcapRecord> next(InputStream& stream) const;

  private:
    bool isBigEndian_;
    std::uint32_t unit_;           // nanoseconds
    std::uint32_t longestRecord_;  // octets
};

}  // namespace halvane::tool

#endif
