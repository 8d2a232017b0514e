#include "halvane/service/log_settings.h"

namespace halvane {

LogSettings::~LogSettings() = default;

}  // namespace halvane
