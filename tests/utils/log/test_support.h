// What tests of the logging system share: a fresh start for each test, categories of their own, and
// child processes.
#ifndef TESTS_UTILS_LOG_TEST_SUPPORT_H
#define TESTS_UTILS_LOG_TEST_SUPPORT_H

#include <cstdint>
#include <cstdio>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>
#include <vector>

#include "halvane/base/status.h"
#include "halvane/platform/plist/preferences.h"
#include "halvane/utils/log.h"
#include "halvane/utils/log/settings_internal.h"
#include "halvane/utils/log/state_internal.h"

#include "tests/support/log_recorder.h"

namespace halvane::testing {

// A category of the test. Its destructor removes it from the library's list.
struct TestCategory : LogCategory {
    explicit TestCategory(const char* itsName, std::int32_t itsDefaultLevel = kLogLevelInfo)
        : LogCategory{} {
        name = itsName;
        defaultLevel = itsDefaultLevel;
        reset();
    }
    TestCategory(const TestCategory&) = delete;
    TestCategory& operator=(const TestCategory&) = delete;
    ~TestCategory() { LogCategory_Remove(this); }

    // Restores the category to its definition, except for its place in the list.
    void reset() {
        level = kLogLevelUninitialized;
        initConfig = nullptr;
        flags = 0;
        prefix = name;
        prefixLength = std::char_traits<char>::length(name);
        output = nullptr;
        ratePeriod = rateIntervalEnd = 0;
        rateMax = rateCount = 0;
    }
};

// Clears all settings, including stored ones, and the list of categories before and after each
// test.
class LogTest : public ::testing::Test {
  protected:
    LogTest() {
        LogUtils_EnsureInitialized();
        forgetAll();
    }
    ~LogTest() override { forgetAll(); }

    // Applies "<name>:<setting>", for the category of exactly that name.
    static HalvaneStatus control(const LogCategory& category, const std::string& setting) {
        return LogControl((std::string("^") + category.name + "$:" + setting).c_str());
    }

    // Initialises the category with the recorder as its output.
    static void record(LogCategory& category, const LogRecorder& recorder) {
        LogIsEnabled(&category, kLogLevelMax);
        EXPECT_EQ(control(category, std::string("output=") + recorder.spec()), kStatusOK);
    }

    // The settings, as "pattern:name=value" each.
    static std::vector<std::string> settings() {
        std::vector<std::string> texts;
        for (const logging::LogAction& action : logging::logState().actions) {
            texts.push_back(action.pattern + ":" + action.name + "=" + action.value);
        }
        return texts;
    }

    // The specifications of the existing outputs.
    static std::vector<std::string> outputs() {
        std::vector<std::string> specs;
        for (const auto& [spec, output] : logging::logState().outputs) specs.push_back(spec);
        return specs;
    }

    static std::string outputOf(const LogCategory& category) {
        return category.output != nullptr ? category.output->spec : "(none)";
    }

  private:
    static void forgetAll() {
        if (readPreference("", "logconfig").value) writePreference("", "logconfig", std::nullopt);
        LogUtils_Finalize();
        LogCategory* category = std::exchange(logging::logState().categories, nullptr);
        while (category != nullptr) category = std::exchange(category->next, nullptr);
    }
};

// While it lives, a file replaces a descriptor, such as standard error.
class ScopedDescriptor {
  public:
    ScopedDescriptor(int descriptor, const char* path)
        : descriptor_(descriptor), saved_(::dup(descriptor)) {
        std::fflush(nullptr);
        const int file = ::open(path, O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600);
        ::dup2(file, descriptor_);
        ::close(file);
    }
    ~ScopedDescriptor() {
        std::fflush(nullptr);
        ::dup2(saved_, descriptor_);
        ::close(saved_);
    }
    ScopedDescriptor(const ScopedDescriptor&) = delete;
    ScopedDescriptor& operator=(const ScopedDescriptor&) = delete;

  private:
    int descriptor_;
    int saved_;
};

// Returns what `run` returns in a process forked from this one; -1 if a signal ended that process.
// A process that takes a minute gets such a signal.
template <typename Run>
int resultInChild(Run run) {
    const pid_t child = ::fork();
    if (child == 0) {
        ::alarm(60);
        // Skips the sanitizers' last check: the child cannot join the threads of its parent.
        ::syscall(SYS_exit_group, run());
    }
    int status = 0;
    if (child < 0 || ::waitpid(child, &status, 0) != child || !WIFEXITED(status)) return -1;
    return WEXITSTATUS(status);
}

}  // namespace halvane::testing

#endif
