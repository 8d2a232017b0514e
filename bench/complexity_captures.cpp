// Captures: frames, radio headers, and the table that folds the frames.
#include <cstdio>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "halvane/capture/beacon_frame.h"
#include "halvane/capture/bss_table.h"
#include "halvane/capture/frame_record.h"
#include "halvane/capture/link_type.h"
#include "halvane/capture/radio_header.h"

#include "bench/capture_input.h"
#include "bench/foreign_bytes.h"
#include "bench/growth.h"
#include "tools/halvane/input/capture_reader.h"
#include "tools/halvane/output/format.h"
#include "tools/halvane/output/frame_origin.h"
#include "tools/halvane/output/record_writer.h"

using namespace halvane::capture;
using namespace halvane::tool;

namespace bench {

namespace {

// Folds all frames of a file.
BSSTable tableOf(const std::string& path) {
    auto reader = CaptureReader::open(path);
    requireRow(reader ? "" : reader.error().text.c_str(), reader.has_value());
    BSSTable table;
    while (const auto frame = reader->next()) {
        if (frame->beacon() != nullptr) table.add(sightingOf(*frame->beacon(), frame->radio));
    }
    return table;
}

void addCapture(const char* row, std::size_t most, Bytes (*make)(std::size_t)) {
    addGrowth(
        row, most, [make](std::size_t n) { return TemporaryFile(make(n)); },
        [](const TemporaryFile& file) { return tableOf(file.path()).size() > 0; });
}

// n frames, each from `makeFrame`.
Bytes captureOf(std::size_t count, Bytes (*makeFrame)(std::size_t)) {
    PcapFile file(PcapFile::kIEEE80211);
    for (std::size_t i = 0; i < count; ++i) file.add(makeFrame(i));
    return file.bytes();
}

void addCaptureFileRows() {
    addCapture("capture: sightings of one network", 16384, [](std::size_t n) {
        return captureOf(n, [](std::size_t) { return beacon(0, {0, 1, 'a', 1, 1, 12}); });
    });
    addCapture("capture: hidden networks", 16384, [](std::size_t n) {
        return captureOf(n, [](std::size_t i) { return beacon(i, {}); });
    });
    addCapture("capture: networks", 16384, [](std::size_t n) {
        return captureOf(n, [](std::size_t i) { return beacon(i, {0, 1, 'a', 1, 1, 12}); });
    });
    addCapture("capture: one frame of rates, descending", 16384, [](std::size_t n) {
        PcapFile file(PcapFile::kIEEE80211);
        file.add(beacon(0, fallingRateElements(n)));
        return file.bytes();
    });
}

const Bytes kElements = {0, 1, 'a', 1, 1, 12};

void addPcapngRows() {
    addCapture("pcapng: networks", 16384, [](std::size_t n) {
        PcapngFile file;
        file.addInterface();
        for (std::size_t i = 0; i < n; ++i) file.addPacket(0, beacon(i, kElements));
        return file.bytes();
    });
    addCapture("pcapng: interfaces", 16384, [](std::size_t n) {
        PcapngFile file;
        for (std::size_t i = 0; i < n; ++i) file.addInterface();
        file.addPacket(n - 1, beacon(0, kElements));
        return file.bytes();
    });
    addCapture("pcapng: options of an interface", 16384, [](std::size_t n) {
        PcapngFile file;
        file.addInterface(repeated({1, 0, 0, 0}, n));  // comments
        file.addPacket(0, beacon(0, kElements));
        return file.bytes();
    });
    addCapture("pcapng: unknown blocks", 16384, [](std::size_t n) {
        PcapngFile file;
        file.addInterface();
        for (std::size_t i = 0; i < n; ++i) file.addBlock(PcapngFile::kUnknown, {});
        file.addPacket(0, beacon(0, kElements));
        return file.bytes();
    });
    addCapture("pcapng: sections", 16384, [](std::size_t n) {
        PcapngFile file;
        for (std::size_t i = 0; i < n; ++i) {
            if (i > 0) file.addSection();
            file.addInterface();
        }
        file.addPacket(0, beacon(0, kElements));
        return file.bytes();
    });
}

// A packet with one long radio header, read n / 4 times so that small ones are measurable.
void addHeader(const char* row, LinkType linkType, Bytes (*make)(std::size_t)) {
    addGrowth(row, 16384, make, [linkType](const Bytes& packet) {
        return parseRadioHeader(linkType, packet).has_value();
    });
}

void addHeaderRows() {
    addHeader("radiotap: presence words", LinkType::Radiotap, [](std::size_t n) {
        const std::size_t size = 4 + 4 * n;
        if (size > 65535) n = 16382;
        Bytes packet;
        append(packet, {0, 0, static_cast<unsigned>((4 + 4 * n) & 0xFF),
                        static_cast<unsigned>((4 + 4 * n) >> 8)});
        for (std::size_t i = 0; i + 1 < n; ++i) append(packet, {0, 0, 0, 0xA0});
        append(packet, {0, 0, 0, 0});
        append(packet, beacon(0, {}));
        return packet;
    });
    addHeader("PPI: fields", LinkType::PPI, [](std::size_t n) {
        const std::size_t size = 8 + 4 * (n - 3);
        Bytes packet;
        append(packet,
               {0, 0, static_cast<unsigned>(size & 0xFF), static_cast<unsigned>(size >> 8)});
        append32(packet, 105);
        for (std::size_t i = 0; i < n - 3; ++i) append(packet, {9, 0, 0, 0});
        append(packet, beacon(0, {}));
        return packet;
    });
}

void addOldHeaderRows() {
    addHeader("Prism: items", LinkType::Prism, [](std::size_t n) {
        Bytes packet;
        append32(packet, 0x44);  // the message code
        append32(packet, 24 + 12 * n);
        append(packet, Bytes(16));  // the device's name
        for (std::size_t i = 0; i < n; ++i) {
            append32(packet, 0x00060044);  // the signal, with a value that is no level
            append(packet, {0, 0, 4, 0, 0, 0, 0, 0});
        }
        append(packet, beacon(0, {}));
        return packet;
    });
    addHeader("AVS: a long header", LinkType::AVS, [](std::size_t n) {
        const std::size_t size = 64 + n;
        Bytes packet = {0x80, 0x21, 0x10, 0x01};
        append(packet, {0, static_cast<unsigned>(size >> 16),
                        static_cast<unsigned>(size >> 8 & 255), static_cast<unsigned>(size & 255)});
        packet.resize(size);
        append(packet, beacon(0, {}));
        return packet;
    });
}

// Prints n records, of frames if an origin is told, and discards the output.
void addOutput(const char* row, Format format, const std::optional<FrameOrigin>& origin = {}) {
    addGrowth(
        row, 4096,
        [](std::size_t n) {
            std::vector<Sighting> sightings;
            for (std::size_t i = 0; i < n; ++i) {
                const Bytes frame = beacon(i, {0, 1, 'a', 1, 1, 12});
                sightings.push_back(sightingOf(*parseBeaconFrame(frame)));
            }
            return sightings;
        },
        [format, origin](const std::vector<Sighting>& sightings) {
            const std::unique_ptr<std::FILE, int (*)(std::FILE*)> stream(
                std::fopen("/dev/null", "w"), std::fclose);
            const auto writer = RecordWriter::create(format, stream.get());
            for (const auto& sighting : sightings) writer->write(sighting, origin);
            writer->finish();
            return std::ferror(stream.get()) == 0;
        });
}

}  // namespace

void addCaptureRows() {
    addCaptureFileRows();
    addPcapngRows();
    addHeaderRows();
    addOldHeaderRows();
    addOutput("records as text", Format::Text);
    addOutput("records as JSON", Format::JSON);
    addOutput("records as JSON lines", Format::JSONLines);
    addOutput("frames as JSON lines", Format::JSONLines, FrameOrigin{1});
    addOutput("records as a property list", Format::PropertyList);
}

}  // namespace bench
