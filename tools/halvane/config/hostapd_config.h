// The configuration file of hostapd, as its own example file documents it. kHostapdFormat
// (export_format.h) is a whole file; here are its parts, for a program that runs hostapd itself and
// writes the other lines of the file.
//
// Constant tables; any thread may use them.
#ifndef TOOLS_HALVANE_CONFIG_HOSTAPD_CONFIG_H
#define TOOLS_HALVANE_CONFIG_HOSTAPD_CONFIG_H

#include <span>

#include "tools/halvane/config/export_format.h"

namespace halvane::tool {

struct HostapdParts {
    std::span<const ExportLine> name;
    std::span<const ExportLine> access;     // who sees the network, and reaches whom in it
    std::span<const ExportLine> radio;      // once a file: channel, PHY modes and country
    std::span<const ExportLine> security;   // except the secrets of WPA
    std::span<const ExportLine> handshake;  // 802.1X, EAPOL and WPS
    std::span<const ExportGap> refusals;
    // Those that hold although somebody chooses a channel, gives a server for 802.1X, and orders
    // configurations.
    std::span<const ExportGap> losses;
};

extern const HostapdParts kHostapdParts;

}  // namespace halvane::tool

#endif
