// How a fallible operation of the model or the daemon client tells its outcome.
#ifndef HALVANE_BASE_FALLIBLE_INTERNAL_H
#define HALVANE_BASE_FALLIBLE_INTERNAL_H

#include <cstdint>
#include <new>
#include <optional>

#include "halvane/base/daemon_service.h"
#include "halvane/base/error.h"

namespace halvane {

// Both do nothing where the caller has given no place, and neither allocates.
inline void storeError(std::optional<Error>* place, std::int64_t code) noexcept {
    if (place != nullptr) *place = daemonError(code);
}
inline void clearError(std::optional<Error>* place) noexcept {
    if (place != nullptr) place->reset();
}

// What `make` answers; absent where there is no memory for it.
template <typename Make>
auto ifMemoryAllows(Make make) -> std::optional<decltype(make())> {
    try {
        return make();
    } catch (const std::bad_alloc&) {
        return std::nullopt;
    }
}

}  // namespace halvane

#endif
