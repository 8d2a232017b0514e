#include "tools/halvaned-sim/control.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <list>
#include <map>
#include <system_error>
#include <utility>
#include <vector>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/mac_address.h"
#include "halvane/model/daemon_status.h"
#include "halvane/service/request_internal.h"

#include "tools/halvaned-sim/faults.h"
#include "tools/halvaned-sim/world.h"

namespace halvane::sim {

namespace {

constexpr std::string_view kBlanks = " \t\r\n";

using Words = std::vector<std::string>;

// A line while it is carried out. Its first word is the command.
struct Line {
    Simulation& simulation;
    const Words& words;

    const std::string& interface() const { return words[1]; }
};

struct Rule {
    std::string_view word;
    std::string_view arguments;  // as help shows them
    std::size_t minimum, maximum;
    ControlResult (*follow)(const Line&);
    std::string_view help;
};

ControlResult refuse(std::string message) {
    return {.refusal = std::move(message), .text = {}, .action = {}};
}

ControlResult done(std::string text = {}) {
    return {.refusal = {}, .text = std::move(text), .action = {}};
}

ControlResult resultOf(DaemonStatus status) {
    return status == DaemonStatus::Done ? done() : refuse(std::string(textOf(status)));
}

std::optional<ByteBuffer> addressOf(const std::string& word) {
    auto address = ByteBuffer::fromHex(word);
    if (address && address->size() != MacAddress::kSize) address.reset();
    return address;
}

template <typename Integer>
std::optional<Integer> numberOf(const std::string& word) {
    Integer number{};
    const char* const end = word.data() + word.size();
    const auto result = std::from_chars(word.data(), end, number);
    if (result.ec != std::errc() || result.ptr != end) return std::nullopt;
    return number;
}

ControlResult refuseAddress(const std::string& word) {
    return refuse("'" + word + "' is not an address of 6 bytes");
}

ControlResult refuseNumber(const std::string& word) {
    return refuse("'" + word + "' is not a number, or is too large");
}

template <DaemonStatus (World::*action)(std::string_view)>
ControlResult withInterface(const Line& line) {
    return resultOf((line.simulation.world.*action)(line.interface()));
}

template <DaemonStatus (World::*action)(std::string_view, const ByteBuffer&)>
ControlResult withStation(const Line& line) {
    const auto address = addressOf(line.words[2]);
    if (!address) return refuseAddress(line.words[2]);
    return resultOf((line.simulation.world.*action)(line.interface(), *address));
}

ControlResult kick(const Line& line) {
    const auto address = addressOf(line.words[2]);
    if (!address) return refuseAddress(line.words[2]);
    const auto reason = line.words.size() > 3 ? numberOf<std::uint16_t>(line.words[3])
                                              : std::uint16_t{kReasonUnspecified};
    if (!reason) return refuseNumber(line.words[3]);
    return resultOf(line.simulation.world.kick(line.interface(), *address, *reason));
}

ControlResult burst(const Line& line) {
    const auto count = numberOf<std::size_t>(line.words[2]);
    if (!count) return refuseNumber(line.words[2]);
    return resultOf(line.simulation.world.burst(line.interface(), *count));
}

bool isCommand(std::string_view name) {
    return commandFor(name) != nullptr;
}

bool isListCommand(std::string_view name) {
    const CommandInfo* const command = commandFor(name);
    return command != nullptr && isList(command->command);
}

bool fits(Fault fault, std::string_view target) {
    switch (fault) {
        case Fault::Silent:
        case Fault::Missing:
        case Fault::Mistyped:
            return isCommand(target) || target == kEventTarget;
        case Fault::Garbled:
            return isListCommand(target);
        case Fault::None:
        case Fault::Status:
        case Fault::Error:
        case Fault::Gone:
            return isCommand(target);
    }
    return false;
}

ControlResult misbehave(const Line& line) {
    FaultSetting setting{.fault = *faultFor(line.words[0])};
    const std::string& target = line.words[1];
    if (!fits(setting.fault, target)) {
        return refuse("'" + line.words[0] + "' does not apply to '" + target + "'");
    }
    if (setting.fault == Fault::Status) {
        const auto status = numberOf<std::int64_t>(line.words[2]);
        if (!status) return refuseNumber(line.words[2]);
        setting.status = *status;
    }
    line.simulation.faults.set(target, setting);
    return done();
}

ControlResult behave(const Line& line) {
    if (line.words.size() == 1) {
        line.simulation.faults.clear();
    } else if (isCommand(line.words[1]) || line.words[1] == kEventTarget) {
        line.simulation.faults.clear(line.words[1]);
    } else {
        return refuse("'" + line.words[1] + "' is not a command");
    }
    return done();
}

ControlResult spoof(const Line& line) {
    const auto happening = happeningFor(line.words[1]);
    if (!happening) {
        return refuse("'" + line.words[1] + "' is not authorized, joined, kicked or left");
    }
    const auto address = addressOf(line.words[3]);
    if (!address) return refuseAddress(line.words[3]);
    ControlResult result;
    result.action = BusAction{BusAction::Kind::Spoof, {{*happening, line.words[2], *address}}};
    return result;
}

template <BusAction::Kind kind>
ControlResult onBus(const Line&) {
    ControlResult result;
    result.action = BusAction{kind, std::nullopt};
    return result;
}

std::size_t countOf(const std::map<std::string, std::size_t>& counts, const std::string& name) {
    const auto found = counts.find(name);
    return found != counts.end() ? found->second : 0;
}

ControlResult show(const Line& line) {
    std::string text;
    const World& world = line.simulation.world;
    const auto stations = world.associatedStations();
    for (const SimulatedInterface& interface : world.interfaces()) {
        text += interface.name() + ": role " + *interface.record.ifRole();
        text += interface.isEnabled ? ", enabled" : ", disabled";
        text += interface.hostedSSID ? ", BSS up" : ", no BSS";
        text += ", configurations " + std::to_string(interface.configs.size());
        text += ", stations " + std::to_string(countOf(stations, interface.name()));
        text += '\n';
    }
    text += "subscribers:";
    for (const std::string& name : line.simulation.subscribers.names()) text += ' ' + name;
    return done(text + '\n' + line.simulation.faults.text());
}

ControlResult help(const Line&) {
    return done(controlHelp());
}

constexpr Rule kRules[] = {
    {"start", "IF", 1, 1, withInterface<&World::startBSS>, "start a BSS; stations in range join"},
    {"stop", "IF", 1, 1, withInterface<&World::stopBSS>, "stop the BSS; its stations leave"},
    {"join", "IF MAC", 2, 2, withStation<&World::join>, "a station joins"},
    {"authorize", "IF MAC", 2, 2, withStation<&World::authorize>, "the station is authorized"},
    {"leave", "IF MAC", 2, 2, withStation<&World::leave>, "the station leaves"},
    {"kick", "IF MAC [REASON]", 2, 3, kick, "the station is sent away"},
    {"burst", "IF N", 2, 2, burst, "N new stations join"},
    {"status", "COMMAND N", 2, 2, misbehave, "reply with status N, and do nothing"},
    {"silent", "COMMAND|event", 1, 1, misbehave, "do not reply, and do nothing"},
    {"error", "COMMAND", 1, 1, misbehave, "reply with a D-Bus error, and do nothing"},
    {"gone", "COMMAND", 1, 1, misbehave, "restart instead of replying"},
    {"garbled", "COMMAND", 1, 1, misbehave, "reply with a list that cannot be read"},
    {"missing", "COMMAND|event", 1, 1, misbehave, "leave the values out of replies or events"},
    {"mistyped", "COMMAND|event", 1, 1, misbehave, "give the values wrong types"},
    {"normal", "[COMMAND|event]", 0, 1, behave, "end this fault, or all faults"},
    {"spoof", "EVENT IF MAC", 3, 3, spoof, "send a notification from another connection"},
    {"drop", "", 0, 0, onBus<BusAction::Kind::Drop>, "give up the daemon's name"},
    {"take", "", 0, 0, onBus<BusAction::Kind::Take>, "own the daemon's name again"},
    {"restart", "", 0, 0, onBus<BusAction::Kind::Restart>, "leave the bus and come back"},
    {"quit", "", 0, 0, onBus<BusAction::Kind::Quit>, "end the simulation"},
    {"show", "", 0, 0, show, "print the interfaces, subscribers and faults"},
    {"help", "", 0, 0, help, "list these lines"},
};

Words wordsOf(std::string_view line) {
    Words words;
    while (true) {
        const std::size_t start = line.find_first_not_of(kBlanks);
        if (start == line.npos) return words;
        line.remove_prefix(start);
        const std::size_t length = std::min(line.find_first_of(kBlanks), line.size());
        words.emplace_back(line.substr(0, length));
        line.remove_prefix(length);
    }
}

std::string usageOf(const Rule& rule) {
    std::string usage(rule.word);
    if (!rule.arguments.empty()) usage += ' ' + std::string(rule.arguments);
    return usage;
}

}  // namespace

ControlResult control(Simulation& simulation, std::string_view line) {
    const Words words = wordsOf(line);
    if (words.empty()) return refuse("the line is empty");
    const auto* const rule = std::find_if(std::begin(kRules), std::end(kRules),
                                          [&](const Rule& r) { return r.word == words[0]; });
    if (rule == std::end(kRules)) return refuse("'" + words[0] + "' is not known; see 'help'");
    if (words.size() - 1 < rule->minimum || words.size() - 1 > rule->maximum) {
        return refuse("the line should be: " + usageOf(*rule));
    }
    return rule->follow({simulation, words});
}

std::string controlHelp() {
    constexpr std::size_t kColumn = 26;
    std::string text;
    for (const Rule& rule : kRules) {
        std::string usage = usageOf(rule);
        usage.resize(std::max(usage.size() + 1, kColumn), ' ');
        text += usage + std::string(rule.help) + '\n';
    }
    return text;
}

}  // namespace halvane::sim
