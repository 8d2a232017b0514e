// Hosts a network by the Wi-Fi daemon: example_host INTERFACE NAME PASSPHRASE. To try it without a
// radio: halvaned-sim --private -- example_host wlan0 Garden 'correct horse'
#include <chrono>
#include <cstdio>

#include "halvane/daemon/daemon_client.h"
#include "halvane/daemon/daemon_result.h"
#include "halvane/model/bss_config.h"

using namespace halvane;
using namespace std::chrono_literals;

int main(int argc, char** argv) {
    if (argc != 4) return 2;
    const char* const interface = argv[1];

    HalvaneBSSConfig network = HalvaneBSSConfig::init();
    const bool isGood = network.setSSID_error(argv[2]) &&
                        network.setWirelessPassphrase_error(argv[3]) &&
                        network.setSecurityWithOptionString_error("WPA2") &&
                        network.setUnicastCipherWithOptionString_error("CCMP") &&
                        network.setMulticastCipherWithOptionString_error("CCMP") &&
                        network.setKeyManagementWithOptionString_error("PSK");
    if (!isGood) return 2;

    DaemonClient daemon;
    auto done = daemon.add(interface, network, 5s);
    if (done) done = daemon.start(interface, 30s);  // the radio may look for radar first
    if (!done) {
        std::fprintf(stderr, "%s\n", done.error().text());
        return 1;
    }
    std::printf("%s is on the air\n", argv[2]);
}
