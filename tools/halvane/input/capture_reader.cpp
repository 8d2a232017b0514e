#include "tools/halvane/input/capture_reader.h"

#include <cstddef>
#include <utility>

#include "tools/halvane/input/capture_format.h"
#include "tools/halvane/input/examined_frame.h"
#include "tools/halvane/input/input_stream.h"
#include "tools/halvane/output/message.h"

namespace halvane::tool {

namespace {

constexpr std::array<const char*, capture::kSkipReasonCount> kSkipReasonNames = {
    "other frames", "fragments", "encrypted", "short", "damaged", "malformed radio headers",
};

ReadingFault named(const std::string& name, const ReadingFault& fault) {
    return {name + ": " + fault.text, fault.hint};
}

}  // namespace

void CaptureSummary::add(const capture::CapturedFrame& frame) {
    ++frames;
    if (const capture::BeaconFrame* beacon = frame.beacon()) {
        ++(beacon->subtype == capture::BeaconSubtype::Beacon ? beacons : probeResponses);
    } else {
        ++skipped.at(static_cast<std::size_t>(frame.content.error()));
    }
}

void CaptureSummary::add(const CaptureSummary& other) {
    frames += other.frames;
    beacons += other.beacons;
    probeResponses += other.probeResponses;
    for (std::size_t i = 0; i < capture::kSkipReasonCount; ++i)
        skipped.at(i) += other.skipped.at(i);
}

std::string CaptureSummary::text() const {
    std::string reasons;
    std::uint64_t total = 0;
    for (std::size_t i = 0; i < capture::kSkipReasonCount; ++i) {
        if (skipped.at(i) == 0) continue;
        total += skipped.at(i);
        if (!reasons.empty()) reasons += ", ";
        reasons += std::string(kSkipReasonNames.at(i)) + ": " + std::to_string(skipped.at(i));
    }
    std::string line = "frames read: " + std::to_string(frames) +
                       ", beacons: " + std::to_string(beacons) +
                       ", probe responses: " + std::to_string(probeResponses) +
                       ", skipped: " + std::to_string(total);
    if (!reasons.empty()) line += " (" + reasons + ")";
    return line;
}

CaptureReader::CaptureReader(std::unique_ptr<PacketSource> source, std::string name,
                             std::optional<std::uint64_t> fileSize)
    : source_(std::move(source)), name_(std::move(name)), fileSize_(fileSize) {}

Result<CaptureReader, ReadingFault> CaptureReader::open(const std::string& path) {
    const std::string name = inputName(path);
    auto stream = InputStream::open(path);
    if (!stream) return Unexpected(name + ": " + stream.error());
    const auto size = stream->fileSize();
    const bool isPcapng = captureFormat(*stream) == CaptureFormat::Pcapng;
    auto input = std::make_unique<InputStream>(std::move(*stream));
    auto source = isPcapng ? openPcapng(std::move(input)) : openPcap(std::move(input));
    if (!source) return Unexpected(named(name, source.error()));
    return CaptureReader(std::move(*source), name, size);
}

std::optional<CaptureReader::Frame> CaptureReader::next() {
    // It is returned from where it is made: copying what was just written takes longer than reading
    // it.
    std::optional<Frame> frame;
    if (isAtEnd_) return frame;
    const NextPacket packet = source_->next();
    isAtEnd_ = !packet || !*packet;
    if (!packet) error_ = named(name_, packet.error());
    if (isAtEnd_) return frame;

    // A copy of what was written long ago is quick.
    static const Frame kBlank{{.content = capture::BeaconFrame()}};
    frame.emplace(kBlank);
    examineFrame(**packet, *frame);
    frame->number = (*packet)->number;
    frame->linkType = (*packet)->linkType;
    frame->time = (*packet)->time;
    summary_.add(*frame);
    return frame;
}

std::optional<std::string> CaptureReader::note() const {
    auto text = source_->note();
    if (text) text->insert(0, name_ + ": ");
    return text;
}

capture::Sighting CaptureReader::sightingOf(const Frame& frame) {
    capture::Sighting sighting = capture::sightingOf(*frame.beacon(), frame.radio);
    sighting.origin->frame = frame.number;
    sighting.origin->linkType = frame.linkType;
    return sighting;
}

}  // namespace halvane::tool
