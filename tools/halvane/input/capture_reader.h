// A capture file as a stream of its frames, each examined for what a BSS record needs.
//
// pcap of either byte order and pcapng, through libpcap. Memory does not grow with the file.
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
#include "halvane/capture/link_type.h"
#include "halvane/capture/radio_header.h"

struct pcap;

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
    };

    // Opens a capture file; "-" is standard input, which stays open. An error names the file and
    // what is wrong with it: it cannot be opened or read, it is a directory, empty or no capture,
    // or its frames are not 802.11.
    static Result<CaptureReader, std::string> open(const std::string& path);

    // The next frame; its spans are borrowed until the next call. Absent at the end of the file
    // and where it is damaged; error() tells which.
    std::optional<Frame> next();

    // The file's name and what ended the reading early; absent as long as nothing did.
    const std::optional<std::string>& error() const { return error_; }

    // Of the frames that next() has answered.
    const CaptureSummary& summary() const { return summary_; }

    // Bytes, for showing progress. What is no regular file has no size.
    std::uint64_t bytesRead() const;
    std::optional<std::uint64_t> fileSize() const { return fileSize_; }

  private:
    struct Closer {
        void operator()(pcap* capture) const;
    };
    using Handle = std::unique_ptr<pcap, Closer>;

    CaptureReader(Handle handle, capture::LinkType linkType, std::string name,
                  std::optional<std::uint64_t> fileSize);

    Handle handle_;
    capture::LinkType linkType_;
    std::string name_;
    std::optional<std::uint64_t> fileSize_;
    std::optional<std::string> error_;
    CaptureSummary summary_;
};

}  // namespace halvane::tool

#endif
