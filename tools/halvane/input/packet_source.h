// The packets of a capture, as its format stores them.
//
// A source belongs to one thread at a time; distinct sources are independent.
#ifndef TOOLS_HALVANE_INPUT_PACKET_SOURCE_H
#define TOOLS_HALVANE_INPUT_PACKET_SOURCE_H

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <utility>

#include "halvane/base/result.h"
#include "halvane/capture/link_type.h"

#include "tools/halvane/input/input_stream.h"

namespace halvane::tool {

struct Packet {
    std::uint64_t number = 0;  // in the capture, from 1
    capture::LinkType linkType = capture::LinkType::IEEE80211;
    std::span<const std::uint8_t> bytes{};
    std::size_t originalLength = 0;      // before the capture cut the end off
    std::optional<std::int64_t> time{};  // nanoseconds since 1970-01-01 00:00 UTC
    // The capture, not the radio header, tells that frames end in their frame check sequence.
    bool endsInFCS = false;
    std::uint32_t interface = 0;  // of the live capture or of the section of the file, from 0
};

// Why a capture cannot be read, or not to its end.
struct ReadingFault {
    std::string text;
    std::string hint{};  // what to do, in lines; empty for none

    ReadingFault(std::string why, std::string whatToDo = {})
        : text(std::move(why)), hint(std::move(whatToDo)) {}
};

// A packet, or absent at the end; the error is the fault that ends the reading, without the file's
// name.
using NextPacket = Result<std::optional<Packet>, ReadingFault>;

class PacketSource {
  public:
    virtual ~PacketSource() = default;

    // The packet's bytes are valid until the next call.
    virtual NextPacket next() = 0;

    // The octets of the file that were read, for showing progress.
    virtual std::uint64_t bytesRead() const = 0;

    // A sentence on what was passed over without being a fault. Absent if nothing was.
    virtual std::optional<std::string> note() const { return std::nullopt; }
};

// "cannot be read beyond frame 7: TEXT".
inline std::string beyondFrame(std::uint64_t number, const std::string& text) {
    return "cannot be read beyond frame " + std::to_string(number) + ": " + text;
}

// "ends in the middle of frame 8; 7 frames were read".
std::string endsInFrame(std::uint64_t framesRead);

using OpenedSource = Result<std::unique_ptr<PacketSource>, ReadingFault>;

// Open what follows in `stream`. An error is the fault, without the file's name.
// pcap of every kind that libpcap reads, through it.
OpenedSource openPcap(std::unique_ptr<InputStream> stream);
OpenedSource openPcapng(std::unique_ptr<InputStream> stream);

}  // namespace halvane::tool

#endif
