#include "tools/halvaned-sim/session.h"

#include <csignal>
#include <cstdlib>
#include <memory>
#include <sys/signalfd.h>
#include <systemd/sd-bus.h>
#include <systemd/sd-event.h>
#include <utility>

#include "halvane/base/result.h"
#include "halvane/platform/bus/bus_error_internal.h"
#include "halvane/platform/bus/event_loop_internal.h"
#include "halvane/platform/bus/pointers_internal.h"
#include "halvane/platform/bus/service_host_internal.h"
#include "halvane/service/daemon_server.h"

#include "tools/halvaned-sim/bus_error.h"
#include "tools/halvaned-sim/bus_names.h"
#include "tools/halvaned-sim/control.h"
#include "tools/halvaned-sim/control_service.h"
#include "tools/halvaned-sim/event_loop.h"
#include "tools/halvaned-sim/message.h"
#include "tools/halvaned-sim/private_bus.h"
#include "tools/halvaned-sim/program.h"
#include "tools/halvaned-sim/simulated_backend.h"
#include "tools/halvaned-sim/simulation.h"

namespace halvane::sim {

namespace {

constexpr int kStopSignals[] = {SIGTERM, SIGINT, SIGHUP, SIGQUIT};
constexpr const char kAddressVariable[] = "DBUS_SYSTEM_BUS_ADDRESS";
constexpr const char kNotice[] = "a simulation of the Wi-Fi daemon; no radio is touched";

// From here on the loop reads the signals, so none ends the program before the cleanup.
class BlockedSignals {
  public:
    BlockedSignals() {
        sigset_t blocked;
        ::sigemptyset(&blocked);
        ::sigaddset(&blocked, SIGCHLD);
        for (const int signal : kStopSignals) ::sigaddset(&blocked, signal);
        ::sigprocmask(SIG_BLOCK, &blocked, &before_);
        ::signal(SIGPIPE, SIG_IGN);
    }

    // The signals that were blocked before.
    const sigset_t& before() const { return before_; }

  private:
    sigset_t before_;
};

// Tells why a run ends, and returns its status.
int failed(const std::string& reason, int status = EXIT_FAILURE) {
    complain(reason);
    return status;
}

// Members are destroyed in reverse order: the program before the bus that it uses.
class Session {
  public:
    Session(World world, const SessionOptions& options);

    int run();

  private:
    Result<void, std::string> start();
    Result<void, std::string> startPrivateBus();
    void watchSignals();
    bool announce() const;
    int startProgram();
    void stop(int status);

    static int signalArrived(sd_event_source*, const signalfd_siginfo* info, void* session);

    const SessionOptions& options_;
    const BlockedSignals signals_;
    const EventPointer event_ = madeEventLoop();
    std::unique_ptr<PrivateBus> privateBus_;
    Simulation simulation_;
    SimulatedBackend backend_{simulation_.world};
    std::unique_ptr<DaemonServer> server_;
    std::unique_ptr<ControlService> control_;
    std::unique_ptr<Program> program_;
    std::vector<EventSourcePointer> sources_;
    int status_ = EXIT_SUCCESS;
};

Session::Session(World world, const SessionOptions& options)
    : options_(options), simulation_{std::move(world), {}, {}, {}} {}

Result<void, std::string> Session::startPrivateBus() {
    auto bus = PrivateBus::start();
    if (!bus) return Unexpected(std::move(bus).error());
    privateBus_ = *std::move(bus);
    ::setenv(kAddressVariable, privateBus_->address().c_str(), 1);
    return {};
}

Result<void, std::string> Session::start() {
    if (options_.isPrivate) {
        if (auto started = startPrivateBus(); !started) return started;
    }
    watchSignals();
    const auto onLoss = [this] {
        guarded([this] {
            complain("the bus is gone");
            stop(EXIT_FAILURE);
            return 0;
        });
    };
    const auto onNameless = [](const std::string& reason) {
        complain("the daemon came back without its name: " + reason);
    };
    const DaemonParts parts = {.backend = backend_,
                               .logging = simulation_.logging,
                               .subscribers = &simulation_.subscribers,
                               .faults = &simulation_.faults};
    server_ = std::make_unique<DaemonServer>(event_.get(), parts,
                                             DaemonServerHandlers{onLoss, onNameless});
    if (auto started = server_->start(); !started) return started;
    control_ = std::make_unique<ControlService>(
        event_.get(), ControlService::Parts{simulation_, backend_, *server_},
        [this] { stop(EXIT_SUCCESS); });
    return control_->start();
}

int Session::run() {
    if (const auto started = start(); !started) return failed(started.error());
    if (!control_->isReachable()) complain("the bus lets nobody control the simulation");
    for (const std::string& line : options_.lines) {
        const ControlResult result = control_->follow(line);
        if (!result.refusal.empty()) return failed(line + ": " + result.refusal);
        if (!print(result.text)) return EXIT_FAILURE;
    }
    if (!options_.command.empty()) {
        if (const int status = startProgram(); status != EXIT_SUCCESS) return status;
    } else if (!announce()) {
        return EXIT_FAILURE;
    }
    const int status = check(::sd_event_loop(event_.get()), "waiting");
    return status_ != EXIT_SUCCESS ? status_ : status;
}

void Session::watchSignals() {
    for (const int signal : kStopSignals) {
        sd_event_source* source = nullptr;
        check(::sd_event_add_signal(event_.get(), &source, signal, signalArrived, this),
              "watching signals");
        sources_.emplace_back(source);
    }
}

// A shell can read this output, up to the last line.
bool Session::announce() const {
    std::string text = std::string("# halvaned-sim: ") + kNotice + '\n';
    if (privateBus_) {
        text += std::string("export ") + kAddressVariable + '=' + privateBus_->address() + '\n';
    }
    return print(text + "ready\n");
}

// Returns the status of the session if the program cannot be started. Standard output belongs to
// the program.
int Session::startProgram() {
    complain(kNotice);
    auto program = Program::start(event_.get(), options_.command, signals_.before(),
                                  [this](int status) { ::sd_event_exit(event_.get(), status); });
    if (!program) return failed(program.error().reason, program.error().status);
    program_ = *std::move(program);
    return EXIT_SUCCESS;
}

// A status other than 0 is the session's status, whatever the program's status is.
void Session::stop(int status) {
    status_ = status_ != EXIT_SUCCESS ? status_ : status;
    if (program_) {
        program_->terminate();
    } else {
        ::sd_event_exit(event_.get(), status);
    }
}

int Session::signalArrived(sd_event_source*, const signalfd_siginfo* info, void* userData) {
    return guarded([=] {
        auto& session = *static_cast<Session*>(userData);
        // Control-C and Control-\ on a terminal reach the program too, which handles them itself.
        const bool isOfKeyboard = info->ssi_signo == SIGINT || info->ssi_signo == SIGQUIT;
        const bool isProgrammes = session.program_ && isOfKeyboard && info->ssi_code == SI_KERNEL;
        if (!isProgrammes) session.stop(EXIT_SUCCESS);
        return 0;
    });
}

struct BusErrorOwner {
    sd_bus_error error{};
    ~BusErrorOwner() { ::sd_bus_error_free(&error); }
};

Result<std::string, std::string> sendLine(sd_bus* bus, const std::string& line) {
    BusErrorOwner owner;
    sd_bus_message* reply = nullptr;
    const int result = ::sd_bus_call_method(bus, kControlName, kControlPath, kControlName,
                                            "Control", &owner.error, &reply, "s", line.c_str());
    const BusMessagePointer replyOwner(reply);
    if (result < 0 && owner.error.message != nullptr) {
        return Unexpected(line + ": " + owner.error.message);
    }
    const char* text = nullptr;
    auto sent = busAttempt(result, line.c_str());
    if (sent) sent = busAttempt(::sd_bus_message_read(reply, "s", &text), line.c_str());
    if (!sent) return Unexpected(std::move(sent).error());
    return text;
}

}  // namespace

int simulate(World world, const SessionOptions& options) {
    return Session(std::move(world), options).run();
}

int sendLines(const std::vector<std::string>& lines) {
    const auto bus = openSystemBus();
    if (!bus) return failed(bus.error());
    for (const std::string& line : lines) {
        const auto text = sendLine(bus->get(), line);
        if (!text) return failed(text.error());
        if (!print(*text)) return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}

}  // namespace halvane::sim
