// Writes packets as a pcapng file
// (https://www.ietf.org/archive/id/draft-ietf-opsawg-pcapng-03.html): one section, with a
// description of each interface and a block for each packet.
//
// The file consists of whole blocks at any time: blocks that stand together in memory are written
// at once, and what a full disk cut off is taken away. However the program ends, the file can be
// read, up to the last flush() at least.
// A writer belongs to one thread at a time.
#ifndef TOOLS_HALVANE_INPUT_PCAPNG_WRITER_H
#define TOOLS_HALVANE_INPUT_PCAPNG_WRITER_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "halvane/base/result.h"
#include "halvane/capture/link_type.h"

#include "tools/halvane/input/packet_source.h"

namespace halvane::tool {

struct WrittenInterface {
    std::string name;
    capture::LinkType linkType = capture::LinkType::Radiotap;
    std::uint32_t snapshotLength = 0;  // 0: without a limit
};

class PcapngWriter {
  public:
    // Absent, or the file's name and the system's words. After a fault, nothing more is written.
    using Fault = std::optional<std::string>;

    // Creates the file, or empties it; "-" is standard output, which stays open. Its start is
    // written at once, so that a fault shows. `program` is its author: "halvane 0.1.0".
    static Result<PcapngWriter, std::string> create(const std::string& path,
                                                    std::span<const WrittenInterface> interfaces,
                                                    const std::string& program);

    PcapngWriter(PcapngWriter&& other) noexcept;
    PcapngWriter& operator=(PcapngWriter&&) = delete;
    ~PcapngWriter();  // flushes; a fault is lost

    // Adds a packet. Without a time stamp, it has that of 1970-01-01 00:00 UTC.
    // REQUIRES: `packet.interface` counts the interfaces, whose link type it has.
    Fault add(const Packet& packet);

    // Adds what the capture of an interface lost. `time` as Packet::time has it.
    // REQUIRES: `interface` counts the interfaces.
    Fault addCounts(std::uint32_t interface, std::int64_t time, std::uint64_t received,
                    std::uint64_t dropped);

    // Writes what stands in memory.
    Fault flush();

  private:
    PcapngWriter(std::string name, int descriptor, bool isOwned)
        : name_(std::move(name)), descriptor_(descriptor), isOwned_(isOwned) {}

    std::size_t beginBlock(std::uint32_t type);
    void endBlock(std::size_t start);
    void addSection(const std::string& program);
    void addInterface(const WrittenInterface& interface);
    Fault flushIfFull();
    Fault fail(int error, std::size_t written);

    std::string name_;
    int descriptor_;
    bool isOwned_;
    std::vector<std::uint8_t> blocks_{};  // whole ones, but for that which is being made
    std::vector<std::size_t> ends_{};     // of the whole ones, in them
    Fault fault_{};
};

}  // namespace halvane::tool

#endif
