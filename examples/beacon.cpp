// A BSS record from the bytes of a beacon.
#include <cstdio>

#include "halvane/base/number.h"
#include "halvane/ie/mac.h"

int main() {
    using namespace halvane;

    auto record = HalvaneMAC::initWithMAC({0x02, 0x1A, 0x2B, 0x3C, 0x4D, 0x5E});
    record.setChannel(Number(6));
    record.setRSSI(Number(-61));
    record.setCapabilityField(0x0411);  // from the beacon's fixed fields
    record.setInformationElements({
        // the bytes after them
        0,  4,  'h',  'o',  'm',  'e',                                       // SSID
        1,  4,  0x82, 0x84, 0x8B, 0x96,                                      // Supported Rates
        48, 20, 1,    0,    0x00, 0x0F, 0xAC, 4, 1, 0, 0x00, 0x0F, 0xAC, 4,  // RSN: CCMP,
        1,  0,  0x00, 0x0F, 0xAC, 2,    0,    0,                             // PSK
    });
    std::printf("%s, %s Mbit/s\n", record.securityFriendlyName()->c_str(),
                record.maxPHYRate()->description().c_str());
    std::fputs(record.description().c_str(), stdout);
}
