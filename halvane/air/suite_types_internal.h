// Types of the standard's own suites, to ask a set of suites for any of them, and the kinds of key
// management that they are (IEEE 802.11-2020, table 9-151, with later types).
#ifndef HALVANE_AIR_SUITE_TYPES_INTERNAL_H
#define HALVANE_AIR_SUITE_TYPES_INTERNAL_H

#include <algorithm>
#include <cstdint>
#include <initializer_list>

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
    friend constexpr SuiteTypes operator|(SuiteTypes a, const SuiteTypes& b) {
        a.bits_ |= b.bits_;
        return a;
    }
    bool isAnyIn(const SuiteSet& set) const {
        return std::ranges::any_of(set, [this](const Suite& suite) { return has(suite); });
    }

  private:
    std::uint64_t bits_ = 0;
};

inline constexpr SuiteTypes kPskAkms = {2, 4, 6, 19, 20};
inline constexpr SuiteTypes kSaeAkms = {8, 9, 24, 25};
inline constexpr SuiteTypes kOweAkms = {18};
inline constexpr SuiteTypes kFilsAkms = {14, 15, 16, 17};
inline constexpr SuiteTypes kFtAkms = {3, 4, 9, 13, 16, 17, 19, 22, 25};

// 802.1X: of WPA2, of WPA2 or WPA3, of WPA3, and of its 192-bit mode.
inline constexpr SuiteTypes kPlain8021XAkms = {1};
inline constexpr SuiteTypes kEither8021XAkms = SuiteTypes({3}) | kFilsAkms;
inline constexpr SuiteTypes kSha256Of8021XAkms = {5, 11, 22, 23};
inline constexpr SuiteTypes k192BitAkms = {12, 13};
inline constexpr SuiteTypes kWeaker8021XAkms =
    kPlain8021XAkms | kEither8021XAkms | kSha256Of8021XAkms;
inline constexpr SuiteTypes kEnterpriseAkms = kWeaker8021XAkms | k192BitAkms;

}  // namespace halvane::air

#endif
