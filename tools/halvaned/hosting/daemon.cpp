#include "tools/halvaned/hosting/daemon.h"

#include <csignal>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <optional>
#include <sys/epoll.h>
#include <sys/signalfd.h>
#include <sys/stat.h>
#include <sys/time.h>
#include <systemd/sd-daemon.h>
#include <systemd/sd-event.h>
#include <unistd.h>
#include <utility>
#include <vector>

#include "halvane/base/escaped_text.h"
#include "halvane/base/result.h"
#include "halvane/base/status.h"
#include "halvane/platform/bus/event_loop_internal.h"
#include "halvane/platform/os/file_internal.h"
#include "halvane/service/daemon_limits.h"
#include "halvane/service/daemon_server.h"
#include "halvane/utils/log.h"

#include "tools/halvaned/driver.h"
#include "tools/halvaned/hostapd/event_source.h"
#include "tools/halvaned/hostapd/host.h"
#include "tools/halvaned/hostapd/predecessor.h"
#include "tools/halvaned/hosting/daemon_logging.h"
#include "tools/halvaned/hosting/hosting_backend.h"
#include "tools/halvaned/radio/device_source.h"
#include "tools/halvaned/radio/link_events.h"
#include "tools/halvaned/radio/radio_devices.h"
#include "tools/halvaned/radio/wired_devices.h"
#include "tools/halvaned/settings/settings.h"
#include "tools/halvaned/settings/settings_file.h"

namespace halvane::hosting {

namespace {

// From SIGTERM to the end, whatever hostapd does: less than the second that users and systemd
// expect.
constexpr std::uint64_t kLongestEnd = 800'000;  // microseconds
constexpr long kLongestFlush = 150'000;

// The exit status for a usage error, too: the next start would end the same way.
constexpr int kBadSettings = 2;

// What an earlier daemon's hostapd gets from SIGTERM to SIGKILL.
constexpr std::uint64_t kPredecessorGrace = 700'000;

Result<Settings, std::string> settingsOf(const DaemonOptions& options) {
    if (!options.settingsFile) return readSettings(kSettingsFile, IfMissing::UseDefaults);
    return readSettings(*options.settingsFile, IfMissing::Fail);
}

HostSettings hostSettingsOf(const Settings& settings) {
    return {.program = settings.hostapd, .runtimeFolder = settings.runtimeFolder};
}

// Signals that the loop reads. hostapd's end is one of them.
void blockSignals() {
    sigset_t blocked;
    ::sigemptyset(&blocked);
    for (const int signal : {SIGCHLD, SIGTERM, SIGINT, SIGHUP}) ::sigaddset(&blocked, signal);
    ::sigprocmask(SIG_BLOCK, &blocked, nullptr);
    ::signal(SIGPIPE, SIG_IGN);
}

// hostapd may be slow to die, and the server waits until the bus has taken its last replies.
// Neither keeps the process: it ends by itself then, with that status, unless the object goes
// before.
class EndsSoon {
  public:
    explicit EndsSoon(int status) {
        ::signal(
            SIGALRM, status == EXIT_SUCCESS ? [](int) { ::_exit(EXIT_SUCCESS); }
                                            : [](int) { ::_exit(EXIT_FAILURE); });
        setTimer(kLongestFlush);
    }
    EndsSoon(const EndsSoon&) = delete;
    EndsSoon& operator=(const EndsSoon&) = delete;
    ~EndsSoon() { setTimer(0); }

  private:
    static void setTimer(long microseconds) {
        const itimerval timer = {.it_interval = {}, .it_value = {0, microseconds}};
        ::setitimer(ITIMER_REAL, &timer, nullptr);
    }
};

// Until something is hosted, a signal to end does so at once, whatever the bus is waited for.
class EndsAtOnce {
  public:
    EndsAtOnce() {
        for (const int signal : {SIGTERM, SIGINT}) {
            ::sigaddset(&signals_, signal);
            ::signal(signal, [](int) { ::_exit(EXIT_SUCCESS); });
        }
        ::sigprocmask(SIG_UNBLOCK, &signals_, nullptr);
    }
    EndsAtOnce(const EndsAtOnce&) = delete;
    EndsAtOnce& operator=(const EndsAtOnce&) = delete;
    ~EndsAtOnce() { ::sigprocmask(SIG_BLOCK, &signals_, nullptr); }

  private:
    sigset_t signals_ = {};
};

class Daemon {
  public:
    Daemon(EventPointer loop, DaemonOptions options, Settings settings)
        : loop_(std::move(loop)), options_(std::move(options)), settings_(std::move(settings)) {}

    int run();

  private:
    Result<void, std::string> start();
    Result<void, std::string> prepareFolders() const;
    Result<void, std::string> joinBus();
    void open(std::size_t ended);
    Result<void, std::string> watchDevices();
    Result<void, std::string> watchSignals();
    void readSettingsAgain();
    void end(int status);
    void giveUpOnHosts();

    static int signalled(sd_event_source*, const signalfd_siginfo* info, void* daemon);
    static int devicesChanged(sd_event_source*, int, std::uint32_t, void* daemon);

    const EventPointer loop_;
    const DaemonOptions options_;
    Settings settings_;
    DaemonLogging logging_;
    std::unique_ptr<DeviceSource> devices_;
    std::unique_ptr<HostingBackend> backend_;
    std::unique_ptr<DaemonServer> server_;
    std::unique_ptr<Predecessor> predecessor_;
    std::vector<EventSourcePointer> sources_;
    EventSourcePointer patience_;
    bool isOpen_ = false;  // whether it hosts
    bool isEnding_ = false;
    int status_ = EXIT_SUCCESS;
};

// Nothing of an earlier daemon runs any more.
void Daemon::open(std::size_t ended) {
    if (ended > 0) logNotice("ended what an earlier daemon had left");
    if (isEnding_) return;
    isOpen_ = true;
    backend_->open();
    ::sd_notify(0, "READY=1");
    logNotice("ready");
}

int Daemon::run() {
    if (const auto ready = start(); !ready) {
        logError(ready.error());
        return EXIT_FAILURE;
    }
    const int result = ::sd_event_loop(loop_.get());
    if (result < 0) status_ = EXIT_FAILURE;
    const EndsSoon limit(status_);
    backend_->kill();
    server_.reset();
    return status_;
}

// The name on the bus comes before the state: whoever owns it has the state's file, and hostapd, to
// itself.
Result<void, std::string> Daemon::start() {
    if (auto folders = prepareFolders(); !folders) return folders;
    if (auto signals = watchSignals(); !signals) return signals;
    auto links = LinkEvents::open();
    if (!links) return Unexpected(std::move(links).error());
    if (settings_.driver == Driver::Wired) {
        devices_ = std::make_unique<WiredDevices>(*std::move(links), settings_.interfaces);
    } else {
        devices_ = std::make_unique<RadioDevices>(*std::move(links), settings_.interfaces);
    }
    backend_ = std::make_unique<HostingBackend>(loop_.get(), *devices_, settings_,
                                                hostSettingsOf(settings_));
    const auto onLoss = [this] {
        logError("The bus is gone.");
        end(EXIT_FAILURE);
    };
    server_ = std::make_unique<DaemonServer>(
        loop_.get(),
        DaemonParts{.backend = *backend_,
                    .logging = logging_,
                    .limits = DaemonLimits{.subscribers = settings_.subscribers}},
        DaemonServerHandlers{.onLoss = onLoss});
    if (auto joined = joinBus(); !joined) return joined;
    predecessor_ =
        std::make_unique<Predecessor>(loop_.get(), settings_.runtimeFolder, kPredecessorGrace,
                                      [this](std::size_t ended) { open(ended); });
    if (auto loaded = backend_->load(); !loaded) return loaded;
    return watchDevices();
}

Result<void, std::string> Daemon::joinBus() {
    const EndsAtOnce signals;
    return server_->start();
}

// Keys and sockets are in the runtime folder.
Result<void, std::string> Daemon::prepareFolders() const {
    const std::string control = settings_.runtimeFolder + "/control";
    if (makeFolders(control, kPrivateFolderMode) != kStatusOK) {
        return Unexpected("The folder " + control + " cannot be made.");
    }
    struct stat found = {};
    if (::stat(settings_.runtimeFolder.c_str(), &found) != 0 || found.st_uid != ::geteuid() ||
        (found.st_mode & (S_IRWXG | S_IRWXO)) != 0) {
        return Unexpected("The folder " + settings_.runtimeFolder +
                          " has to be the daemon's own, and closed to others (mode 0700).");
    }
    return {};
}

Result<void, std::string> Daemon::watchDevices() {
    sd_event_source* source = nullptr;
    if (::sd_event_add_io(loop_.get(), &source, devices_->descriptor(), EPOLLIN, devicesChanged,
                          this) < 0) {
        return Unexpected(std::string("The kernel's devices cannot be watched."));
    }
    sources_.emplace_back(source);
    return {};
}

Result<void, std::string> Daemon::watchSignals() {
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        sd_event_source* source = nullptr;
        if (::sd_event_add_signal(loop_.get(), &source, signal, signalled, this) < 0) {
            return Unexpected(std::string("Signals cannot be watched."));
        }
        sources_.emplace_back(source);
    }
    return {};
}

int Daemon::signalled(sd_event_source*, const signalfd_siginfo* info, void* data) {
    auto& daemon = *static_cast<Daemon*>(data);
    return guarded([&] {
        if (info->ssi_signo == SIGHUP) {
            daemon.readSettingsAgain();
        } else {
            daemon.end(EXIT_SUCCESS);
        }
    });
}

int Daemon::devicesChanged(sd_event_source*, int, std::uint32_t, void* data) {
    return guarded([data] { static_cast<Daemon*>(data)->backend_->updateDevices(); });
}

void Daemon::readSettingsAgain() {
    if (isEnding_) return;
    if (isOpen_) ::sd_notify(0, "RELOADING=1");
    LogReopen();
    if (auto settings = settingsOf(options_)) {
        const ChangedSettings changes = changesBetween(settings_, *settings);
        for (const auto key : changes.needRestart) {
            logNotice(std::string(key) + " counts when the daemon is started again.");
        }
        settings_ = settingsWithoutRestart(settings_, *std::move(settings));
        backend_->setSettings(settings_);
        logNotice("read the settings again");
    } else {
        logError(settings.error() + " The settings stay as they were.");
    }
    if (isOpen_) ::sd_notify(0, "READY=1");
}

void Daemon::end(int status) {
    if (status_ == EXIT_SUCCESS) status_ = status;
    if (std::exchange(isEnding_, true)) return;
    ::sd_notify(0, "STOPPING=1");
    patience_ = timerOf<&Daemon::giveUpOnHosts>(loop_.get(), kLongestEnd, this);
    if (!patience_ || !backend_) return giveUpOnHosts();
    backend_->end([this] { giveUpOnHosts(); });
}

// What still runs is killed when the backend goes.
void Daemon::giveUpOnHosts() {
    ::sd_event_exit(loop_.get(), 0);
}

}  // namespace

int runDaemon(DaemonOptions options) {
    // In the background the process is in another folder.
    if (options.settingsFile) {
        options.settingsFile = std::filesystem::absolute(*options.settingsFile).string();
    }
    auto settings = settingsOf(options);
    if (!settings) {
        std::fprintf(stderr, "halvaned: %s\n", escapedText(settings.error()).c_str());
        return kBadSettings;
    }
    if (!options.isForeground && ::daemon(0, 0) != 0) {
        std::fputs("halvaned: the process cannot go to the background\n", stderr);
        return EXIT_FAILURE;
    }
    startLogging(options.isForeground ? LogPlace::Console : LogPlace::File, options.isVerbose);
    blockSignals();
    auto loop = newEventLoop();
    if (!loop) return EXIT_FAILURE;
    return Daemon(std::move(loop), options, *std::move(settings)).run();
}

}  // namespace halvane::hosting
