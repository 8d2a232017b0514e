// Cipher suites and key management suites of RSN and WPA elements (IEEE 802.11-2020, 9.4.2.24.2 and
// 9.4.2.24.3, tables 9-149 and 9-151).
//
// Plain values. Threads: as for an integer.
#ifndef HALVANE_AIR_SUITE_H
#define HALVANE_AIR_SUITE_H

#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "halvane/base/export.h"
#include "halvane/base/inline_list.h"
#include "halvane/base/oui.h"

namespace halvane::air {

// A suite selector: who defines the suite, and which of its suites it is.
struct Suite {
    OUI oui = kRSNOUI;
    std::uint8_t type = 0;

    // The four octets as one number, whose order is theirs.
    constexpr std::uint32_t selector() const { return ouiNumber(oui) << 8 | type; }

    friend constexpr bool operator==(const Suite& a, const Suite& b) {
        return a.selector() == b.selector();
    }
    friend constexpr auto operator<=>(const Suite& a, const Suite& b) {
        return a.selector() <=> b.selector();
    }
};

// Suites in the order of their elements, each once.
using SuiteSet = InlineList<Suite, 24>;

// The suites that the standard or the Wi-Fi Alliance names: "CCMP-128", "SAE". Empty for any other
// suite. A suite of the WPA element (00-50-F2) has the name of the RSN element's suite.
HALVANE_EXPORT std::string_view cipherName(const Suite& suite);
// The same for key management suites.
HALVANE_EXPORT std::string_view akmName(const Suite& suite);

// The name, or "00-0F-AC:99" for a suite without one.
HALVANE_EXPORT std::string cipherText(const Suite& suite);
// The same for key management suites.
HALVANE_EXPORT std::string akmText(const Suite& suite);

}  // namespace halvane::air

#endif
