#include "tools/halvane/input/interface_facts.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <net/if.h>
#include <net/if_arp.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <unistd.h>

namespace halvane::tool {

namespace {

class Socket {
  public:
    // Any family serves for questions about interfaces, and every kernel has this one.
    Socket() : number_(::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0)) {}
    Socket(const Socket&) = delete;
    Socket& operator=(const Socket&) = delete;
    ~Socket() {
        if (number_ >= 0) ::close(number_);
    }

    bool ask(unsigned long question, ifreq& request) const {
        return number_ >= 0 && ::ioctl(number_, question, &request) == 0;
    }

  private:
    int number_;
};

// The kernel also finds an interface by its name, a colon and more.
bool isNameOf(unsigned index, const std::string& name) {
    std::array<char, IF_NAMESIZE> found{};
    return ::if_indextoname(index, found.data()) != nullptr && name == found.data();
}

std::optional<MacAddress> addressIn(const sockaddr& told) {
    const bool hasAddress = told.sa_family == ARPHRD_ETHER || isMonitorType(told.sa_family);
    if (!hasAddress) return std::nullopt;
    MacAddress::Octets octets{};
    std::memcpy(octets.data(), told.sa_data, octets.size());
    return MacAddress(octets);
}

}  // namespace

std::optional<InterfaceFacts> interfaceFacts(const std::string& name) {
    ifreq request{};
    if (name.empty() || name.size() >= sizeof request.ifr_name) return std::nullopt;
    std::ranges::copy(name, request.ifr_name);

    const Socket socket;
    InterfaceFacts facts;
    if (!socket.ask(SIOCGIFINDEX, request)) return std::nullopt;
    facts.index = static_cast<unsigned>(request.ifr_ifindex);
    if (!socket.ask(SIOCGIFHWADDR, request)) return std::nullopt;
    facts.hardwareType = request.ifr_hwaddr.sa_family;
    facts.address = addressIn(request.ifr_hwaddr);
    if (!socket.ask(SIOCGIFFLAGS, request)) return std::nullopt;
    facts.isUp = (request.ifr_flags & IFF_UP) != 0;
    if (!isNameOf(facts.index, name)) return std::nullopt;
    return facts;
}

bool isInterfaceName(std::string_view name) {
    const auto isForbidden = [](char c) {
        const auto octet = static_cast<unsigned char>(c);
        return octet <= ' ' || octet == 0x7F || c == '/' || c == ':';
    };
    return !name.empty() && name.size() < IFNAMSIZ && name != "." && name != ".." &&
           std::ranges::none_of(name, isForbidden);
}

bool isMonitorType(int hardwareType) {
    return hardwareType == ARPHRD_IEEE80211 || hardwareType == ARPHRD_IEEE80211_PRISM ||
           hardwareType == ARPHRD_IEEE80211_RADIOTAP;
}

}  // namespace halvane::tool
