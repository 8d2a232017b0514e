// The daemon's radios: devices from the kernel, networks that hostapd hosts, and a state that
// survives restarts.
//
// docs/hosting.md tells what each request does. Threads: as for Backend.
#ifndef TOOLS_HALVANED_HOSTING_HOSTING_BACKEND_H
#define TOOLS_HALVANED_HOSTING_HOSTING_BACKEND_H

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <systemd/sd-event.h>
#include <utility>
#include <vector>

#include "halvane/base/mac_address.h"
#include "halvane/base/result.h"
#include "halvane/model/bss_config.h"
#include "halvane/model/client.h"
#include "halvane/model/daemon_status.h"
#include "halvane/model/device.h"
#include "halvane/model/interface.h"
#include "halvane/regulatory/channel.h"
#include "halvane/service/backend.h"

#include "tools/halvaned/hostapd/host.h"
#include "tools/halvaned/hosting/networks.h"
#include "tools/halvaned/hosting/retries.h"
#include "tools/halvaned/hosting/saved_state.h"
#include "tools/halvaned/radio/device_list.h"
#include "tools/halvaned/radio/device_source.h"
#include "tools/halvaned/settings/settings.h"
#include "tools/halvaned/state/daemon_state.h"

namespace halvane::hosting {

class HostingBackend final : public Backend {
  public:
    // The loop and the source outlive the backend. Times and folders of `host` are those of hostapd
    // in production, and others in tests.
    HostingBackend(sd_event* loop, DeviceSource& source, Settings settings,
                   const HostSettings& host);

    // Reads the state and the devices. From then on requests are served. Returns why the daemon
    // cannot run.
    Result<void, std::string> load();

    // Starts networks from now on, those first that clients had started before.
    void open() { networks_.open(); }

    // Settings that count from the next start of a network on.
    void setSettings(Settings settings) { settings_ = std::move(settings); }

    // Something has come at source.descriptor().
    void updateDevices();

    // Ends all networks; a daemon that starts again starts them again.
    void end(const std::function<void()>& done) { networks_.stopAll(done); }

    // Kills what still runs. Nothing is asked of the backend after that.
    void kill() { networks_.killAll(); }

    void devices(BackendReply<std::vector<HalvaneDevice>> reply) override;
    void interfaces(BackendReply<std::vector<HalvaneInterface>> reply) override;
    void channels(std::string_view interface,
                  BackendReply<std::vector<HalvaneChannel>> reply) override;
    void configurations(std::optional<std::string_view> interface,
                        BackendReply<std::vector<HalvaneBSSConfig>> reply) override;
    void stations(BackendReply<std::vector<HalvaneClient>> reply) override;
    void add(std::string_view interface, const HalvaneBSSConfig& configuration,
             BackendReply<void> reply) override;
    void remove(std::string_view interface, const HalvaneBSSConfig& configuration,
                BackendReply<void> reply) override;
    void enable(std::string_view interface, BackendReply<void> reply) override;
    void disable(std::string_view interface, BackendReply<void> reply) override;
    void changeRole(std::string_view interface, std::string_view role,
                    BackendReply<void> reply) override;
    void start(std::string_view interface, BackendReply<void> reply) override;
    void stop(std::string_view interface, BackendReply<void> reply) override;
    void kick(std::string_view interface, const MacAddress& station,
              BackendReply<void> reply) override;

  private:
    const DeviceInterface* find(std::string_view interface) const;
    void take(const DeviceUpdate& update);
    void resume(const std::string& interface);
    void resumed(const std::string& interface, const Result<void, HostError>& result);
    DaemonStatus bringUp(const DeviceInterface& interface, Host::Done done);
    void started(const std::string& interface, const Result<void, HostError>& result,
                 BackendReply<void>& reply);
    // Saves the state, stops the networks of the interface, and replies.
    void saveAndStop(const std::string& interface, InterfaceState state, BackendReply<void> reply);
    void saveAndReply(const std::string& interface, InterfaceState state, BackendReply<void> reply);

    DeviceSource& source_;
    Settings settings_;
    SavedState saved_;
    Networks networks_;
    Retries retries_;
};

}  // namespace halvane::hosting

#endif
