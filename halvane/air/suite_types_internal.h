// Types of the standard's own suites, to ask a set of suites for any of them.
#ifndef HALVANE_AIR_SUITE_TYPES_INTERNAL_H
#define HALVANE_AIR_SUITE_TYPES_INTERNAL_H

#include <algorithm>
#include <cstdint>
#include <initializer_list>

#include "halvane/air/security.h"
#include "halvane/air/suite.h"
#include "halvane/base/oui.h"

namespace halvane::air {

// One bit for each type, so that a set is looked through once for all of them.
class SuiteTypes {
  public:
    // REQUIRES: types below 64.
    constexpr SuiteTypes(std::initializer_list<std::uint8_t> types) {
        for (const std::uint8_t type : types) bits_ |= std::uint64_t{1} << type;
    }

    constexpr bool has(const Suite& suite) const {
        return suite.type < 64 && (bits_ >> suite.type & 1) != 0 &&
               suite == Suite{kRSNOUI, suite.type};
    }
    bool isAnyIn(const SuiteSet& set) const {
        return std::ranges::any_of(set, [this](const Suite& suite) { return has(suite); });
    }

  private:
    std::uint64_t bits_ = 0;
};

}  // namespace halvane::air

#endif
