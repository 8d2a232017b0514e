// A program in the place of hostapd, without its control socket, which the test plays itself. It
// does what the lines of the file "play" say that stands beside its last argument, and then runs
// until a signal ends it, as hostapd does: with status 0 by SIGTERM.
//
//   say TEXT      prints a line                  begin TEXT   prints a line without its end
//   long N        prints a line of N characters  flood N      prints N lines
//   exit N        ends at once                   stubborn     ignores SIGTERM
//   facts         prints what it inherited       linger       leaves its output to a child
#include <csignal>
#include <cstdlib>
#include <dirent.h>
#include <fstream>
#include <iostream>
#include <string>
#include <sys/prctl.h>
#include <unistd.h>

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
    if (verb == "linger" && ::fork() == 0) {
        ::alarm(60);
        for (;;) ::pause();
    }
}

}  // namespace

int main(int argc, char** argv) {
    ::alarm(120);  // a test that hangs leaves nothing behind
    ::signal(SIGTERM, [](int) { ::_exit(0); });
    const std::string file = argv[argc - 1];
    std::ifstream lines(file.substr(0, file.rfind('/') + 1) + "play");
    for (std::string line; std::getline(lines, line);) play(line);
    for (;;) ::pause();
}
