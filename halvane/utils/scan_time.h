/* Formatted scanning and the time base: both headers at once.
 * Usable from C11 and C++20. */
#ifndef HALVANE_UTILS_SCAN_TIME_H
#define HALVANE_UTILS_SCAN_TIME_H

#include "halvane/utils/scan.h"
#include "halvane/utils/up_ticks.h"

#endif
