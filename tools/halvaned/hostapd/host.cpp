#include "tools/halvaned/hostapd/host.h"

#include <algorithm>
#include <ctime>
#include <iterator>
#include <optional>
#include <unistd.h>
#include <unordered_map>
#include <utility>

#include "halvane/base/escaped_text.h"

#include "tools/halvane/config/configured_security.h"
#include "tools/halvaned/driver.h"
#include "tools/halvaned/hostapd/control_message.h"

namespace halvane::hosting {

using Kind = HostError::Kind;

// One network, and the socket that tells of it.
struct Host::Link {
    Link(std::string name, std::string path, bool exchanges)
        : interface(std::move(name)),
          server(std::move(path)),
          exchangesKeys(exchanges),
          stations(exchanges) {}

    const std::string interface;
    const std::string server;  // the path of hostapd's socket
    const bool exchangesKeys;
    HostedStations stations;
    std::unique_ptr<ControlSocket> socket;
    bool isAttached = false;  // events come
};

// A question for all stations, network by network.
struct Host::Walk {
    std::vector<StationsDone> done;
    std::uint64_t start = 0;
    std::size_t link = 0;  // of the network that is asked
    int attempts = 0;      // for it
    // Of that network; and then of those before.
    std::unordered_map<MacAddress, StationRecord> found = {};
    std::vector<HostedStation> all = {};
};

namespace {

constexpr std::size_t kMostFirstLines = 64;

Unexpected<HostError> failure(Kind kind, std::string text) {
    return Unexpected(HostError{kind, std::move(text)});
}

// hostapd's states of an interface that seeks its channel.
bool isSeeking(std::string_view state) {
    constexpr std::string_view kStates[] = {"COUNTRY_UPDATE", "ACS", "HT_SCAN", "DFS"};
    return std::ranges::find(kStates, state) != std::end(kStates);
}

std::string sentencesOf(const std::vector<std::string>& sentences) {
    std::string text;
    for (const std::string& sentence : sentences) {
        text += (text.empty() ? "" : " ") + sentence;
    }
    return text;
}

}  // namespace

const char* nameOf(Host::State state) noexcept {
    switch (state) {
        case Host::State::Idle:
            return "idle";
        case Host::State::Starting:
            return "starting";
        case Host::State::Ready:
            return "ready";
        case Host::State::Failing:
            return "failing";
        case Host::State::Ending:
            return "ending";
    }
    return "";
}

Host::Host(sd_event* loop, HostSettings settings, Handlers handlers)
    : loop_(loop), settings_(std::move(settings)), handlers_(std::move(handlers)) {}

Host::~Host() {
    child_.reset();
    if (!interface_.empty()) removeFiles();
}

// --- Starting ---

void Host::start(const HostapdPlan& plan, Done done) {
    if (state_ != State::Idle) {
        return done(failure(Kind::Busy, "hostapd is " + std::string(nameOf(state_)) + "."));
    }
    if (auto prepared = prepare(plan); !prepared) return done(std::move(prepared));
    if (const auto launched = launch(); !launched) {
        becomeIdle();
        return done(failure(Kind::Refused, launched.error()));
    }
    started_ = std::move(done);
}

Result<void, HostError> Host::prepare(const HostapdPlan& plan) {
    auto file = hostapdFileOf(plan);
    if (!file) return failure(Kind::BadPlan, sentencesOf(file.error()));
    for (const std::string& loss : file->losses) say(loss);
    text_ = std::move(file->text);
    secrets_ = secretsIn(text_);
    interface_ = plan.networks.front().interface;
    links_.clear();
    for (const HostedNetwork& network : plan.networks) {
        const bool exchangesKeys =
            plan.driver != Driver::Wired && tool::isWPA(network.configuration);
        links_.push_back(std::make_unique<Link>(
            network.interface, plan.controlFolder + "/" + network.interface, exchangesKeys));
    }
    pause_ = 0;
    hasBeenReady_ = false;
    return {};
}

// Writes the files and starts the process.
Result<void, std::string> Host::launch() {
    if (auto written = writeHostapdFile(path(".conf"), text_); !written) return written;
    auto started = ChildProcess::start(loop_, {settings_.program, path(".conf")},
                                       {.line = [this](std::string_view line) { printed(line); },
                                        .ended = [this](const ChildEnd& end) { childEnded(end); }},
                                       path(".pid"));
    if (!started) return Unexpected(std::move(started).error());
    child_ = *std::move(started);
    state_ = State::Starting;
    failure_.clear();
    firstLines_.clear();
    early_.clear();
    isEnabled_ = seeksChannel_ = false;
    startTimer_ = timerOf<&Host::startedTooLong>(loop_, settings_.startTimeout, this);
    look();
    return {};
}

void Host::startAgain() {
    pauseTimer_.reset();
    if (const auto launched = launch(); !launched) {
        say(launched.error());
        pauseAndStartAgain();
    }
}

void Host::startedTooLong() {
    lost("hostapd did not become ready");
}

// --- Control sockets, from the first to the last ---

// Attaches the next network, and asks for the stations of all of them in the end.
void Host::look() {
    lookTimer_.reset();
    if (state_ != State::Starting) return;
    const auto next = std::ranges::find(links_, false, [](const auto& l) { return l->isAttached; });
    if (next != links_.begin() && !isEnabled_) return;  // the others have no socket until then
    if (next == links_.end()) {
        return walk([this](const auto& stations) {
            if (stations && state_ == State::Starting) becomeReady();
        });
    }
    if (connect(**next)) return attach(**next);
    lookTimer_ = timerOf<&Host::look>(loop_, settings_.socketInterval, this);
}

bool Host::connect(Link& link) {
    auto connected = ControlSocket::connect(
        loop_, {link.server, settings_.runtimeFolder}, settings_.replyTimeout,
        {.event = [this, &link](std::string_view event) { happened(link, event); },
         .lost = [this](const std::string& reason) { lost(reason); }});
    if (!connected) return false;
    link.socket = *std::move(connected);
    return true;
}

void Host::attach(Link& link) {
    link.socket->request("ATTACH", [this, &link](auto reply) {
        if (!reply) return;
        if (readReply(*reply) != ControlReply::OK) return lost("hostapd refuses to tell events");
        link.isAttached = true;
        if (&link == links_.front().get()) askState();
        look();
    });
}

void Host::askState() {
    links_.front()->socket->request("STATUS", [this](auto reply) {
        if (reply) stateIs(valueIn(*reply, "state").value_or(""));
    });
}

void Host::stateIs(std::string_view state) {
    if (state_ != State::Starting || isEnabled_) return;
    if (state == "ENABLED") {
        isEnabled_ = true;
        return look();
    }
    if (!isSeeking(state) || seeksChannel_) return;
    seeksChannel_ = true;
    say("hostapd seeks its channel.");
    startTimer_ = timerOf<&Host::startedTooLong>(loop_, settings_.radarTimeout, this);
}

void Host::becomeReady() {
    startTimer_.reset();
    state_ = State::Ready;
    hasBeenReady_ = true;
    tellsStations_ = true;
    firstLines_.clear();
    steadyTimer_ = timerOf<&Host::becomeSteady>(loop_, settings_.steadyTime, this);
    pingTimer_ = timerOf<&Host::ping>(loop_, settings_.pingInterval, this);
    const auto early = std::exchange(early_, {});
    if (const auto started = std::exchange(started_, {})) started({});
    tellAll(early);
}

void Host::becomeSteady() {
    steadyTimer_.reset();
    pause_ = 0;
}

// Without a reply the connection is lost.
void Host::ping() {
    pingTimer_.reset();
    links_.front()->socket->request("PING", [this](const auto&) {
        if (state_ != State::Ready) return;
        pingTimer_ = timerOf<&Host::ping>(loop_, settings_.pingInterval, this);
    });
}

// --- Ending ---

// hostapd does not do its work, and has to end.
void Host::lost(const std::string& reason) {
    if (state_ != State::Starting && state_ != State::Ready) return;
    failure_ = reason;
    if (state_ == State::Ready) state_ = State::Failing;
    dropTimers();
    if (child_) child_->end(settings_.endTimeout);
    closeLinks();
}

void Host::childEnded(const ChildEnd& end) {
    child_.reset();
    dropTimers();
    const State before = state_;
    const std::string reason = reasonFor(end);
    const auto kind = failure_.empty() ? Kind::Refused : Kind::NoAnswer;
    const auto started = std::exchange(started_, {});
    const auto stopped = std::exchange(stopped_, {});
    // Of stations that were never told nothing is told.
    const auto changes = stationsLeave();
    const bool wereTold = std::exchange(tellsStations_, false);
    early_.clear();
    if (before == State::Ending || !hasBeenReady_) {
        becomeIdle();
    } else {
        say(reason);
        pauseAndStartAgain();
    }
    closeLinks();
    if (started) started(failure(kind, reason));
    for (const Done& done : stopped) done({});
    // Now, even if one of these has started hosting again.
    if (!wereTold || !handlers_.station) return;
    for (const StationChange& change : changes) handlers_.station(change);
}

std::string Host::reasonFor(const ChildEnd& end) const {
    if (!failure_.empty()) return failure_ + ".";
    std::string reason = "hostapd ended " + end.text();
    if (const std::string line = refusedLine(); !line.empty()) reason += ": " + line;
    return reason.ends_with('.') ? reason : reason + '.';
}

// The line of the configuration that hostapd names, or else the first line that speaks of a
// failure.
std::string Host::refusedLine() const {
    for (const std::string_view sign : {"Line ", " line ", "nvalid", "ould not", "ailed", "rror"}) {
        for (const std::string& line : firstLines_) {
            if (line.find(sign) != std::string::npos) return line;
        }
    }
    return {};
}

void Host::pauseAndStartAgain() {
    state_ = State::Failing;
    pause_ = pause_ == 0 ? settings_.firstPause : std::min(2 * pause_, settings_.longestPause);
    say("hostapd is started again in " + std::to_string(pause_ / 1000) + " ms.");
    pauseTimer_ = timerOf<&Host::startAgain>(loop_, pause_, this);
}

void Host::stop(Done done) {
    dropTimers();
    if (!child_) {
        if (state_ != State::Idle) becomeIdle();
        return done({});
    }
    state_ = State::Ending;
    stopped_.push_back(std::move(done));
    child_->end(settings_.endTimeout);
    const auto started = std::exchange(started_, {});
    if (started) started(failure(Kind::Stopped, "The network was stopped meanwhile."));
}

void Host::becomeIdle() {
    state_ = State::Idle;
    removeFiles();
    text_.clear();
}

void Host::removeFiles() const {
    ::unlink(path(".conf").c_str());
    ::unlink(path(".pid").c_str());
}

void Host::dropTimers() {
    for (auto* timer : {&startTimer_, &lookTimer_, &pingTimer_, &pauseTimer_, &steadyTimer_}) {
        timer->reset();
    }
}

// What waits for a reply fails, and may start anew.
void Host::closeLinks() {
    std::vector<std::unique_ptr<ControlSocket>> sockets;
    for (const auto& link : links_) {
        link->isAttached = false;
        if (link->socket) sockets.push_back(std::move(link->socket));
    }
    for (const auto& socket : sockets) socket->close();
}

// --- Events ---

void Host::happened(Link& link, std::string_view message) {
    const ControlEvent event = readEvent(message);
    switch (event.kind) {
        case ControlEvent::Kind::StationConnected:
            return connected(link, *event.station);
        case ControlEvent::Kind::StationDisconnected:
            return tell(link, *event.station, link.stations.disconnected(*event.station));
        case ControlEvent::Kind::KeysInstalled:
            return tell(link, *event.station, link.stations.authorized(*event.station));
        case ControlEvent::Kind::Enabled:
            return stateIs("ENABLED");
        case ControlEvent::Kind::Disabled:
            say("hostapd has disabled the interface.");
            return tellAll(stationsLeave());
        case ControlEvent::Kind::Authenticated:
        case ControlEvent::Kind::Rejected:
        case ControlEvent::Kind::Terminating:
        case ControlEvent::Kind::WPS:
        case ControlEvent::Kind::Other:
            return;  // hostapd prints them, too
    }
}

void Host::connected(Link& link, const MacAddress& address) {
    tell(link, address, link.stations.connected(address, now()));
    if (link.exchangesKeys && link.stations.has(address)) askWhetherAuthorized(link, address);
}

// hostapd may have told of the keys already, or may never do so.
void Host::askWhetherAuthorized(Link& link, const MacAddress& address) {
    if (!link.socket) return;  // a handler has stopped hosting
    link.socket->request("STA " + address.text(), [this, &link, address](auto reply) {
        const auto record = reply ? readStation(*reply) : std::nullopt;
        if (!record || record->address != address || !record->isAuthorized) return;
        tell(link, address, link.stations.authorized(address));
    });
}

void Host::tell(const Link& link, const MacAddress& address, const HostedStations::Kinds& kinds) {
    std::vector<StationChange> changes;
    for (const auto kind : kinds) changes.push_back({kind, address, link.interface});
    tellAll(changes);
}

// What happens while hostapd starts is told when it is ready.
void Host::tellAll(const std::vector<StationChange>& changes) {
    for (const StationChange& change : changes) {
        if (state_ == State::Starting) {
            early_.push_back(change);
        } else if (handlers_.station) {
            handlers_.station(change);
        }
    }
}

std::vector<StationChange> Host::stationsLeave() {
    std::vector<StationChange> changes;
    for (const auto& link : links_) {
        for (const auto& [address, known] : link->stations.known()) {
            changes.push_back({StationChange::Kind::Left, address, link->interface});
        }
        link->stations.clear();
    }
    return changes;
}

// --- Requests ---

void Host::kick(const MacAddress& address, const Done& done) {
    if (state_ != State::Ready) return done(failure(Kind::NotReady, "hostapd hosts nothing."));
    Link* const found = linkOf(address);
    if (found == nullptr) return done(failure(Kind::UnknownStation, "No such station."));
    Link& link = *found;
    link.stations.setKicked(address, true);
    link.socket->request("DEAUTHENTICATE " + address.text(), [=, this, &link](auto reply) {
        const bool isDone = reply && readReply(*reply) == ControlReply::OK;
        if (!isDone) link.stations.setKicked(address, false);
        if (!reply) return done(failure(Kind::NoAnswer, "hostapd does not answer."));
        if (!isDone) {
            return done(failure(Kind::UnknownStation, "hostapd knows no such station."));
        }
        tell(link, address, link.stations.kicked(address));
        done({});
    });
}

// The network that the station joined last: another one may not yet know that it has moved on.
Host::Link* Host::linkOf(const MacAddress& address) const {
    Link* last = nullptr;
    std::uint64_t lastTime = 0;
    for (const auto& link : links_) {
        const auto found = link->stations.known().find(address);
        if (found == link->stations.known().end() || found->second.joinTime < lastTime) continue;
        last = link.get();
        lastTime = found->second.joinTime;
    }
    return last;
}

void Host::stations(StationsDone done) {
    if (state_ != State::Ready) return done(failure(Kind::NotReady, "hostapd hosts nothing."));
    walk(std::move(done));
}

// Who asks during a walk gets its result: what joined meanwhile is in it.
void Host::walk(StationsDone done) {
    if (walk_) return walk_->done.push_back(std::move(done));
    walk_ = std::make_unique<Walk>();
    walk_->done.push_back(std::move(done));
    walk_->start = now();
    walkOn("STA-FIRST");
}

void Host::walkOn(const std::string& command) {
    links_[walk_->link]->socket->request(command, [this](auto reply) { walked(reply); });
}

void Host::walked(const Result<std::string_view, ControlFailure>& reply) {
    constexpr int kMostAttempts = 3;
    if (!reply && reply.error() == ControlFailure::Lost) return failWalk();
    const auto record = reply ? readStation(*reply) : std::nullopt;
    if (record) {
        const bool isNew = walk_->found.emplace(record->address, *record).second;
        if (isNew && walk_->found.size() <= kMaxStations) {
            return walkOn("STA-NEXT " + record->address.text());
        }
        return finishLink(false);
    }
    // The station that was to lead to the next one has gone.
    const bool isBroken = reply && readReply(*reply) == ControlReply::Fail;
    if (isBroken && ++walk_->attempts < kMostAttempts) {
        walk_->found.clear();
        return walkOn("STA-FIRST");
    }
    finishLink(reply && reply->empty());
}

// Tells the differences from what was told. If the walk was not whole, stations that it did not
// come to stay.
void Host::finishLink(bool isWhole) {
    Link& link = *links_[walk_->link];
    std::vector<StationChange> changes;
    const auto add = [&](const MacAddress& address, const HostedStations::Kinds& kinds) {
        for (const auto kind : kinds) changes.push_back({kind, address, link.interface});
    };
    for (const auto& [address, record] : walk_->found) {
        if (!record.isConnected()) continue;
        if (!link.stations.has(address)) add(address, link.stations.connected(address, now()));
        if (record.isAuthorized) add(address, link.stations.authorized(address));
    }
    std::vector<MacAddress> gone;
    for (const auto& [address, known] : link.stations.known()) {
        const auto found = walk_->found.find(address);
        const bool isThere = found != walk_->found.end() && found->second.isConnected();
        const bool isNew = known.joinTime >= walk_->start;
        if (isWhole && !isThere && !isNew) gone.push_back(address);
    }
    for (const MacAddress& address : gone) add(address, link.stations.disconnected(address));
    for (const auto& [address, known] : link.stations.known()) {
        const auto found = walk_->found.find(address);
        auto record =
            found != walk_->found.end() ? found->second : StationRecord{.address = address};
        record.isAssociated = true;
        record.isAuthorized = known.isAuthorized;
        walk_->all.push_back({link.interface, std::move(record), known.joinTime});
    }
    walk_->found.clear();
    walk_->attempts = 0;
    ++walk_->link;
    const bool isLast = walk_->link == links_.size();
    if (isLast) return finishWalk(changes);
    walkOn("STA-FIRST");
    tellAll(changes);
}

void Host::finishWalk(const std::vector<StationChange>& changes) {
    const auto walk = std::move(walk_);
    tellAll(changes);
    for (const auto& done : walk->done) done(walk->all);
}

void Host::failWalk() {
    const auto walk = std::move(walk_);
    for (const auto& done : walk->done) {
        done(failure(Kind::NoAnswer, "hostapd does not answer."));
    }
}

// --- Words ---

void Host::printed(std::string_view line) {
    const auto text = escapedText(withoutSecrets(std::string(line), secrets_));
    if (state_ == State::Starting && firstLines_.size() < kMostFirstLines) {
        firstLines_.push_back(text);
    }
    say("hostapd: " + text);
}

void Host::say(const std::string& text) const {
    if (handlers_.log) handlers_.log(text);
}

std::string Host::path(const char* suffix) const {
    return settings_.runtimeFolder + "/" + interface_ + suffix;
}

std::uint64_t Host::now() const {
    std::uint64_t time = 0;
    ::sd_event_now(loop_, CLOCK_MONOTONIC, &time);
    return time;
}

}  // namespace halvane::hosting
