// Finds contradictions and dangers in the elements of a BSS.
#ifndef HALVANE_AIR_PROFILE_FINDINGS_INTERNAL_H
#define HALVANE_AIR_PROFILE_FINDINGS_INTERNAL_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

#include "halvane/air/bss_profile.h"
#include "halvane/air/channel_use_internal.h"
#include "halvane/air/element_id.h"
#include "halvane/air/element_index_internal.h"
#include "halvane/air/finding.h"
#include "halvane/air/max_rates_internal.h"
#include "halvane/air/profile_links_internal.h"
#include "halvane/air/security_elements_internal.h"
#include "halvane/air/source.h"

namespace halvane::air {

// Everything that a profile is made from, and the profile as far as it is made.
struct ProfileParts {
    const ElementIndex& index;
    const TrailingOctets& trailing;
    const FixedFields& fixed;
    const RadioHint& radio;
    const OperationElements& operation;
    const CapabilityElements& capabilities;
    const SecurityElements& security;
    const BssProfile& profile;
    const std::optional<BasicMultiLink>& multiLink;
    std::optional<std::size_t> faultyProfiles;  // the offset of a Multiple BSSID element

    // Whether the BSS certainly has no such element. After a cut nothing is certain.
    template <typename Key>
    bool lacks(Key key) const {
        return !profile.isCut && !index.has(key);
    }
    // An access point is none (9.4.1.4).
    bool mayBeMesh() const {
        constexpr std::uint16_t kEss = 0x0001;
        const bool mayBeCutOff = profile.isCut && (fixed.capabilities & kEss) == 0;
        return mayBeCutOff || index.has(ElementId::MeshId);
    }
};

// Collects the findings of one BSS. Each goes to its place at once: there are a few, and sorting
// them later would take memory of its own.
class FindingCollector {
  public:
    explicit FindingCollector(const ElementIndex& index) : index_(index) {
        constexpr std::size_t kUsualCount = 8;
        findings_.reserve(kUsualCount);
    }

    void add(FindingKind kind, const Sources& sources = {});
    void addIf(bool condition, FindingKind kind, const Sources& sources = {}) {
        if (condition) add(kind, sources);
    }
    // Of elements or vendor elements; those that are missing are left out.
    template <typename... Keys>
    Sources sourcesOf(Keys... keys) const {
        Sources sources;
        (addSource(sources, keys), ...);
        return sources;
    }

    // The worst first; among equals in the order of the table.
    std::vector<Finding> take() { return std::move(findings_); }

  private:
    template <typename Key>
    void addSource(Sources& sources, Key key) const {
        if (index_.has(key)) sources.push_back(index_.sourceOf(key));
    }

    const ElementIndex& index_;
    std::vector<Finding> findings_;
};

// Each looks at one group of findings.
void findInSecurity(const ProfileParts& parts, FindingCollector& findings);
void findInKeyManagement(const ProfileParts& parts, FindingCollector& findings);
void findInChannel(const ProfileParts& parts, FindingCollector& findings);
void findInRates(const ProfileParts& parts, FindingCollector& findings);
void findInNames(const ProfileParts& parts, FindingCollector& findings);
void findInLinks(const ProfileParts& parts, FindingCollector& findings);
void findInForm(const ProfileParts& parts, FindingCollector& findings);

}  // namespace halvane::air

#endif
