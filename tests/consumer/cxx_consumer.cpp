// A C++20 program on the records.
#include <cstdio>

#include "halvane/ie/mac.h"
#include "halvane/regulatory/channel.h"

int main() {
    using namespace halvane;

    auto record = HalvaneMAC::initWithMAC({0x02, 0x1A, 0x2B, 0x3C, 0x4D, 0x5E});
    record.setInformationElements({0, 4, 'h', 'o', 'm', 'e', 1, 1, 0x82});
    if (record.SSID() != ByteBuffer::fromText("home")) return 1;
    if (HalvaneChannel::channelFrequencyForNumber(36) != 5180) return 1;
    std::fputs(record.description().c_str(), stdout);
    return 0;
}
