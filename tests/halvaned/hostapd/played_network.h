// hostapd's answers for one network, whose stations are in the order of their addresses.
#ifndef TESTS_HALVANED_HOSTAPD_PLAYED_NETWORK_H
#define TESTS_HALVANED_HOSTAPD_PLAYED_NETWORK_H

#include <cstdio>
#include <functional>
#include <iterator>
#include <map>
#include <optional>
#include <string>
#include <systemd/sd-event.h>

#include "tests/halvaned/hostapd/played_server.h"

namespace halvane::testing {

// "02:00:00:00:00:00" for 0, and so on.
inline std::string addressText(int number) {
    char text[32];
    std::snprintf(text, sizeof(text), "02:00:00:00:%02x:%02x", number >> 8 & 0xFF, number & 0xFF);
    return text;
}

class PlayedNetwork {
  public:
    PlayedNetwork(sd_event* loop, const std::string& path)
        : server_(loop, path, [this](const std::string& request) { return reply(request); }) {}

    PlayedServer& server() { return server_; }

    std::string state = "ENABLED";
    std::map<std::string, std::string> flags;                   // of stations
    std::map<std::string, std::optional<std::string>> replies;  // other than the usual ones
    std::function<void(const std::string& verb)> heard;         // before each reply

  private:
    std::optional<std::string> reply(const std::string& request) {
        const std::string verb = request.substr(0, request.find(' '));
        if (heard) heard(verb);
        if (const auto other = replies.find(verb); other != replies.end()) return other->second;
        if (verb == "ATTACH") return "OK\n";
        if (verb == "PING") return "PONG\n";
        if (verb == "STATUS") return "state=" + state + "\nphy=\n";
        if (verb == "STA-FIRST") return record(flags.begin());
        if (verb.size() == request.size()) return "UNKNOWN COMMAND\n";
        const std::string address = request.substr(verb.size() + 1);
        if (verb == "STA") return record(flags.find(address));
        if (verb == "STA-NEXT") {
            const auto found = flags.find(address);
            return found == flags.end() ? "FAIL\n" : record(std::next(found));
        }
        if (verb == "DEAUTHENTICATE") {
            if (flags.erase(address) > 0) server_.send("<3>AP-STA-DISCONNECTED " + address);
            return "OK\n";
        }
        return "UNKNOWN COMMAND\n";
    }

    std::string record(std::map<std::string, std::string>::const_iterator station) const {
        if (station == flags.end()) return "";
        return station->first + "\nflags=" + station->second + "\naid=1\nsignal=-40\n";
    }

    PlayedServer server_;
};

}  // namespace halvane::testing

#endif
