#include "tools/halvaned-sim/faults.h"

#include <cstddef>
#include <iterator>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/property_list_value.h"
#include "halvane/model/daemon_protocol.h"
#include "halvane/service/message_internal.h"

#include "tools/halvaned-sim/bus_names.h"

namespace halvane::sim {

namespace {

// In the order of the enumeration.
constexpr std::string_view kWords[] = {"",     "status",  "silent",  "error",
                                       "gone", "garbled", "missing", "mistyped"};

constexpr std::string_view kGarbage = "<plist version=\"1.0\"><array><dict>";

// The key that identifies a message. It stays when the rest is missing.
bool isFrame(std::string_view key, const IPCMessage& message) {
    return key == protocol::key::kCommand ||
           (key == protocol::key::kStatus && message.entries().size() > 1);
}

PropertyListValue ofAnotherType(const PropertyListValue& value) {
    if (value.as<std::string>() != nullptr) return 0;
    if (const auto* data = value.as<ByteBuffer>()) return data->hex();
    return "text";
}

}  // namespace

std::string_view wordOf(Fault fault) {
    return kWords[static_cast<std::size_t>(fault)];
}

std::optional<Fault> faultFor(std::string_view word) {
    for (std::size_t i = 1; i < std::size(kWords); ++i) {
        if (kWords[i] == word) return static_cast<Fault>(i);
    }
    return std::nullopt;
}

std::optional<DaemonAnswer> Faults::insteadOf(std::string_view command) {
    const FaultSetting setting = of(command);
    switch (setting.fault) {
        case Fault::Status:
            return DaemonAnswer{.reply = statusMessage(setting.status)};
        case Fault::Silent:
            return DaemonAnswer{.kind = DaemonAnswer::Kind::Silence};
        case Fault::Error:
            return DaemonAnswer{.kind = DaemonAnswer::Kind::Error,
                                .error = kFailedError,
                                .text = "the simulation was told so"};
        case Fault::Gone:
            return DaemonAnswer{.kind = DaemonAnswer::Kind::Gone};
        case Fault::None:
        case Fault::Garbled:
        case Fault::Missing:
        case Fault::Mistyped:
            break;
    }
    return std::nullopt;
}

IPCMessage Faults::reply(std::string_view command, IPCMessage reply) {
    return spoilt(reply, of(command).fault);
}

std::optional<IPCMessage> Faults::event(IPCMessage event) {
    const Fault fault = of(kEventTarget).fault;
    if (fault == Fault::Silent) return std::nullopt;
    return spoilt(event, fault);
}

std::string Faults::text() const {
    std::string text;
    for (const auto& [target, setting] : settings_) {
        text += target + ": " + std::string(wordOf(setting.fault));
        if (setting.fault == Fault::Status) text += ' ' + std::to_string(setting.status);
        text += '\n';
    }
    return text;
}

IPCMessage spoilt(const IPCMessage& message, Fault fault) {
    IPCMessage result;
    for (const auto& [key, value] : message.entries()) {
        const bool isData = value.as<ByteBuffer>() != nullptr;
        if (fault == Fault::Missing && !isFrame(key, message)) continue;
        if (fault == Fault::Garbled && isData) {
            result.entries().set(key, ByteBuffer::fromText(kGarbage));
        } else if (fault == Fault::Mistyped && key != protocol::key::kCommand) {
            result.entries().set(key, ofAnotherType(value));
        } else {
            result.entries().set(key, value);
        }
    }
    return result;
}

}  // namespace halvane::sim
