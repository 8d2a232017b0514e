// The Wi-Fi daemon's interfaces, and the first station that is authorized. To try it without a
// daemon: halvaned-sim --private -- example_daemon
#include <chrono>
#include <cstdio>
#include <future>
#include <string>

#include "halvane/daemon/daemon_client.h"
#include "halvane/daemon/daemon_events.h"
#include "halvane/daemon/daemon_result.h"
#include "halvane/model/interface.h"

using namespace halvane;
using namespace std::chrono_literals;

namespace {

int fail(const DaemonError& error) {
    std::fprintf(stderr, "%s\n", error.text());
    return 1;
}

}  // namespace

int main() {
    std::promise<void> authorized;  // outlives the client, whose events use it
    bool isFirst = true;
    DaemonClient daemon({.station = [&](const StationChange& change) {
        std::printf("%s %s on %s\n", change.address.text().c_str(), nameOf(change.kind),
                    change.interface.c_str());
        // Events come one at a time.
        if (change.kind != StationChange::Kind::Authorized || !isFirst) return;
        isFirst = false;
        authorized.set_value();
    }});

    const auto interfaces = daemon.interfaces(5s);
    if (!interfaces) return fail(interfaces.error());
    for (const HalvaneInterface& interface : *interfaces) {
        std::printf("%s is in the role %s\n", interface.ifName()->c_str(),
                    interface.ifRole()->c_str());
    }
    if (interfaces->empty()) return 1;

    if (const auto done = daemon.subscribe(true, 5s); !done) return fail(done.error());
    if (const auto done = daemon.start(*(*interfaces)[0].ifName(), 5s); !done) {
        return fail(done.error());
    }
    authorized.get_future().wait();  // its stations join, if any are in range
}
