// For each finding the frames that raise it, and frames like them that do not.
#ifndef TESTS_AIR_FINDING_CASES_H
#define TESTS_AIR_FINDING_CASES_H

#include <cstdint>
#include <string>
#include <vector>

#include "halvane/air/finding.h"

namespace halvane::testing {

inline constexpr std::uint16_t kOpenBss = 0x0001;     // an access point
inline constexpr std::uint16_t kPrivateBss = 0x0011;  // with the privacy bit

// A frame of 02:00:00:00:08:20.
struct HeardFrame {
    // "ID=BODY" or "255/EXTENSION=BODY", with blanks and semicolons; "x=OCTETS" are no element.
    std::string elements;
    std::uint16_t capabilities = kOpenBss;
    std::uint16_t interval = 100;  // TU
    int frequency = 0;             // MHz of the radio; 0: not known
    int signal = 0;                // dBm
};

struct FindingCase {
    air::FindingKind kind;
    HeardFrame raising;
    std::string sources;  // "48@2 255/36@30 capabilities"
    HeardFrame quiet;
};

// One case or more for each kind, in any order.
std::vector<FindingCase> findingCases();

}  // namespace halvane::testing

#endif
