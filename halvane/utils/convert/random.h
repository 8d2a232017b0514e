/* Random bytes, fit for keys, and random texts, which are not.
 *
 * Usable from C11 and C++20. Every function may be called from any thread. */
#ifndef HALVANE_UTILS_CONVERT_RANDOM_H
#define HALVANE_UTILS_CONVERT_RANDOM_H

#include <stddef.h>

#include "halvane/base/export.h"
#include "halvane/base/status.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Fills the buffer from the system's cryptographic generator; always 0. May wait while the system
 * starts. `buffer` may be null for a length of 0.
 *
 * Each value of 32 bits gives four bytes, the most significant one first; the last one to three
 * bytes are the upper ones of one more value. */
HALVANE_EXPORT HalvaneStatus RandomBytes(void* buffer, size_t length);

/* Writes letters and digits of ASCII and a terminator into the buffer, of maxLength + 1, which it
 * answers. There are minLength to maxLength of them; a minimum above the maximum counts as it.
 *
 * NOT for keys and passwords: the numbers come from rand(3), the first for the length, modulo the
 * count of lengths, then one for each character, modulo 62. Until a program calls srand(3) they are
 * the same each time it runs. */
HALVANE_EXPORT char* RandomString(size_t minLength, size_t maxLength, char* buffer);

#ifdef __cplusplus
}
#endif

#endif
