// Prints the table of networks in captured packets. A real program gets the packets from a capture
// file, or from an interface in monitor mode.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <optional>
#include <string>
#include <vector>

#include "halvane/base/escaped_text.h"
#include "halvane/base/mac_address.h"
#include "halvane/base/number.h"
#include "halvane/capture/bss_table.h"
#include "halvane/capture/frame_record.h"
#include "halvane/capture/link_type.h"
#include "halvane/ie/mac.h"

namespace {

using namespace halvane;
using Packet = std::vector<std::uint8_t>;

// Each packet is a radiotap header with frequency and signal, followed by a frame.
// clang-format off
const Packet kPackets[] = {
    {0, 0, 13, 0, 0x28, 0, 0, 0, 0x85, 0x09, 0xA0, 0, 0xC3,  // 2437 MHz, -61 dBm
     0x80, 0, 0, 0, 255, 255, 255, 255, 255, 255,            // beacon to everyone
     2, 0x1A, 0x2B, 0x3C, 0x4D, 0x5E, 2, 0x1A, 0x2B, 0x3C, 0x4D, 0x5E, 0x10, 0,
     0, 0, 0, 0, 0, 0, 0, 0, 100, 0, 0x01, 0,                // every 100 TU; ESS
     0, 0, 1, 4, 0x82, 0x84, 0x8B, 0x96},                    // hidden SSID, Supported Rates
    {0, 0, 13, 0, 0x28, 0, 0, 0, 0x9E, 0x09, 0xA0, 0, 0xB5,  // 2462 MHz, -75 dBm
     0x80, 0, 0, 0, 255, 255, 255, 255, 255, 255,
     2, 0, 0, 0, 0, 7, 2, 0, 0, 0, 0, 7, 0x20, 0,
     0, 0, 0, 0, 0, 0, 0, 0, 100, 0, 0x11, 0,                // ESS, privacy
     0, 5, 'a', 't', 't', 'i', 'c', 1, 4, 0x82, 0x84, 0x8B, 0x96},
    {0, 0, 13, 0, 0x28, 0, 0, 0, 0x85, 0x09, 0xA0, 0, 0xC6,  // 2437 MHz, -58 dBm
     0x50, 0, 0, 0, 2, 0, 0, 0, 0, 9,                        // probe response to one station
     2, 0x1A, 0x2B, 0x3C, 0x4D, 0x5E, 2, 0x1A, 0x2B, 0x3C, 0x4D, 0x5E, 0x30, 0,
     0, 0, 0, 0, 0, 0, 0, 0, 100, 0, 0x01, 0,
     0, 4, 'h', 'o', 'm', 'e', 1, 4, 0x82, 0x84, 0x8B, 0x96},
    {0, 0, 13, 0, 0x28, 0, 0, 0, 0x85, 0x09, 0xA0, 0, 0xC3,
     0xD4, 0, 0, 0, 2, 0, 0, 0, 0, 9},                       // an acknowledgement: no record
};
// clang-format on

std::string textOf(const std::optional<Number>& number) {
    return number ? number->description() : "-";
}

void print(const HalvaneMAC& record) {
    const auto bssid = MacAddress::fromBytes(record.mac().bytes()).value_or(MacAddress());
    std::printf("%s  %3s  %4s dBm  %-8s  %s\n", bssid.text().c_str(),
                textOf(record.channel()).c_str(), textOf(record.RSSI()).c_str(),
                record.securityFriendlyName().value_or("-").c_str(),
                record.SSID() ? escapedText(record.SSID()->bytes()).c_str() : "(hidden)");
}

}  // namespace

int main() {
    capture::BSSTable networks;
    std::size_t skipped = 0;
    for (const Packet& packet : kPackets) {
        if (const auto sighting = capture::sightingOfPacket(capture::LinkType::Radiotap, packet)) {
            networks.add(*sighting);
        } else {
            ++skipped;  // sighting.error() is the reason
        }
    }
    for (std::size_t i = 0; i < networks.size(); ++i) print(networks.at(i).record);
    std::printf("packets skipped: %zu\n", skipped);
}
