#include "tools/halvaned-sim/logging_settings.h"

#include <cstddef>
#include <utility>

#include "halvane/base/ascii_internal.h"

namespace halvane::sim {

namespace {

// Backslashes stay unchanged: a program that shows the text to people escapes them itself.
std::string withoutControls(const std::string& text) {
    constexpr unsigned char kDelete = 0x7F;
    std::string shown;
    for (const char character : text) {
        const auto byte = static_cast<unsigned char>(character);
        if (byte < ' ' || byte == kDelete) {
            shown += "\\x";
            appendHexOctet(shown, byte, kUpperHexDigits);
        } else {
            shown += character;
        }
    }
    return shown;
}

}  // namespace

LoggingSettings::LoggingSettings() {
    for (std::size_t i = 0; i < controls_.size(); ++i) {
        controls_[i] =
            std::string("?") + kLogCategoryNames[i] + ":output=file;path=/var/log/halvaned.log";
    }
}

Status LoggingSettings::change(const PropertyListDictionary& request) {
    auto changed = controls_;
    for (std::size_t i = 0; i < changed.size(); ++i) {
        const auto* value = request.find(kLogCategoryNames[i]);
        if (value == nullptr) continue;
        const auto* control = value->as<std::string>();
        if (control == nullptr) return Status::BadRequest;
        changed[i] = *control;
    }
    controls_ = std::move(changed);
    return Status::Done;
}

std::string LoggingSettings::text() const {
    std::string text;
    for (std::size_t i = 0; i < controls_.size(); ++i) {
        text += std::string(kLogCategoryNames[i]) + ": " + withoutControls(controls_[i]) + '\n';
    }
    return text;
}

}  // namespace halvane::sim
