// A set of bytes.
#ifndef HALVANE_UTILS_TEXT_BYTE_SET_INTERNAL_H
#define HALVANE_UTILS_TEXT_BYTE_SET_INTERNAL_H

#include <array>
#include <cstdint>
#include <string_view>

namespace halvane {

class ByteSet {
  public:
    constexpr explicit ByteSet(std::string_view members) {
        for (const char member : members) wordOf(member) |= bitOf(member);
    }

    // The bytes of a class of characters.
    constexpr explicit ByteSet(bool (*isMember)(char)) {
        for (int value = 0; value <= UINT8_MAX; ++value) {
            const char byte = static_cast<char>(value);
            if (isMember(byte)) wordOf(byte) |= bitOf(byte);
        }
    }

    constexpr bool contains(char byte) const {
        return (words_[static_cast<unsigned char>(byte) / 64] & bitOf(byte)) != 0;
    }

  private:
    static constexpr std::uint64_t bitOf(char byte) {
        return std::uint64_t{1} << (static_cast<unsigned char>(byte) % 64);
    }
    constexpr std::uint64_t& wordOf(char byte) {
        return words_[static_cast<unsigned char>(byte) / 64];
    }

    std::array<std::uint64_t, 4> words_{};
};

}  // namespace halvane

#endif
