// What messages of nl80211 (<linux/nl80211.h>) tell. They come from the kernel, and yet every
// length in them is checked.
//
// Free functions without state; any thread may call them.
#ifndef TOOLS_HALVANE_INPUT_NL80211_MESSAGE_H
#define TOOLS_HALVANE_INPUT_NL80211_MESSAGE_H

#include <chrono>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "halvane/base/mac_address.h"
#include "halvane/base/result.h"

#include "tools/halvane/input/wireless_interface.h"

namespace halvane::tool {

// What the interface has to do with a network. The numbers are the kernel's.
enum class ScannedStatus : std::uint32_t { Authenticated = 0, Associated = 1, JoinedAdHoc = 2 };

// When the last frame of a network came, by the time of another that this machine hears.
struct ParentTime {
    std::uint64_t tsf = 0;  // microseconds
    std::optional<MacAddress> bssid{};

    bool operator==(const ParentTime&) const = default;
};

// A network of the kernel's list. What the kernel does not tell is absent.
struct ScannedNetwork {
    using Bytes = std::vector<std::uint8_t>;

    unsigned interface = 0;  // its index
    MacAddress bssid;
    std::optional<std::uint32_t> frequency{};         // MHz
    std::uint32_t frequencyOffset = 0;                // kHz above it
    std::optional<std::int32_t> signal{};             // hundredths of a dBm
    std::optional<std::uint8_t> unspecifiedSignal{};  // 0 to 100, of no unit
    std::optional<std::uint32_t> seenAgo{};           // milliseconds
    std::optional<std::uint64_t> lastSeen{};          // nanoseconds of CLOCK_BOOTTIME
    std::optional<std::uint64_t> tsf{};               // microseconds, of the last frame
    std::optional<std::uint64_t> beaconTSF{};         // of the last beacon
    std::optional<std::uint16_t> beaconInterval{};    // TU
    std::optional<std::uint16_t> capability{};
    std::optional<ScannedStatus> status{};
    std::optional<ParentTime> parentTime{};
    // Of the last frame of each kind. Older kernels do not tell the kind: elements of one frame are
    // then those of a beacon.
    std::optional<Bytes> probeResponseElements{};
    std::optional<Bytes> beaconElements{};

    // The time since its last frame. `now` is of CLOCK_BOOTTIME.
    std::optional<std::chrono::milliseconds> age(std::chrono::nanoseconds now) const;

    bool operator==(const ScannedNetwork&) const = default;
};

// What a message tells. Absent if it is of another kind. The error is what is wrong with it.
template <typename Told>
using ToldBy = Result<std::optional<Told>, std::string>;

// Of an answer to NL80211_CMD_GET_SCAN. `message` begins with the header of generic netlink.
ToldBy<ScannedNetwork> readScannedNetwork(std::span<const std::uint8_t> message);

// Of an answer to NL80211_CMD_GET_INTERFACE. A device without a network interface is of no kind.
ToldBy<WirelessInterface> readInterface(std::span<const std::uint8_t> message);

enum class ScanEvent { Done, Aborted };

// Of an event of the group "scan", if it is of that interface.
ToldBy<ScanEvent> readScanEvent(std::span<const std::uint8_t> message, unsigned interface);

}  // namespace halvane::tool

#endif
