// Prints a line for each network as soon as it is heard: example_monitor INTERFACE|FILE. The
// interface has to be in monitor mode, and the program needs the right to capture (CAP_NET_RAW).
#include <cstdio>
#include <filesystem>
#include <pcap/pcap.h>
#include <set>
#include <span>
#include <string>

#include "halvane/air/bss_profile.h"
#include "halvane/air/profile.h"
#include "halvane/air/security.h"
#include "halvane/base/mac_address.h"
#include "halvane/capture/beacon_frame.h"
#include "halvane/capture/captured_frame.h"
#include "halvane/capture/link_type.h"
#include "halvane/capture/radio_header.h"

using namespace halvane;

namespace {

pcap_t* opened(const char* source) {
    char problem[PCAP_ERRBUF_SIZE] = "";
    constexpr int kWholePackets = 65535, kMilliseconds = 100;
    pcap_t* const capture = std::filesystem::is_regular_file(source)
                                ? pcap_open_offline(source, problem)
                                : pcap_open_live(source, kWholePackets, 1, kMilliseconds, problem);
    if (capture == nullptr) std::fprintf(stderr, "%s\n", problem);
    return capture;
}

void print(const capture::BeaconFrame& beacon, const capture::RadioInfo& radio, bool isCut) {
    const air::BssProfile network =
        air::profileOf(beacon.elements, {beacon.bssid, beacon.capabilities, beacon.beaconInterval},
                       {radio.frequencyMHz, radio.signalDBm, isCut});
    std::printf("%s  %4d dBm  %-24s %s\n", beacon.bssid.text().c_str(), radio.signalDBm.value_or(0),
                std::string(air::securityName(*network.security.name)).c_str(),
                network.ssid ? network.ssid->value.text().c_str() : "");
    std::fflush(stdout);
}

}  // namespace

int main(int argc, char** argv) {
    pcap_t* const source = argc == 2 ? opened(argv[1]) : nullptr;
    if (source == nullptr) return 1;
    const auto linkType = capture::linkTypeOfNumber(pcap_datalink(source));
    if (!linkType) return 1;  // no 802.11: the interface is not in monitor mode

    std::set<MacAddress> known;
    pcap_pkthdr* header = nullptr;
    const unsigned char* bytes = nullptr;
    for (int outcome = 0; (outcome = pcap_next_ex(source, &header, &bytes)) >= 0;) {
        if (outcome == 0) continue;  // nothing was heard for a moment
        const auto frame = capture::examinePacket(*linkType, {bytes, header->caplen}, header->len);
        const capture::BeaconFrame* const beacon = frame.beacon();
        if (beacon != nullptr && known.insert(beacon->bssid).second)
            print(*beacon, frame.radio, frame.isCut);
    }
    pcap_close(source);
}
