/* HALVANE_EXPORT marks everything that the shared library exports; nothing else is exported.
 * Usable from C11 and C++20. */
#ifndef HALVANE_BASE_EXPORT_H
#define HALVANE_BASE_EXPORT_H

/* Marks what the shared library exports. */
#define HALVANE_EXPORT __attribute__((visibility("default")))

/* Marks a member of an exported class that is not exported. */
#define HALVANE_HIDDEN __attribute__((visibility("hidden")))

#endif
