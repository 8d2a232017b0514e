// The output "callback": a function of the program.
#include <bit>
#include <cstddef>
#include <optional>

#include "halvane/base/status.h"
#include "halvane/utils/log/output_internal.h"
#include "halvane/utils/scan/scanf.h"

namespace halvane::logging {

namespace {

constexpr std::size_t kMaxPointerText = 63;

void callBack(LogOutput& output, const LogMessage& message, std::string_view text) {
    output.func(&message, text.data(), text.size(), output.arg);
}

// Reads the form of "%p", with nothing after it.
std::optional<std::uintptr_t> pointerOf(std::string_view text) {
    std::uint64_t pointer = 0;
    std::int32_t consumed = 0;
    const int count = SNScanF(text.data(), text.size(), "%p%n", &pointer, &consumed);
    if (count != 1 || static_cast<std::size_t>(consumed) != text.size()) return std::nullopt;
    return static_cast<std::uintptr_t>(pointer);
}

}  // namespace

HalvaneStatus __LogOutputCallback_Setup(LogOutput& output, std::string_view parameters) {
    output.type = kLogOutputCallback;
    output.writer = callBack;
    const auto take = [&output](std::string_view key, std::string_view value) -> HalvaneStatus {
        if (key != "func" && key != "arg") return kStatusUnknownParameter;
        if (value.size() > kMaxPointerText) return kStatusWrongLength;
        const auto pointer = pointerOf(value);
        if (!pointer) return kStatusMalformed;
        if (key == "func") {
            output.func = std::bit_cast<LogCallback>(*pointer);
        } else {
            output.arg = std::bit_cast<void*>(*pointer);
        }
        return kStatusOK;
    };
    const HalvaneStatus status = forEachParameter(parameters, take);
    if (status != kStatusOK) return status;
    return output.func != nullptr ? kStatusOK : kStatusUnsupported;
}

}  // namespace halvane::logging
