/* The formatting engine from C: addresses, hex dumps, elements. */
#include <stdio.h>

#include "halvane/utils/printf.h"

int main(void) {
    static const unsigned char address[] = {0x02, 0x1A, 0x2B, 0x3C, 0x4D, 0x5E};
    static const unsigned char elements[] = {0, 4, 'h', 'o', 'm', 'e', 3, 1, 6};

    FPrintF(stdout, "From %.6a:\n%{ie}", address, elements, sizeof(elements));
    FPrintF(stdout, "flags %###.16b, up %{dur}\n", 0x0411, 90061);
    return 0;
}
