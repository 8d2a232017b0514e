/* What the shared library exports, and nothing else, is marked HALVANE_EXPORT.
 * Usable from C11 and C++20. */
#ifndef HALVANE_BASE_EXPORT_H
#define HALVANE_BASE_EXPORT_H

#define HALVANE_EXPORT __attribute__((visibility("default")))

/* A part of an exported class that is not exported with it. */
#define HALVANE_HIDDEN __attribute__((visibility("hidden")))

#endif
