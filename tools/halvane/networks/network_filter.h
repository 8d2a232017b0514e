// Which networks a user asks for.
//
// Conditions of one option are alternatives; those of distinct options hold together.
//
// Plain values. Threads: as for a standard container.
#ifndef TOOLS_HALVANE_NETWORKS_NETWORK_FILTER_H
#define TOOLS_HALVANE_NETWORKS_NETWORK_FILTER_H

#include <cstddef>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "halvane/base/mac_address.h"

#include "tools/halvane/survey/network.h"

namespace halvane::tool {

using NetworkCondition = std::function<bool(const Network& network)>;

class NetworkFilter {
  public:
    // What a condition asks about.
    enum class Subject { Address, All };

    // `option` is its name with the dashes, `typed` its value as typed; empty without one. All
    // conditions of one option have the same subject.
    void add(std::string_view option, std::string_view typed, NetworkCondition condition,
             Subject subject = Subject::All);

    bool isEmpty() const { return options_.empty(); }
    bool passes(const Network& network) const;

    // False if the address alone tells that the network does not pass.
    bool mayPass(const MacAddress& bssid) const;

    // How many networks each option alone lets through, in the order of their first use.
    struct Share {
        std::string typed{};  // "--ssid='KITRI*'", quoted for a shell
        std::size_t count = 0;
        std::string option{};               // "--ssid"
        std::vector<std::string> values{};  // as typed
    };
    std::vector<Share> sharesOf(std::span<const Network> networks) const;

  private:
    struct Option {
        std::string name;
        std::string typed;
        Subject subject;
        std::vector<NetworkCondition> conditions;
        std::vector<std::string> values;

        bool passes(const Network& network) const;
    };
    std::vector<Option> options_;
};

}  // namespace halvane::tool

#endif
