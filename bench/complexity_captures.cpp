// Captures: their frames, radio headers, and the table that they are folded into.
#include <cstdio>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "bench/capture_input.h"
#include "bench/foreign_bytes.h"
#include "bench/growth.h"
#include "tools/halvane/beacon_frame.h"
#include "tools/halvane/bss_table.h"
#include "tools/halvane/capture_reader.h"
#include "tools/halvane/format.h"
#include "tools/halvane/frame_record.h"
#include "tools/halvane/radio_header.h"
#include "tools/halvane/record_writer.h"

using namespace halvane::tool;

namespace bench {

namespace {

// Folds all frames of a file.
BSSTable tableOf(const std::string& path) {
    std::string error;
    auto reader = CaptureReader::open(path, error);
    requireRow(error.c_str(), reader.has_value());
    BSSTable table;
    while (const auto frame = reader->next()) {
        if (frame->beacon() != nullptr) table.add(sightingOfFrame(*frame));
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

// A packet of one long radio header, read n / 4 times so that small ones count.
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
        const std::size_t size = 8 + 4 * (n - 2);
        Bytes packet;
        append(packet,
               {0, 0, static_cast<unsigned>(size & 0xFF), static_cast<unsigned>(size >> 8)});
        append32(packet, 105);
        for (std::size_t i = 0; i < n - 2; ++i) append(packet, {9, 0, 0, 0});
        append(packet, beacon(0, {}));
        return packet;
    });
}

// The output of n records, thrown away.
void addOutput(const char* row, Format format) {
    addGrowth(
        row, 4096,
        [](std::size_t n) {
            std::vector<Sighting> sightings;
            for (std::size_t i = 0; i < n; ++i) {
                const Bytes frame = beacon(i, {0, 1, 'a', 1, 1, 12});
                CapturedFrame captured;
                captured.content = parseBeaconFrame(frame);
                sightings.push_back(sightingOfFrame(captured));
            }
            return sightings;
        },
        [format](const std::vector<Sighting>& sightings) {
            const std::unique_ptr<std::FILE, int (*)(std::FILE*)> stream(
                std::fopen("/dev/null", "w"), std::fclose);
            const auto writer = RecordWriter::create(format, stream.get());
            for (const auto& sighting : sightings) writer->write(sighting, std::nullopt);
            writer->finish();
            return std::ferror(stream.get()) == 0;
        });
}

}  // namespace

void addCaptureRows() {
    addCaptureFileRows();
    addHeaderRows();
    addOutput("records as text", Format::Text);
    addOutput("records as JSON", Format::JSON);
    addOutput("records as JSON lines", Format::JSONLines);
    addOutput("records as a property list", Format::PropertyList);
}

}  // namespace bench
