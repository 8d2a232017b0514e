// The Wi-Fi daemon's interfaces, and the first station that is authorized. To try it without a
// daemon: halvaned-sim --private -- example_daemon
#include <cstdio>
#include <future>
#include <memory>
#include <optional>
#include <string>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/error.h"
#include "halvane/daemon/xpc_client.h"
#include "halvane/daemon/xpc_client_delegate.h"
#include "halvane/ie/fancy_formatting.h"
#include "halvane/model/interface.h"
#include "halvane/utils/log.h"

int main() {
    using namespace halvane;

    gLogCategory_WiFiXPC.level = kLogLevelOff;  // else each notification is logged, too
    std::promise<void> authorized;              // outlives the client, whose delegate keeps it
    const auto client = HalvaneXPCClient::init();
    std::optional<Error> error;
    const auto interfaces = client->queryInterfaceList(&error);
    if (error || interfaces.empty()) {
        std::fputs("There is no daemon, or it has no interface.\n", stderr);
        return 1;
    }
    for (const HalvaneInterface& interface : interfaces) {
        std::printf("%s is in the role %s\n", interface.ifName()->c_str(),
                    interface.ifRole()->c_str());
    }

    auto delegate = std::make_shared<HalvaneXPCClientDelegate>();
    delegate->clientJoined_forInterface = [](const ByteBuffer& mac, const std::string& name) {
        std::printf("%s joined %s\n", FancyFormatting::formattedMAC(mac).c_str(), name.c_str());
    };
    delegate->clientAuthorized_forInterface = [&](const ByteBuffer& mac, const std::string& name) {
        static bool isFirst = true;  // calls come one at a time
        if (!isFirst) return;
        isFirst = false;
        std::printf("%s is authorized on %s\n", FancyFormatting::formattedMAC(mac).c_str(),
                    name.c_str());
        authorized.set_value();
    };
    client->setDelegate(delegate);
    client->setSubscribeAP(true);
    client->bssStart_error(*interfaces[0].ifName());  // its stations come, if any are in range
    authorized.get_future().wait();
}
