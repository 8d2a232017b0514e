/* MIME types and the extensions of file names.
 *
 * Usable from C11 and C++20. Every function may be called from any thread. */
#ifndef HALVANE_UTILS_TEXT_MIME_TYPE_H
#define HALVANE_UTILS_TEXT_MIME_TYPE_H

#include "halvane/base/export.h"

#ifdef __cplusplus
extern "C" {
#endif

/* The extension of files of a media type, "jpg" for "image/jpeg", without a dot; "" for a type that
 * is not known or has none. Upper and lower case are the same. A type with parameters is not known.
 * The result is a static string. */
HALVANE_EXPORT const char* MIMETypeToExtension(const char* type);

/* The text behind the last '.' of `text`, within it; its end where there is no '.'. Slashes have no
 * meaning: of a path, hand in the last part. */
HALVANE_EXPORT const char* GetFileExtensionFromString(const char* text);

#ifdef __cplusplus
}
#endif

#endif
