#include "tests/support/replaced_heap.h"

#include <utility>

// The linker gives a wrapped function two names: one to which its calls go, and one that reaches
// the original.
#define WRAP(name) asm("__wrap_" name)
#define REAL(name) asm("__real_" name)

namespace {

constinit thread_local halvane::testing::HeapHooks gHooks;

// Leaves the calls that a hook makes itself to the system.
class InsideHook {
  public:
    InsideHook() = default;
    InsideHook(const InsideHook&) = delete;
    InsideHook& operator=(const InsideHook&) = delete;
    ~InsideHook() { gHooks = hooks; }

    const halvane::testing::HeapHooks hooks = std::exchange(gHooks, {});
};

}  // namespace

namespace halvane::testing {

ScopedHeap::ScopedHeap(const HeapHooks& hooks) {
    gHooks = hooks;
}

ScopedHeap::~ScopedHeap() {
    gHooks = {};
}

}  // namespace halvane::testing

extern "C" {

void* realMalloc(std::size_t size) REAL("malloc");
void* replacedMalloc(std::size_t size) WRAP("malloc");
void* replacedMalloc(std::size_t size) {
    if (gHooks.allocate == nullptr) return realMalloc(size);
    return InsideHook().hooks.allocate(size);
}

void* realRealloc(void* memory, std::size_t size) REAL("realloc");
void* replacedRealloc(void* memory, std::size_t size) WRAP("realloc");
void* replacedRealloc(void* memory, std::size_t size) {
    if (gHooks.reallocate == nullptr) return realRealloc(memory, size);
    return InsideHook().hooks.reallocate(memory, size);
}

void realFree(void* memory) REAL("free");
void replacedFree(void* memory) WRAP("free");
void replacedFree(void* memory) {
    if (memory == nullptr || gHooks.release == nullptr) return realFree(memory);
    InsideHook().hooks.release(memory);
}
}
