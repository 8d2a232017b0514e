// A client of the daemon on a bus whose messages come from the input: every request returns,
// whatever happens to its reply, and the client ends in order.
#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <sys/socket.h>
#include <sys/un.h>
#include <systemd/sd-bus.h>
#include <systemd/sd-id128.h>
#include <thread>
#include <unistd.h>
#include <utility>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/error.h"
#include "halvane/base/property_list_value.h"
#include "halvane/daemon/xpc_client.h"
#include "halvane/daemon/xpc_client_delegate.h"
#include "halvane/model/bss_config.h"
#include "halvane/model/daemon_service.h"
#include "halvane/platform/bus/ipc_message.h"
#include "halvane/platform/bus/message_check_internal.h"
#include "halvane/platform/bus/message_writer_internal.h"
#include "halvane/platform/bus/pointers_internal.h"

#include "fuzz/byte_source.h"
#include "fuzz/property_list_source.h"
#include "fuzz/require.h"

using namespace halvane;

namespace {

constexpr const char* kBus = "org.freedesktop.DBus";
constexpr const char* kOwner = ":1.5";

// The system bus for one client, on its own thread, until that client has gone.
class OtherEnd {
  public:
    explicit OtherEnd(fuzzing::ByteSource source) : source_(source) { listen(); }
    OtherEnd(const OtherEnd&) = delete;
    OtherEnd& operator=(const OtherEnd&) = delete;
    ~OtherEnd() {
        thread_.join();
        ::close(listener_);
    }

    // REQUIRES: a client has connected, or will.
    void run() {
        thread_ = std::thread([this] { serve(); });
    }

  private:
    void listen() {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        socklen_t size = sizeof(sa_family_t);  // the system chooses an abstract name
        REQUIRE(::bind(listener_, reinterpret_cast<const sockaddr*>(&address), size) == 0);
        REQUIRE(::listen(listener_, 1) == 0);
        size = sizeof(address);
        REQUIRE(::getsockname(listener_, reinterpret_cast<sockaddr*>(&address), &size) == 0);
        const std::string name(static_cast<const char*>(address.sun_path) + 1,
                               size - sizeof(sa_family_t) - 1);
        ::setenv("DBUS_SYSTEM_BUS_ADDRESS", ("unix:abstract=" + name).c_str(), 1);
    }

    void serve() {
        const int client = ::accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC);
        sd_bus* bus = nullptr;
        REQUIRE(::sd_bus_new(&bus) >= 0);
        bus_.reset(bus);
        REQUIRE(::sd_bus_set_fd(bus, client, client) >= 0);
        REQUIRE(::sd_bus_set_server(bus, 1, sd_id128_t{}) >= 0);
        REQUIRE(::sd_bus_add_filter(bus, nullptr, callArrived, this) >= 0);
        REQUIRE(::sd_bus_start(bus) >= 0);
        while (!isGone_) {
            const int status = ::sd_bus_process(bus, nullptr);
            if (status < 0) break;
            if (status == 0 && ::sd_bus_wait(bus, UINT64_MAX) < 0) break;
        }
        bus_.reset();
    }

    static int callArrived(sd_bus_message* message, void* end, sd_bus_error*) noexcept {
        static_cast<OtherEnd*>(end)->answer(message);
        return 1;
    }

    void answer(sd_bus_message* call) {
        const char* member = ::sd_bus_message_get_member(call);
        const std::string_view name = member != nullptr ? member : "";
        if (name == "Hello") {
            ::sd_bus_reply_method_return(call, "s", ":1.1");
        } else if (name == "Request") {
            answerRequest(call, source_.below(8));
        } else if (source_.below(16) == 15) {
            const sd_bus_error error = {"org.example.Error", "text", 0};
            ::sd_bus_reply_method_error(call, &error);
        } else if (name == "GetNameOwner") {
            ::sd_bus_reply_method_return(call, "s", kOwner);
        } else {
            ::sd_bus_reply_method_return(call, "");
        }
    }

    void answerRequest(sd_bus_message* call, std::size_t kind) {
        if (kind == 0) return leave();
        if (kind == 1) return answerError(call);
        if (kind == 2) return void(::sd_bus_reply_method_return(call, "s", "no dictionary"));
        if (kind == 3) changeOwner();
        if (kind >= 5) sendEvent();
        sd_bus_message* reply = nullptr;
        REQUIRE(::sd_bus_message_new_method_return(call, &reply) >= 0);
        send(reply, source_.flag() ? listFrom() : fuzzing::dictionaryFrom(source_, 2));
    }

    PropertyListDictionary listFrom() {
        static constexpr const char* kKeys[] = {"devices", "interfaces", "channels", "configs",
                                                "clients"};
        static constexpr std::string_view kList =
            "<plist version=\"1.0\"><array><dict><key>Index</key><integer>1</integer></dict>"
            "</array></plist>";
        PropertyListDictionary entries;
        for (const char* key : kKeys) entries.set(key, ByteBuffer::fromText(kList));
        entries.set("status", source_.below(2));
        entries.set("params", "WiFi: level=all");
        return entries;
    }

    void answerError(sd_bus_message* call) {
        static constexpr const char* kNames[] = {"org.freedesktop.DBus.Error.NoReply",
                                                 "org.freedesktop.DBus.Error.ServiceUnknown",
                                                 "org.example.Error"};
        const std::string text = source_.text(20);
        sd_bus_error error = {source_.oneOf(kNames), text.c_str(), 0};
        if (::sd_bus_reply_method_error(call, &error) >= 0) return;
        error.message = "text";  // the bytes of the input are no UTF-8
        if (::sd_bus_reply_method_error(call, &error) < 0) leave();
    }

    void changeOwner() {
        sd_bus_message* signal = newSignal("/org/freedesktop/DBus", kBus, "NameOwnerChanged");
        ::sd_bus_message_set_sender(signal, kBus);
        ::sd_bus_message_append(signal, "sss", kDaemonServiceName, kOwner,
                                source_.flag() ? ":1.6" : "");
        ::sd_bus_send(bus_.get(), signal, nullptr);
        ::sd_bus_message_unref(signal);
    }

    void sendEvent() {
        sd_bus_message* signal = newSignal("/org/halvane/halvaned", kDaemonServiceName, "Event");
        ::sd_bus_message_set_sender(signal, source_.flag() ? kOwner : ":1.9");
        PropertyListDictionary event = fuzzing::dictionaryFrom(source_, 1);
        if (source_.flag()) event.set("command", "org.halvane.halvaned.status.client.joined");
        send(signal, std::move(event));
    }

    sd_bus_message* newSignal(const char* path, const char* interface, const char* member) {
        sd_bus_message* signal = nullptr;
        REQUIRE(::sd_bus_message_new_signal(bus_.get(), &signal, path, interface, member) >= 0);
        return signal;
    }

    // Sends an empty dictionary instead of one that cannot be sent.
    void send(sd_bus_message* message, PropertyListDictionary entries) {
        const BusMessagePointer owner(message);
        IPCMessage body(std::move(entries));
        if (!checkBusMessage(body, 1048576).refusal.empty()) body = IPCMessage();
        REQUIRE(writeBusMessage(message, body) >= 0);
        if (::sd_bus_send(bus_.get(), message, nullptr) < 0) leave();
    }

    void leave() { isGone_ = true; }

    const int listener_ = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    fuzzing::ByteSource source_;
    bool isGone_ = false;
    BusPointer bus_;
    std::thread thread_;
};

void request(HalvaneXPCClient& client, fuzzing::ByteSource& source) {
    std::optional<Error> error;
    const std::string name = source.text(8);
    const auto config = HalvaneBSSConfig::init();
    switch (source.below(16)) {
        case 0:
            client.queryDeviceList(&error);
            break;
        case 1:
            client.queryInterfaceList(&error);
            break;
        case 2:
            client.queryChannelList_error(name, &error);
            break;
        case 3:
            client.queryBSSConfigList_error(name, &error);
            break;
        case 4:
            client.queryClientList_error(std::nullopt, &error);
            break;
        case 5:
            REQUIRE(client.bssConfigAdd_forInterface_error(config, name));
            break;
        case 6:
            REQUIRE(client.bssConfigRemove_forInterface_error(config, name));
            break;
        case 7:
            REQUIRE(client.enableInterface_error(name));
            break;
        case 8:
            REQUIRE(client.disableInterface_error(name));
            break;
        case 9:
            REQUIRE(client.changeInterfaceRole_role_error(name, name));
            break;
        case 10:
            REQUIRE(client.bssStart_error(name));
            break;
        case 11:
            REQUIRE(client.bssStop_error(name));
            break;
        case 12:
            client.setSubscribeAP(true);
            break;
        case 13:
            client.queryLogging(&error);
            break;
        case 14:
            client.setDelegate(std::make_shared<HalvaneXPCClientDelegate>());
            break;
        default:
            client.setLogging_inBPF_inEAPOL_inIE_inIO80211_inJoin_inScan_inWPS_inXPC_error(
                name, name, {}, {}, {}, name, {}, {}, name, &error);
    }
    REQUIRE(!error || error->domain == kDaemonErrorDomain);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzzing::ByteSource source(data, size);
    const auto requests = source.bytes(64);
    OtherEnd bus(source);
    const auto client = HalvaneXPCClient::init();
    bus.run();
    fuzzing::ByteSource choices(requests.data(), requests.size());
    for (int i = 0; i < 8 && !choices.empty(); ++i) request(*client, choices);
    return 0;
}
