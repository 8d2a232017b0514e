// Notifications of the daemon, up to the call of the delegate.
#include <cstddef>
#include <memory>
#include <string>
#include <utility>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/status.h"
#include "halvane/daemon/xpc_client.h"
#include "halvane/daemon/xpc_client_delegate.h"
#include "halvane/model/daemon_service.h"
#include "halvane/platform/bus/ipc_message.h"
#include "halvane/utils/log.h"

#include "bench/foreign_bytes.h"
#include "bench/growth.h"

using halvane::ByteBuffer;
using halvane::HalvaneXPCClient;
using halvane::HalvaneXPCClientDelegate;
using halvane::IPCMessage;

namespace bench {

namespace {

IPCMessage joined(std::string interface, ByteBuffer mac) {
    IPCMessage message;
    message.entries().set("command", HALVANE_DAEMON_SERVICE_NAME ".status.client.joined");
    message.entries().set("BSDName", std::move(interface));
    message.entries().set("MAC", std::move(mac));
    return message;
}

// A client without a bus, whose delegate counts.
class Listener {
  public:
    Listener() : client_(HalvaneXPCClient::init()) {
        auto delegate = std::make_shared<HalvaneXPCClientDelegate>();
        delegate->clientJoined_forInterface = [count = count_](const auto&, const auto&) {
            ++*count;
        };
        client_->setDelegate(delegate);
        // Each is logged too.
        LogIsEnabled(&gLogCategory_WiFiXPC, kLogLevelError);
        requireRow("notifications", LogControl("^WiFiXPC$:level=error,^WiFiXPC$:output=file;"
                                               "path=/dev/null") == kStatusOK);
    }

    bool hears(const IPCMessage& message) {
        const std::size_t before = *count_;
        client_->handleNewXPCDictionary(message);
        return *count_ == before + 1;
    }

  private:
    std::shared_ptr<std::size_t> count_ = std::make_shared<std::size_t>(0);
    std::unique_ptr<HalvaneXPCClient> client_;
};

void addNotification(const char* row, IPCMessage (*make)(std::size_t)) {
    const auto listener = std::make_shared<Listener>();
    addGrowth(row, 65536, make,
              [listener](const IPCMessage& message) { return listener->hears(message); });
}

}  // namespace

void addNotificationRows() {
    addNotification("notification: a long name", [](std::size_t n) {
        return joined(std::string(n, 'w'), {2, 0, 0, 0, 0, 1});
    });
    addNotification("notification: a long address",
                    [](std::size_t n) { return joined("wlan0", ByteBuffer(Bytes(n))); });
    addNotification("notification: many keys", [](std::size_t n) {
        IPCMessage message = joined("wlan0", {2, 0, 0, 0, 0, 1});
        for (std::size_t i = 0; i < n; ++i) message.entries().set(std::to_string(i), true);
        return message;
    });
    addGrowth(
        "notifications, one after the other", 4096, [](std::size_t n) { return n; },
        [listener = std::make_shared<Listener>()](std::size_t n) {
            for (std::size_t i = 0; i < n; ++i) {
                if (!listener->hears(joined("wlan0", {2, 0, 0, 0, 0, 1}))) return false;
            }
            return true;
        });
}

}  // namespace bench
