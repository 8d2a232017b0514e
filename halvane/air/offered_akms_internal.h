// The key management suites that an RSN or WPA element offers.
#ifndef HALVANE_AIR_OFFERED_AKMS_INTERNAL_H
#define HALVANE_AIR_OFFERED_AKMS_INTERNAL_H

#include <cstdint>
#include <optional>

#include "halvane/air/suite.h"

namespace halvane::air {

// Adds those that the set does not have.
template <typename Suites>
void addAll(SuiteSet& set, const Suites& suites) {
    for (const Suite& suite : suites) {
        if (!set.contains(suite)) set.push_back(suite);
    }
}

// `fallback` is what an element without a list offers. Absent if stations cannot use the element.
template <typename Element>
std::optional<SuiteSet> offeredAkms(const Element& element, const Suite& fallback) {
    constexpr std::uint16_t kVersion = 1;
    const bool hasEmptyList =
        (element.pairwise && element.pairwise->empty()) || (element.akms && element.akms->empty());
    if (element.version != kVersion || hasEmptyList) return std::nullopt;
    if (!element.akms) return SuiteSet{fallback};
    SuiteSet akms;
    addAll(akms, *element.akms);
    return akms;
}

}  // namespace halvane::air

#endif
