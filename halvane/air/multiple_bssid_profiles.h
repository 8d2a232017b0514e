// The networks of which a frame tells beside its sender: the profiles of the nontransmitted BSSIDs
// out of all its Multiple BSSID elements (IEEE 802.11-2020, 9.4.2.45 and 11.1.3.8).
//
//     const auto elements = elementsIn(frame.elements);
//     const MultipleBssidProfiles found(elements, frame.bssid);
//     for (const NontransmittedProfile& profile : found.profiles()) use(found.elementsOf(profile));
//
// Reading takes time and memory in proportion to the elements' octets; elementsOf() says what it
// takes. A set has at most kMaxNontransmittedProfiles networks, so that all of them together cost a
// bounded number of steps for each octet.
//
// Threads: as for a standard container.
#ifndef HALVANE_AIR_MULTIPLE_BSSID_PROFILES_H
#define HALVANE_AIR_MULTIPLE_BSSID_PROFILES_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "halvane/air/capability_information.h"
#include "halvane/air/element_range.h"
#include "halvane/air/inheritance.h"
#include "halvane/air/multiple_bssid_index.h"
#include "halvane/base/export.h"
#include "halvane/base/mac_address.h"

namespace halvane::air {

// An index of one octet tells no more apart, of which 0 is the sender's.
inline constexpr std::size_t kMaxNontransmittedProfiles = 255;

// A network that has no beacon of its own.
struct NontransmittedProfile {
    MacAddress bssid{};
    MultipleBssidIndex index{};
    CapabilityInformation capabilities{};
    std::vector<Element> elements{};  // of the profile alone; offsets count as the sender's do
};

// The BSSID of the index `index` in the set of up to 2^maxIndicator BSSIDs. Absent for an index
// that gives the transmitted BSSID itself, and for an indicator that is 0 or more than 46.
HALVANE_EXPORT std::optional<MacAddress> nontransmittedBssid(const MacAddress& transmitted,
                                                             std::uint8_t maxIndicator,
                                                             std::uint8_t index);

class HALVANE_EXPORT MultipleBssidProfiles {
  public:
    // `sender` are all elements of a frame that the BSSID `transmitted` sent. The profiles refer to
    // the octets of these elements; elementsOf() also refers to `sender` itself.
    //
    // A profile begins with Nontransmitted BSSID Capability; the first of an element that does not
    // goes on with the last of the element before. Left out are: a profile whose index is missing
    // or is that of the sender, a profile of a BSSID that an earlier one has, and every other
    // subelement.
    MultipleBssidProfiles(std::span<const Element> sender, const MacAddress& transmitted);

    // In the frame's order.
    const std::vector<NontransmittedProfile>& profiles() const { return profiles_; }
    // The offset of the first Multiple BSSID element whose indicator is not from 1 to 8, or that
    // begins a profile whose index is missing, taken, or not from 1 to 2^maxIndicator - 1. Absent
    // if there is none.
    std::optional<std::size_t> faultyElement() const { return faultyElement_; }
    // The elements that hold for the network of one of profiles(). Takes time in proportion to the
    // profile's elements and up to kMaxInheritedElements of the sender's.
    BssElements elementsOf(const NontransmittedProfile& profile) const {
        return withInheritance(sender_, profile.elements, ProfileKind::NontransmittedBssid);
    }

  private:
    std::span<const Element> sender_;
    std::vector<NontransmittedProfile> profiles_;
    std::optional<std::size_t> faultyElement_;
};

}  // namespace halvane::air

#endif
