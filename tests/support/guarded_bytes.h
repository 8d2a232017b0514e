// Bytes that end right before an inaccessible page. Reading or writing one byte past them ends the
// test program, in every build and in every library.
#ifndef TESTS_SUPPORT_GUARDED_BYTES_H
#define TESTS_SUPPORT_GUARDED_BYTES_H

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <sys/mman.h>
#include <system_error>
#include <unistd.h>

namespace halvane::testing {

class GuardedBytes {
  public:
    // `size` bytes of the value `fill`.
    explicit GuardedBytes(std::size_t size, std::uint8_t fill = 0) : size_(size) {
        const auto page = static_cast<std::size_t>(::sysconf(_SC_PAGESIZE));
        const std::size_t room = (size + page - 1) / page * page;
        mappedSize_ = room + page;
        void* const memory = ::mmap(nullptr, mappedSize_, PROT_READ | PROT_WRITE,
                                    MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        if (memory == MAP_FAILED) throw std::system_error(errno, std::generic_category(), "mmap");
        mapped_ = static_cast<std::uint8_t*>(memory);
        data_ = mapped_ + (room - size);
        if (::mprotect(mapped_ + room, page, PROT_NONE) != 0) {
            throw std::system_error(errno, std::generic_category(), "mprotect");
        }
        std::fill_n(data_, size, fill);
    }
    // A copy of `bytes`.
    explicit GuardedBytes(std::span<const std::uint8_t> bytes) : GuardedBytes(bytes.size()) {
        std::ranges::copy(bytes, data_);
    }
    // A copy of `text`, without a terminator.
    explicit GuardedBytes(std::string_view text) : GuardedBytes(text.size()) {
        std::ranges::copy(text, chars());
    }
    // A copy of `text`, with its terminator as the last byte, which size() counts.
    static GuardedBytes terminated(std::string_view text) {
        const std::string copy(text);
        return GuardedBytes(std::string_view(copy.c_str(), copy.size() + 1));
    }
    GuardedBytes(const GuardedBytes&) = delete;
    GuardedBytes& operator=(const GuardedBytes&) = delete;
    ~GuardedBytes() { ::munmap(mapped_, mappedSize_); }

    std::size_t size() const { return size_; }
    std::uint8_t* data() { return data_; }
    char* chars() { return reinterpret_cast<char*>(data_); }
    std::span<std::uint8_t> bytes() { return {data_, size_}; }
    std::string_view text() const { return {reinterpret_cast<const char*>(data_), size_}; }

  private:
    std::size_t size_;
    std::size_t mappedSize_ = 0;
    std::uint8_t* mapped_ = nullptr;
    std::uint8_t* data_ = nullptr;
};

}  // namespace halvane::testing

#endif
