/* Integer functions that are defined for every argument: they neither overflow nor divide by 0.
 *
 * Usable from C11 and C++20. Any thread may call any function. */
#ifndef HALVANE_UTILS_CONVERT_INTEGER_MATH_H
#define HALVANE_UTILS_CONVERT_INTEGER_MATH_H

#include <stdint.h>

#include "halvane/base/export.h"

#ifdef __cplusplus
extern "C" {
#endif

/* The greatest common divisor. If `a` is 0 or less, the result is `b`; otherwise, if `b` is 0 or
 * less, the result is `a`. */
HALVANE_EXPORT int64_t gcd64(int64_t a, int64_t b);

/* The smallest power of two that is at least x. 0 for 0, and if the type cannot hold that power. */
HALVANE_EXPORT uint32_t iceil2(uint32_t x);
HALVANE_EXPORT uint64_t iceil2_64(uint64_t x);

/* The largest power of two that is at most x; 0 for 0. */
HALVANE_EXPORT uint32_t ifloor2(uint32_t x);
HALVANE_EXPORT uint64_t ifloor2_64(uint64_t x);

/* The logarithm to base 2, rounded down; 0 for 0. */
HALVANE_EXPORT int ilog2_64(uint64_t x);

/* 10 to the power of n. If the type cannot hold that, the greatest power that it holds: 10^9 in
 * 32 bits, 10^19 in 64. */
HALVANE_EXPORT uint32_t ipow10(uint32_t n);
HALVANE_EXPORT uint64_t ipow10_64(uint32_t n);

enum { kSineFullTurn = 32768, kSineOne = 4096 };

/* The sine of `angle` / kSineFullTurn turns, in units of 1 / kSineOne. A polynomial of fourth
 * degree approximates it with an error of at most 13 / 4096. It is exact at each quarter turn. */
HALVANE_EXPORT int isin(int angle);

/* Computes the 128 bits of a * b. Each output may be null. */
HALVANE_EXPORT void Multiply64x64(uint64_t a, uint64_t b, uint64_t* high, uint64_t* low);

#ifdef __cplusplus
}
#endif

#endif
