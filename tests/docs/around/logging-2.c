#include <stddef.h>

#include "halvane/utils/log.h"

int main(void) {
    // BLOCK
    return 0;
}
