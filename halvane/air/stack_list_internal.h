// A list for the time of one function.
#ifndef HALVANE_AIR_STACK_LIST_INTERNAL_H
#define HALVANE_AIR_STACK_LIST_INTERNAL_H

#include <array>
#include <cstddef>
#include <memory_resource>
#include <vector>

namespace halvane::air {

// The first `Count` items stand in the object itself, and allocate nothing.
template <typename T, std::size_t Count>
class StackList {
  public:
    StackList() { items_.reserve(Count); }
    StackList(const StackList&) = delete;
    StackList& operator=(const StackList&) = delete;
    ~StackList() = default;

    std::pmr::vector<T>* operator->() { return &items_; }
    const std::pmr::vector<T>& operator*() const { return items_; }

  private:
    alignas(T) std::array<std::byte, Count * sizeof(T)> room_;
    std::pmr::monotonic_buffer_resource pool_{room_.data(), room_.size()};
    std::pmr::vector<T> items_{&pool_};
};

}  // namespace halvane::air

#endif
