/* Reverses the byte order of data in memory.
 *
 * Usable from C11 and C++20. Any thread may call any function.
 *
 * Sizes are in bytes. No address needs an alignment. The ...Copy functions do not change the
 * source. The destination has the size of the source and must be the source itself or not
 * overlap it. Pointers may be null if the size is 0.
 *
 * EndianSwapUUIDMove is in halvane/utils/convert/uuid.h. */
#ifndef HALVANE_UTILS_CONVERT_ENDIAN_SWAP_H
#define HALVANE_UTILS_CONVERT_ENDIAN_SWAP_H

#include <stddef.h>
#include <stdint.h>

#include "halvane/base/export.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Reverse the bytes of each 16- or 32-bit integer of an array of `size` bytes. Bytes at the end
 * that do not fill an integer stay or are copied unchanged. */
HALVANE_EXPORT void EndianSwap16Mem(void* memory, size_t size);
HALVANE_EXPORT void EndianSwap32Mem(void* memory, size_t size);
HALVANE_EXPORT void EndianSwap16MemCopy(const void* source, size_t size, void* destination);
HALVANE_EXPORT void EndianSwap32MemCopy(const void* source, size_t size, void* destination);

/* Return `value` with the bytes of its representation reversed. */
HALVANE_EXPORT float EndianSwapFloat32(float value);
HALVANE_EXPORT double EndianSwapFloat64(double value);

/* Reverse the order of `size` bytes. */
HALVANE_EXPORT void MemReverse(void* memory, size_t size);
HALVANE_EXPORT void MemReverseCopy(const void* source, size_t size, void* destination);

#ifdef __cplusplus
}
#endif

#endif
