// Looks for secrets in freed memory. A program that links freed_memory.cpp has its global
// allocation functions replaced.
#ifndef TESTS_SUPPORT_FREED_MEMORY_H
#define TESTS_SUPPORT_FREED_MEMORY_H

#include <cstddef>
#include <string_view>

namespace halvane::testing {

// Counts the blocks of operator new that hold the secret when they are deleted. It watches the
// thread that makes it; one may live at a time. The secret must outlive it, and must not lie in
// such a block itself.
class FreedMemoryWatch {
  public:
    explicit FreedMemoryWatch(std::string_view secret);
    FreedMemoryWatch(const FreedMemoryWatch&) = delete;
    FreedMemoryWatch& operator=(const FreedMemoryWatch&) = delete;
    ~FreedMemoryWatch();

    std::size_t finds() const;
};

}  // namespace halvane::testing

#endif
