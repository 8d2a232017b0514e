// A program in the place of hostapd. It does what the lines of the file "play" say that stands
// beside its last argument, and then runs until a signal ends it, as hostapd does: with status 0 by
// SIGTERM. At SIGUSR1 it does what the file says then.
//
//   say TEXT      prints a line                  begin TEXT   prints a line without its end
//   long N        prints a line of N characters  flood N      prints N lines
//   exit N        ends at once                   stubborn     ignores SIGTERM
//   facts         prints what it inherited       linger       leaves its output to a child
//   kill          kills its parent
//
// Without these it has no control sockets, and the test may play them itself:
//
//   serve             has a socket for each network of its file, and answers as hostapd does
//   join N, leave N   the first N stations come or go, as events of the first network
//   has N             it has the first N stations without an event
//   event TEXT        an event of the first network
//   reply VERB TEXT   another answer to requests that begin so; "\n" ends a line of it
//   killat VERB       kills its parent when such a request comes
#include <csignal>
#include <cstdlib>
#include <dirent.h>
#include <fstream>
#include <iostream>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <sys/prctl.h>
#include <systemd/sd-event.h>
#include <unistd.h>

#include "tests/halvaned/hostapd/played_network.h"

using halvane::testing::addressText;
using halvane::testing::PlayedNetwork;

extern char** environ;

namespace {

int openDescriptors() {
    int count = 0;
    DIR* const folder = ::opendir("/proc/self/fd");
    while (::readdir(folder) != nullptr) ++count;
    ::closedir(folder);
    return count - 4;  // ".", "..", the folder itself, and what is played
}

void printFacts() {
    sigset_t blocked;
    ::sigprocmask(SIG_SETMASK, nullptr, &blocked);
    int deathSignal = 0;
    ::prctl(PR_GET_PDEATHSIG, &deathSignal);
    struct sigaction pipe {};
    ::sigaction(SIGPIPE, nullptr, &pipe);
    std::cout << "descriptors " << openDescriptors() << "\nblocked "
              << ::sigismember(&blocked, SIGCHLD) << "\nignored " << (pipe.sa_handler == SIG_IGN)
              << "\nleader " << (::getpgrp() == ::getpid()) << "\nenvironment "
              << (environ[0] != nullptr) << "\ndeath " << deathSignal << "\ninput "
              << (std::cin.get() >= 0) << std::endl;
}

// --- Control sockets ---

sd_event* loop() {
    static sd_event* const made = [] {
        sd_event* event = nullptr;
        if (::sd_event_new(&event) < 0) ::_exit(99);
        return event;
    }();
    return made;
}

std::string file;                                        // the configuration
std::map<int, std::unique_ptr<PlayedNetwork>> networks;  // in its order

std::string folderOf(const std::string& path) {
    return path.substr(0, path.rfind('/') + 1);
}

void serve() {
    std::ifstream lines(file);
    std::string interface;
    for (std::string line; std::getline(lines, line);) {
        const auto end = line.find('=');
        const std::string key = line.substr(0, end);
        if (key == "interface" || key == "bss") interface = line.substr(end + 1);
        if (key != "ctrl_interface") continue;
        const std::string path = line.substr(end + 1) + '/' + interface;
        ::unlink(path.c_str());  // of one that was killed
        const int number = static_cast<int>(networks.size());
        networks[number] = std::make_unique<PlayedNetwork>(loop(), path);
    }
}

void happen(const std::string& event) {
    networks.at(0)->server().sendPatiently("<3>" + event);
}

void join(int count) {
    for (int i = 1; i <= count; ++i) {
        networks.at(0)->flags[addressText(i)] = "[AUTHORIZED]";
        happen("AP-STA-CONNECTED " + addressText(i));
    }
}

void leave(int count) {
    for (int i = 1; i <= count; ++i) {
        networks.at(0)->flags.erase(addressText(i));
        happen("AP-STA-DISCONNECTED " + addressText(i));
    }
}

void have(int count) {
    for (int i = 1; i <= count; ++i) networks.at(0)->flags[addressText(i)] = "[AUTHORIZED]";
}

void setReply(const std::string& verbAndText) {
    const std::string verb = verbAndText.substr(0, verbAndText.find(' '));
    std::string text = verbAndText.substr(verb.size() + 1);
    for (auto at = text.find("\\n"); at != std::string::npos; at = text.find("\\n", at)) {
        text.replace(at, 2, "\n");
    }
    for (const auto& [number, network] : networks) network->replies[verb] = text;
}

void killParent() {
    ::kill(::getppid(), SIGKILL);
}

void killParentAt(const std::string& verb) {
    networks.at(0)->heard = [verb](const std::string& heard) {
        if (heard == verb) killParent();
    };
}

// --- The play ---

void play(const std::string& line) {
    const std::string verb = line.substr(0, line.find(' '));
    const std::string rest = line.size() > verb.size() ? line.substr(verb.size() + 1) : "";
    if (verb == "say") std::cout << rest << std::endl;
    if (verb == "begin") std::cerr << rest << std::flush;
    if (verb == "long") std::cout << std::string(std::stoul(rest), 'x') << std::endl;
    if (verb == "flood") {
        for (unsigned long i = 0; i < std::stoul(rest); ++i) std::cout << "line " << i << '\n';
        std::cout << std::flush;
    }
    if (verb == "exit") ::_exit(std::stoi(rest));
    if (verb == "stubborn") ::signal(SIGTERM, SIG_IGN);
    if (verb == "facts") printFacts();
    if (verb == "kill") killParent();
    if (verb == "serve") serve();
    if (verb == "join") join(std::stoi(rest));
    if (verb == "leave") leave(std::stoi(rest));
    if (verb == "has") have(std::stoi(rest));
    if (verb == "event") happen(rest);
    if (verb == "reply") setReply(rest);
    if (verb == "killat") killParentAt(rest);
    if (verb == "linger" && ::fork() == 0) {
        ::alarm(60);
        for (;;) ::pause();
    }
}

void playFile() {
    std::ifstream lines(folderOf(file) + "play");
    for (std::string line; std::getline(lines, line);) play(line);
}

int playAgain(sd_event_source*, const struct signalfd_siginfo*, void*) {
    playFile();
    return 0;
}

// Ends by a signal alone.
void runLoop() {
    sigset_t again;
    ::sigemptyset(&again);
    ::sigaddset(&again, SIGUSR1);
    ::sigprocmask(SIG_BLOCK, &again, nullptr);
    ::sd_event_add_signal(loop(), nullptr, SIGUSR1, playAgain, nullptr);
    ::sd_event_loop(loop());
}

}  // namespace

int main(int argc, char** argv) {
    ::alarm(120);  // a test that hangs leaves nothing behind
    ::signal(SIGTERM, [](int) { ::_exit(0); });
    file = argv[argc - 1];
    playFile();
    runLoop();
}
