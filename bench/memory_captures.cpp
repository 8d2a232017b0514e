// Captures, and buffers of elements.
#include <cstdio>
#include <initializer_list>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "halvane/base/byte_buffer.h"
#include "halvane/capture/beacon_frame.h"
#include "halvane/capture/bss_table.h"
#include "halvane/capture/frame_record.h"
#include "halvane/ie/country_ie.h"
#include "halvane/ie/mac.h"
#include "halvane/ie/wps_tlvs.h"

#include "bench/capture_input.h"
#include "bench/element_input.h"
#include "bench/foreign_bytes.h"
#include "bench/memory_table.h"
#include "tools/halvane/input/capture_reader.h"
#include "tools/halvane/output/format.h"
#include "tools/halvane/output/record_writer.h"

using namespace halvane::capture;
using namespace halvane::tool;
using halvane::ByteBuffer;
using halvane::HalvaneCountryIE;
using halvane::HalvaneMAC;
using halvane::HalvaneWPSTLVs;

namespace bench {

namespace {

constexpr std::size_t kInput = 1 << 20;
constexpr std::size_t kLargestElements = 65535;  // of a record

BSSTable tableOf(const std::string& path) {
    auto reader = CaptureReader::open(path);
    BSSTable table;
    while (const auto frame = reader ? reader->next() : std::nullopt) {
        if (frame->beacon() != nullptr) table.add(sightingOf(*frame->beacon(), frame->radio));
    }
    return table;
}

// Folds the capture, and discards the output.
BSSTable printed(const std::string& path, Format format) {
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> stream(std::fopen("/dev/null", "w"),
                                                                 std::fclose);
    BSSTable table = tableOf(path);
    const auto writer = RecordWriter::create(format, stream.get());
    for (std::size_t i = 0; i < table.size(); ++i) writer->write(table.at(i), std::nullopt);
    writer->finish();
    return table;
}

// A capture of that size with frames of distinct networks, each with `elements`.
void measureCapture(MemoryTable& table, std::string_view row, const Bytes& elements,
                    std::optional<Format> format = std::nullopt) {
    table.measure(
        "capture: " + std::string(row), kInput,
        [&](std::size_t size) {
            PcapFile capture(PcapFile::kIEEE80211);
            for (std::size_t i = 0; capture.bytes().size() < size; ++i) {
                capture.add(beacon(i, elements));
            }
            return Sized{TemporaryFile(capture.bytes()), capture.bytes().size()};
        },
        [&](const TemporaryFile& file) {
            return format ? printed(file.path(), *format) : tableOf(file.path());
        });
}

// `element`, repeated as often as a frame has room for it.
Bytes frameFullOf(const Bytes& element) {
    Bytes elements;
    while (elements.size() + element.size() <= kLargestElements) append(elements, element);
    return elements;
}

void measureInAllFormats(MemoryTable& table, const std::string& row, const Bytes& elements) {
    measureCapture(table, row, elements);
    measureCapture(table, row + ", as text", elements, Format::Text);
    measureCapture(table, row + ", as JSON", elements, Format::JSON);
    measureCapture(table, row + ", as JSON lines", elements, Format::JSONLines);
    measureCapture(table, row + ", as a property list", elements, Format::PropertyList);
}

// Elements whose records are lists.
void measureListsInCaptures(MemoryTable& table) {
    const Bytes types = deviceTypesOfWPS();
    const Bytes tessic = {221, 12, 0x00, 0x0A, 0x7E, 1, 1, 0, 0, 0, 0, 0, 0, 0};
    measureInAllFormats(table, "beacons of device types", types);
    measureInAllFormats(table, "beacons of scattered device types", scatteredDeviceTypesOfWPS());
    measureInAllFormats(table, "beacons full of device types", frameFullOf(types));
    measureInAllFormats(table, "beacons full of vendor elements", frameFullOf(tessic));
    measureInAllFormats(table, "beacons full of empty elements", frameFullOf({0, 0}));
    measureInAllFormats(table, "beacons full of rates", frameFullOf({1, 1, 12}));
    measureInAllFormats(table, "beacons of suites", suitesOfRSN());
    measureInAllFormats(table, "beacons of PMKIDs", identifiersOfRSN());
    measureInAllFormats(table, "beacons of channel triplets", countryOf({1, 13, 20}));
    measureInAllFormats(table, "beacons of regulatory triplets", countryOf({201, 1, 0}));
    measureInAllFormats(table, "beacons of HT", elementsOfHT());
}

// As many of `piece` as fit, behind `head`.
template <typename Read>
void measurePieces(MemoryTable& table, const std::string& row, std::size_t most, const Bytes& head,
                   std::initializer_list<unsigned> piece, Read read) {
    table.measure(
        row, most,
        [&](std::size_t size) {
            Bytes bytes = head;
            append(bytes, repeated(piece, (size - head.size()) / piece.size()));
            return Sized{ByteBuffer(std::span(bytes)), bytes.size()};
        },
        read);
}

void measureBuffer(MemoryTable& table, std::string_view row,
                   std::initializer_list<unsigned> element) {
    measurePieces(table, "elements: " + std::string(row), kLargestElements, {}, element,
                  [](const ByteBuffer& buffer) {
                      auto record = HalvaneMAC::initWithMAC({2, 0, 0, 0, 0, 1});
                      record.setInformationElements(buffer);
                      return record;
                  });
}

void measureAttributes(MemoryTable& table, std::string_view row,
                       std::initializer_list<unsigned> attribute) {
    measurePieces(table, "WPS attributes: " + std::string(row), kInput, {}, attribute,
                  [](const ByteBuffer& buffer) { return HalvaneWPSTLVs::initWithData(buffer); });
}

// Elements that hold only rates. A record keeps rates one by one.
void measureRates(MemoryTable& table) {
    constexpr std::size_t kBody = 253;
    table.measure(
        "elements: long ones of rates", kLargestElements,
        [](std::size_t size) {
            Bytes bytes;
            while (bytes.size() + 2 + kBody <= size) {
                append(bytes, {50, kBody});
                bytes.resize(bytes.size() + kBody, 12);
            }
            return Sized{ByteBuffer(std::span(bytes)), bytes.size()};
        },
        [](const ByteBuffer& buffer) {
            auto record = HalvaneMAC::initWithMAC({2, 0, 0, 0, 0, 1});
            record.setInformationElements(buffer);
            return record;
        });
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
    measureListsInCaptures(table);
}

void measureElements(MemoryTable& table) {
    measureBuffer(table, "empty", {0, 0});
    measureBuffer(table, "rates", {1, 1, 12});
    measureBuffer(table, "names", {0, 1, 'a'});
    measureBuffer(table, "vendor", {221, 6, 0x00, 0x50, 0xF2, 1, 1, 0});
    measureRates(table);
    measureAttributes(table, "one, repeated", {0x10, 0x4A, 0, 1, 0x10});
    measureAttributes(table, "secondary device types",
                      {0x10, 0x55, 0, 8, 0, 6, 0x00, 0x50, 0xF2, 4, 0, 1});
    const auto country = [](const ByteBuffer& buffer) {
        return HalvaneCountryIE::initWithIE(buffer);
    };
    const Bytes head = {7, 255, 'D', 'E', ' '};
    measurePieces(table, "country: channel triplets", kInput, head, {1, 13, 20}, country);
    measurePieces(table, "country: regulatory triplets", kInput, head, {201, 1, 0}, country);
}

}  // namespace bench
