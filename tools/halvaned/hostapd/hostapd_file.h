// The configuration file that hostapd is started with, for one interface and its networks.
//
// Plain values and free functions; any thread may use them.
#ifndef TOOLS_HALVANED_HOSTAPD_HOSTAPD_FILE_H
#define TOOLS_HALVANED_HOSTAPD_HOSTAPD_FILE_H

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "halvane/base/result.h"
#include "halvane/model/bss_config.h"

#include "tools/halvaned/driver.h"

namespace halvane::hosting {

// The most stations that one network has: association identifiers are 1 to 2007 (IEEE 802.11-2020,
// 9.4.1.8).
inline constexpr unsigned kMaxStations = 2007;

// A server that authenticates for 802.1X (RFC 2865).
struct RadiusServer {
    std::string address = {};  // IPv4 or IPv6, in digits
    std::uint16_t port = 1812;
    std::string secret = {};
};

// One network, which is one interface of the kernel.
struct HostedNetwork {
    std::string interface = {};
    HalvaneBSSConfig configuration = HalvaneBSSConfig::init();
    unsigned maxStations = kMaxStations;
};

struct HostapdPlan {
    Driver driver = Driver::Nl80211;
    // The first is that of the interface itself. hostapd makes the interfaces of the others, which
    // must not exist before.
    std::vector<HostedNetwork> networks = {};
    // For a first configuration with channel 0: the channel that the caller has chosen.
    std::int64_t channel = 0;
    std::string controlFolder = {};  // where hostapd puts a socket for each network
    // For 802.1X: a server, or else a file of users for hostapd's own (its eap_user_file).
    std::optional<RadiusServer> radius = {};
    std::string eapUserFile = {};
};

struct HostapdFile {
    std::string text;  // holds the passphrases and the keys
    // What hostapd leaves out of the configurations, in sentences. They hold no secret.
    std::vector<std::string> losses;
};

// Returns the text of the file, or sentences why there is none: a contradiction of a configuration,
// something that hostapd cannot do, or a text that would not be one line of the file. No sentence
// holds a secret. With several networks a sentence begins with the interface.
//
// A pre-shared key is handed over as 64 digits: that of the passphrase (IEEE 802.11-2020, J.4.1),
// or KeyMaterial without one. It takes some milliseconds to make. SAE needs the passphrase itself,
// which is "wpa_passphrase" since "sae_password" takes parts like "|id=" as its own.
//
// All networks have the channel, the country and the PHY modes of the first. A cable has neither a
// name nor a channel nor ciphers; only 802.1X counts.
Result<HostapdFile, std::vector<std::string>> hostapdFileOf(const HostapdPlan& plan);

// The passphrases, keys and PINs in the text of such a file.
std::vector<std::string> secretsIn(std::string_view text);

// The line with "(secret)" in the place of each of them.
std::string withoutSecrets(std::string line, const std::vector<std::string>& secrets);

// Whether an interface that hostapd hosts at can have this name: one of the kernel's (see
// tool::isInterfaceName()) in ASCII, as hostapd's file has to be.
bool isHostableName(std::string_view text);

// Replaces `path` by a file that only this user can read. Its name with ".new" is used on the way.
// Returns a sentence with the path if that fails.
Result<void, std::string> writeHostapdFile(const std::string& path, std::string_view text);

}  // namespace halvane::hosting

#endif
