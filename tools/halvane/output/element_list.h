// Elements that stand together: those of a buffer, or those that a field of an element holds.
#ifndef TOOLS_HALVANE_OUTPUT_ELEMENT_LIST_H
#define TOOLS_HALVANE_OUTPUT_ELEMENT_LIST_H

#include <cstddef>
#include <optional>
#include <string>

#include "halvane/air/bit_octets.h"
#include "halvane/air/element_range.h"
#include "halvane/air/field_sink.h"
#include "halvane/air/he_phy_capabilities.h"

namespace halvane::tool {

class ElementList {
  public:
    // Lists deeper than this stay octets. Networks have a link's profile in a Multi-Link element
    // of a profile of Multiple BSSID, which is the depth 2.
    static constexpr std::size_t kMaxDepth = 4;

    // Borrows the buffer. `bssid` is that of the network if there may be several.
    explicit ElementList(air::Octets buffer, std::string bssid = {});
    // The elements of a field of `holder`, which is an element of `outer`. The field's places begin
    // `head` octets after the body's start. Borrows everything.
    ElementList(const ElementList& outer, const air::Element& holder, std::size_t head,
                const air::ElementOctets& field);
    ElementList(const ElementList&) = delete;
    ElementList& operator=(const ElementList&) = delete;

    air::ElementRange range() const { return air::ElementRange(octets_); }
    // Of a buffer; otherwise empty.
    const std::string& bssid() const { return bssid_; }
    // 0 for a buffer.
    std::size_t depth() const { return depth_; }
    bool mayHoldLists() const { return depth_ < kMaxDepth; }

    // Where in the buffer the octet `index` of the list stands.
    std::size_t offsetOf(std::size_t index) const;

    // What the sender tells in HE Capabilities here, or else in the list around this one, from
    // which a profile inherits; null if it tells nothing.
    const air::HePhyCapabilities* he() const { return he_ ? &*he_ : nullptr; }

  private:
    struct Place {
        const ElementList& outer;
        const air::Element& holder;
        std::size_t head;
        const air::ElementOctets& field;
    };

    const air::Octets octets_;
    const std::string bssid_{};
    const std::optional<Place> place_{};  // absent for a buffer
    const std::size_t depth_ = 0;
    std::optional<air::HePhyCapabilities> he_;
};

}  // namespace halvane::tool

#endif
