#include "tools/halvane/networks/security_label.h"

#include <array>
#include <cstddef>

namespace halvane::tool {

namespace {

struct Label {
    std::string_view name;
    Meaning meaning;
};

// In the order of the enumerators.
constexpr std::array<Label, 20> kLabels = {{
    {"Open", Meaning::Caution},     {"WEP", Meaning::Danger},       {"WPA", Meaning::Danger},
    {"WPA/WPA2", Meaning::Caution}, {"WPA2", Meaning::Plain},       {"WPA2/WPA3", Meaning::Plain},
    {"WPA3", Meaning::Good},        {"WPA-Ent", Meaning::Danger},   {"WPA/2-Ent", Meaning::Caution},
    {"WPA2-Ent", Meaning::Plain},   {"WPA2/3-Ent", Meaning::Plain}, {"WPA3-Ent", Meaning::Good},
    {"WPA3-192", Meaning::Good},    {"OWE", Meaning::Good},         {"Open+OWE", Meaning::Caution},
    {"OSEN", Meaning::Plain},       {"DPP", Meaning::Plain},        {"WAPI", Meaning::Plain},
    {"Unknown", Meaning::Caution},  {"Broken", Meaning::Danger},
}};

const Label& labelOf(air::Security security) {
    return kLabels[static_cast<std::size_t>(security)];
}

}  // namespace

std::string_view shortSecurityName(air::Security security) {
    return labelOf(security).name;
}

Meaning meaningOfSecurity(air::Security security) {
    return labelOf(security).meaning;
}

std::string_view shortPmfName(air::Pmf pmf) {
    constexpr std::array<std::string_view, 3> kNames = {"-", "cap", "req"};
    return kNames[static_cast<std::size_t>(pmf)];
}

}  // namespace halvane::tool
