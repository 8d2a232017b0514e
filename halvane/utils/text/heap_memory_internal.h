// The source of memory for text on the heap.
#ifndef HALVANE_UTILS_TEXT_HEAP_MEMORY_INTERNAL_H
#define HALVANE_UTILS_TEXT_HEAP_MEMORY_INTERNAL_H

#include <cstddef>

namespace halvane {

// realloc and free, except in a test.
struct HeapMemory {
    void* (*reallocate)(void* memory, std::size_t size);
    void (*release)(void* memory);
};

}  // namespace halvane

#endif
