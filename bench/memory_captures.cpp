// Captures, and buffers of elements.
#include <cstdio>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "halvane/ie/country_ie.h"
#include "halvane/ie/mac.h"
#include "halvane/ie/wps_tlvs.h"

#include "bench/capture_input.h"
#include "bench/foreign_bytes.h"
#include "bench/memory_table.h"
#include "tools/halvane/bss_table.h"
#include "tools/halvane/capture_reader.h"
#include "tools/halvane/frame_record.h"
#include "tools/halvane/record_writer.h"

using namespace halvane::tool;
using halvane::ByteBuffer;
using halvane::HalvaneCountryIE;
using halvane::HalvaneMAC;
using halvane::HalvaneWPSTLVs;

namespace bench {

namespace {

constexpr std::size_t kInput = 1 << 20;

BSSTable tableOf(const std::string& path) {
    std::string error;
    auto reader = CaptureReader::open(path, error);
    BSSTable table;
    while (const auto frame = reader ? reader->next() : std::nullopt) {
        if (frame->beacon() != nullptr) table.add(recordOfFrame(*frame));
    }
    return table;
}

// Folds the capture, and throws the output away.
BSSTable printed(const std::string& path, Format format) {
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> stream(std::fopen("/dev/null", "w"),
                                                                 std::fclose);
    BSSTable table = tableOf(path);
    const auto writer = RecordWriter::create(format, stream.get());
    for (const HalvaneMAC& record : table.records()) writer->write(record, std::nullopt);
    writer->finish();
    return table;
}

// Frames of as many networks as make a capture of kInput bytes, each with `elements`.
void measureCapture(MemoryTable& table, std::string_view row, const Bytes& elements,
                    std::optional<Format> format = std::nullopt) {
    const std::string name = "capture: " + std::string(row);
    if (!table.has(name)) return;
    PcapFile capture(PcapFile::kIEEE80211);
    for (std::size_t i = 0; capture.bytes().size() < kInput; ++i) capture.add(beacon(i, elements));
    const TemporaryFile file(capture.bytes());
    table.measure(name, capture.bytes().size(),
                  [&] { return format ? printed(file.path(), *format) : tableOf(file.path()); });
}

void measureBuffer(MemoryTable& table, std::string_view row, const Bytes& elements) {
    const std::string name = "elements: " + std::string(row);
    if (!table.has(name)) return;
    const ByteBuffer buffer{std::span(elements)};
    table.measure(name, buffer.size(), [&] {
        auto record = HalvaneMAC::initWithMAC({2, 0, 0, 0, 0, 1});
        record.setInformationElements(buffer);
        return record;
    });
}

void measureAttributes(MemoryTable& table, std::string_view row, const Bytes& attributes) {
    const std::string name = "WPS attributes: " + std::string(row);
    if (!table.has(name)) return;
    const ByteBuffer buffer{std::span(attributes)};
    table.measure(name, buffer.size(), [&] { return HalvaneWPSTLVs::initWithData(buffer); });
}

}  // namespace

void measureCaptures(MemoryTable& table) {
    measureCapture(table, "empty beacons", {});
    measureCapture(table, "empty beacons, as text", {}, Format::Text);
    measureCapture(table, "empty beacons, as JSON", {}, Format::JSON);
    measureCapture(table, "empty beacons, as JSON lines", {}, Format::JSONLines);
    measureCapture(table, "empty beacons, as a property list", {}, Format::PropertyList);
    measureCapture(table, "beacons of a name", {0, 1, 'a'});
    measureCapture(table, "beacons of a name, as JSON", {0, 1, 'a'}, Format::JSON);
    measureCapture(table, "beacons of a name, as a property list", {0, 1, 'a'},
                   Format::PropertyList);
    const Bytes empty = repeated({0, 0}, 1000);
    measureCapture(table, "beacons of empty elements", empty);
    measureCapture(table, "beacons of empty elements, as JSON", empty, Format::JSON);
    measureCapture(table, "beacons of empty elements, as a property list", empty,
                   Format::PropertyList);
    measureCapture(table, "beacons of rates", repeated({1, 1, 12}, 1000));
    measureCapture(table, "beacons of one security element",
                   {48, 8, 1, 0, 0x00, 0x0F, 0xAC, 4, 1, 0});
}

void measureElements(MemoryTable& table) {
    measureBuffer(table, "empty", repeated({0, 0}, 32767));
    measureBuffer(table, "rates", repeated({1, 1, 12}, 21845));
    measureBuffer(table, "names", repeated({0, 1, 'a'}, 21845));
    measureBuffer(table, "vendor", repeated({221, 6, 0x00, 0x50, 0xF2, 1, 1, 0}, 8191));
    measureBuffer(table, "of all the rates that fit", [] {
        Bytes bytes;
        for (std::size_t i = 0; i < 255; ++i) {
            append(bytes, {50, 253});
            bytes.resize(bytes.size() + 253, 12);
        }
        return bytes;
    }());
    measureAttributes(table, "one, repeated", repeated({0x10, 0x4A, 0, 1, 0x10}, kInput / 5));
    measureAttributes(table, "secondary device types",
                      repeated({0x10, 0x55, 0, 8, 0, 6, 0x00, 0x50, 0xF2, 4, 0, 1}, kInput / 12));
    const std::string name = "country: triplets";
    if (!table.has(name)) return;
    Bytes bytes;
    append(bytes, {7, 255, 'D', 'E', ' '});
    append(bytes, repeated({201, 1, 0}, kInput / 3));
    const ByteBuffer buffer{std::span(bytes)};
    table.measure(name, buffer.size(), [&] { return HalvaneCountryIE::initWithIE(buffer); });
}

}  // namespace bench
