/* Random bytes, which are fit for keys, and random texts, which are not.
 *
 * Usable from C11 and C++20. Any thread may call any function. */
#ifndef HALVANE_UTILS_CONVERT_RANDOM_H
#define HALVANE_UTILS_CONVERT_RANDOM_H

#include <stddef.h>

#include "halvane/base/export.h"
#include "halvane/base/status.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Fills the buffer from the system's cryptographic generator and returns 0. It may wait while the
 * system starts. `buffer` may be null if the length is 0.
 *
 * Each 32-bit value gives four bytes, the most significant one first. The last one to three bytes
 * are the upper bytes of one more value. */
HALVANE_EXPORT HalvaneStatus RandomBytes(void* buffer, size_t length);

/* Writes minLength to maxLength ASCII letters and digits and a terminator into the buffer of
 * maxLength + 1 bytes, and returns the buffer. A minimum above the maximum counts as the maximum.
 *
 * NOT for keys and passwords: the numbers come from rand(3). The first, modulo the number of
 * possible lengths, determines the length; one more, modulo 62, each character. They are the same
 * in every run of a program until it calls srand(3). */
HALVANE_EXPORT char* RandomString(size_t minLength, size_t maxLength, char* buffer);

#ifdef __cplusplus
}
#endif

#endif
