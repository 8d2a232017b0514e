/* Statistics of arrays of doubles.
 *
 * Usable from C11 and C++20. Any thread may call any function. Arrays hold `n` numbers
 * and may be null if n is 0. Infinities and NaN follow the arithmetic of IEEE 754 unless stated
 * otherwise. */
#ifndef HALVANE_UTILS_CONVERT_STATISTICS_H
#define HALVANE_UTILS_CONVERT_STATISTICS_H

#include <stddef.h>

#include "halvane/base/export.h"

#ifdef __cplusplus
extern "C" {
#endif

/* The square root of the sum of the squares of a[i] - b[i], even if the squares are too large
 * for a double; 0 for no numbers. */
HALVANE_EXPORT double EuclideanDistance(const double* a, const double* b, size_t n);

/* Pearson's correlation coefficient of the pairs a[i], b[i], from -1 to 1. It is 0 where undefined:
 * for fewer than two pairs, and if all numbers of an array are equal. It is NaN if a number is not
 * finite. */
HALVANE_EXPORT double PearsonCorrelation(const double* a, const double* b, size_t n);

/* The median by Torben Mogensen's method, which neither orders nor copies the numbers: the middle
 * one of an odd count, the lower of the two middle ones of an even count. 0 for no numbers, NaN
 * if one of them is NaN. Each pass over the numbers halves their range: about 50 passes for usual
 * numbers, 2100 at most. */
HALVANE_EXPORT double TorbenMedian(const double* values, size_t n);

/* Maps x linearly so that inMin becomes outMin and inMax becomes outMax:
 * (outMax - outMin) * ((x - inMin) / (inMax - inMin)) + outMin. An x outside the range is mapped in
 * the same way. If inMax equals inMin, the result is an infinity or NaN. */
HALVANE_EXPORT double TranslateValue(double x, double inMin, double inMax, double outMin,
                                     double outMax);

#ifdef __cplusplus
}
#endif

#endif
