// A request of the daemon's client, and its notifications, beside a bare sd-bus client. Both ask
// the same service on the same bus for the same bytes.
#include <benchmark/benchmark.h>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <sys/resource.h>
#include <systemd/sd-bus.h>
#include <utility>
#include <vector>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/property_list_value.h"
#include "halvane/daemon/daemon_client.h"
#include "halvane/daemon/daemon_result.h"
#include "halvane/daemon/xpc_client.h"
#include "halvane/daemon/xpc_client_delegate.h"
#include "halvane/model/daemon_service.h"
#include "halvane/model/device.h"
#include "halvane/model/interface.h"
#include "halvane/platform/bus/ipc_message.h"
#include "halvane/platform/bus/service_event.h"
#include "halvane/platform/os/counting_semaphore.h"
#include "halvane/platform/plist/xml_property_list.h"
#include "halvane/regulatory/channel.h"
#include "halvane/utils/log.h"

#include "bench/bus_bytes.h"
#include "tests/support/private_bus.h"

namespace {

using namespace halvane;
using namespace halvane::bench;

constexpr unsigned kBurst = 10000;
constexpr unsigned kInFlight = 1000;

// --- The service, a process of its own ---

// `count` interfaces with the 13 channels of 2.4 GHz, as XML.
std::string interfaceList(unsigned count) {
    PropertyListArray interfaces;
    for (unsigned i = 0; i < count; ++i) {
        auto interface = HalvaneInterface::initWithDevice_withMAC_withBSDName(
            std::make_shared<HalvaneDevice>(HalvaneDevice::initWithMACAddress_withIndex(
                ByteBuffer{0x02, 0x1A, 0x2B, 0x3C, 0x4D, 0x5E}, i)),
            ByteBuffer{0x02, 0x1A, 0x2B, 0x3C, 0x4D, 0x5E}, "wlan" + std::to_string(i));
        for (int channel = 1; channel <= 13; ++channel) {
            interface.availableChannels().push_back(
                HalvaneChannel::initWithChannel_withFrequency_isRadarProne(
                    channel, 2407 + 5 * channel, false));
        }
        auto skeleton = interface.skeletonRepresentation();
        skeleton.set("Role", "AP");
        skeleton.set("Subsystem", "nl80211");
        interfaces.emplace_back(std::move(skeleton));
    }
    return *xmlPropertyList(interfaces);
}

void sendNotification(sd_bus* bus, const char* destination) {
    sd_bus_message* signal = nullptr;
    check(::sd_bus_message_new_signal(bus, &signal, kPath, kDaemonServiceName, "Event"));
    const Message owner(signal);
    check(::sd_bus_message_set_destination(signal, destination));
    check(::sd_bus_message_append(signal, "a{sv}", 3, "command", "s",
                                  HALVANE_DAEMON_SERVICE_NAME ".status.client.joined", "BSDName",
                                  "s", "wlan0", "MAC", "ay", 6, 2, 0, 0, 0, 1, 42));
    check(::sd_bus_send(bus, signal, nullptr));
}

// "bssStart" causes a burst of notifications before its reply. The reply to "enable" is the status
// alone, to everything else the list.
int answer(sd_bus_message* request, void* list, sd_bus_error*) {
    const char *key = nullptr, *command = nullptr;
    check(::sd_bus_message_enter_container(request, 'a', "{sv}"));
    check(::sd_bus_message_enter_container(request, 'e', "sv"));
    check(::sd_bus_message_read(request, "sv", &key, "s", &command));
    sd_bus* bus = ::sd_bus_message_get_bus(request);
    if (std::string_view(command) == "bssStart") {
        for (unsigned i = 0; i < kBurst; ++i) {
            sendNotification(bus, ::sd_bus_message_get_sender(request));
        }
    }
    sd_bus_message* reply = nullptr;
    check(::sd_bus_message_new_method_return(request, &reply));
    const Message owner(reply);
    if (std::string_view(command) == "enable") {
        check(::sd_bus_message_append(reply, "a{sv}", 1, "status", "x", std::int64_t{0}));
    } else {
        append(reply, {"interfaces", *static_cast<const std::string*>(list)});
    }
    check(::sd_bus_send(bus, reply, nullptr));
    return 1;
}

// A bus and a service on it that lists `interfaces` interfaces.
class Stage {
  public:
    explicit Stage(unsigned interfaces) : list_(interfaceList(interfaces)) {
        gLogCategory_WiFiXPC.level = kLogLevelOff;
        service_.emplace(answer, &list_);
    }

  private:
    testing::PrivateBus bus_{{.limits = {{"max_replies_per_connection", kInFlight}}}};
    std::string list_;
    std::optional<BytesService> service_;
};

// --- The bare client ---

// Sends a request, and gets the bytes of the list from the reply.
std::size_t bareRequest(sd_bus* bus, const char* command) {
    const Message owner = requestMessage(bus, command);
    sd_bus_message* reply = owner.get();
    const char* key = nullptr;
    std::int64_t status = -1;
    const void* bytes = nullptr;
    std::size_t size = 0;
    check(::sd_bus_message_enter_container(reply, 'a', "{sv}"));
    check(::sd_bus_message_read(reply, "{sv}", &key, "x", &status));
    check(::sd_bus_message_enter_container(reply, 'e', "sv"));
    check(::sd_bus_message_read(reply, "s", &key));
    check(::sd_bus_message_enter_container(reply, 'v', "ay"));
    check(::sd_bus_message_read_array(reply, 'y', &bytes, &size));
    expect(status == 0);
    return size;
}

// What all threads of this process have used for each of `items` items of an iteration:
// microseconds of processor time, and how often they were switched. The service and the bus are
// processes of their own.
class Usage {
  public:
    explicit Usage(benchmark::State& state, unsigned items = 1) : state_(state), items_(items) {}
    Usage(const Usage&) = delete;
    Usage& operator=(const Usage&) = delete;
    ~Usage() {
        const rusage now = used();
        const auto perItem = [this](long count) {
            return benchmark::Counter(static_cast<double>(count) / items_,
                                      benchmark::Counter::kAvgIterations);
        };
        state_.counters["cpu_us"] = perItem(microseconds(now) - microseconds(before_));
        state_.counters["switches"] = perItem(switches(now) - switches(before_));
    }

  private:
    static rusage used() {
        rusage usage{};
        check(::getrusage(RUSAGE_SELF, &usage));
        return usage;
    }
    static long microseconds(const rusage& usage) {
        return (usage.ru_utime.tv_sec + usage.ru_stime.tv_sec) * 1000000 + usage.ru_utime.tv_usec +
               usage.ru_stime.tv_usec;
    }
    static long switches(const rusage& usage) { return usage.ru_nvcsw + usage.ru_nivcsw; }

    benchmark::State& state_;
    const unsigned items_;
    const rusage before_ = used();
};

void requestBare(benchmark::State& state) {
    const auto count = static_cast<unsigned>(state.range(0));
    const Stage stage(count);
    const Bus bus = openBus();
    const std::size_t size = interfaceList(count).size();
    const Usage usage(state);
    for (auto _ : state) expect(bareRequest(bus.get(), "queryInterfaceList") == size);
    state.counters["bytes"] = static_cast<double>(size);
}

void requestHalvane(benchmark::State& state) {
    const auto count = static_cast<unsigned>(state.range(0));
    const Stage stage(count);
    const auto client = HalvaneXPCClient::init();
    expect(client->queryInterfaceList().size() == count);
    const Usage usage(state);
    for (auto _ : state) expect(client->queryInterfaceList().size() == count);
}

// The same bytes, ignored: the cost of the way through the client's threads.
void requestHalvaneUnread(benchmark::State& state) {
    const Stage stage(static_cast<unsigned>(state.range(0)));
    const auto client = HalvaneXPCClient::init();
    benchmark::DoNotOptimize(client->queryLogging());
    const Usage usage(state);
    for (auto _ : state) benchmark::DoNotOptimize(client->queryLogging());
}

// The client's own work: reading the list in the reply.
void parseHalvane(benchmark::State& state) {
    const auto count = static_cast<unsigned>(state.range(0));
    PropertyListDictionary entries;
    entries.set("status", 0);
    entries.set("interfaces", ByteBuffer::fromText(interfaceList(count)));
    const ServiceReply reply = IPCMessage(std::move(entries));
    for (auto _ : state) {
        expect(HalvaneXPCClient::queryInterfaceListResponse_error(reply).size() == count);
    }
}

// --- Many requests in flight ---

int countReply(sd_bus_message* reply, void* count, sd_bus_error*) {
    const char* key = nullptr;
    std::int64_t status = -1;
    check(::sd_bus_message_enter_container(reply, 'a', "{sv}"));
    check(::sd_bus_message_read(reply, "{sv}", &key, "x", &status));
    expect(status == 0);
    ++*static_cast<unsigned*>(count);
    return 1;
}

void sendRequest(sd_bus* bus, unsigned& replies) {
    sd_bus_message* request = nullptr;
    check(::sd_bus_message_new_method_call(bus, &request, kDaemonServiceName, kPath,
                                           kDaemonServiceName, "Request"));
    const Message owner(request);
    check(::sd_bus_message_append(request, "a{sv}", 2, "command", "s", "enable", "interface", "s",
                                  "wlan0"));
    check(::sd_bus_call_async(bus, nullptr, request, countReply, &replies, UINT64_MAX));
}

// Handles what arrives until `count` is `most`.
void processUntil(sd_bus* bus, const unsigned& count, unsigned most) {
    while (count < most) {
        const int status = ::sd_bus_process(bus, nullptr);
        check(status);
        if (status == 0) check(::sd_bus_wait(bus, UINT64_MAX));
    }
}

void inFlightBare(benchmark::State& state) {
    const Stage stage(1);
    const Bus bus = openBus();
    const Usage usage(state, kInFlight);
    for (auto _ : state) {
        unsigned replies = 0;
        for (unsigned i = 0; i < kInFlight; ++i) sendRequest(bus.get(), replies);
        processUntil(bus.get(), replies, kInFlight);
    }
    state.SetItemsProcessed(state.iterations() * kInFlight);
}

void inFlightHalvane(benchmark::State& state) {
    const Stage stage(1);
    DaemonClient client;
    expect(client.enable("wlan0").has_value());
    CountingSemaphore all(0);
    unsigned replies = 0;
    const auto count = [&](const DaemonResult<void>& done) {
        expect(done.has_value());
        if (++replies % kInFlight == 0) all.signal();
    };
    const Usage usage(state, kInFlight);
    for (auto _ : state) {
        for (unsigned i = 0; i < kInFlight; ++i) client.enable("wlan0", count);
        all.wait();
    }
    state.SetItemsProcessed(state.iterations() * kInFlight);
}

// --- Notifications ---

int countSignal(sd_bus_message* signal, void* count, sd_bus_error*) {
    const char *key = nullptr, *text = nullptr;
    check(::sd_bus_message_enter_container(signal, 'a', "{sv}"));
    for (int i = 0; i < 2; ++i) check(::sd_bus_message_read(signal, "{sv}", &key, "s", &text));
    ++*static_cast<unsigned*>(count);
    return 1;
}

void notificationsBare(benchmark::State& state) {
    const Stage stage(1);
    const Bus bus = openBus();
    unsigned count = 0;
    check(::sd_bus_match_signal(bus.get(), nullptr, kDaemonServiceName, kPath, kDaemonServiceName,
                                "Event", countSignal, &count));
    const Usage usage(state, kBurst);
    for (auto _ : state) {
        count = 0;
        bareRequest(bus.get(), "bssStart");
        processUntil(bus.get(), count, kBurst);
    }
    state.SetItemsProcessed(state.iterations() * kBurst);
}

void notificationsHalvane(benchmark::State& state) {
    const Stage stage(1);
    CountingSemaphore all(0);
    unsigned count = 0;
    auto delegate = std::make_shared<HalvaneXPCClientDelegate>();
    delegate->clientJoined_forInterface = [&](const ByteBuffer&, const std::string&) {
        if (++count % kBurst == 0) all.signal();
    };
    const auto client = HalvaneXPCClient::init();
    client->setDelegate(std::move(delegate));
    const Usage usage(state, kBurst);
    for (auto _ : state) {
        client->bssStart_error("wlan0");
        all.wait();
    }
    state.SetItemsProcessed(state.iterations() * kBurst);
}

BENCHMARK(requestBare)->Arg(1)->Arg(16)->UseRealTime();
BENCHMARK(requestHalvane)->Arg(1)->Arg(16)->UseRealTime();
BENCHMARK(requestHalvaneUnread)->Arg(1)->Arg(16)->UseRealTime();
BENCHMARK(parseHalvane)->Arg(1)->Arg(16);
BENCHMARK(inFlightBare)->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK(inFlightHalvane)->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK(notificationsBare)->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK(notificationsHalvane)->UseRealTime()->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
