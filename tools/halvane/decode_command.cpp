#include <algorithm>
#include <cstdio>
#include <string>

#include "tools/halvane/bss_table.h"
#include "tools/halvane/capture_reader.h"
#include "tools/halvane/command.h"
#include "tools/halvane/decode_options.h"
#include "tools/halvane/escape_text.h"
#include "tools/halvane/frame_record.h"
#include "tools/halvane/hex_input.h"
#include "tools/halvane/progress_bar.h"
#include "tools/halvane/record_writer.h"

namespace halvane::tool {

namespace {

void complain(const std::string& message) {
    std::fprintf(stderr, "halvane: %s\n", message.c_str());
}

// The asked SSID may be given as its octets, or as the tool prints them.
bool isSSID(const std::optional<ByteBuffer>& ssid, const std::string& asked) {
    return ssid && (*ssid == ByteBuffer::fromText(asked) || escapeSSID(ssid->bytes()) == asked);
}

class Decoder {
  public:
    explicit Decoder(const DecodeOptions& options)
        : options_(options), writer_(RecordWriter::create(options.format, stdout)) {}

    int run() {
        const int status = options_.isHex ? decodeHex() : decodeCaptures();
        for (const HalvaneMAC& record : table_.records()) print(record, std::nullopt);
        writer_->finish();
        return status;
    }

  private:
    int decodeHex() {
        std::string error;
        const auto elements = readHexFile(options_.files.front(), error);
        if (!elements) {
            complain(error);
            return kExitFailed;
        }
        auto record = HalvaneMAC::initWithMAC(options_.bssid.value_or(ByteBuffer()));
        record.setCapabilityField(options_.capabilities);
        record.setInformationElements(*elements);
        table_.add(record);
        return kExitDone;
    }

    int decodeCaptures() {
        CaptureSummary summary;
        int status = kExitDone;
        for (const std::string& path : options_.files) {
            if (!decodeCapture(path, summary)) status = kExitFailed;
        }
        std::fprintf(stderr, "%s\n", summary.text().c_str());
        return status;
    }

    // False when the file could not be read to its end.
    bool decodeCapture(const std::string& path, CaptureSummary& summary) {
        std::string error;
        auto reader = CaptureReader::open(path, error);
        if (!reader) {
            complain(error);
            return false;
        }
        {
            ProgressBar progress(stderr, reader->fileSize());
            while (const auto frame = reader->next()) {
                progress.update(reader->bytesRead());
                if (frame->beacon() != nullptr) decodeFrame(*frame, progress);
            }
        }
        summary.add(reader->summary());
        if (reader->error()) complain(*reader->error());
        return !reader->error();
    }

    void decodeFrame(const CapturedFrame& frame, ProgressBar& progress) {
        const BeaconFrame& beacon = *frame.beacon();
        if (options_.bssid && beacon.bssid != *options_.bssid) return;
        const HalvaneMAC record = recordOfFrame(frame);
        if (options_.isPerFrame) {
            progress.clear();
            print(record, FrameOrigin{frame.number, beacon.subtype});
        } else {
            table_.add(record);
        }
    }

    // A hidden SSID may be revealed by a later frame, so folded records are filtered here.
    void print(const HalvaneMAC& record, const std::optional<FrameOrigin>& origin) {
        if (options_.ssid && !isSSID(record.SSID(), *options_.ssid)) return;
        writer_->write(record, origin);
    }

    const DecodeOptions& options_;
    std::unique_ptr<RecordWriter> writer_;
    BSSTable table_;
};

}  // namespace

int decodeCommand(int argc, char** argv) {
    const auto parsed = parseDecodeOptions(argc, argv);
    if (std::holds_alternative<HelpAsked>(parsed)) {
        std::fputs(decodeHelp(), stdout);
        return kExitDone;
    }
    if (const auto* error = std::get_if<UsageError>(&parsed)) {
        complain("decode: " + error->message);
        return kExitUsage;
    }
    return Decoder(std::get<DecodeOptions>(parsed)).run();
}

}  // namespace halvane::tool
