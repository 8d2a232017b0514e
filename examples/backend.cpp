// A Wi-Fi daemon with one interface and no radio: its networks have one station, which joins as
// soon as they start. docs/daemon.md explains it.
#include "halvane/service/backend.h"

#include <cstdio>
#include <string>
#include <string_view>
#include <systemd/sd-event.h>
#include <vector>

#include "halvane/base/mac_address.h"
#include "halvane/model/interface_builder.h"
#include "halvane/service/daemon_server.h"
#include "halvane/service/log_settings.h"

using namespace halvane;

namespace {

constexpr std::string_view kInterface = "wlan0";
constexpr MacAddress kAddress({0x02, 0, 0, 0, 0, 0x01});
constexpr MacAddress kStation({0x02, 0, 0, 0, 0, 0x02});

class OneInterface : public Backend {
  public:
    void devices(BackendReply<std::vector<HalvaneDevice>> reply) override {
        reply(std::vector{device_});
    }
    void interfaces(BackendReply<std::vector<HalvaneInterface>> reply) override {
        reply(std::vector{InterfaceBuilder(std::string(kInterface), "AP", "none")
                              .address(kAddress)
                              .device(device_)
                              .build()});
    }
    void channels(std::string_view, BackendReply<std::vector<HalvaneChannel>> reply) override {
        reply(std::vector<HalvaneChannel>());
    }
    void configurations(std::optional<std::string_view>,
                        BackendReply<std::vector<HalvaneBSSConfig>> reply) override {
        reply(configurations_);
    }
    void stations(BackendReply<std::vector<HalvaneClient>> reply) override {
        reply(std::vector<HalvaneClient>());
    }

    void add(std::string_view interface, const HalvaneBSSConfig& configuration,
             BackendReply<void> reply) override {
        if (interface != kInterface) return reply(Unexpected(DaemonStatus::UnknownInterface));
        configurations_ = {configuration};
        reply({});
    }
    void remove(std::string_view interface, const HalvaneBSSConfig&,
                BackendReply<void> reply) override {
        if (interface != kInterface) return reply(Unexpected(DaemonStatus::UnknownInterface));
        configurations_.clear();
        reply({});
    }
    void enable(std::string_view, BackendReply<void> reply) override { reply({}); }
    void disable(std::string_view, BackendReply<void> reply) override { reply({}); }
    void changeRole(std::string_view, std::string_view, BackendReply<void> reply) override {
        reply(Unexpected(DaemonStatus::BadRequest));
    }

    void start(std::string_view interface, BackendReply<void> reply) override {
        if (interface != kInterface) return reply(Unexpected(DaemonStatus::UnknownInterface));
        if (configurations_.empty()) return reply(Unexpected(DaemonStatus::NothingToStart));
        reply({});
        tell({StationChange::Kind::Joined, kStation, std::string(interface)});
    }
    void stop(std::string_view interface, BackendReply<void> reply) override {
        reply({});
        tell({StationChange::Kind::Left, kStation, std::string(interface)});
    }

  private:
    const HalvaneDevice device_ = HalvaneDevice::initWithMACAddress_withIndex(kAddress.buffer(), 0);
    std::vector<HalvaneBSSConfig> configurations_;
};

class NoLogging : public LogSettings {
  public:
    DaemonStatus apply(const DaemonLogControls&) override { return DaemonStatus::BadRequest; }
    std::string text() const override { return "nothing is logged\n"; }
};

}  // namespace

int main() {
    sd_event* loop = nullptr;
    if (sd_event_default(&loop) < 0) return 1;

    OneInterface backend;
    NoLogging logging;
    int status = 0;
    {
        DaemonServer server(loop, {backend, logging},
                            {.onLoss = [loop] { sd_event_exit(loop, 1); }});
        if (const auto started = server.start(); !started) {
            std::fprintf(stderr, "%s\n", started.error().c_str());
            status = 1;
        } else {
            status = sd_event_loop(loop);
        }
    }
    sd_event_unref(loop);
    return status;
}
