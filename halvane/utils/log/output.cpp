#include <algorithm>
#include <array>
#include <cstddef>

#include "halvane/base/result.h"
#include "halvane/base/status.h"
#include "halvane/utils/log/output_internal.h"
#include "halvane/utils/text/ignore_case_internal.h"

namespace halvane::logging {

namespace {

struct OutputKind {
    std::string_view name;
    HalvaneStatus (*setUp)(LogOutput& output, std::string_view parameters);
};
constexpr std::array<OutputKind, 4> kOutputKinds = {{
    {"console", __LogOutputConsole_Setup},
    {"file", __LogOutputFile_Setup},
    {"syslog", __LogOutputSyslog_Setup},
    {"callback", __LogOutputCallback_Setup},
}};

std::string_view typeOf(std::string_view spec) {
    return spec.substr(0, spec.find(';'));
}

std::string_view parametersOf(std::string_view spec) {
    const std::size_t typeLength = typeOf(spec).size();
    return spec.substr(std::min(typeLength + 1, spec.size()));
}

}  // namespace

Result<std::unique_ptr<LogOutput>, HalvaneStatus> __LogOutputCreate(const std::string& spec) {
    const std::string_view type = typeOf(spec);
    const auto kind = std::ranges::find_if(
        kOutputKinds, [type](const OutputKind& row) { return equalsIgnoringCase(row.name, type); });
    if (kind == kOutputKinds.end()) {
        return Unexpected(HalvaneStatus(type.empty() ? kStatusEmptyType : kStatusUnsupported));
    }
    auto output = std::make_unique<LogOutput>();
    output->spec = spec;
    const HalvaneStatus status = kind->setUp(*output, parametersOf(spec));
    if (status != kStatusOK) return Unexpected(status);
    return output;
}

bool isCallbackOutput(std::string_view spec) {
    return equalsIgnoringCase(typeOf(spec), "callback");
}

}  // namespace halvane::logging
