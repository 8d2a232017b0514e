// What hostapd's control interface says: events, replies and records of stations.
//
// Texts come from another program, and any of them may be cut, odd or of any length. What cannot be
// read is absent. Plain values and free functions; any thread may use them.
#ifndef TOOLS_HALVANED_HOSTAPD_CONTROL_MESSAGE_H
#define TOOLS_HALVANED_HOSTAPD_CONTROL_MESSAGE_H

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "halvane/base/mac_address.h"

namespace halvane::hosting {

// --- Events ---

struct ControlEvent {
    enum class Kind {
        StationConnected,     // AP-STA-CONNECTED: its frames pass, or 802.1X and EAPOL come next
        StationDisconnected,  // AP-STA-DISCONNECTED
        Authenticated,        // CTRL-EVENT-EAP-SUCCESS, also -SUCCESS2
        Rejected,             // CTRL-EVENT-EAP-FAILURE, also -FAILURE2
        KeysInstalled,        // EAPOL-4WAY-HS-COMPLETED
        Enabled,              // AP-ENABLED
        Disabled,             // AP-DISABLED and INTERFACE-DISABLED
        Terminating,          // CTRL-EVENT-TERMINATING
        WPS,                  // any of WPS-...
        Other,
    };

    Kind kind = Kind::Other;
    std::optional<MacAddress> station;  // the first word behind the name, if that is an address
    std::string_view text;              // behind the level; valid as long as the message
};

// Whether a message is an event and no reply: it begins with '<'.
bool isEvent(std::string_view message) noexcept;

// Reads "<3>AP-STA-CONNECTED 02:00:00:00:00:01 ...". The level may be missing. An event of a
// station without its address is Other.
ControlEvent readEvent(std::string_view message) noexcept;

// --- Replies ---

enum class ControlReply {
    OK,
    Fail,
    UnknownCommand,
    Pong,
    Text,  // anything else, including nothing
};

// Line ends behind the words are no part of them.
ControlReply readReply(std::string_view message) noexcept;

// The value of the first line "key=value"; absent without one. Valid as long as the message.
std::optional<std::string_view> valueIn(std::string_view message, std::string_view key) noexcept;

// --- Stations ---

// A station as STA, STA-FIRST and STA-NEXT tell it. Absent is what hostapd does not tell.
struct StationRecord {
    MacAddress address;
    bool isAuthenticated = false;                      // [AUTH]
    bool isAssociated = false;                         // [ASSOC]
    bool isAuthorized = false;                         // [AUTHORIZED]
    std::optional<std::uint16_t> aid = {};             // 1 to 2007
    std::optional<std::uint16_t> capabilities = {};    // IEEE 802.11-2020, 9.4.1.4
    std::optional<std::uint16_t> listenInterval = {};  // beacon intervals
    std::optional<int> signal = {};                    // dBm
    // Rates of the last frames of data, in 100 kb/s.
    std::optional<std::uint32_t> receiveRate = {};
    std::optional<std::uint32_t> transmitRate = {};
    std::optional<std::uint64_t> receivedPackets = {};
    std::optional<std::uint64_t> transmittedPackets = {};
    std::optional<std::uint64_t> receivedBytes = {};
    std::optional<std::uint64_t> transmittedBytes = {};
    std::optional<std::uint64_t> connectedTime = {};  // seconds
    std::optional<std::uint64_t> inactiveTime = {};   // milliseconds
    // The elements of its association request that hostapd tells, one behind the other (IEEE
    // 802.11-2020, 9.4.2.1): supported rates, extended supported rates, extended capabilities.
    std::vector<std::uint8_t> elements = {};

    // Whether it takes part in the network. A cable has no association.
    bool isConnected() const { return isAssociated || isAuthorized; }
};

// Absent unless the first line is an address. Each line after it is read by itself: one that is
// cut, that has no number, or a number out of range, says nothing. Of two lines with one key the
// last one that can be read counts.
std::optional<StationRecord> readStation(std::string_view message);

}  // namespace halvane::hosting

#endif
