#include "tools/halvaned/hostapd/predecessor.h"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <iterator>
#include <optional>
#include <string_view>
#include <sys/epoll.h>
#include <sys/syscall.h>
#include <system_error>
#include <unistd.h>
#include <utility>

#include "tools/halvaned/hostapd/hostapd_file.h"

namespace halvane::hosting {

namespace {

namespace fs = std::filesystem;

// Of the files of a host. "new" is on the way to the file itself (writeHostapdFile()).
constexpr std::string_view kSuffixes[] = {".pid", ".conf", ".pid.new", ".conf.new"};

// What a folder has; less, if it cannot be read.
std::vector<fs::path> filesIn(const std::string& folder) {
    std::vector<fs::path> files;
    std::error_code failure;
    for (fs::directory_iterator file(folder, failure), end; !failure && file != end;
         file.increment(failure)) {
        files.push_back(file->path());
    }
    return files;
}

// The header of glibc 2.36 for these two does not work in C++.
FileDescriptor handleOf(pid_t process) {
    return FileDescriptor(static_cast<int>(::syscall(SYS_pidfd_open, process, 0)));
}
void send(int signal, const FileDescriptor& handle) {
    ::syscall(SYS_pidfd_send_signal, handle.number(), signal, nullptr, 0);
}

// A number of a process; absent if the file holds none.
std::optional<pid_t> numberIn(const std::string& path) {
    constexpr std::size_t kMost = 32;
    const FileText file = readFile(path, kMost);
    pid_t number = 0;
    const char* const end = file.text.data() + file.text.size();
    const auto [rest, error] = std::from_chars(file.text.data(), end, number);
    const bool isWhole = rest == end || (*rest == '\n' && rest + 1 == end);
    if (error != std::errc() || !isWhole || number <= 1) return std::nullopt;
    return number;
}

// The last word of the command line of a process; empty if there is no such process, or no more.
std::string lastWordOf(pid_t process) {
    constexpr std::size_t kMost = 65536;
    std::string line = readFile("/proc/" + std::to_string(process) + "/cmdline", kMost).text;
    if (!line.empty() && line.back() == '\0') line.pop_back();
    return line.substr(line.rfind('\0') + 1);
}

}  // namespace

struct Predecessor::Process {
    Predecessor* owner;
    FileDescriptor handle;  // names the process, whatever becomes of its number
    EventSourcePointer source = {};
};

Predecessor::Predecessor(sd_event* loop, std::string folder, std::uint64_t grace, Done done)
    : loop_(loop), folder_(std::move(folder)), done_(std::move(done)) {
    for (const auto& path : filesIn(folder_)) {
        std::string name = path.filename();
        const auto suffix = std::ranges::find_if(
            kSuffixes, [&](std::string_view each) { return name.ends_with(each); });
        if (suffix == std::end(kSuffixes)) continue;
        name.resize(name.size() - suffix->size());
        if (isHostableName(name)) names_.push_back(name);
    }
    std::ranges::sort(names_);
    names_.erase(std::unique(names_.begin(), names_.end()), names_.end());
    for (const std::string& name : names_) find(name);
    if (!processes_.empty()) patience_ = timerOf<&Predecessor::killAll>(loop_, grace, this);
    finish_ = timerOf<&Predecessor::finishIfAlone>(loop_, 0, this);
}

Predecessor::~Predecessor() {
    killAll();
}

// The process is named by a handle before it is looked at, so that it is the one that is signalled.
void Predecessor::find(const std::string& name) {
    const auto number = numberIn(folder_ + "/" + name + ".pid");
    if (!number) return;
    FileDescriptor handle = handleOf(*number);
    if (!handle || lastWordOf(*number) != folder_ + "/" + name + ".conf") return;
    auto process = std::make_unique<Process>(Process{this, std::move(handle)});
    sd_event_source* source = nullptr;
    const int descriptor = process->handle.number();
    if (::sd_event_add_io(loop_, &source, descriptor, EPOLLIN, hasEnded, process.get()) < 0) return;
    process->source.reset(source);
    send(SIGTERM, process->handle);
    processes_.push_back(std::move(process));
}

void Predecessor::killAll() {
    for (const auto& process : processes_) {
        send(SIGKILL, process->handle);
    }
}

int Predecessor::hasEnded(sd_event_source*, int, std::uint32_t, void* data) {
    return guarded([data] {
        const auto& process = *static_cast<Process*>(data);
        process.owner->ended(process);
    });
}

void Predecessor::ended(const Process& process) {
    ++endedCount_;
    std::erase_if(processes_, [&](const auto& other) { return other.get() == &process; });
    finishIfAlone();
}

void Predecessor::finishIfAlone() {
    if (!processes_.empty()) return;
    patience_.reset();
    finish_.reset();
    removeFiles();
    if (const auto done = std::exchange(done_, {})) done(endedCount_);
}

void Predecessor::removeFiles() const {
    for (const std::string& name : names_) {
        for (const std::string_view suffix : kSuffixes) {
            ::unlink((folder_ + "/" + name).append(suffix).c_str());
        }
    }
    std::error_code ignored;
    for (const auto& path : filesIn(folder_)) {
        const bool isOurs = path.filename().string().starts_with("control-");
        if (isOurs && fs::is_socket(path, ignored)) fs::remove(path, ignored);
    }
}

}  // namespace halvane::hosting
