#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <optional>
#include <string>
#include <unistd.h>

#include "halvane/air/element_range.h"
#include "halvane/base/byte_buffer.h"
#include "halvane/base/escaped_text.h"
#include "halvane/capture/beacon_frame.h"
#include "halvane/capture/bss_table.h"
#include "halvane/capture/frame_record.h"
#include "halvane/ie/mac.h"

#include "tools/halvane/commands/command.h"
#include "tools/halvane/input/capture_reader.h"
#include "tools/halvane/input/hex_input.h"
#include "tools/halvane/options/argument.h"
#include "tools/halvane/options/decode_options.h"
#include "tools/halvane/output/frame_origin.h"
#include "tools/halvane/output/message.h"
#include "tools/halvane/output/progress_bar.h"
#include "tools/halvane/output/record_writer.h"

namespace halvane::tool {

namespace {

// The user may give the SSID as its octets, or as the tool prints them.
bool isSSID(const std::optional<ByteBuffer>& ssid, const std::string& asked) {
    return ssid && (*ssid == ByteBuffer::fromText(asked) || escapedText(ssid->bytes()) == asked);
}

// The record's own walk, of a time without elements of 254 octets and more, takes these for cut.
bool endsInsideAnElement(const HalvaneMAC& record) {
    const auto& elements = record.ieBuffer();
    return elements && !air::ElementRange(elements->bytes()).trailing().empty();
}

// The frames of a file whose elements end inside an element.
struct CutFrames {
    std::uint64_t count = 0;
    std::uint64_t first = 0;

    void add(std::uint64_t number) {
        if (count++ == 0) first = number;
    }
    std::string text() const {
        const std::string frame = std::to_string(first);
        if (count == 1) return "frame " + frame + " is cut in an element";
        return std::to_string(count) + " frames are cut in an element, the first is frame " + frame;
    }
};

class Decoder {
  public:
    explicit Decoder(const DecodeOptions& options)
        : options_(options),
          writer_(options.isExplained ? RecordWriter::createExplaining(stdout)
                                      : RecordWriter::create(options.format, stdout)) {}

    int run() {
        const bool isWhole = options_.isHex ? decodeHex() : decodeCaptures();
        for (std::size_t i = 0; i < table_.size(); ++i) print(table_.at(i), std::nullopt);
        writer_->finish();
        return isWhole ? kExitDone : kExitFailed;
    }

  private:
    bool decodeHex() {
        const std::string& path = options_.files.front();
        const auto elements = readHexFile(path);
        if (!elements) {
            complain(elements.error());
            return false;
        }
        const auto& bssid = options_.bssid;
        auto record = HalvaneMAC::initWithMAC(bssid ? bssid->buffer() : ByteBuffer());
        record.setCapabilityField(options_.capabilities.value_or(0));
        record.setInformationElements(*elements);
        table_.add({record});
        const bool isCut = endsInsideAnElement(record);
        if (isCut) complain(inputName(path) + ": cut in an element");
        return !isCut;
    }

    bool decodeCaptures() {
        CaptureSummary summary;
        bool isWhole = true;
        for (const std::string& path : options_.files) {
            if (isOutputLost()) break;
            isWhole = decodeCapture(path, summary) && isWhole;
        }
        std::fprintf(stderr, "%s\n", summary.text().c_str());
        return isWhole;
    }

    // Returns false if the file, or a frame in it, could not be read to its end.
    bool decodeCapture(const std::string& path, CaptureSummary& summary) {
        auto reader = CaptureReader::open(path);
        if (!reader) {
            complain(reader.error());
            return false;
        }
        const CutFrames cut = decodeFrames(*reader);
        summary.add(reader->summary());
        if (const auto note = reader->note()) complain(*note);
        if (cut.count > 0) complain(inputName(path) + ": " + cut.text());
        if (reader->error()) complain(*reader->error());
        return !reader->error() && cut.count == 0;
    }

    CutFrames decodeFrames(CaptureReader& reader) {
        ProgressBar progress(stderr, reader.fileSize());
        CutFrames cut;
        while (const auto frame = isOutputLost() ? std::nullopt : reader.next()) {
            if (progress.isShown()) progress.update(reader.bytesRead());
            const capture::BeaconFrame* beacon = frame->beacon();
            if (beacon == nullptr || (options_.bssid && beacon->bssid != *options_.bssid)) continue;
            const capture::Sighting sighting = capture::sightingOf(*beacon, frame->radio);
            if (endsInsideAnElement(sighting.record)) cut.add(frame->number);
            if (!options_.isPerFrame) {
                table_.add(sighting);
                continue;
            }
            // The bar and the records share the lines of a terminal.
            if (isOutputTerminal_) progress.clear();
            print(sighting, FrameOrigin{frame->number, beacon->subtype});
        }
        return cut;
    }

    // A later frame may reveal a hidden SSID, so folded records are filtered here.
    void print(const capture::Sighting& sighting, const std::optional<FrameOrigin>& origin) {
        if (options_.ssid && !isSSID(sighting.record.SSID(), *options_.ssid)) return;
        writer_->write(sighting, origin);
    }

    // The reader is gone, or the disk is full. main() reports it, and more output is useless.
    static bool isOutputLost() { return std::ferror(stdout) != 0; }

    const DecodeOptions& options_;
    const bool isOutputTerminal_ = ::isatty(STDOUT_FILENO) != 0;
    std::unique_ptr<RecordWriter> writer_;
    capture::BSSTable table_;
};

}  // namespace

int decodeCommand() {
    const auto options = takeDecodeOptions();
    if (!options) return refuse("decode", options.error());
    return Decoder(*options).run();
}

}  // namespace halvane::tool
