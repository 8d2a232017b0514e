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
            "?" + std::string(kDaemonLogCategories[i]) + ":output=file;path=/var/log/halvaned.log";
    }
}

// If memory runs out, the settings are unchanged.
DaemonStatus LoggingSettings::apply(const DaemonLogControls& controls) {
    auto changed = controls_;
    for (std::size_t i = 0; i < changed.size(); ++i) {
        if (controls[i]) changed[i] = *controls[i];
    }
    controls_ = std::move(changed);
    return DaemonStatus::Done;
}

std::string LoggingSettings::text() const {
    std::string text;
    for (std::size_t i = 0; i < controls_.size(); ++i) {
        text += std::string(kDaemonLogCategories[i]) + ": " + withoutControls(controls_[i]) + '\n';
    }
    return text;
}

}  // namespace halvane::sim
