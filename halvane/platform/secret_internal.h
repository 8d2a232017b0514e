// Memory that holds a secret while it is worked on, and nothing of it afterwards.
#ifndef HALVANE_PLATFORM_SECRET_INTERNAL_H
#define HALVANE_PLATFORM_SECRET_INTERNAL_H

#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>
#include <string.h>
#include <type_traits>

namespace halvane {

// A value that is overwritten when it goes, on whatever way. It can be neither copied nor moved: a
// copy would have to be wiped too.
template <typename Value>
requires std::is_trivially_copyable_v<Value>
class Secret {
  public:
    Secret() = default;
    Secret(const Secret&) = delete;
    Secret& operator=(const Secret&) = delete;
    ~Secret() { ::explicit_bzero(&value_, sizeof(value_)); }

    Value& operator*() { return value_; }
    const Value& operator*() const { return value_; }
    Value* operator->() { return &value_; }
    const Value* operator->() const { return &value_; }

  private:
    Value value_{};
};

// Bytes whose number is known at run time only, zeros at first. There may be no memory for them.
class SecretBytes {
  public:
    explicit SecretBytes(std::size_t size)
        : bytes_(new (std::nothrow) std::uint8_t[size]()), size_(size) {}
    SecretBytes(const SecretBytes&) = delete;
    SecretBytes& operator=(const SecretBytes&) = delete;
    ~SecretBytes() {
        if (bytes_) ::explicit_bzero(bytes_.get(), size_);
    }

    explicit operator bool() const { return bytes_ != nullptr; }
    std::uint8_t* data() { return bytes_.get(); }

  private:
    std::unique_ptr<std::uint8_t[]> bytes_;
    std::size_t size_;
};

}  // namespace halvane

#endif
