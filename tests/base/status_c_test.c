/* The status codes as a C program sees them. */
#include <string.h>

#include "halvane/base/status.h"

int firstFailingLineOfStatusFromC(void);

#define CHECK(condition)                   \
    do {                                   \
        if (!(condition)) return __LINE__; \
    } while (0)

#define CHECK_ROW(name, value, text) \
    CHECK(name == (value));          \
    CHECK(strcmp(HalvaneStatusText(name), text) == 0);

int firstFailingLineOfStatusFromC(void) {
    CHECK(sizeof(HalvaneStatus) == 4 && (HalvaneStatus)-1 < 0);
    HALVANE_STATUS_CODES(CHECK_ROW)
    CHECK(strcmp(HalvaneStatusText(1), "unknown status") == 0);
    return 0;
}
