// Requests of the daemon, beside a bare sd-bus service that sends the same bytes. The same client
// asks both, on a bus of the same kind.
#include <benchmark/benchmark.h>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <sys/types.h>
#include <systemd/sd-bus.h>
#include <vector>

#include "halvane/base/ssid.h"
#include "halvane/model/bss_config.h"
#include "halvane/model/daemon_service.h"
#include "halvane/platform/plist/xml_property_list.h"

#include "bench/bus_bytes.h"
#include "tests/support/private_bus.h"
#include "tests/support/spawn_program.h"
#include "tests/support/spawned_process.h"
#include "tests/support/temporary_folder.h"

namespace {

using namespace halvane;
using namespace halvane::bench;

std::string configuration() {
    auto network = HalvaneBSSConfig::init();
    network.setSSID(Ssid::fromText("Garden").value());
    expect(network.setSecurityWithOptionString_error("WPA2") &&
           network.setUnicastCipherWithOptionString_error("CCMP") &&
           network.setMulticastCipherWithOptionString_error("CCMP") &&
           network.setKeyManagementWithOptionString_error("802.1X"));
    return *xmlPropertyList(network.skeletonRepresentation());
}

// halvaned at the loopback interface, with a bus of its own.
class Stage {
  public:
    Stage() {
        std::ofstream(path("users")) << "* MD5 \"x\"\n";
        std::filesystem::create_directory(path("run"));
        std::filesystem::permissions(path("run"), std::filesystem::perms::owner_all);
        std::ofstream(path("conf"))
            << "driver = wired\ninterfaces = lo\nhostapd = " << HALVANE_FAKE_HOSTAPD
            << "\nruntime-folder = " << path("run") << "\nstate-file = " << path("state")
            << "\neap-user-file = " << path("users") << '\n';
        process_.emplace(
            std::vector<std::string>{HALVANE_DAEMON, "--config=" + path("conf"), "--foreground"},
            testing::StandardStreams{.errors = std::filesystem::path("/dev/null")});
        bus_ = openBus();
        while (::sd_bus_get_name_creds(bus_.get(), kDaemonServiceName, 0, nullptr) < 0) {
        }
    }

    // Hosts so many stations.
    void host(int stations) const {
        std::ofstream(path("run/play")) << "serve\nhas " << stations << '\n';
        request("configAdd");
        request("bssStart");
    }

    sd_bus* bus() const { return bus_.get(); }

    // The most memory that it has had, in KiB.
    double peakMemory() const {
        std::ifstream file("/proc/" + std::to_string(process_->number()) + "/status");
        for (std::string line; std::getline(file, line);) {
            if (line.starts_with("VmHWM:")) return std::stod(line.substr(6));
        }
        return 0;
    }

  private:
    std::string path(const std::string& name) const { return folder_.path() / name; }

    void request(const char* command) const {
        const std::string network = configuration();
        sd_bus_message* request = nullptr;
        check(::sd_bus_message_new_method_call(bus(), &request, kDaemonServiceName, kPath,
                                               kDaemonServiceName, "Request"));
        const Message owner(request);
        check(::sd_bus_message_open_container(request, 'a', "{sv}"));
        check(::sd_bus_message_append(request, "{sv}{sv}", "command", "s", command, "interface",
                                      "s", "lo"));
        check(::sd_bus_message_open_container(request, 'e', "sv"));
        check(::sd_bus_message_append(request, "s", "bssconfig"));
        check(::sd_bus_message_open_container(request, 'v', "ay"));
        check(::sd_bus_message_append_array(request, 'y', network.data(), network.size()));
        check(::sd_bus_message_close_container(request));
        check(::sd_bus_message_close_container(request));
        check(::sd_bus_message_close_container(request));
        sd_bus_message* reply = nullptr;
        check(::sd_bus_call(bus(), request, UINT64_MAX, nullptr, &reply));
        const Message replyOwner(reply);
        std::int64_t status = -1;
        check(::sd_bus_message_read(reply, "a{sv}", 1, nullptr, "x", &status));
        expect(status == 0);
    }

    testing::TemporaryFolder folder_;
    testing::PrivateBus system_;
    Bus bus_;
    std::optional<testing::SpawnedProcess> process_;
};

int answer(sd_bus_message* request, void* bytes, sd_bus_error*) {
    sd_bus_message* reply = nullptr;
    check(::sd_bus_message_new_method_return(request, &reply));
    const Message owner(reply);
    append(reply, *static_cast<const ReplyBytes*>(bytes));
    check(::sd_bus_send(::sd_bus_message_get_bus(request), reply, nullptr));
    return 1;
}

void requestHalvaned(benchmark::State& state, const char* command) {
    const Stage stage;
    const auto stations = static_cast<int>(state.range(0));
    if (stations > 0) stage.host(stations);
    const std::size_t size = requestBytes(stage.bus(), command).bytes.size();
    for (auto _ : state) benchmark::DoNotOptimize(requestBytes(stage.bus(), command));
    state.counters["bytes"] = static_cast<double>(size);
    state.counters["KiB"] = stage.peakMemory();
    state.SetItemsProcessed(state.iterations());
}

void requestBare(benchmark::State& state, const char* command) {
    ReplyBytes bytes;
    {
        const Stage stage;
        const auto stations = static_cast<int>(state.range(0));
        if (stations > 0) stage.host(stations);
        bytes = requestBytes(stage.bus(), command);
    }
    const testing::PrivateBus system;
    const BytesService service(answer, &bytes);
    const Bus bus = openBus();
    expect(requestBytes(bus.get(), command).bytes == bytes.bytes);
    for (auto _ : state) benchmark::DoNotOptimize(requestBytes(bus.get(), command));
    state.counters["bytes"] = static_cast<double>(bytes.bytes.size());
    state.SetItemsProcessed(state.iterations());
}

// The argument is the number of stations.
BENCHMARK_CAPTURE(requestBare, interfaces, "queryInterfaceList")->Arg(0)->UseRealTime();
BENCHMARK_CAPTURE(requestHalvaned, interfaces, "queryInterfaceList")->Arg(0)->UseRealTime();
BENCHMARK_CAPTURE(requestBare, logging, "queryLogging")->Arg(0)->UseRealTime();
BENCHMARK_CAPTURE(requestHalvaned, logging, "queryLogging")->Arg(0)->UseRealTime();
BENCHMARK_CAPTURE(requestBare, clients, "clientList")->Arg(1)->Arg(2000)->UseRealTime();
BENCHMARK_CAPTURE(requestHalvaned, clients, "clientList")->Arg(1)->Arg(2000)->UseRealTime();

}  // namespace

BENCHMARK_MAIN();
