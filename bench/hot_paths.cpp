// The paths whose cost script/checks/instructions holds. Each runs once, and then so often that one
// run stands for all. Under callgrind the program leaves a count of instructions for each.
#include <benchmark/benchmark.h>
#include <cstdint>
#include <cstdio>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <valgrind/callgrind.h>
#include <vector>

#include "halvane/air/bss_profile.h"
#include "halvane/air/element_range.h"
#include "halvane/air/profile.h"
#include "halvane/base/property_list_value.h"
#include "halvane/base/skeleton_internal.h"
#include "halvane/base/status.h"
#include "halvane/capture/beacon_frame.h"
#include "halvane/capture/folded_sighting.h"
#include "halvane/capture/frame_record.h"
#include "halvane/capture/link_type.h"
#include "halvane/ie/mac.h"
#include "halvane/model/interface.h"
#include "halvane/platform/plist/xml_property_list.h"
#include "halvane/platform/plist/xml_property_list_reader.h"
#include "halvane/regulatory/channel.h"
#include "halvane/utils/convert.h"
#include "halvane/utils/log.h"
#include "halvane/utils/printf.h"
#include "halvane/utils/scan_time.h"

#include "bench/beacon.h"
#include "bench/beacon_line.h"
#include "bench/interface_list.h"
#include "bench/multi_link_beacon.h"
#include "tools/halvane/output/frame_json.h"
#include "tools/halvane/output/json_writer.h"

namespace {

using benchmark::DoNotOptimize;
using halvane::HalvaneMAC;
using halvane::capture::Sighting;

HALVANE_LOG_CATEGORY(Hot, kLogLevelInfo, kLogHeaderTime | kLogHeaderCategory | kLogHeaderLevel,
                     nullptr);

struct HotPath {
    const char* name;
    int runs;
    std::function<void()> run;
};

const std::vector<std::uint8_t>& wifi7() {
    static const std::vector<std::uint8_t> frame = bench::multiLinkBeacon();
    return frame;
}

std::span<const std::uint8_t> elementsOf(std::span<const std::uint8_t> frame) {
    return frame.subspan(bench::kFixedSize);
}

// --- Frames ---

void decodeAndAsk() {
    const auto record = bench::decodedBeacon();
    DoNotOptimize(record.IEs());
    DoNotOptimize(record.supportedRates());
    DoNotOptimize(record.HTCaps()->mcsRates());
    DoNotOptimize(record.countryIE()->channelTuples());
}

void describe() {
    static const auto record = bench::decodedBeacon();
    DoNotOptimize(record.description());
}

void copyRecord() {
    static const auto record = bench::decodedBeacon();
    DoNotOptimize(HalvaneMAC(record));
}

void mergeRecords() {
    static auto record = bench::decodedBeacon();
    static const auto newer = bench::decodedBeacon();
    record.mergeEntries(newer);
}

void walk() {
    for (const auto& element : halvane::air::ElementRange(elementsOf(bench::kBeacon))) {
        DoNotOptimize(element.id);
    }
}

void profile(std::span<const std::uint8_t> frame) {
    DoNotOptimize(halvane::air::profileOf(elementsOf(frame), {{}, 0x0411, 100}, {}));
}

void readPacket() {
    DoNotOptimize(halvane::capture::sightingOfPacket(halvane::capture::LinkType::IEEE80211,
                                                     bench::kBeacon, std::nullopt));
}

void writeLine() {
    static const Sighting sighting = {bench::decodedBeacon(), std::nullopt};
    static halvane::tool::JSONWriter writer;
    bench::writeBeaconLine(writer, sighting);
    DoNotOptimize(writer.text().data());
}

// A frame whose elements were written before.
void writeFrameAgain() {
    using namespace halvane::tool;
    static const Sighting sighting =
        halvane::capture::sightingOf(*halvane::capture::parseBeaconFrame(bench::kBeacon));
    static FrameJSON frames;
    static JSONWriter writer;
    writer.clear();
    frames.write(writer, sighting, bench::kBeaconOrigin, {});
    DoNotOptimize(writer.text().data());
}

// A frame of a known network.
void foldNumbers() {
    using namespace halvane::capture;
    static const auto beacon = parseBeaconFrame(bench::kBeacon);
    static FoldedSighting folded(sightingOf(*beacon));
    DoNotOptimize(folded.foldNumbers(*beacon, {.frequencyMHz = 2437, .signalDBm = -61}));
}

// --- The C layer ---

char gText[256];

void printLine() {
    SNPrintF(gText, sizeof(gText), "%s: %d frames from %s on channel %u in %u ms, RSSI %d", "scan",
             42, "neighbour-12", 6u, 1234u, -61);
    DoNotOptimize(gText);
}

void printAddress() {
    static const unsigned char address[] = {0x02, 0x1A, 0x2B, 0x3C, 0x4D, 0x5E};
    SNPrintF(gText, sizeof(gText), "%.6a", address);
    DoNotOptimize(gText);
}

void scanLine() {
    char words[3][16];
    int channel = 0;
    int width = 0;
    unsigned flags = 0;
    DoNotOptimize(SNScanF("channel 36 width 80 flags 0x1F", SIZE_MAX, "%15s %d %15s %d %15s %x",
                          words[0], &channel, words[1], &width, words[2], &flags));
}

void readAddress() {
    std::uint8_t address[16];
    StringToIPv6Address("2001:db8:85a3::8a2e:370:7334", 0, address, nullptr, nullptr, nullptr,
                        nullptr);
    DoNotOptimize(address);
}

void logLine(std::uint32_t level) {
    HALVANE_LOG(&gLogCategory_Hot, level, "%d frames from %s on channel %d\n", 42, "neighbour-12",
                6);
}

// --- Property lists ---

struct Lists {
    std::vector<halvane::HalvaneInterface> records = bench::interfaces(16);
    halvane::PropertyListValue value = halvane::skeleton::skeletonsOf(records);
    std::string text = *halvane::xmlPropertyList(value);
};

const Lists& lists() {
    static const Lists lists;
    return lists;
}

void readRecords() {
    auto value = halvane::propertyListFromXml(lists().text);
    DoNotOptimize(halvane::skeleton::recordsOf<halvane::HalvaneInterface>(
        std::move(*value->as<halvane::PropertyListArray>())));
}

std::vector<HotPath> hotPaths() {
    return {
        {"decode", 1000, [] { DoNotOptimize(bench::decodedBeacon()); }},
        {"decode-and-ask", 1000, decodeAndAsk},
        {"record-copy", 1000, copyRecord},
        {"record-merge", 1000, mergeRecords},
        {"record-description", 100, describe},
        {"element-walk", 1000, walk},
        {"profile-wifi4", 300, [] { profile(bench::kBeacon); }},
        {"profile-wifi7", 300, [] { profile(wifi7()); }},
        {"packet", 1000, readPacket},
        {"json-line", 300, writeLine},
        {"json-frame-again", 1000, writeFrameAgain},
        {"fold-numbers", 1000, foldNumbers},
        {"print-line", 1000, printLine},
        {"print-address", 1000, printAddress},
        {"scan-line", 1000, scanLine},
        {"read-ipv6-address", 1000, readAddress},
        {"log-line", 1000, [] { logLine(kLogLevelNotice); }},
        {"log-line-held-back", 1000, [] { logLine(kLogLevelVerbose); }},
        {"plist-read", 10, [] { DoNotOptimize(halvane::propertyListFromXml(lists().text)); }},
        {"plist-read-records", 10, readRecords},
        {"plist-write", 10, [] { DoNotOptimize(halvane::xmlPropertyList(lists().value)); }},
        {"channel-number", 1000,
         [] { DoNotOptimize(halvane::HalvaneChannel::channelNumberForFrequency(5180)); }},
    };
}

}  // namespace

int main() {
    if (LogControl("^Hot$:output=file;path=/dev/null") != kStatusOK) return 1;
    for (const HotPath& path : hotPaths()) {
        path.run();  // what is made once is made now
        CALLGRIND_ZERO_STATS;
        for (int i = 0; i < path.runs; ++i) path.run();
        CALLGRIND_DUMP_STATS_AT(path.name);
        std::printf("%s %d\n", path.name, path.runs);
    }
}
