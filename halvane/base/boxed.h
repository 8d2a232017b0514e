// A value that allocates memory only when it is first changed.
//
// An unchanged box is as small as a pointer and reads as a fresh value. Copying a box copies the
// value. Only change() and copying allocate.
//
// Threads: as for the value.
#ifndef HALVANE_BASE_BOXED_H
#define HALVANE_BASE_BOXED_H

#include <memory>
#include <utility>

#include "halvane/base/cxx20.h"

namespace halvane {

// A value whose destructor never runs, so that it stays valid until the process ends.
template <typename Value>
union NeverDestroyed {
    constexpr NeverDestroyed() : value() {}
    NeverDestroyed(const NeverDestroyed&) = delete;
    NeverDestroyed& operator=(const NeverDestroyed&) = delete;
    constexpr ~NeverDestroyed() {}

    char none;    // unused: a union is a literal type only if one of its members is of such a type
    Value value;  // the value, whose destructor never runs
};

// A fresh value that all share. The two forms say the same in the words that each compiler needs to
// leave out a handler at exit, and with it a static constructor that would register the handler.
template <typename Value>
#ifdef __clang__
[[clang::no_destroy]] inline constinit const NeverDestroyed<Value> kFreshValue{};
#else
inline constexpr NeverDestroyed<Value> kFreshValue{};
#endif

template <typename Value>
class Boxed {
  public:
    // A fresh value.
    constexpr Boxed() = default;

    // Copies the value, if the box has one of its own.
    Boxed(const Boxed& other)
        : value_(other.value_ ? std::make_unique<Value>(*other.value_) : nullptr) {}
    // Copies the value, if the box has one of its own.
    Boxed& operator=(const Boxed& other) { return *this = Boxed(other); }
    // A moved-from box holds a fresh value.
    Boxed(Boxed&&) noexcept = default;
    Boxed& operator=(Boxed&&) noexcept = default;
    ~Boxed() = default;

    // The reference is valid until the box is next assigned to, made fresh, or first changed.
    const Value& operator*() const { return value_ ? *value_ : kFreshValue<Value>.value; }
    const Value* operator->() const { return &**this; }
    Value& change() {
        if (!value_) value_ = std::make_unique<Value>();
        return *value_;
    }

    // Releases the memory; the box then holds a fresh value.
    void makeFresh() { value_.reset(); }

    // Compares the values.
    friend bool operator==(const Boxed& a, const Boxed& b) { return *a == *b; }

  private:
    std::unique_ptr<Value> value_;
};

}  // namespace halvane

#endif
