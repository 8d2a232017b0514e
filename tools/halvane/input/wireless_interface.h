// The interfaces of this machine that hear 802.11.
//
// Free functions without state; any thread may call them.
#ifndef TOOLS_HALVANE_INPUT_WIRELESS_INTERFACE_H
#define TOOLS_HALVANE_INPUT_WIRELESS_INTERFACE_H

#include <span>
#include <string>
#include <vector>

namespace halvane::tool {

// As the kernel numbers them (NL80211_IFTYPE_... of <linux/nl80211.h>). Later kernels have more.
enum class InterfaceMode : unsigned {
    Unspecified = 0,
    AdHoc = 1,
    Managed = 2,
    AP = 3,
    APVLAN = 4,
    WDS = 5,
    Monitor = 6,
    Mesh = 7,
    P2PClient = 8,
    P2PGroupOwner = 9,
    P2PDevice = 10,
    OutsideBSS = 11,
    NeighborAwareness = 12,
};

struct WirelessInterface {
    std::string name;
    unsigned index = 0;
    InterfaceMode mode = InterfaceMode::Unspecified;
};

// The mode's name as iw prints and takes it: "managed", "AP", "P2P-client"; "mode 13" for one that
// has none.
std::string modeName(InterfaceMode mode);

// The interface of this name, or a null pointer.
const WirelessInterface* findInterface(std::span<const WirelessInterface> interfaces,
                                       const std::string& name);

// "wlan0 (managed), wlan1mon (monitor)".
std::string listText(std::span<const WirelessInterface> interfaces);

// "there are: wlan0 (managed), wlan1mon (monitor)"; "there is no Wi-Fi interface".
std::string thereAre(std::span<const WirelessInterface> interfaces);

// The interfaces in monitor mode that the kernel's list of interfaces shows without nl80211, in its
// order. Those in other modes look like Ethernet there.
std::vector<WirelessInterface> monitorInterfaces();

// Returns both lists as one, without a name twice, in the order of the indexes.
std::vector<WirelessInterface> joined(std::vector<WirelessInterface> told,
                                      std::vector<WirelessInterface> found);

}  // namespace halvane::tool

#endif
