#include "tools/halvaned/hosting/networks.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <net/if.h>
#include <utility>

#include "halvane/utils/scan_time.h"

#include "tools/halvaned/hostapd/event_source.h"
#include "tools/halvaned/hostapd/hosted_stations.h"
#include "tools/halvaned/hosting/daemon_logging.h"

namespace halvane::hosting {

namespace {

std::uint64_t now() {
    return UpTicksToMicroseconds(UpTicks());
}

// Calls `done` when all of those that it was counted for have called it.
class Countdown {
  public:
    explicit Countdown(std::function<void()> done) : done_(std::move(done)) {}
    void add() { ++left_; }
    void finish() {
        if (--left_ == 0) done_();
    }

  private:
    std::size_t left_ = 1;  // whoever counts
    const std::function<void()> done_;
};

HostError stoppedMeanwhile() {
    return {.kind = HostError::Kind::Stopped, .text = "The network was stopped meanwhile."};
}

}  // namespace

Networks::Networks(sd_event* loop, HostSettings settings, Told told)
    : loop_(loop),
      settings_(std::move(settings)),
      told_(std::move(told)),
      made_(settings_.runtimeFolder + "/made") {}

bool Networks::isUp(const std::string& interface) const {
    const auto found = hostings_.find(interface);
    if (found == hostings_.end()) return false;
    const Host::State state = found->second.host->state();
    return !found->second.waiting.empty() ||
           (state != Host::State::Idle && state != Host::State::Ending);
}

bool Networks::hosts(const std::string& interface, const std::optional<ByteBuffer>& ssid) const {
    if (!isUp(interface)) return false;
    const auto& networks = hostings_.at(interface).plan.networks;
    return std::ranges::any_of(
        networks, [&](const auto& network) { return network.configuration.ssid() == ssid; });
}

bool Networks::isMade(std::string_view interface) const {
    return made_.ownerOf(interface) || hostOf(interface);
}

// The interface whose hostapd has, or may have, made that one.
std::optional<std::string> Networks::hostOf(std::string_view made) const {
    for (const auto& [name, hosting] : hostings_) {
        if (name == made || hosting.host->state() == Host::State::Idle) continue;
        const auto& networks = hosting.plan.networks;
        if (std::ranges::find(networks, made, &HostedNetwork::interface) != networks.end()) {
            return name;
        }
    }
    return std::nullopt;
}

bool Networks::mayMake(const std::string& name, const std::string& interface) const {
    const auto owner = made_.ownerOf(name);
    return owner ? *owner == interface : ::if_nametoindex(name.c_str()) == 0;
}

void Networks::noteCame(const std::string& interface) {
    if (const auto owner = hostOf(interface)) made_.add(interface, *owner);
}

Networks::Hosting& Networks::hostingOf(const std::string& interface) {
    Hosting& hosting = hostings_[interface];
    if (!hosting.host) {
        hosting.host = std::make_unique<Host>(
            loop_, settings_,
            Host::Handlers{
                .station = [this, interface](const auto& change) { happened(interface, change); },
                .log =
                    [interface](std::string_view line) {
                        logNotice(interface + ": " + std::string(line));
                    },
            });
    }
    return hosting;
}

void Networks::start(const std::string& interface, const HostapdPlan& plan, Host::Done done) {
    if (isClosed_) return done(Unexpected(stoppedMeanwhile()));
    Hosting& hosting = hostingOf(interface);
    const bool isStarting = !hosting.waiting.empty();
    if (!isStarting && hosting.host->state() == Host::State::Ready) return done({});
    hosting.waiting.push_back(std::move(done));
    if (isStarting) return;
    hosting.plan = plan;
    for (const HostedNetwork& network : plan.networks) {
        if (network.interface != interface) made_.add(network.interface, interface);
    }
    if (!std::exchange(hosting.isQueued, true) && isOpen_) queueStart(interface);
}

void Networks::open() {
    isOpen_ = true;
    for (const auto& [interface, hosting] : hostings_) {
        if (hosting.isQueued) queueStart(interface);
    }
}

// What still ends has to end first.
void Networks::queueStart(const std::string& interface) {
    hostings_.at(interface).host->stop([this, interface](const auto&) { startQueued(interface); });
}

void Networks::startQueued(const std::string& interface) {
    Hosting& hosting = hostingOf(interface);
    hosting.isQueued = false;
    if (hosting.waiting.empty()) return;  // stopped meanwhile
    hosting.host->start(hosting.plan,
                        [this, interface](const auto& result) { finishStart(interface, result); });
}

void Networks::finishStart(const std::string& interface, const Result<void, HostError>& result) {
    const auto waiting = std::exchange(hostingOf(interface).waiting, {});
    for (const auto& done : waiting) done(result);
}

void Networks::stop(const std::string& interface, std::function<void()> done) {
    const auto found = hostings_.find(interface);
    if (found == hostings_.end()) return done();
    if (found->second.isQueued) {
        finishStart(interface, Unexpected(stoppedMeanwhile()));
    }
    found->second.host->stop([done = std::move(done)](const auto&) { done(); });
}

void Networks::stopAll(const std::function<void()>& done) {
    isClosed_ = true;
    const auto countdown = std::make_shared<Countdown>(done);
    for (const auto& [interface, hosting] : hostings_) {
        countdown->add();
        stop(interface, [countdown] { countdown->finish(); });
    }
    countdown->finish();
}

void Networks::kick(const std::string& interface, const MacAddress& station,
                    const Host::Done& done) {
    const auto found = hostings_.find(interface);
    if (found == hostings_.end()) {
        return done(Unexpected(HostError{HostError::Kind::NotReady, "No network is hosted."}));
    }
    found->second.host->kick(station, done);
}

void Networks::clients(Clients done) {
    asking_.push_back(std::move(done));
    if (asking_.size() == 1) askForStations();
}

void Networks::askForStations() {
    const auto countdown = std::make_shared<Countdown>([this] {
        for (Clients& done : asking_) answers_.push_back(std::move(done));
        asking_.clear();
        if (!nextAnswer_) answerNext();
    });
    for (const auto& [name, hosting] : hostings_) {
        if (hosting.host->state() != Host::State::Ready) continue;
        countdown->add();
        hosting.host->stations([this, countdown, interface = name](const auto& stations) {
            if (stations) noteAll(interface, *stations);
            countdown->finish();
        });
    }
    countdown->finish();
}

// A list of many stations takes milliseconds, in which nothing else is done.
void Networks::answerNext() {
    nextAnswer_.reset();
    if (answers_.empty()) return;
    const Clients done = std::move(answers_.front());
    answers_.pop_front();
    if (!answers_.empty()) nextAnswer_ = timerOf<&Networks::answerNext>(loop_, 0, this);
    done(book_.list());
    if (!nextAnswer_) answerNext();
}

void Networks::noteAll(const std::string& interface, const std::vector<HostedStation>& stations) {
    const auto channel = static_cast<int>(hostingOf(interface).plan.channel);
    for (const HostedStation& station : stations) {
        book_.note(interface, station, channel, now());
    }
}

void Networks::happened(const std::string& interface, const StationChange& change) {
    if (!book_.note(interface, change, now())) return;
    StationChange told = change;
    told.interface = interface;
    told_(told);
}

}  // namespace halvane::hosting
