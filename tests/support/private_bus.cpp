#include "tests/support/private_bus.h"

#include <array>
#include <csignal>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace halvane::testing {

namespace {

// Runs in the child, so it calls only functions that are safe between fork and exec.
[[noreturn]] void becomeBus(const char* configuration, int addressPipe) {
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);  // a test that crashes leaves no bus behind
    sigset_t none;
    ::sigemptyset(&none);
    ::sigprocmask(SIG_SETMASK, &none, nullptr);
    const int null = ::open("/dev/null", O_RDWR);
    ::dup2(addressPipe, STDOUT_FILENO);
    ::dup2(null, STDERR_FILENO);
    ::execlp("dbus-daemon", "dbus-daemon", "--nofork", "--nopidfile", "--print-address=1",
             configuration, nullptr);
    ::_exit(127);
}

// The first line from `descriptor`, or the rest if that ends before a newline.
std::string readLine(int descriptor) {
    std::string line;
    char byte = 0;
    while (::read(descriptor, &byte, 1) == 1 && byte != '\n') line += byte;
    return line;
}

constexpr const char kFreePolicy[] =
    "<policy context=\"default\"><allow user=\"*\"/><allow own=\"*\"/>"
    "<allow send_destination=\"*\"/><allow receive_sender=\"*\"/></policy>\n";

constexpr const char kStrictPolicy[] =
    "<policy context=\"default\"><allow user=\"*\"/><deny own=\"*\"/>"
    "<deny send_type=\"method_call\"/><allow send_type=\"signal\"/>"
    "<allow send_requested_reply=\"true\" send_type=\"method_return\"/>"
    "<allow send_requested_reply=\"true\" send_type=\"error\"/>"
    "<allow receive_type=\"method_call\"/><allow receive_type=\"method_return\"/>"
    "<allow receive_type=\"error\"/><allow receive_type=\"signal\"/>"
    "<allow send_destination=\"org.freedesktop.DBus\"/></policy>\n";

}  // namespace

PrivateBus::PrivateBus() : PrivateBus(Options{}) {}

PrivateBus::PrivateBus(const Options& options) {
    configuration_ = "--config-file=" + writeConfiguration(options);
    start(configuration_);
    environment_.emplace("DBUS_SYSTEM_BUS_ADDRESS", address_);
}

PrivateBus::~PrivateBus() {
    kill();
}

void PrivateBus::kill() {
    if (process_ < 0) return;
    ::kill(process_, SIGKILL);
    ::waitpid(process_, nullptr, 0);
    process_ = -1;
}

void PrivateBus::restart() {
    kill();
    start(configuration_);
}

// Returns the address of an abstract socket, because a long TMPDIR leaves no room for a path. The
// folder's name makes the address unique.
std::string PrivateBus::listenAddress() const {
    return "unix:abstract=" + folder_.path().filename().string() + "-" + std::to_string(::getpid());
}

std::string PrivateBus::writeConfiguration(const Options& options) const {
    const std::string folder = folder_.path().string();
    if (!options.activatableService.empty()) {
        std::ofstream(folder + "/" + options.activatableService + ".service")
            << "[D-BUS Service]\nName=" << options.activatableService << "\nExec=/bin/false\n";
    }
    const std::string path = folder + "/bus.conf";
    std::ofstream file(path);
    file << "<!DOCTYPE busconfig PUBLIC \"-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN\"\n"
            " \"http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd\">\n"
            "<busconfig>\n"
         << "<listen>" << listenAddress() << "</listen>\n"
         << "<servicedir>" << folder << "</servicedir>\n"
         << (options.isStrict ? kStrictPolicy : kFreePolicy);
    for (const auto& [name, value] : options.limits) {
        file << "<limit name=\"" << name << "\">" << value << "</limit>\n";
    }
    if (!options.policyFile.empty()) file << "<include>" << options.policyFile << "</include>\n";
    file << "</busconfig>\n";
    return path;
}

void PrivateBus::start(const std::string& configuration) {
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
    process_ = ::fork();
    if (process_ == 0) becomeBus(configuration.c_str(), ends[1]);
    ::close(ends[1]);
    address_ = process_ > 0 ? readLine(ends[0]) : "";
    // Leaves out the part that names this process. Clients find a restarted bus by the rest.
    address_ = address_.substr(0, address_.find(",guid="));
    ::close(ends[0]);
    if (address_.empty()) {
        kill();
        throw std::runtime_error("dbus-daemon does not start");
    }
}

}  // namespace halvane::testing
