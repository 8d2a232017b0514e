// The radios of the simulated daemon: a world instead of hardware. It replies at once, and tells
// the effects of a request afterwards.
#ifndef TOOLS_HALVANED_SIM_SIMULATED_BACKEND_H
#define TOOLS_HALVANED_SIM_SIMULATED_BACKEND_H

#include <optional>
#include <string_view>
#include <vector>

#include "halvane/base/mac_address.h"
#include "halvane/model/bss_config.h"
#include "halvane/model/client.h"
#include "halvane/model/daemon_status.h"
#include "halvane/model/device.h"
#include "halvane/model/interface.h"
#include "halvane/regulatory/channel.h"
#include "halvane/service/backend.h"

#include "tools/halvaned-sim/world.h"

namespace halvane::sim {

class SimulatedBackend final : public Backend {
  public:
    explicit SimulatedBackend(World& world) : world_(world) {}

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

    // Tells what has happened in the world since the last time.
    void tellAll();

  private:
    void finish(DaemonStatus status, BackendReply<void> reply);

    World& world_;
};

}  // namespace halvane::sim

#endif
