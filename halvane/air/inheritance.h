// Which elements hold for a BSS of which another BSS tells. The profile of a nontransmitted BSSID
// (IEEE 802.11-2020, 11.1.3.8.4) and the profile of another link of an MLD (802.11be, 35.3.3.5)
// leave out what the sender's own elements say already.
//
// Both kinds of profiles agree on this:
// - An element of the profile holds in place of all of its kind. The kind is the element's number,
//   of vendor elements also OUI and type.
// - The sender's other elements hold too, except those that the profile's Non-Inheritance names,
//   and TIM, Multiple BSSID, Multi-Link, Non-Inheritance and what stands in profiles alone.
// They differ in this:
// - A nontransmitted BSSID has its own name, and shares the channel: the sender's elements on
//   channel, PHY and regulation hold, whatever the profile has.
// - The links of an MLD have one name, which is inherited, and channels of their own: every element
//   of the profile holds. Reduced Neighbor Report is not inherited, since its entries are told
//   relative to the sender.
//
// Free functions without state; any thread may call them.
#ifndef HALVANE_AIR_INHERITANCE_H
#define HALVANE_AIR_INHERITANCE_H

#include <cstddef>
#include <span>
#include <vector>

#include "halvane/air/bit_octets.h"
#include "halvane/air/element_id.h"
#include "halvane/air/element_range.h"
#include "halvane/air/multi_link.h"
#include "halvane/base/export.h"

namespace halvane::air {

// Whose profile it is: of a nontransmitted BSSID, or of another link.
enum class ProfileKind { NontransmittedBssid, Link };

// Of the sender's elements only so many are looked at; no beacon has more. A profile then costs
// time in proportion to its own elements and to this number.
inline constexpr std::size_t kMaxInheritedElements = 256;

// The elements that hold for a BSS. Their octets stand where those of the sender and of the profile
// stand, and must outlive the list.
struct HALVANE_EXPORT BssElements {
    std::vector<Element> elements{};  // of the profile; then the sender's
    std::size_t ownCount = 0;         // of the profile

    // REQUIRES: the element is one of `elements`.
    bool isInherited(const Element& element) const {
        return &element >= elements.data() + ownCount;
    }
    // Null if there is none. The first of several counts.
    const Element* find(ElementId id) const;
};

// All elements of a frame or of a profile.
HALVANE_EXPORT std::vector<Element> elementsIn(Octets octets);

// The elements that hold for the BSS of a profile: its own, and those of the sender that it
// inherits. The spans are read during the call; the elements point to the same octets.
HALVANE_EXPORT BssElements withInheritance(std::span<const Element> sender,
                                           std::span<const Element> profile, ProfileKind kind);

// The elements that hold for another link of the sender's MLD. A profile that is not complete
// inherits nothing. The offsets of its own elements count from the first octet of link.profile,
// which holds their octets. `fixedOctets` is that of PerStaProfile::elements().
HALVANE_EXPORT BssElements elementsOfLink(std::span<const Element> sender,
                                          const PerStaProfile& link, std::size_t fixedOctets = 2);

}  // namespace halvane::air

#endif
