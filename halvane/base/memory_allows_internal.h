// Reports a lack of memory as an absent value.
#ifndef HALVANE_BASE_MEMORY_ALLOWS_INTERNAL_H
#define HALVANE_BASE_MEMORY_ALLOWS_INTERNAL_H

#include <new>
#include <optional>

namespace halvane {

// Returns what `make` returns; absent if memory runs out.
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
