#include "tools/halvane/input/live_source.h"

#include <algorithm>
#include <array>
#include <pcap/pcap.h>
#include <poll.h>
#include <span>
#include <sys/time.h>
#include <sys/types.h>
#include <utility>

#include "tools/halvane/input/interface_facts.h"
#include "tools/halvane/input/libpcap.h"
#include "tools/halvane/input/live_messages.h"

namespace halvane::tool {

namespace {

using Milliseconds = std::chrono::milliseconds;
using Clock = LiveSource::Clock;

constexpr int kKernelBuffer = 8 << 20;
// An interface that goes is noticed after this time at the latest, and so is one that changes.
constexpr Milliseconds kCheckInterval{500};
// A busy channel keeps the source from waiting, so that it looks after interrupts now and then.
constexpr unsigned kPacketsBetweenLooks = 64;

struct CaptureCloser {
    void operator()(pcap_t* capture) const { libpcap().pcap_close(capture); }
};
using Capture = std::unique_ptr<pcap_t, CaptureCloser>;

// An open interface. Without a capture, it has ended.
struct Listener {
    Capture capture;
    InterfaceFacts facts;
    pcap_stat last{};  // the kernel's counters, which have 32 bits
    LiveCounts counts{};
    bool isGone = false;  // what the kernel still holds for it can be read
};

LiveProblem problemOf(int outcome) {
    switch (outcome) {
        case PCAP_ERROR_NO_SUCH_DEVICE:
            return LiveProblem::NoSuchInterface;
        case PCAP_ERROR_PERM_DENIED:
        case PCAP_ERROR_PROMISC_PERM_DENIED:
            return LiveProblem::NotPermitted;
        case PCAP_ERROR_IFACE_NOT_UP:
            return LiveProblem::Down;
        default:
            return LiveProblem::Other;
    }
}

// What libpcap says. Some faults have no more than their number.
std::string textOf(pcap_t* capture, int outcome) {
    const char* const text = libpcap().pcap_geterr(capture);
    return *text != '\0' ? text : libpcap().pcap_statustostr(outcome);
}

void configure(pcap_t* capture, const LiveOptions& options) {
    libpcap().pcap_set_snaplen(capture, options.snapshotLength);
    libpcap().pcap_set_timeout(capture, static_cast<int>(options.delay.count()));
    libpcap().pcap_set_buffer_size(capture, kKernelBuffer);
    // Refused where the kernel counts microseconds alone: pcap_get_tstamp_precision() tells.
    libpcap().pcap_set_tstamp_precision(capture, PCAP_TSTAMP_PRECISION_NANO);
}

using Activated = Result<Capture, LiveFault>;

Activated activate(const std::string& name, const LiveOptions& options) {
    std::array<char, PCAP_ERRBUF_SIZE> reason{};
    Capture capture(libpcap().pcap_create(name.c_str(), reason.data()));
    const auto fault = [&name](LiveProblem problem, const std::string& text) {
        return Unexpected(LiveFault{.problem = problem, .interface = name, .text = text});
    };
    if (!capture) {
        return fault(LiveProblem::Other, libpcap().problem ? libpcap().problem : reason.data());
    }
    configure(capture.get(), options);
    const int outcome = libpcap().pcap_activate(capture.get());  // above 0: a warning
    if (outcome < 0) return fault(problemOf(outcome), textOf(capture.get(), outcome));
    if (libpcap().pcap_setnonblock(capture.get(), 1, reason.data()) != 0) {
        return fault(LiveProblem::Other, reason.data());
    }
    return Activated(std::move(capture));
}

std::int64_t nanoseconds(const pcap_pkthdr& header, bool areNanoseconds) {
    const std::int64_t fraction = header.ts.tv_usec;
    return std::int64_t{header.ts.tv_sec} * 1'000'000'000 +
           (areNanoseconds ? fraction : fraction * 1000);
}

// The counters are those of the socket since the opening, modulo 2 to the power of 32.
void addStatistics(Listener& listener) {
    pcap_stat now{};
    if (!listener.capture || libpcap().pcap_stats(listener.capture.get(), &now) != 0) return;
    listener.counts.received += now.ps_recv - listener.last.ps_recv;
    listener.counts.droppedByKernel += now.ps_drop - listener.last.ps_drop;
    listener.counts.droppedByInterface += now.ps_ifdrop - listener.last.ps_ifdrop;
    listener.last = now;
}

int millisecondsUntil(Clock::time_point time) {
    const auto left = std::chrono::ceil<Milliseconds>(time - Clock::now()).count();
    return static_cast<int>(std::clamp<std::int64_t>(left, 0, kCheckInterval.count()));
}

class PcapLiveSource : public LiveSource {
  public:
    explicit PcapLiveSource(LiveOptions options) : options_(std::move(options)) {}

    std::optional<LiveFault> add(const std::string& name) {
        const auto facts = interfaceFacts(name);
        if (!facts) {
            return LiveFault{.problem = LiveProblem::NoSuchInterface, .interface = name};
        }
        Activated capture = activate(name, options_);
        if (!capture) return capture.error();
        const int number = libpcap().pcap_datalink(capture->get());
        const auto linkType = capture::linkTypeOfNumber(number);
        if (!linkType) {
            return LiveFault{
                .problem = LiveProblem::NotMonitor, .interface = name, .linkType = number};
        }
        interfaces_.push_back({.name = name,
                               .linkType = *linkType,
                               .snapshotLength = libpcap().pcap_snapshot(capture->get())});
        listeners_.push_back({.capture = std::move(*capture), .facts = *facts});
        return std::nullopt;
    }

    void setDeadline(std::optional<Clock::time_point> deadline) override { deadline_ = deadline; }

    NextPacket next() override {
        pause_ = Pause::None;
        for (;;) {
            if (isAtPause()) return std::optional<Packet>();
            if (auto packet = takePacket()) return packet;
            if (haveAllEnded()) return Unexpected(headline(faults_.back()));
            wait();
        }
    }

    Pause pause() const override { return pause_; }
    std::uint64_t bytesRead() const override { return bytesRead_; }
    const std::vector<LiveInterface>& interfaces() const override { return interfaces_; }
    const std::vector<LiveFault>& faults() const override { return faults_; }

    LiveCounts counts(std::size_t interface) override {
        addStatistics(listeners_.at(interface));
        return listeners_[interface].counts;
    }

  private:
    bool isAtPause() {
        if (deadline_ && Clock::now() >= *deadline_) pause_ = Pause::Deadline;
        if (packetsSinceLook_++ >= kPacketsBetweenLooks) look(0);
        if (Clock::now() >= nextCheck_) checkInterfaces();
        return pause_ != Pause::None;
    }

    // Each interface in turn, so that none keeps the others from being heard.
    std::optional<Packet> takePacket() {
        for (std::size_t i = 0; i < listeners_.size(); ++i) {
            turn_ = (turn_ + 1) % listeners_.size();
            if (!listeners_[turn_].capture) continue;
            if (auto packet = takePacketOf(turn_)) return packet;
        }
        return std::nullopt;
    }

    std::optional<Packet> takePacketOf(std::size_t number) {
        pcap_t* const capture = listeners_[number].capture.get();
        pcap_pkthdr* header = nullptr;
        const u_char* bytes = nullptr;
        const int outcome = libpcap().pcap_next_ex(capture, &header, &bytes);
        if (outcome < 0) {
            endWith(number, textOf(capture, outcome));
        } else if (outcome == 0 && listeners_[number].isGone) {
            end(number, {.problem = LiveProblem::WentAway});
        }
        if (outcome != 1) return std::nullopt;
        bytesRead_ += header->caplen;
        const bool areNanoseconds =
            libpcap().pcap_get_tstamp_precision(capture) == PCAP_TSTAMP_PRECISION_NANO;
        return Packet{.number = ++count_,
                      .linkType = interfaces_[number].linkType,
                      .bytes = {bytes, header->caplen},
                      .originalLength = header->len,
                      .time = nanoseconds(*header, areNanoseconds),
                      .interface = static_cast<std::uint32_t>(number)};
    }

    // Until something is there to be read, or a check or the deadline is due.
    void wait() {
        const auto due = std::min(deadline_.value_or(nextCheck_), nextCheck_);
        int timeout = millisecondsUntil(due);
        for (const Listener& listener : listeners_) {
            if (!listener.capture) continue;
            const timeval* const required =
                libpcap().pcap_get_required_select_timeout(listener.capture.get());
            if (!required) continue;
            const auto most = required->tv_sec * 1000 + required->tv_usec / 1000 + 1;
            timeout = static_cast<int>(std::min<std::int64_t>(most, timeout));
        }
        look(timeout);
    }

    void look(int timeout) {
        packetsSinceLook_ = 0;
        polled_.clear();
        for (const int interrupt : options_.interrupts) polled_.push_back({interrupt, POLLIN, 0});
        for (const Listener& listener : listeners_) {
            const int descriptor =
                listener.capture ? libpcap().pcap_get_selectable_fd(listener.capture.get()) : -1;
            polled_.push_back({descriptor, POLLIN, 0});  // poll() passes over -1
        }
        if (::poll(polled_.data(), polled_.size(), timeout) <= 0) return;
        const auto [interrupts, sockets] = split();
        const auto isReady = [](const pollfd& polled) { return polled.revents != 0; };
        const auto hasFault = [](const pollfd& polled) { return (polled.revents & ~POLLIN) != 0; };
        if (std::ranges::any_of(interrupts, isReady)) pause_ = Pause::Interrupt;
        if (std::ranges::any_of(sockets, hasFault)) nextCheck_ = Clock::now();
    }

    std::pair<std::span<const pollfd>, std::span<const pollfd>> split() const {
        const std::span<const pollfd> all = polled_;
        const std::size_t count = options_.interrupts.size();
        return {all.first(count), all.subspan(count)};
    }

    void checkInterfaces() {
        nextCheck_ = Clock::now() + kCheckInterval;
        for (std::size_t i = 0; i < listeners_.size(); ++i) {
            if (!listeners_[i].capture) continue;
            const auto facts = interfaceFacts(interfaces_[i].name);
            if (!facts || facts->index != listeners_[i].facts.index) {
                listeners_[i].isGone = true;
            } else if (facts->hardwareType != listeners_[i].facts.hardwareType) {
                end(i, {.problem = LiveProblem::LeftMonitor});
            } else {
                interfaces_[i].isDown = !facts->isUp;
            }
        }
    }

    void endWith(std::size_t number, const std::string& text) {
        const auto facts = interfaceFacts(interfaces_[number].name);
        const bool isThere = facts && facts->index == listeners_[number].facts.index;
        end(number, {.problem = isThere ? LiveProblem::Other : LiveProblem::WentAway,
                     .text = isThere ? text : std::string()});
    }

    void end(std::size_t number, LiveFault fault) {
        addStatistics(listeners_[number]);
        listeners_[number].capture.reset();
        interfaces_[number].hasEnded = true;
        fault.interface = interfaces_[number].name;
        faults_.push_back(std::move(fault));
    }

    bool haveAllEnded() const {
        return std::ranges::none_of(listeners_, [](const Listener& listener) {
            return static_cast<bool>(listener.capture);
        });
    }

    LiveOptions options_;
    std::vector<LiveInterface> interfaces_;
    std::vector<Listener> listeners_;  // of the same order
    std::vector<LiveFault> faults_;
    std::vector<pollfd> polled_;  // the interrupts, and then the interfaces
    std::optional<Clock::time_point> deadline_;
    Clock::time_point nextCheck_ = Clock::now() + kCheckInterval;
    std::size_t turn_ = 0;
    unsigned packetsSinceLook_ = 0;
    Pause pause_ = Pause::None;
    std::uint64_t count_ = 0;
    std::uint64_t bytesRead_ = 0;
};

}  // namespace

LiveSource::Opened LiveSource::open(const std::vector<std::string>& names,
                                    const LiveOptions& options) {
    auto source = std::make_unique<PcapLiveSource>(options);
    for (const std::string& name : names) {
        if (auto fault = source->add(name)) return Unexpected(std::move(*fault));
    }
    return Opened(std::move(source));
}

LiveCounts LiveSource::counts() {
    LiveCounts sum;
    for (std::size_t i = 0; i < interfaces().size(); ++i) {
        const LiveCounts one = counts(i);
        sum.received += one.received;
        sum.droppedByKernel += one.droppedByKernel;
        sum.droppedByInterface += one.droppedByInterface;
    }
    return sum;
}

}  // namespace halvane::tool
