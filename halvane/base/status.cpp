#include "halvane/base/status.h"

extern "C" const char* HalvaneStatusText(HalvaneStatus status) {
    switch (status) {
#define HALVANE_STATUS_CASE(name, value, text) \
    case name:                                 \
        return text;
        HALVANE_STATUS_CODES(HALVANE_STATUS_CASE)
#undef HALVANE_STATUS_CASE
        default:
            return "unknown status";
    }
}
