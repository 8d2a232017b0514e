#include "halvane/ie/dwds_ie.h"

#include <array>
#include <cstddef>

#include "halvane/base/byte_cursor.h"
#include "halvane/base/describe.h"
#include "halvane/ie/fancy_formatting.h"
#include "halvane/utils/printf/std_string_internal.h"

namespace halvane {

namespace {

constexpr std::size_t kRoleOffset = 8;
constexpr std::array kRoles = {"Inactive", "Master", "Relay", "Remote"};
constexpr const char* kUnknownRole = "Unknown";

struct FlagLine {
    bool (HalvaneDWDSIE::*isSet)() const;
    const char* label;
};

// The flags in the order of the description.
constexpr FlagLine kFlagLines[] = {
    {&HalvaneDWDSIE::isAMPDUNotSupportedOverDWDS, "AMPDU Not Supported"},
    {&HalvaneDWDSIE::isAMPDUWorkaroundOverDWDS, "AMPDU Workaround"},
    {&HalvaneDWDSIE::isAMPDUFullSupportOverDWDS, "AMPDU Full Support"},
    {&HalvaneDWDSIE::isClosedNetworkOverDWDS, "Closed Network"},
};

}  // namespace

HalvaneDWDSIE HalvaneDWDSIE::initWithIE(const ByteBuffer& ie) {
    HalvaneDWDSIE object;
    object.isValid_ = true;
    object.rawIE_ = ie;
    object.parseIE();
    return object;
}

void HalvaneDWDSIE::parseIE() {
    role_.reset();
    flags_ = 0;
    if (!rawIE_) return;

    ByteCursor cursor(*rawIE_);
    const bool reachesRole = cursor.skip(kRoleOffset);
    const auto role = reachesRole ? cursor.u8() : std::nullopt;
    role_ = role ? stringValueForDWDSRole(*role) : kUnknownRole;
    if (role) flags_ = cursor.u32be().value_or(0);
}

std::string HalvaneDWDSIE::stringValueForDWDSRole(std::uint8_t role) {
    return role < kRoles.size() ? kRoles[role] : kUnknownRole;
}

std::string HalvaneDWDSIE::description() const {
    std::string text;
    appendPrintF(text, "    IE                  : %s\n",
                 FancyFormatting::formattedHexData(rawIE_).c_str());
    if (!isValid_) return text;
    appendPrintF(text, "    Role                : %s\n", describe(role_).c_str());
    for (const auto& [isSet, label] : kFlagLines) {
        appendPrintF(text, "    %-20s: %s\n", label, yesNo((this->*isSet)()));
    }
    return text;
}

}  // namespace halvane
