// Reads a capture file as a stream of frames, and examines each for what a BSS record needs.
//
// pcap and pcapng of either byte order, compressed or not (input_stream.h). Memory does not grow
// with the file.
// A reader belongs to one thread at a time; distinct readers are independent.
#ifndef TOOLS_HALVANE_INPUT_CAPTURE_READER_H
#define TOOLS_HALVANE_INPUT_CAPTURE_READER_H

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "halvane/base/result.h"
#include "halvane/capture/beacon_frame.h"
#include "halvane/capture/captured_frame.h"
#include "halvane/capture/frame_record.h"
#include "halvane/capture/link_type.h"
#include "halvane/capture/radio_header.h"

#include "tools/halvane/input/packet_source.h"

namespace halvane::tool {

struct CaptureSummary {
    std::uint64_t frames = 0;
    std::uint64_t beacons = 0;
    std::uint64_t probeResponses = 0;
    std::array<std::uint64_t, capture::kSkipReasonCount> skipped{};  // by SkipReason

    void add(const capture::CapturedFrame& frame);
    void add(const CaptureSummary& other);

    // One line for people, without a newline:
    // "frames read: 9, beacons: 4, probe responses: 1, skipped: 4 (other frames: 3, damaged: 1)".
    std::string text() const;
};

class CaptureReader {
  public:
    struct Frame : capture::CapturedFrame {
        std::uint64_t number = 0;  // 1-based, counting every frame of the file
        capture::LinkType linkType = capture::LinkType::IEEE80211;
        // Nanoseconds since 1970-01-01 00:00 UTC. Absent if the file tells none, or one that does
        // not fit.
        std::optional<std::int64_t> time{};
    };

    // Opens a capture file; "-" is standard input, which stays open. An error names the file and
    // the fault: the file cannot be opened or read, is a directory, is empty or no capture, or its
    // frames are not 802.11. If a pcapng file has frames and none of its interfaces is 802.11, only
    // its end can tell: then error() says so.
    static Result<CaptureReader, ReadingFault> open(const std::string& path);

    // Returns the next frame; its spans are valid until the next call. Absent at the end of the
    // file, and if the file is damaged; error() tells which.
    std::optional<Frame> next();

    // The file's name and the fault that ended the reading early. Absent if there was none.
    const std::optional<ReadingFault>& error() const { return error_; }

    // The file's name and a sentence on the interfaces that were passed over so far because they
    // are not 802.11. Absent if there was none.
    std::optional<std::string> note() const;

    // Counts the frames that next() has returned.
    const CaptureSummary& summary() const { return summary_; }

    // Bytes, for showing progress. Only a regular file has a size. Of a compressed file, both count
    // its own.
    std::uint64_t bytesRead() const { return source_->bytesRead(); }
    std::optional<std::uint64_t> fileSize() const { return fileSize_; }

    // Returns the sighting of a frame, with its origin.
    // REQUIRES: frame.beacon().
    static capture::Sighting sightingOf(const Frame& frame);

  private:
    CaptureReader(std::unique_ptr<PacketSource> source, std::string name,
                  std::optional<std::uint64_t> fileSize);

    std::unique_ptr<PacketSource> source_;
    std::string name_;
    std::optional<std::uint64_t> fileSize_;
    std::optional<ReadingFault> error_;
    bool isAtEnd_ = false;
    CaptureSummary summary_;
};

}  // namespace halvane::tool

#endif
