// What a network is and why, from the bytes of one beacon.
#include "halvane/air/profile.h"

#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

#include "halvane/air/bss_profile.h"
#include "halvane/air/finding.h"
#include "halvane/air/rule.h"
#include "halvane/air/security.h"
#include "halvane/base/ssid.h"
#include "halvane/capture/beacon_frame.h"

int main() {
    using namespace halvane;

    // clang-format off
    const std::vector<std::uint8_t> bytes = {
        0x80, 0, 0, 0, 255, 255, 255, 255, 255, 255,                   // beacon to everyone
        2, 0x1A, 0x2B, 0x3C, 0x4D, 0x5E, 2, 0x1A, 0x2B, 0x3C, 0x4D, 0x5E, 0x10, 0,
        0, 0, 0, 0, 0, 0, 0, 0, 100, 0, 0x11, 0,                       // every 100 TU; privacy
        0, 4, 'h', 'o', 'm', 'e', 1, 4, 0x82, 0x84, 0x8B, 0x96,        // SSID, rates
        3, 1, 6,                                                       // channel 6
        48, 20, 1, 0, 0, 0x0F, 0xAC, 4, 1, 0, 0, 0x0F, 0xAC, 4,        // RSN: CCMP
        1, 0, 0, 0x0F, 0xAC, 8, 0xC0, 0};                              // SAE, PMF required
    // clang-format on

    const auto frame = capture::parseBeaconFrame(bytes);
    if (!frame) return 1;  // frame.error() is the reason
    const air::BssProfile network =
        air::profileOf(frame->elements, {frame->bssid, frame->capabilities, frame->beaconInterval});

    std::printf("%s is %s, on channel %d\n", network.ssid->value.text().c_str(),
                std::string(air::securityName(*network.security.name)).c_str(),
                **network.channel.primaryChannel);
    std::printf("  by the rule: %s\n",
                std::string(air::ruleInfo(network.security.name.rule).sentence).c_str());
    for (const air::Finding& finding : network.findings) {
        std::printf("  %s\n", std::string(finding.info().sentence).c_str());
    }
}
