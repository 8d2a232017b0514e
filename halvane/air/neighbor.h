// The neighbours that an access point tells of (IEEE 802.11-2020, 9.4.2.170).
//
// Plain values. Threads: as for a standard container.
#ifndef HALVANE_AIR_NEIGHBOR_H
#define HALVANE_AIR_NEIGHBOR_H

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <utility>

#include "halvane/air/channel.h"
#include "halvane/base/mac_address.h"

namespace halvane::air {

struct Neighbor {
    std::optional<MacAddress> bssid{};
    std::optional<std::uint32_t> shortSsid{};  // CRC-32 of the name
    int operatingClass = 0;                    // of the global table of Annex E
    int channel = 0;
    std::optional<Band> band{};         // of the operating class
    std::optional<int> frequency{};     // MHz, of the channel
    std::optional<bool> isSameSsid{};   // as the sender's
    std::optional<bool> isCoLocated{};  // in the same device
    std::optional<double> psd{};        // dBm/MHz that the access point allows
    std::optional<int> mldId{};         // 0: the multi-link device that sent the frame
    std::optional<int> linkId{};

    friend bool operator==(const Neighbor&, const Neighbor&) = default;
};

// A list that never changes. Copies share its items, since all networks of one beacon have the same
// neighbours.
class Neighbors {
  public:
    Neighbors() = default;
    Neighbors(const Neighbors&) = default;
    Neighbors& operator=(const Neighbors&) = default;
    // A list that was moved from is empty.
    Neighbors(Neighbors&& other) noexcept
        : items_(std::move(other.items_)), size_(std::exchange(other.size_, 0)) {}
    Neighbors& operator=(Neighbors&& other) noexcept {
        items_ = std::move(other.items_);
        size_ = std::exchange(other.size_, 0);
        return *this;
    }
    ~Neighbors() = default;
    explicit Neighbors(std::span<const Neighbor> items) : size_(items.size()) {
        if (items.empty()) return;
        auto copies = std::make_shared<Neighbor[]>(size_);
        std::ranges::copy(items, copies.get());
        items_ = std::move(copies);
    }

    const Neighbor* begin() const { return items_.get(); }
    const Neighbor* end() const { return begin() + size_; }
    std::size_t size() const { return size_; }
    bool empty() const { return size_ == 0; }
    // REQUIRES: index < size().
    const Neighbor& operator[](std::size_t index) const { return begin()[index]; }

    friend bool operator==(const Neighbors& a, const Neighbors& b) {
        return std::ranges::equal(a, b);
    }

  private:
    std::shared_ptr<const Neighbor[]> items_;  // null for an empty list
    std::size_t size_ = 0;
};

}  // namespace halvane::air

#endif
