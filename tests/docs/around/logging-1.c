#include "halvane/utils/log.h"

void roam(const uint8_t* address, int rssi);

// BLOCK
int main(void) {
    const uint8_t address[6] = {2, 0, 0, 0, 0, 1};
    roam(address, -61);
    return 0;
}
