// A cable in a private network, with a station at its end.
#ifndef TESTS_SUPPORT_CABLE_H
#define TESTS_SUPPORT_CABLE_H

#include <string>
#include <unistd.h>
#include <vector>

#include "tests/support/run_program.h"

namespace halvane::testing {

// The station's end is cable1, whose address is 02:00:00:00:00:01. Returns whether the system has
// cables. REQUIRES: the process is in a private network.
inline bool layCable() {
    const std::vector<std::vector<std::string>> commands = {
        {"link", "add", "cable0", "type", "veth", "peer", "name", "cable1"},
        {"link", "set", "cable0", "up"},
        {"link", "set", "cable1", "address", "02:00:00:00:00:01"},
        {"link", "set", "cable1", "up"},
    };
    for (std::vector<std::string> words : commands) {
        words.insert(words.begin(), "/usr/sbin/ip");
        if (runProgram(words).status != 0) return false;
    }
    return true;
}

inline constexpr const char* kStationProgram = "/sbin/wpa_supplicant";
inline constexpr const char* kStationControl = "/sbin/wpa_cli";

// What makes the program join the cable's network, as the user that the other constant lets in.
inline constexpr const char kStationFile[] =
    "ap_scan=0\nnetwork={\nkey_mgmt=IEEE8021X\neap=MD5\nidentity=\"user\"\n"
    "password=\"password\"\neapol_flags=0\n}\n";
inline constexpr const char kUsersFile[] = "\"user\" MD5 \"password\"\n";

inline std::vector<std::string> stationWords(const std::string& file) {
    return {kStationProgram, "-Dwired", "-icable1", "-c" + file};
}

}  // namespace halvane::testing

#endif
