// How an operation of the model or of the daemon client reports success or failure.
#ifndef HALVANE_MODEL_FALLIBLE_INTERNAL_H
#define HALVANE_MODEL_FALLIBLE_INTERNAL_H

#include <cstdint>
#include <optional>

#include "halvane/base/error.h"
#include "halvane/model/daemon_service.h"

namespace halvane {

// Both functions do nothing if `place` is null. Neither allocates.
inline void storeError(std::optional<Error>* place, std::int64_t code) noexcept {
    if (place != nullptr) *place = daemonError(code);
}
inline void clearError(std::optional<Error>* place) noexcept {
    if (place != nullptr) place->reset();
}

}  // namespace halvane

#endif
