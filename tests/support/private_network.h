// A network of the calling process alone, with interfaces that hear what a test writes.
//
// Each process that wants one is a child (child_process.h), because it cannot go back, and has one
// thread, because others would stay behind.
#ifndef TESTS_SUPPORT_PRIVATE_NETWORK_H
#define TESTS_SUPPORT_PRIVATE_NETWORK_H

#include <algorithm>
#include <cstdint>
#include <fcntl.h>
#include <fstream>
#include <functional>
#include <gtest/gtest.h>
#include <linux/if_tun.h>
#include <net/if.h>
#include <net/if_arp.h>
#include <sched.h>
#include <span>
#include <stdexcept>
#include <string>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <unistd.h>

#include "tests/support/child_process.h"

namespace halvane::testing {

// Moves the process into namespaces (CLONE_NEW...) of its own, as their administrator. Returns
// whether the system allows it.
inline bool enterNamespaces(int namespaces) {
    const uid_t user = ::geteuid();
    const gid_t group = ::getegid();
    if (::unshare(CLONE_NEWUSER | namespaces) != 0) return false;
    const auto write = [](const char* path, const std::string& text) {
        return static_cast<bool>(std::ofstream(path) << text << std::flush);
    };
    return write("/proc/self/setgroups", "deny") &&
           write("/proc/self/uid_map", "0 " + std::to_string(user) + " 1") &&
           write("/proc/self/gid_map", "0 " + std::to_string(group) + " 1");
}

inline bool enterPrivateNetwork() {
    return enterNamespaces(CLONE_NEWNET);
}

// An interface of a hardware type of the test's choice. It goes with the object.
// REQUIRES: the process is in a private network.
class HeardInterface {
  public:
    // Throws std::runtime_error if there is none to be had.
    explicit HeardInterface(const std::string& name, int hardwareType = ARPHRD_IEEE80211_RADIOTAP)
        : name_(name), device_(::open("/dev/net/tun", O_RDWR | O_CLOEXEC)) {
        ifreq request = named();
        request.ifr_flags = IFF_TAP | IFF_NO_PI;
        require(device_ >= 0 && ::ioctl(device_, TUNSETIFF, &request) == 0);
        setHardwareType(hardwareType);
    }
    HeardInterface(const HeardInterface&) = delete;
    HeardInterface& operator=(const HeardInterface&) = delete;
    ~HeardInterface() { remove(); }

    // REQUIRES: the interface is down.
    void setHardwareType(int type) { require(::ioctl(device_, TUNSETLINK, type) == 0); }

    void setUp(bool isUp) {
        const int socket = ::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0);
        ifreq request = named();
        request.ifr_flags = isUp ? IFF_UP : 0;
        const bool isSet = ::ioctl(socket, SIOCSIFFLAGS, &request) == 0;
        ::close(socket);
        require(isSet);
    }

    // What the interface hears next. Shorter packets than 14 octets the kernel does not take.
    void hear(std::span<const std::uint8_t> packet) {
        require(::write(device_, packet.data(), packet.size()) ==
                static_cast<ssize_t>(packet.size()));
    }

    void remove() {
        if (device_ >= 0) ::close(device_);
        device_ = -1;
    }

  private:
    ifreq named() const {
        ifreq request{};
        std::ranges::copy(name_, request.ifr_name);
        return request;
    }

    static void require(bool isDone) {
        if (!isDone) throw std::runtime_error("the system refuses an interface");
    }

    std::string name_;
    int device_ = -1;
};

// Whether tests can have such interfaces. If not, they are skipped.
inline bool hasPrivateNetworks() {
    static const bool hasThem = isTrueInChild([] {
        if (!enterPrivateNetwork()) return false;
        try {
            HeardInterface("probe").setUp(true);
        } catch (const std::runtime_error&) {
            return false;
        }
        return true;
    });
    return hasThem;
}

// Runs `test` in a private network. Its failures are printed there, and end the test here.
inline void inPrivateNetwork(const std::function<void()>& test) {
    if (!hasPrivateNetworks()) {
        GTEST_SKIP() << "this system has no network namespaces or no TAP devices for tests";
    }
    const bool hasPassed = isTrueInChild([&test] {
        EXPECT_TRUE(enterPrivateNetwork());
        test();
        return !::testing::Test::HasFailure();
    });
    EXPECT_TRUE(hasPassed);
}

}  // namespace halvane::testing

#endif
