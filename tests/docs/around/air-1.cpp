#include <cstdint>
#include <iostream>
#include <vector>

#include "halvane/air/profile.h"
#include "halvane/air/security.h"
#include "halvane/base/mac_address.h"

int main() {
    const std::vector<std::uint8_t> elements = {0, 4, 'h', 'o', 'm', 'e'};
    const halvane::MacAddress bssid({2, 0, 0, 0, 0, 1});
    const std::uint16_t capabilities = 1, beaconInterval = 100;
    // BLOCK
}
