/* Reversal of byte order in memory.
 *
 * Usable from C11 and C++20. Every function may be called from any thread.
 *
 * Sizes are bytes. No address needs an alignment. The ...Copy functions leave the source alone; the
 * destination takes as many bytes as the source has, and must not overlap it, but may be the same.
 * Pointers may be null for a size of 0.
 *
 * EndianSwapUUIDMove stands in halvane/utils/convert/uuid.h. */
#ifndef HALVANE_UTILS_CONVERT_ENDIAN_SWAP_H
#define HALVANE_UTILS_CONVERT_ENDIAN_SWAP_H

#include <stddef.h>
#include <stdint.h>

#include "halvane/base/export.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Reverse the bytes of each 16- or 32-bit integer of an array of `size` bytes. What is left at the
 * end, shorter than an integer, stays or is copied as it is. */
HALVANE_EXPORT void EndianSwap16Mem(void* memory, size_t size);
HALVANE_EXPORT void EndianSwap32Mem(void* memory, size_t size);
HALVANE_EXPORT void EndianSwap16MemCopy(const void* source, size_t size, void* destination);
HALVANE_EXPORT void EndianSwap32MemCopy(const void* source, size_t size, void* destination);

/* The number whose representation is that of `value`, last byte first. */
HALVANE_EXPORT float EndianSwapFloat32(float value);
HALVANE_EXPORT double EndianSwapFloat64(double value);

/* Reverse the order of `size` bytes. */
HALVANE_EXPORT void MemReverse(void* memory, size_t size);
HALVANE_EXPORT void MemReverseCopy(const void* source, size_t size, void* destination);

#ifdef __cplusplus
}
#endif

#endif
