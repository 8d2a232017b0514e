#include "tools/halvaned-sim/logging_settings.h"

#include "tools/halvane/escape_text.h"

namespace halvane::sim {

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
        text += std::string(kLogCategoryNames[i]) + ": " + tool::escapeText(controls_[i]) + '\n';
    }
    return text;
}

}  // namespace halvane::sim
