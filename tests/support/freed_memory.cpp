#include "tests/support/freed_memory.h"

#include <cstring>
#include <malloc.h>

#include "tests/support/replaced_new.h"

namespace {

thread_local std::string_view watchedFor;
thread_local std::size_t found = 0;

void look(const void* memory) {
    auto* const block = const_cast<void*>(memory);
    const std::size_t size = ::malloc_usable_size(block);
    if (::memmem(block, size, watchedFor.data(), watchedFor.size()) != nullptr) ++found;
}

}  // namespace

halvane::testing::FreedMemoryWatch::FreedMemoryWatch(std::string_view secret) {
    found = 0;
    watchedFor = secret;
    memoryHooks().isReleased = look;
}
halvane::testing::FreedMemoryWatch::~FreedMemoryWatch() {
    memoryHooks().isReleased = nullptr;
}

std::size_t halvane::testing::FreedMemoryWatch::finds() const {
    return found;
}
