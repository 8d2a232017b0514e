// The networks of a capture file as JSON: example_pcap_json FILE
#include <cstdio>
#include <nlohmann/json.hpp>
#include <pcap/pcap.h>
#include <span>
#include <string>

#include "halvane/base/escaped_text.h"
#include "halvane/capture/bss_table.h"
#include "halvane/capture/frame_record.h"
#include "halvane/capture/link_type.h"
#include "halvane/ie/mac.h"

// NOLINTNEXTLINE(bugprone-exception-escape): only a lack of memory throws.
int main(int argc, char** argv) {
    using namespace halvane;

    char problem[PCAP_ERRBUF_SIZE];
    pcap_t* const file = argc == 2 ? pcap_open_offline(argv[1], problem) : nullptr;
    const auto linkType = capture::linkTypeOfNumber(file != nullptr ? pcap_datalink(file) : -1);
    if (!linkType) return 1;

    capture::BSSTable networks;
    pcap_pkthdr* header = nullptr;
    const unsigned char* bytes = nullptr;
    while (pcap_next_ex(file, &header, &bytes) == 1) {
        const std::span packet(bytes, header->caplen);
        const auto sighting = capture::sightingOfPacket(*linkType, packet, header->len);
        if (sighting) networks.add(*sighting);
    }
    pcap_close(file);

    auto list = nlohmann::json::array();
    for (std::size_t i = 0; i < networks.size(); ++i) {
        const HalvaneMAC network = networks.at(i).record;
        const std::string name = network.SSID() ? escapedText(network.SSID()->bytes()) : "";
        list.push_back({{"bssid", network.mac().hex()}, {"ssid", name}});
        if (network.channel()) list.back()["channel"] = network.channel()->int64();
        if (network.RSSI()) list.back()["signal"] = network.RSSI()->int64();
    }
    std::puts(list.dump(2).c_str());
}
