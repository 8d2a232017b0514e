// The named conversions, "%{name}".
#include <algorithm>
#include <array>
#include <cstdarg>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "halvane/platform/bus/ipc_message.h"
#include "halvane/utils/printf.h"
#include "halvane/utils/printf/conversions_internal.h"
#include "halvane/utils/printf/engine_internal.h"
#include "halvane/utils/text/ignore_case_internal.h"

namespace halvane::printing {

namespace {

struct Extension {
    std::string_view name;
    void (*convert)(Output& output, const PrintFFormat& format, Arguments& arguments);
};

constexpr std::array<Extension, 5> kExtensions = {{
    {"dur", convertDuration},
    {"ie", convertElements},
    {"text", convertMultiLineText},
    {"txt", convertTXTRecord},
    {"xpc", convertIPCMessage},
}};

}  // namespace

void convertExtension(Output& output, const PrintFFormat& format, std::string_view name,
                      Arguments& arguments) {
    for (const auto& extension : kExtensions) {
        if (equalsIgnoringCase(name, extension.name)) {
            return extension.convert(output, format, arguments);
        }
    }
    writeUnknownExtension(output, format, name);
}

void writeUnknownExtension(Output& output, const PrintFFormat& format, std::string_view name) {
    writeMessage(output, format, "<<UNKNOWN PRINTF EXTENSION '%.*s'>>",
                 static_cast<int>(std::min(name.size(), kScratchSize)), name.data());
}

void convertMultiLineText(Output& output, const PrintFFormat& format, Arguments& arguments) {
    const auto* text = va_arg(arguments.list, const char*);
    auto length = va_arg(arguments.list, std::size_t);
    if (text == nullptr) {
        if (length > 0) PrintFWriteText(output, format, kNullText);
        return;
    }
    if (length == SIZE_MAX) length = std::strlen(text);
    PrintFWriteMultiLineText(output, indentOf(format), {text, length});
}

void convertIPCMessage(Output& output, const PrintFFormat& format, Arguments& arguments) {
    const auto* message = va_arg(arguments.list, const IPCMessage*);
    if (message == nullptr) return PrintFWriteText(output, format, kNullText);
    const auto description = message->description();
    if (!description) return PrintFWriteText(output, format, "<<NULL XPC DESC>>");
    PrintFWriteMultiLineText(output, indentOf(format), *description);
}

}  // namespace halvane::printing
