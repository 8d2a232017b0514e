#include "tools/halvaned-sim/private_bus.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>

#include "halvane/platform/bus/address_internal.h"

namespace halvane::sim {

namespace {

// The longest path that dbus-daemon accepts. It is shorter than a socket address can hold.
constexpr std::size_t kLongestSocketPath = 99;

// Runs between fork and exec.
[[noreturn]] void becomeBus(const char* configuration, const char* errors, int addressPipe,
                            pid_t parent) {
    // Control-C on a terminal must not end the bus, because the simulation needs it until it has
    // stopped.
    ::setpgid(0, 0);
    ::prctl(PR_SET_PDEATHSIG, SIGTERM);
    if (::getppid() != parent) ::_exit(1);  // the parent ended before the child could watch it
    sigset_t none;
    ::sigemptyset(&none);
    ::sigprocmask(SIG_SETMASK, &none, nullptr);
    ::dup2(::open("/dev/null", O_RDONLY), STDIN_FILENO);
    ::dup2(addressPipe, STDOUT_FILENO);
    ::dup2(::open(errors, O_WRONLY | O_CREAT, 0600), STDERR_FILENO);
    ::execlp("dbus-daemon", "dbus-daemon", "--nofork", "--nopidfile", "--nosyslog",
             "--print-address=1", configuration, nullptr);
    ::_exit(127);
}

// The first line from `descriptor`, or the rest if that ends before a newline.
std::string readLine(int descriptor) {
    std::string line;
    char byte = 0;
    while (true) {
        const ssize_t count = ::read(descriptor, &byte, 1);
        if (count < 0 && errno == EINTR) continue;
        if (count != 1 || byte == '\n') return line;
        line += byte;
    }
}

std::string firstLineOf(const std::string& path) {
    std::ifstream file(path);
    std::string line;
    return std::getline(file, line) ? line : std::string("is it installed?");
}

Unexpected<std::string> refuseFolder(const std::string& parent, const std::string& reason) {
    return Unexpected("no folder can be made in " + parent + ": " + reason);
}

// The parent of new folders. It is absolute, because it is passed to programs that may have another
// working directory.
Result<std::string, std::string> absoluteParent() {
    const char* const named = std::getenv("TMPDIR");
    const std::string parent = named != nullptr && *named != '\0' ? named : "/tmp";
    std::error_code error;
    const auto absolute = std::filesystem::absolute(parent, error);
    if (error) return refuseFolder(parent, error.message());
    return absolute.string();
}

}  // namespace

Result<TemporaryFolder, std::string> TemporaryFolder::make() {
    auto parent = absoluteParent();
    if (!parent) return Unexpected(std::move(parent).error());
    std::string name = *parent + "/halvaned-sim-XXXXXX";
    if (::mkdtemp(name.data()) == nullptr) return refuseFolder(*parent, std::strerror(errno));
    return TemporaryFolder(std::move(name));
}

TemporaryFolder::~TemporaryFolder() {
    if (path_.empty()) return;
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

Result<std::unique_ptr<PrivateBus>, std::string> PrivateBus::start() {
    auto folder = TemporaryFolder::make();
    if (!folder) return Unexpected(std::move(folder).error());
    std::unique_ptr<PrivateBus> bus(new PrivateBus(*std::move(folder)));
    const std::string path = bus->folder_.path() + "/bus.conf";
    if (!bus->writeConfiguration(path)) return Unexpected(path + " cannot be written");
    auto running = bus->run("--config-file=" + path);
    if (!running) return Unexpected(std::move(running).error());
    return bus;
}

PrivateBus::~PrivateBus() {
    stop();
}

// The address of a socket in the folder. If the folder's path leaves no room for it, an abstract
// socket, whose name is the unique last part of the path, and the process number. Escaped text is
// safe in XML too.
std::string PrivateBus::listenAddress() const {
    const std::string path = folder_.path() + "/bus";
    if (path.size() <= kLongestSocketPath) return "unix:path=" + escapedBusAddressValue(path);
    const std::string name = std::filesystem::path(folder_.path()).filename().string();
    return "unix:abstract=" + escapedBusAddressValue(name) + "-" + std::to_string(::getpid());
}

// The policy allows everything except replies that nobody expects, as on any bus. The limits are
// those of a bus with enough memory, because a burst of notifications has to wait for slow readers.
bool PrivateBus::writeConfiguration(const std::string& path) const {
    std::ofstream file(path);
    file << "<!DOCTYPE busconfig PUBLIC \"-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN\"\n"
            " \"http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd\">\n"
            "<busconfig>\n"
            "  <listen>"
         << listenAddress()
         << "</listen>\n"
            "  <auth>EXTERNAL</auth>\n"
            "  <policy context=\"default\">\n"
            "    <allow own=\"*\"/>\n"
            "    <allow send_destination=\"*\"/>\n"
            "    <allow receive_sender=\"*\"/>\n"
            "  </policy>\n"
            "  <limit name=\"max_incoming_bytes\">1000000000</limit>\n"
            "  <limit name=\"max_outgoing_bytes\">1000000000</limit>\n"
            "  <limit name=\"max_replies_per_connection\">50000</limit>\n"
            "</busconfig>\n";
    return file.flush().good();
}

Result<void, std::string> PrivateBus::run(const std::string& configuration) {
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0) return Unexpected("there is no pipe left");
    const pid_t parent = ::getpid();
    const std::string errors = folder_.path() + "/errors";
    process_ = ::fork();
    if (process_ == 0) becomeBus(configuration.c_str(), errors.c_str(), ends[1], parent);
    ::close(ends[1]);
    address_ = process_ > 0 ? readLine(ends[0]) : "";
    ::close(ends[0]);
    if (!address_.empty()) return {};
    stop();
    return Unexpected("dbus-daemon does not start: " + firstLineOf(errors));
}

// The process stays a child until it has been waited for, so no other process can have its number.
void PrivateBus::stop() {
    if (process_ <= 0) return;
    ::kill(process_, SIGTERM);
    while (::waitpid(process_, nullptr, 0) < 0 && errno == EINTR) {
    }
    process_ = -1;
}

}  // namespace halvane::sim
