// Where text on the heap gets its memory.
#ifndef HALVANE_UTILS_TEXT_HEAP_MEMORY_INTERNAL_H
#define HALVANE_UTILS_TEXT_HEAP_MEMORY_INTERNAL_H

#include <cstddef>

namespace halvane {

// realloc and free, but for a test.
struct HeapMemory {
    void* (*reallocate)(void* memory, std::size_t size);
    void (*release)(void* memory);
};

}  // namespace halvane

#endif
