// Starts a program with standard streams of the test's choice.
#ifndef TESTS_SUPPORT_SPAWN_PROGRAM_H
#define TESTS_SUPPORT_SPAWN_PROGRAM_H

#include <fcntl.h>
#include <filesystem>
#include <spawn.h>
#include <string>
#include <sys/types.h>
#include <system_error>
#include <unistd.h>
#include <variant>
#include <vector>

extern char** environ;

namespace halvane::testing {

// What becomes a standard stream: the test's own stream, an open descriptor, or a file. A file to
// which a program writes is created.
using StreamSource = std::variant<std::monostate, int, std::filesystem::path>;

struct StandardStreams {
    StreamSource input = {};
    StreamSource output = {};
    StreamSource errors = {};
};

// The array that exec requires. It ends with a null pointer, and is valid as long as the words.
inline std::vector<char*> argumentsOf(std::vector<std::string>& words) {
    std::vector<char*> arguments;
    for (std::string& word : words) arguments.push_back(word.data());
    arguments.push_back(nullptr);
    return arguments;
}

// The steps of a new process before it becomes the program.
class SpawnActions {
  public:
    SpawnActions() { check(::posix_spawn_file_actions_init(&actions_)); }
    SpawnActions(const SpawnActions&) = delete;
    SpawnActions& operator=(const SpawnActions&) = delete;
    ~SpawnActions() { ::posix_spawn_file_actions_destroy(&actions_); }

    void set(int stream, const StreamSource& source) {
        if (const auto* descriptor = std::get_if<int>(&source)) {
            check(::posix_spawn_file_actions_adddup2(&actions_, *descriptor, stream));
        } else if (const auto* path = std::get_if<std::filesystem::path>(&source)) {
            const int mode = stream == STDIN_FILENO ? O_RDONLY : O_WRONLY | O_CREAT;
            check(::posix_spawn_file_actions_addopen(&actions_, stream, path->c_str(), mode, 0600));
        }
    }

    const posix_spawn_file_actions_t* get() const { return &actions_; }

  private:
    static void check(int error) {
        if (error != 0) throw std::system_error(error, std::generic_category(), "a stream");
    }

    posix_spawn_file_actions_t actions_;
};

// words[0] is the program's path. Throws std::system_error, a std::runtime_error, if it does not
// start. The caller waits for its end.
inline pid_t spawnProgram(std::vector<std::string> words, const StandardStreams& streams) {
    SpawnActions actions;
    actions.set(STDIN_FILENO, streams.input);
    actions.set(STDOUT_FILENO, streams.output);
    actions.set(STDERR_FILENO, streams.errors);
    const std::vector<char*> arguments = argumentsOf(words);
    pid_t process = -1;
    const int error =
        ::posix_spawn(&process, arguments[0], actions.get(), nullptr, arguments.data(), environ);
    if (error != 0) throw std::system_error(error, std::generic_category(), words[0]);
    return process;
}

}  // namespace halvane::testing

#endif
