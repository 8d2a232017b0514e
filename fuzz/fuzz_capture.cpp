// A capture file of any bytes, pcap or pcapng, compressed or not, and one of any packets under each
// link type: every frame counts once, and the spans of a frame lie within it.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <span>
#include <string>
#include <sys/mman.h>
#include <unistd.h>
#include <vector>

#include "halvane/capture/beacon_frame.h"
#include "halvane/capture/captured_frame.h"
#include "halvane/capture/frame_record.h"
#include "halvane/capture/link_type.h"
#include "halvane/capture/radio_header.h"

#include "fuzz/byte_source.h"
#include "fuzz/require.h"
#include "tools/halvane/input/capture_reader.h"

using namespace halvane::capture;
using namespace halvane::tool;

namespace {

using Bytes = std::vector<std::uint8_t>;

void append32(Bytes& file, std::uint32_t value) {
    for (int shift = 0; shift < 32; shift += 8) {
        file.push_back(static_cast<std::uint8_t>(value >> shift));
    }
}

// pcap of version 2.4, little-endian.
Bytes captureFrom(halvane::fuzzing::ByteSource& source) {
    constexpr LinkType kLinkTypes[] = {LinkType::IEEE80211, LinkType::Prism, LinkType::Radiotap,
                                       LinkType::AVS, LinkType::PPI};
    Bytes file;
    append32(file, 0xA1B2C3D4);
    append32(file, 0x00040002);
    for (int i = 0; i < 2; ++i) append32(file, 0);
    append32(file, 65535);
    append32(file, static_cast<std::uint32_t>(source.oneOf(kLinkTypes)));
    while (!source.empty()) {
        const auto missing = source.flag() ? source.byte() : 0u;
        const auto packet = source.bytes();
        for (int i = 0; i < 2; ++i) append32(file, 0);
        append32(file, static_cast<std::uint32_t>(packet.size()));
        append32(file, static_cast<std::uint32_t>(packet.size() + missing));
        file.insert(file.end(), packet.begin(), packet.end());
    }
    return file;
}

// A compressed file may be smaller than its frames.
constexpr std::size_t kLargestPacket = 262144;

void checkFrame(const CapturedFrame& frame, std::size_t fileSize) {
    REQUIRE(frame.radio.frame.size() <= std::max(fileSize, kLargestPacket));
    if (frame.beacon() == nullptr) return;
    REQUIRE(frame.beacon()->elements.size() < frame.radio.frame.size());
    REQUIRE(sightingOf(*frame.beacon(), frame.radio).record.ieBuffer()->size() ==
            frame.beacon()->elements.size());
}

void check(std::span<const std::uint8_t> file) {
    const int descriptor = ::memfd_create("capture", MFD_CLOEXEC);
    const auto written = ::write(descriptor, file.data(), file.size());
    REQUIRE(written == static_cast<ssize_t>(file.size()));
    auto reader = CaptureReader::open("/proc/self/fd/" + std::to_string(descriptor));
    REQUIRE(reader || !reader.error().text.empty());
    std::uint64_t count = 0, last = 0;
    while (reader) {
        const auto frame = reader->next();
        if (!frame) break;
        REQUIRE(frame->number > last);  // packets that are no 802.11 count too
        last = frame->number;
        ++count;
        checkFrame(*frame, file.size());
    }
    if (reader) {
        const CaptureSummary& summary = reader->summary();
        std::uint64_t total = summary.beacons + summary.probeResponses;
        for (const std::uint64_t skipped : summary.skipped) total += skipped;
        REQUIRE(summary.frames == count && total == count);
    }
    ::close(descriptor);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    check({data, size});
    halvane::fuzzing::ByteSource source(data, size);
    check(captureFrom(source));
    return 0;
}
