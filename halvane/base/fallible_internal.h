// How a fallible operation of the model or the daemon client tells its outcome, and makes buffers.
#ifndef HALVANE_BASE_FALLIBLE_INTERNAL_H
#define HALVANE_BASE_FALLIBLE_INTERNAL_H

#include <cstdint>
#include <new>
#include <optional>
#include <span>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/daemon_service.h"
#include "halvane/base/error.h"

namespace halvane {

// Both do nothing where the caller has given no place.
inline void storeError(std::optional<Error>* place, std::int64_t code) {
    if (place != nullptr) *place = daemonError(code);
}
inline void clearError(std::optional<Error>* place) {
    if (place != nullptr) place->reset();
}

// Absent where there is no memory for it.
inline std::optional<ByteBuffer> bufferOf(std::span<const std::uint8_t> bytes) {
    try {
        return ByteBuffer(bytes);
    } catch (const std::bad_alloc&) {
        return std::nullopt;
    }
}

}  // namespace halvane

#endif
