// The name of a network (IEEE 802.11-2020, 9.4.2.2): 0 to 32 octets of any encoding, or of none.
//
// A plain value. Threads: as for an integer.
#ifndef HALVANE_BASE_SSID_H
#define HALVANE_BASE_SSID_H

#include <algorithm>
#include <array>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <ostream>
#include <span>
#include <string>
#include <string_view>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/export.h"

namespace halvane {

class HALVANE_EXPORT Ssid {
  public:
    static constexpr std::size_t kMaxSize = 32;

    // The wildcard SSID: no octets.
    constexpr Ssid() = default;

    // Absent if there are more than 32 octets.
    static constexpr std::optional<Ssid> fromBytes(std::span<const std::uint8_t> bytes) {
        if (bytes.size() > kMaxSize) return std::nullopt;
        Ssid ssid;
        std::ranges::copy(bytes, ssid.octets_.begin());
        ssid.size_ = static_cast<std::uint8_t>(bytes.size());
        return ssid;
    }

    // Takes the octets of the text unchanged. Absent if there are more than 32.
    static std::optional<Ssid> fromText(std::string_view text) {
        return fromBytes({reinterpret_cast<const std::uint8_t*>(text.data()), text.size()});
    }

    constexpr std::size_t size() const { return size_; }
    constexpr bool empty() const { return size_ == 0; }

    // Whether a beacon with this SSID hides the network's name: the SSID is empty or all zeros.
    constexpr bool isHidden() const {
        return std::ranges::all_of(bytes(), [](std::uint8_t octet) { return octet == 0; });
    }

    // The octets. The span is valid until this object is assigned to or destroyed.
    constexpr std::span<const std::uint8_t> bytes() const& { return {octets_.data(), size_}; }
    constexpr std::span<const std::uint8_t> bytes() const&& = delete;
    ByteBuffer buffer() const { return ByteBuffer(bytes()); }

    // The octets as escapedText(): for people to read, safe on a terminal.
    std::string text() const;

    // Orders by the first octet that differs. A name comes before a longer one that begins with it.
    friend constexpr bool operator==(const Ssid& a, const Ssid& b) {
        return std::ranges::equal(a.bytes(), b.bytes());
    }
    friend constexpr std::strong_ordering operator<=>(const Ssid& a, const Ssid& b) {
        return std::lexicographical_compare_three_way(a.bytes().begin(), a.bytes().end(),
                                                      b.bytes().begin(), b.bytes().end());
    }

    friend std::ostream& operator<<(std::ostream& stream, const Ssid& ssid) {
        return stream << ssid.text();
    }

  private:
    std::array<std::uint8_t, kMaxSize> octets_{};
    std::uint8_t size_ = 0;
};

}  // namespace halvane

// Within one process equal names have the same hash.
template <>
struct std::hash<halvane::Ssid> {
    std::size_t operator()(const halvane::Ssid& ssid) const noexcept {
        const auto octets = ssid.bytes();
        return std::hash<std::string_view>()(
            {reinterpret_cast<const char*>(octets.data()), octets.size()});
    }
};

#endif
