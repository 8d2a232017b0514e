// A backend that records what it is asked, and replies as the test says.
#ifndef TESTS_SERVICE_SCRIPTED_BACKEND_H
#define TESTS_SERVICE_SCRIPTED_BACKEND_H

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "halvane/base/mac_address.h"
#include "halvane/base/result.h"
#include "halvane/model/bss_config.h"
#include "halvane/model/client.h"
#include "halvane/model/daemon_log_controls.h"
#include "halvane/model/daemon_status.h"
#include "halvane/model/device.h"
#include "halvane/model/interface.h"
#include "halvane/model/station_change.h"
#include "halvane/regulatory/channel.h"
#include "halvane/service/backend.h"
#include "halvane/service/backend_reply.h"
#include "halvane/service/log_settings.h"

namespace halvane::testing {

inline StationChange joined(std::uint8_t number, const char* interface = "wlan0") {
    return {StationChange::Kind::Joined, MacAddress({2, 0, 0, 0, 0, number}), interface};
}

class ScriptedBackend final : public Backend {
  public:
    // What was asked: "enable wlan0".
    std::vector<std::string> calls;

    // Takes the reply to an action. By default each succeeds at once.
    std::function<void(BackendReply<void>)> onAction = [](BackendReply<void> reply) { reply({}); };

    // Keeps the replies to actions instead.
    void keepReplies() {
        onAction = [this](BackendReply<void> reply) { kept.push_back(std::move(reply)); };
    }
    std::vector<BackendReply<void>> kept;

    // The content of lists.
    std::vector<HalvaneDevice> deviceList;
    std::vector<HalvaneInterface> interfaceList;

    using Backend::tell;

    void devices(BackendReply<std::vector<HalvaneDevice>> reply) override {
        calls.emplace_back("devices");
        reply(deviceList);
    }
    void interfaces(BackendReply<std::vector<HalvaneInterface>> reply) override {
        calls.emplace_back("interfaces");
        reply(interfaceList);
    }
    void channels(std::string_view interface,
                  BackendReply<std::vector<HalvaneChannel>> reply) override {
        note("channels", interface);
        reply(std::vector<HalvaneChannel>());
    }
    void configurations(std::optional<std::string_view> interface,
                        BackendReply<std::vector<HalvaneBSSConfig>> reply) override {
        note("configurations", interface.value_or("of all"));
        reply(std::vector<HalvaneBSSConfig>());
    }
    void stations(BackendReply<std::vector<HalvaneClient>> reply) override {
        calls.emplace_back("stations");
        reply(Unexpected(static_cast<DaemonStatus>(kFirstOwnStatus)));
    }
    void add(std::string_view interface, const HalvaneBSSConfig& configuration,
             BackendReply<void> reply) override {
        note("add", interface, nameOf(configuration));
        onAction(std::move(reply));
    }
    void remove(std::string_view interface, const HalvaneBSSConfig& configuration,
                BackendReply<void> reply) override {
        note("remove", interface, nameOf(configuration));
        onAction(std::move(reply));
    }
    void enable(std::string_view interface, BackendReply<void> reply) override {
        note("enable", interface);
        onAction(std::move(reply));
    }
    void disable(std::string_view interface, BackendReply<void> reply) override {
        note("disable", interface);
        onAction(std::move(reply));
    }
    void changeRole(std::string_view interface, std::string_view role,
                    BackendReply<void> reply) override {
        note("role", interface, role);
        onAction(std::move(reply));
    }
    void start(std::string_view interface, BackendReply<void> reply) override {
        note("start", interface);
        onAction(std::move(reply));
    }
    void stop(std::string_view interface, BackendReply<void> reply) override {
        note("stop", interface);
        onAction(std::move(reply));
    }
    void kick(std::string_view interface, const MacAddress& station,
              BackendReply<void> reply) override {
        note("kick", interface, station.text());
        onAction(std::move(reply));
    }

  private:
    static std::string nameOf(const HalvaneBSSConfig& configuration) {
        if (!configuration.ssid()) return "";
        const auto bytes = configuration.ssid()->bytes();
        return {bytes.begin(), bytes.end()};
    }

    void note(std::string_view what, std::string_view first, std::string_view second = {}) {
        std::string call = std::string(what) + ' ' + std::string(first);
        if (!second.empty()) call += ' ' + std::string(second);
        calls.push_back(std::move(call));
    }
};

class ScriptedLogSettings final : public LogSettings {
  public:
    DaemonLogControls applied;
    DaemonStatus status = DaemonStatus::Done;
    std::string settings = "all is logged\n";

    DaemonStatus apply(const DaemonLogControls& controls) override {
        applied = controls;
        return status;
    }
    std::string text() const override { return settings; }
};

}  // namespace halvane::testing

#endif
