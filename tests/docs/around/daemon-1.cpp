#include <string_view>
#include <vector>

#include "halvane/model/daemon_status.h"
#include "halvane/model/interface.h"
#include "halvane/service/backend_reply.h"

using namespace halvane;

const std::vector<HalvaneInterface> list;

// BLOCK
int main() {
    int count = 0;
    interfaces(BackendReply<std::vector<HalvaneInterface>>(
        [&](auto result) { count += result.has_value(); }));
    enable("wlan0", BackendReply<void>([&](auto result) { count += result.has_value(); }));
    start("wlan0", BackendReply<void>([&](auto result) { count += !result.has_value(); }));
    return count == 3 ? 0 : 1;
}
