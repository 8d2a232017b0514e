#include <stdint.h>
#include <string.h>

#include "halvane/utils/printf.h"

int main(void) {
    const uint8_t mac[6] = {0x00, 0x11, 0x22, 0x33, 0x44, 0x55};
    char text[64];
    // BLOCK
    return strcmp(text, "00:11:22:33:44:55 has 1h 2m 5s left, flags 7 0");
}
