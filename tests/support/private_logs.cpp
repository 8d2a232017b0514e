// Linked into every test program that contains the library. It sends the messages of the Wi-Fi
// categories to standard error, not to the log file of the machine.
#include "tests/support/private_logs.h"

#include <utility>

#include "halvane/utils/log.h"

namespace halvane::testing {

namespace {

std::map<std::string, std::string> takeInitConfigs() {
    std::map<std::string, std::string> taken;
    const auto take = [&taken](LogCategory& category) {
        const char* const config = std::exchange(category.initConfig, nullptr);
        if (config != nullptr) taken.emplace(category.name, config);
    };
#define HALVANE_TAKE_INIT_CONFIG(name) take(gLogCategory_##name);
    HALVANE_WIFI_LOG_CATEGORIES(HALVANE_TAKE_INIT_CONFIG)
#undef HALVANE_TAKE_INIT_CONFIG
    return taken;
}

const std::map<std::string, std::string> initConfigs = takeInitConfigs();

}  // namespace

const std::map<std::string, std::string>& definedInitConfigs() {
    return initConfigs;
}

}  // namespace halvane::testing
