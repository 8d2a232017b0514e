// A list of at most `Capacity` items that are stored inside the object and allocate nothing.
//
// Items are trivially copyable. A value type; threads: as for a standard container.
#ifndef HALVANE_BASE_INLINE_LIST_H
#define HALVANE_BASE_INLINE_LIST_H

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <memory>
#include <span>
#include <type_traits>

#include "halvane/base/cxx20.h"

namespace halvane {

template <typename T, std::size_t Capacity>
class InlineList {
    static_assert(std::is_trivially_copyable_v<T> && Capacity <= UINT16_MAX);

  public:
    using value_type = T;

    InlineList() noexcept {}
    // Items beyond the capacity are left out.
    InlineList(std::initializer_list<T> items) noexcept {
        for (const T& item : items) push_back(item);
    }
    // Only items that the list has are copied.
    InlineList(const InlineList& other) noexcept { assign(other); }
    InlineList& operator=(const InlineList& other) noexcept {
        if (this != &other) assign(other);
        return *this;
    }
    ~InlineList() = default;

    // The greatest size.
    static constexpr std::size_t capacity() { return Capacity; }
    std::size_t size() const { return size_; }
    bool empty() const { return size_ == 0; }

    // Returns false, and changes nothing, if the list is full.
    bool push_back(const T& item) {
        if (size_ == Capacity) return false;
        std::construct_at(items_ + size_++, item);
        return true;
    }
    void clear() { size_ = 0; }

    T* begin() { return items_; }
    T* end() { return items_ + size_; }
    const T* begin() const { return items_; }
    const T* end() const { return items_ + size_; }
    // The first item; not null, even for an empty list.
    const T* data() const { return items_; }

    // REQUIRES: index < size(), or a list that is not empty.
    T& operator[](std::size_t index) { return items_[index]; }
    const T& operator[](std::size_t index) const { return items_[index]; }
    T& back() { return items_[size_ - 1]; }
    const T& back() const { return items_[size_ - 1]; }

    // Whether an item equals `item`.
    bool contains(const T& item) const { return std::find(begin(), end(), item) != end(); }

    // Equal lists have equal items in the same order.
    friend bool operator==(const InlineList& a, const InlineList& b) {
        return std::ranges::equal(a, b);
    }

  private:
    void assign(const InlineList& other) {
        std::uninitialized_copy(other.begin(), other.end(), items_);
        size_ = other.size_;
    }

    std::uint16_t size_ = 0;
    union {  // no item is created before it is added
        T items_[Capacity];
    };
};

}  // namespace halvane

#endif
