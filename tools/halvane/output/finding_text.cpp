#include "tools/halvane/output/finding_text.h"

namespace halvane::tool {

Meaning meaningOf(air::Severity severity) {
    switch (severity) {
        case air::Severity::Error:
            return Meaning::Danger;
        case air::Severity::Warning:
            return Meaning::Caution;
        case air::Severity::Note:
            break;
    }
    return Meaning::Plain;
}

std::string findingReference(const air::FindingInfo& info) {
    const bool isNumber = !info.clause.empty() && info.clause[0] >= '0' && info.clause[0] <= '9';
    return std::string(info.id) + (isNumber ? ", clause " : ", ") + std::string(info.clause);
}

}  // namespace halvane::tool
