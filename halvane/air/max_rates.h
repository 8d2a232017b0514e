// The highest data rates of a BSS, one for each generation of its PHY.
//
// Plain values. Threads: as for an integer.
#ifndef HALVANE_AIR_MAX_RATES_H
#define HALVANE_AIR_MAX_RATES_H

#include <optional>

#include "halvane/air/phy_rate.h"
#include "halvane/air/rule.h"

namespace halvane::air {

// What the access point receives, at the width of the BSS or the widest below it that the
// generation has. Puncturing does not lower the rates.
struct MaxRates {
    std::optional<Derived<PhyRate>> ht{};   // Wi-Fi 4
    std::optional<Derived<PhyRate>> vht{};  // Wi-Fi 5
    std::optional<Derived<PhyRate>> he{};   // Wi-Fi 6
    std::optional<Derived<PhyRate>> eht{};  // Wi-Fi 7

    // That of the latest generation; null if there is none.
    const Derived<PhyRate>* latest() const {
        for (const auto* rate : {&eht, &he, &vht, &ht}) {
            if (*rate) return &**rate;
        }
        return nullptr;
    }
};

}  // namespace halvane::air

#endif
