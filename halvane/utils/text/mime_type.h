/* MIME types and the extensions of file names.
 *
 * Usable from C11 and C++20. Any thread may call any function. */
#ifndef HALVANE_UTILS_TEXT_MIME_TYPE_H
#define HALVANE_UTILS_TEXT_MIME_TYPE_H

#include "halvane/base/export.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Returns the file name extension of a media type, "jpg" for "image/jpeg", without a dot.
 * Returns "" for an unknown type or one without an extension. Case is ignored. A type with
 * parameters counts as unknown. The result is a static string. */
HALVANE_EXPORT const char* MIMETypeToExtension(const char* type);

/* Returns the part of `text` after its last '.', as a pointer into `text`; the end of `text` if
 * there is no '.'. Slashes have no meaning: for a path, pass its last component. */
HALVANE_EXPORT const char* GetFileExtensionFromString(const char* text);

#ifdef __cplusplus
}
#endif

#endif
