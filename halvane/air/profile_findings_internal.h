// Finds contradictions and dangers in the elements of a BSS.
#ifndef HALVANE_AIR_PROFILE_FINDINGS_INTERNAL_H
#define HALVANE_AIR_PROFILE_FINDINGS_INTERNAL_H

#include <cstddef>
#include <utility>
#include <vector>

#include "halvane/air/bss_profile.h"
#include "halvane/air/channel_use_internal.h"
#include "halvane/air/element_index_internal.h"
#include "halvane/air/finding.h"
#include "halvane/air/max_rates_internal.h"
#include "halvane/air/security_elements_internal.h"

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
    Source sourceOf(ElementId id) const { return index_.sourceOf(id); }
    Source sourceOf(VendorKind kind) const { return index_.sourceOf(kind); }

    // The worst first; among equals in the order of the table.
    std::vector<Finding> take() { return std::move(findings_); }

  private:
    const ElementIndex& index_;
    std::vector<Finding> findings_;
};

// Each looks at one group of findings.
void findInSecurity(const ProfileParts& parts, FindingCollector& findings);
void findInChannel(const ProfileParts& parts, FindingCollector& findings);
void findInRates(const ProfileParts& parts, FindingCollector& findings);
void findInNames(const ProfileParts& parts, FindingCollector& findings);
void findInLinks(const ProfileParts& parts, FindingCollector& findings);
void findInForm(const ProfileParts& parts, FindingCollector& findings);

}  // namespace halvane::air

#endif
