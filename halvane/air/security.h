// The security of a BSS by the names that the Wi-Fi Alliance gives it, from what its elements
// offer.
//
// Plain values and pure functions. Any thread may call them.
#ifndef HALVANE_AIR_SECURITY_H
#define HALVANE_AIR_SECURITY_H

#include <cstdint>
#include <optional>
#include <string_view>

#include "halvane/air/rsn.h"
#include "halvane/air/suite.h"
#include "halvane/base/export.h"

namespace halvane::air {

// "WPA2/WPA3" and the like is a network that stations of either kind may join.
enum class Security : std::uint8_t {
    Open,
    Wep,
    WpaPersonal,
    WpaWpa2Personal,
    Wpa2Personal,
    Wpa2Wpa3Personal,
    Wpa3Personal,
    WpaEnterprise,
    WpaWpa2Enterprise,
    Wpa2Enterprise,
    Wpa2Wpa3Enterprise,
    Wpa3Enterprise,
    Wpa3Enterprise192,       // the 192-bit mode
    EnhancedOpen,            // OWE: encrypted, without a password
    EnhancedOpenTransition,  // the open half of such a network
    Osen,                    // the online sign-up network of Hotspot 2.0
    Dpp,                     // Easy Connect alone
    Wapi,
    Unknown,  // protected by key management that the library does not know, or that was cut off
    Broken,   // protected, but its elements cannot be read
};

// "Open", "WEP", "WPA-Personal", "WPA/WPA2-Personal", ..., "WPA3-Enterprise 192-bit",
// "Enhanced Open", "Enhanced Open transition", "OSEN", "DPP", "WAPI", "Unknown", "Broken".
HALVANE_EXPORT std::string_view securityName(Security security);

// Whether a management frame of the BSS is protected (IEEE 802.11-2020, 12.6.3).
enum class Pmf : std::uint8_t { None, Capable, Required };

// "none", "capable", "required".
HALVANE_EXPORT std::string_view pmfName(Pmf pmf);

// The capability bits of an RSN element. Required without capable is invalid, and reads as none.
HALVANE_EXPORT Pmf pmfOf(const Rsn& rsn);

// An element that may be missing, or there but unreadable.
enum class Reading : std::uint8_t { Missing, Whole, Broken };

// What the elements of a BSS say about its security. The suites of an element that leaves them out
// are the standard's defaults: see rsnOffer().
struct SecurityOffer {
    Reading rsn = Reading::Missing;
    Reading wpa = Reading::Missing;
    SuiteSet rsnAkms{};  // of RSN, and of the RSN Override elements
    SuiteSet wpaAkms{};
    Pmf pmf = Pmf::None;
    bool isPrivacy = false;  // the capability field's bit
    bool hasWapi = false;
    bool hasOsen = false;
    bool hasOweTransition = false;
};

// The key management suites of a readable RSN element; 802.1X if it has none (9.4.2.24.3). Absent
// if the element cannot be used: another version than 1, or a list without a suite.
HALVANE_EXPORT std::optional<SuiteSet> akmsOf(const Rsn& rsn);

// The weakest way in decides between names; a password comes before 802.1X. No protected BSS is
// ever open.
HALVANE_EXPORT Security securityOf(const SecurityOffer& offer);

}  // namespace halvane::air

#endif
