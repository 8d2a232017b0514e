#include "tools/halvaned/hostapd/hostapd_file.h"

#include <algorithm>
#include <arpa/inet.h>
#include <array>
#include <cstddef>
#include <netinet/in.h>
#include <span>
#include <sys/socket.h>
#include <utility>

#include "halvane/base/status.h"
#include "halvane/model/bss_limits.h"
#include "halvane/model/passphrase_hash_internal.h"
#include "halvane/platform/os/file_internal.h"
#include "halvane/platform/os/secret_internal.h"

#include "tools/halvane/config/configured_security.h"
#include "tools/halvane/config/export_format.h"
#include "tools/halvane/config/hostapd_config.h"
#include "tools/halvane/input/interface_facts.h"

namespace halvane::hosting {

namespace {

using Configuration = HalvaneBSSConfig;
using Value = std::optional<std::string>;
using Sentences = std::vector<std::string>;
using tool::allowsSAE;
using tool::ExportGap;
using tool::ExportLine;
using tool::ExportSection;
using tool::isWPA;

// --- Tables ---

// PSK without SAE has the key alone in the file.
constexpr ExportLine kSecretLines[] = {
    {"wpa_passphrase",
     [](const Configuration& c) {
         return isWPA(c) && allowsSAE(c) && c.passphrase() ? Value(tool::textOf(*c.passphrase()))
                                                           : std::nullopt;
     }},
    {"wpa_psk",
     [](const Configuration& c) {
         return isWPA(c) && c.allowKeyManagementPSK() && !allowsSAE(c) && c.keyMaterial()
                    ? Value(tool::hexText(c.keyMaterial()->text()))
                    : std::nullopt;
     }},
};

constexpr ExportLine kWiredLines[] = {
    {"ieee8021x", [](const Configuration&) { return Value("1"); }},
    // A station listens to the group until it knows who authenticates it (IEEE
    // 802.1X-2010, 11.1.1).
    {"use_pae_group_addr", [](const Configuration&) { return Value("1"); }},
};

constexpr ExportGap kMoreRefusals[] = {
    {[](const Configuration& c) { return c.allowSecurityWPS() && c.allowKeyManagement8021X(); },
     "WPS does not go with 802.1X: it hands out keys for PSK."},
};
constexpr ExportGap kMoreLosses[] = {
    {[](const Configuration& c) { return c.allowSecurityWPS() && c.allowPushbutton(); },
     "No station can join by the push button of WPS: no request of clients presses it."},
    {[](const Configuration& c) { return c.allowSecurityWPS() && c.allowPIN() && c.wpsPIN() == 0; },
     "WPS has no PIN, so nobody can use it by PIN."},
};
constexpr ExportGap kWiredRefusals[] = {
    {[](const Configuration& c) { return !c.allowKeyManagement8021X(); },
     "A wired interface authenticates stations by 802.1X alone."},
};
constexpr ExportGap kWiredLosses[] = {
    {[](const Configuration&) { return true; },
     "The interface is wired: it has no name, no channel and no ciphers."},
};

// --- One network ---

bool isLine(std::string_view text) {
    return std::ranges::all_of(text, [](char c) { return c >= ' ' && c <= '~'; });
}

class Lines {
  public:
    void add(std::string_view key, std::string_view value) {
        text_.append(key).append("=").append(value).append("\n");
    }
    void addIf(bool holds, std::string_view key, std::string_view value) {
        if (holds) add(key, value);
    }
    const std::string& text() const { return text_; }

  private:
    std::string text_;
};

// Why hostapd would turn WPS off; null if it would not, or if there is none.
const char* obstacleOfWPS(const HostedNetwork& network) {
    const Configuration& c = network.configuration;
    if (!c.allowSecurityWPS()) return nullptr;
    if (tool::hidesSSID(c)) return "WPS is left out: hostapd has none in hidden networks.";
    if (c.allowSecurityWEP()) return "WPS is left out: hostapd has none with WEP.";
    if (isWPA(c) && !(c.allowSecurityWPA2() && c.allowUnicastCipherCCMP())) {
        return "WPS is left out: hostapd has none without WPA2 and CCMP.";
    }
    return nullptr;
}

Configuration withoutWPS(Configuration c) {
    c.setAllowSecurityWPS(false);
    c.setAllowPIN(false);
    c.setAllowPushbutton(false);
    c.setWpsPIN(0);
    c.setWpsDeviceName(std::nullopt);
    c.setWpsManufacturerName(std::nullopt);
    c.setWpsModelName(std::nullopt);
    c.setWpsModelNumber(std::nullopt);
    c.setWpsSerialNumber(std::nullopt);
    return c;
}

// The configuration with the key of its passphrase, and with that channel unless it has its own.
Configuration completed(const HostedNetwork& network, std::int64_t channel) {
    auto c = obstacleOfWPS(network) != nullptr ? withoutWPS(network.configuration)
                                               : network.configuration;
    if (c.channel() == 0) c.setChannel(channel);
    if (!c.ssid() || !c.passphrase() || !isWPA(c) || !c.allowKeyManagementPSK()) return c;
    const std::size_t size = c.passphrase()->size();
    if (size < kBSSMinPassphraseSize || size > kBSSMaxPassphraseSize) return c;
    Secret<WPAKey> key;
    deriveWPAKey(c.passphrase()->bytes(), c.ssid()->bytes(), *key);
    c.setKeyMaterial(*key);
    return c;
}

std::vector<ExportGap> joined(std::span<const ExportGap> first, std::span<const ExportGap> second) {
    std::vector<ExportGap> all(first.begin(), first.end());
    all.insert(all.end(), second.begin(), second.end());
    return all;
}

std::string mainHeading(const Configuration&) {
    return "Written by halvaned whenever it starts hostapd. It may hold passphrases and keys.";
}
std::string furtherHeading(const Configuration&) {
    return "A further network.";
}

using Exported = Result<tool::ExportedConfig, Sentences>;

Exported exportedForRadio(const Configuration& configuration, bool isFirst) {
    const tool::HostapdParts& parts = tool::kHostapdParts;
    const ExportSection sections[] = {{"", parts.name},
                                      {"", parts.access},
                                      {"", isFirst ? parts.radio : std::span<const ExportLine>()},
                                      {"", parts.security},
                                      {"", kSecretLines},
                                      {"", parts.handshake}};
    const auto refusals = joined(parts.refusals, kMoreRefusals);
    const auto losses = joined(parts.losses, kMoreLosses);
    return tool::exported(configuration, {"hostapd", isFirst ? mainHeading : furtherHeading,
                                          sections, refusals, losses});
}

Exported exportedForCable(const Configuration& configuration) {
    constexpr ExportSection kSections[] = {{"", kWiredLines}};
    return tool::exported(configuration,
                          {"hostapd", mainHeading, kSections, kWiredRefusals, kWiredLosses});
}

// What the configuration demands of the radio, as lines.
std::string radioLinesOf(const Configuration& configuration) {
    std::string text;
    for (const ExportLine& line : tool::kHostapdParts.radio) {
        if (const auto value = line.value(configuration)) {
            text.append(line.key).append("=").append(*value).append("\n");
        }
    }
    return text;
}

// --- What belongs to the file as a whole ---

bool isAddress(const std::string& text) {
    in6_addr octets;
    return ::inet_pton(AF_INET, text.c_str(), &octets) == 1 ||
           ::inet_pton(AF_INET6, text.c_str(), &octets) == 1;
}

struct PlanRule {
    bool (*holds)(const HostapdPlan&);
    const char* sentence;
};

bool hasOwnLine(const std::string& text) {
    return !text.empty() && isLine(text);
}
bool authenticates(Driver driver, const Configuration& c) {
    return c.allowKeyManagement8021X() && (isWPA(c) || driver == Driver::Wired);
}
bool authenticates(const HostapdPlan& plan) {
    return std::ranges::any_of(plan.networks, [&](const HostedNetwork& network) {
        return authenticates(plan.driver, network.configuration);
    });
}
bool hasTwins(const HostapdPlan& plan) {
    Sentences names;
    for (const HostedNetwork& network : plan.networks) names.push_back(network.interface);
    std::ranges::sort(names);
    return std::ranges::adjacent_find(names) != names.end();
}

constexpr PlanRule kPlanRules[] = {
    {[](const HostapdPlan& p) { return p.networks.empty(); }, "There is no network."},
    {[](const HostapdPlan& p) {
         return !std::ranges::all_of(p.networks, isHostableName, &HostedNetwork::interface);
     },
     "The name of an interface is none."},
    {hasTwins, "Two networks have the same interface."},
    {[](const HostapdPlan& p) { return !hasOwnLine(p.controlFolder); },
     "The folder of hostapd's sockets is not plain text."},
    {[](const HostapdPlan& p) { return p.driver == Driver::Wired && p.networks.size() > 1; },
     "A wired interface hosts one network."},
    {[](const HostapdPlan& p) {
         return p.driver != Driver::Wired && !p.networks.empty() && p.channel == 0 &&
                p.networks.front().configuration.channel() == 0;
     },
     "No channel is chosen."},
    {[](const HostapdPlan& p) { return authenticates(p) && !p.radius && p.eapUserFile.empty(); },
     "802.1X needs a RADIUS server or a file of EAP users, and the settings have neither."},
    {[](const HostapdPlan& p) { return authenticates(p) && !p.radius && !isLine(p.eapUserFile); },
     "The path of the file of EAP users is not plain text."},
    {[](const HostapdPlan& p) {
         return authenticates(p) && p.radius && !isAddress(p.radius->address);
     },
     "The address of the RADIUS server is none."},
    {[](const HostapdPlan& p) {
         return authenticates(p) && p.radius && !hasOwnLine(p.radius->secret);
     },
     "The secret of the RADIUS server is not plain text."},
    {[](const HostapdPlan& p) { return authenticates(p) && p.radius && p.radius->port == 0; },
     "The port of the RADIUS server is 0."},
};

std::string serverLinesOf(const HostapdPlan& plan) {
    Lines lines;
    if (plan.radius) {
        lines.add("auth_server_addr", plan.radius->address);
        lines.add("auth_server_port", std::to_string(plan.radius->port));
        lines.add("auth_server_shared_secret", plan.radius->secret);
    } else {
        lines.add("eap_server", "1");
        lines.add("eap_user_file", plan.eapUserFile);
    }
    return lines.text();
}

// What hostapd prints goes to the daemon's log; the system's log would have it twice.
std::string headOf(const HostapdPlan& plan, const HostedNetwork& network, bool isFirst) {
    Lines lines;
    lines.add(isFirst ? "interface" : "bss", network.interface);
    lines.addIf(isFirst, "driver", nameOf(plan.driver));
    lines.add("ctrl_interface", plan.controlFolder);
    lines.add("logger_syslog", "0");
    lines.add("logger_stdout", "-1");
    lines.add("logger_stdout_level", "2");
    if (plan.driver == Driver::Wired) return lines.text();
    lines.add("max_num_sta", std::to_string(std::clamp(network.maxStations, 1U, kMaxStations)));
    return lines.text();
}

// --- The file ---

class Writer {
  public:
    explicit Writer(const HostapdPlan& plan)
        : plan_(plan),
          main_(completed(plan.networks.front(), plan.channel)),
          radio_(radioLinesOf(main_)) {}

    void add(const HostedNetwork& network) {
        const bool isFirst = &network == plan_.networks.data();
        const auto configuration = completed(network, main_.channel());
        const auto part = plan_.driver == Driver::Wired ? exportedForCable(configuration)
                                                        : exportedForRadio(configuration, isFirst);
        if (!part) return tell(errors_, network, part.error());
        file_.text += headOf(plan_, network, isFirst) + part->text;
        if (authenticates(plan_.driver, configuration)) file_.text += serverLinesOf(plan_);
        tell(file_.losses, network, part->losses);
        if (plan_.driver != Driver::Wired && radioLinesOf(configuration) != radio_) {
            tell(file_.losses, network,
                 {"The channel, the country and the PHY modes are those of the first network."});
        }
        if (const char* obstacle = obstacleOfWPS(network)) tell(file_.losses, network, {obstacle});
    }

    Result<HostapdFile, Sentences> take() {
        if (!errors_.empty()) return Unexpected(std::move(errors_));
        return std::move(file_);
    }

  private:
    void tell(Sentences& list, const HostedNetwork& network, const Sentences& sentences) const {
        const bool isOneOfMany = plan_.networks.size() > 1;
        for (const std::string& sentence : sentences) {
            list.push_back((isOneOfMany ? network.interface + ": " : "") + sentence);
        }
    }

    const HostapdPlan& plan_;
    const Configuration main_;
    const std::string radio_;  // its lines for the radio
    HostapdFile file_;
    Sentences errors_;
};

}  // namespace

std::vector<std::string> secretsIn(std::string_view text) {
    constexpr std::string_view kKeys[] = {
        "wpa_passphrase=", "wpa_psk=", "wep_key0=", "ap_pin=", "auth_server_shared_secret="};
    std::vector<std::string> secrets;
    while (!text.empty()) {
        const auto line = text.substr(0, text.find('\n'));
        text.remove_prefix(std::min(line.size() + 1, text.size()));
        for (const auto key : kKeys) {
            if (line.starts_with(key)) secrets.emplace_back(line.substr(key.size()));
        }
    }
    return secrets;
}

std::string withoutSecrets(std::string line, const std::vector<std::string>& secrets) {
    constexpr std::string_view kMask = "(secret)";
    for (const std::string& secret : secrets) {
        if (secret.empty()) continue;
        for (auto at = line.find(secret); at != std::string::npos;
             at = line.find(secret, at + kMask.size())) {
            line.replace(at, secret.size(), kMask);
        }
    }
    return line;
}

bool isHostableName(std::string_view text) {
    return tool::isInterfaceName(text) && isLine(text);
}

Result<HostapdFile, std::vector<std::string>> hostapdFileOf(const HostapdPlan& plan) {
    Sentences errors;
    for (const PlanRule& rule : kPlanRules) {
        if (rule.holds(plan)) errors.emplace_back(rule.sentence);
    }
    if (!errors.empty()) return Unexpected(std::move(errors));
    Writer writer(plan);
    for (const HostedNetwork& network : plan.networks) writer.add(network);
    return writer.take();
}

Result<void, std::string> writeHostapdFile(const std::string& path, std::string_view text) {
    const HalvaneStatus status = replaceFile(path, text);
    if (status == kStatusOK) return {};
    return Unexpected(path + " cannot be written: " + HalvaneStatusText(status));
}

}  // namespace halvane::hosting
