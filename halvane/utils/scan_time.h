/* Formatted scanning and the time base: both headers.
 * Usable from C11 and C++20. */
#ifndef HALVANE_UTILS_SCAN_TIME_H
#define HALVANE_UTILS_SCAN_TIME_H

// IWYU pragma: begin_exports
#include "halvane/utils/scan/scanf.h"
#include "halvane/utils/scan/up_ticks.h"
// IWYU pragma: end_exports

#endif
