#include <array>
#include <csignal>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <sys/socket.h>
#include <utility>
#include <vector>

#include "halvane/base/status.h"
#include "halvane/utils/log.h"
#include "halvane/utils/printf.h"

#include "tests/support/file_size_limit.h"
#include "tests/support/output_pipe.h"
#include "tests/support/replaced_system.h"
#include "tests/support/run_program.h"
#include "tests/support/temporary_folder.h"
#include "tests/utils/log/test_support.h"

using halvane::testing::contentsOf;
using halvane::testing::isFileSizeSignalUntouched;
using halvane::testing::limitFileSize;
using halvane::testing::LogRecorder;
using halvane::testing::LogTest;
using halvane::testing::OutputPipe;
using halvane::testing::resultInChild;
using halvane::testing::ScopedDescriptor;
using halvane::testing::TemporaryFolder;
using halvane::testing::TestCategory;

namespace {

// What the system log received: priority and text.
using SystemLogEntries = std::vector<std::pair<int, std::string>>;
SystemLogEntries systemLogEntries;

void keepEntry(int priority, std::string_view text) {
    systemLogEntries.emplace_back(priority, text);
}

class LogOutputTest : public LogTest {
  protected:
    LogOutputTest() {
        systemLogEntries.clear();
        halvane::replaceSystemLog(keepEntry);
    }
    ~LogOutputTest() override { halvane::replaceSystemLog(nullptr); }

    // Gives the category its output, and logs to it.
    void logTo(const std::string& spec, const char* text = "text\n",
               std::uint32_t level = kLogLevelError) {
        LogIsEnabled(&category, kLogLevelMax);
        ASSERT_EQ(control(category, std::string("output=") + spec), kStatusOK) << spec;
        LogPrintF(&category, "f", level, "%s", text);
    }

    HalvaneStatus statusOf(const std::string& spec) {
        return control(category, std::string("output=") + spec);
    }

    TestCategory category{"TestOutput"};
    TemporaryFolder folder;
    const std::string errors = (folder.path() / "errors").string();
    const std::string printed = (folder.path() / "printed").string();
};

// --- Console and standard streams ---

TEST_F(LogOutputTest, ConsoleIsStandardError) {
    const ScopedDescriptor error(STDERR_FILENO, errors.c_str());
    logTo("console");
    EXPECT_EQ(category.output->type, 2);
    EXPECT_EQ(contentsOf(errors), "text\n");
    EXPECT_TRUE(systemLogEntries.empty());
}

TEST_F(LogOutputTest, ConsoleIsTheSystemLogWhereStandardErrorIsTheNullDevice) {
    const ScopedDescriptor error(STDERR_FILENO, "/dev/null");
    logTo("console");
    EXPECT_EQ(category.output->type, 6);
    EXPECT_EQ(systemLogEntries, (SystemLogEntries{{5, "text"}}));
}

TEST_F(LogOutputTest, TheNullDeviceIsKnownByAnotherNameToo) {
    const std::string link = (folder.path() / "link").string();
    ASSERT_EQ(::symlink("/dev/null", link.c_str()), 0);
    const ScopedDescriptor error(STDERR_FILENO, link.c_str());
    logTo("console");
    EXPECT_EQ(category.output->type, 6);
}

TEST_F(LogOutputTest, AnotherDeviceIsNotTheNullDevice) {
    const ScopedDescriptor error(STDERR_FILENO, "/dev/zero");
    logTo("console");
    EXPECT_EQ(category.output->type, 2);
    EXPECT_TRUE(systemLogEntries.empty());
}

TEST_F(LogOutputTest, ConsolePassesItsParametersOn) {
    {
        const ScopedDescriptor error(STDERR_FILENO, errors.c_str());
        const ScopedDescriptor print(STDOUT_FILENO, printed.c_str());
        logTo("console;stdout", "out\n");
        logTo("console;stderr", "err\n");
        EXPECT_EQ(statusOf("console;level=error"), kStatusUnknownParameter);
    }
    EXPECT_EQ(contentsOf(printed), "out\n");
    EXPECT_EQ(contentsOf(errors), "err\n");

    const ScopedDescriptor error(STDERR_FILENO, "/dev/null");
    logTo("console;level=error");
    EXPECT_EQ(systemLogEntries, (SystemLogEntries{{90, "text"}}));
    EXPECT_EQ(statusOf("console;stderr"), kStatusMalformed);
}

TEST_F(LogOutputTest, TheConsoleThatIsThereIsKeptAsItIs) {
    logTo("console", "");
    const ScopedDescriptor error(STDERR_FILENO, "/dev/null");
    logTo("console");
    EXPECT_EQ(category.output->type, 2);
    EXPECT_TRUE(systemLogEntries.empty());
}

TEST_F(LogOutputTest, FileMayBeAStandardStream) {
    struct Row {
        const char* spec;
        bool isError;
    };
    for (const Row& row : {Row{"file", true}, Row{"file;", true}, Row{"file;stderr", true},
                           Row{"file;stdout", false}}) {
        const ScopedDescriptor error(STDERR_FILENO, errors.c_str());
        const ScopedDescriptor print(STDOUT_FILENO, printed.c_str());
        logTo(row.spec, row.spec);
        // Nothing has flushed the stream.
        EXPECT_EQ(contentsOf(row.isError ? errors : printed), row.spec);
        EXPECT_EQ(contentsOf(row.isError ? printed : errors), "");
        ::truncate(errors.c_str(), 0);
        ::truncate(printed.c_str(), 0);
    }
}

TEST_F(LogOutputTest, StreamNamesAreExact) {
    EXPECT_EQ(statusOf("file;STDERR"), kStatusMalformed);
    EXPECT_EQ(statusOf("file;stdout;"), kStatusMalformed);
    EXPECT_EQ(statusOf("file;stderr "), kStatusMalformed);
}

TEST_F(LogOutputTest, AStandardStreamStaysOpenBehindTheOutput) {
    const ScopedDescriptor error(STDERR_FILENO, errors.c_str());
    logTo("file;stderr", "one ");
    logTo("syslog", "two");
    EXPECT_EQ(outputs(), std::vector<std::string>{"syslog"});
    std::fputs("three", stderr);
    EXPECT_EQ(contentsOf(errors), "one three");
}

// --- Readers that have gone ---

// Logs to a pipe or a socket without a reader, which replaces the descriptor. Returns whether the
// program survives, and then what `check` returns.
template <typename Check>
int resultWithoutReader(int descriptor, int writer, const char* spec, Check check) {
    return resultInChild([&] {
        ::signal(SIGPIPE, SIG_DFL);
        ::dup2(writer, descriptor);
        TestCategory gone("TestGone");
        LogIsEnabled(&gone, kLogLevelMax);
        const std::string setting = std::string("^TestGone$:output=") + spec;
        if (LogControl(setting.c_str()) != kStatusOK) return 2;
        for (int i = 0; i < 2; ++i) LogPrintF(&gone, "", kLogLevelError, "text\n");
        return check() ? 0 : 3;
    });
}

bool isPipeSignalUntouched() {
    sigset_t pending;
    sigset_t blocked;
    struct sigaction action {};
    ::sigpending(&pending);
    ::pthread_sigmask(SIG_SETMASK, nullptr, &blocked);
    ::sigaction(SIGPIPE, nullptr, &action);
    return sigismember(&pending, SIGPIPE) == 0 && sigismember(&blocked, SIGPIPE) == 0 &&
           action.sa_handler == SIG_DFL;
}

struct GoneReader {
    const char* spec;
    int descriptor;
};
constexpr GoneReader kGoneReaders[] = {{"console", STDERR_FILENO},
                                       {"file", STDERR_FILENO},
                                       {"file;stderr", STDERR_FILENO},
                                       {"file;stdout", STDOUT_FILENO}};

TEST_F(LogOutputTest, APipeThatNobodyReadsEndsNoProgram) {
    for (const auto& [spec, descriptor] : kGoneReaders) {
        OutputPipe pipe;
        pipe.closeReader();
        EXPECT_EQ(resultWithoutReader(descriptor, pipe.writer(), spec, isPipeSignalUntouched), 0)
            << spec;
    }
}

TEST_F(LogOutputTest, ASocketThatNobodyReadsEndsNoProgram) {
    for (const auto& [spec, descriptor] : kGoneReaders) {
        int ends[2];
        ASSERT_EQ(::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends), 0);
        ::close(ends[0]);
        EXPECT_EQ(resultWithoutReader(descriptor, ends[1], spec, isPipeSignalUntouched), 0) << spec;
        ::close(ends[1]);
    }
}

// The program may wait for the signal with sigwait(3).
TEST_F(LogOutputTest, ASignalOfABrokenPipeThatTheProgramBlocksStaysItsOwn) {
    for (const bool isPending : {false, true}) {
        OutputPipe pipe;
        pipe.closeReader();
        sigset_t signals;
        sigemptyset(&signals);
        sigaddset(&signals, SIGPIPE);
        const int keeps = resultInChild([&] {
            ::pthread_sigmask(SIG_BLOCK, &signals, nullptr);
            if (isPending) ::raise(SIGPIPE);
            ::dup2(pipe.writer(), STDERR_FILENO);
            if (LogControl("None:output=console") != kStatusOK) return 2;
            TestCategory gone("TestGone");
            LogIsEnabled(&gone, kLogLevelMax);
            LogPrintF(&gone, "", kLogLevelError, "text\n");
            sigset_t pending;
            ::sigpending(&pending);
            return (sigismember(&pending, SIGPIPE) == 1) == isPending ? 0 : 3;
        });
        EXPECT_EQ(keeps, 0) << isPending;
    }
}

TEST_F(LogOutputTest, AStreamsFileOfLimitedSizeEndsNoProgram) {
    for (const GoneReader& row : kGoneReaders) {
        const std::string setting = std::string("^TestOutput$:output=") + row.spec;
        EXPECT_EQ(resultInChild([&] {
                      const ScopedDescriptor stream(row.descriptor, errors.c_str());
                      LogIsEnabled(&category, kLogLevelMax);
                      if (!limitFileSize(6) || LogControl(setting.c_str()) != kStatusOK) return 2;
                      for (int i = 0; i < 2; ++i)
                          LogPrintF(&category, "", kLogLevelError, "text\n");
                      return isFileSizeSignalUntouched() ? 0 : 3;
                  }),
                  0)
            << row.spec;
        EXPECT_EQ(contentsOf(errors), "text\nt") << row.spec;
    }
}

// --- Types ---

TEST_F(LogOutputTest, TypesAreTheSameInEitherCase) {
    const ScopedDescriptor error(STDERR_FILENO, errors.c_str());
    logTo("SysLog");
    EXPECT_EQ(category.output->type, 6);
    logTo("CONSOLE");
    EXPECT_EQ(category.output->type, 2);
    logTo("File;stderr");
    EXPECT_EQ(category.output->type, 2);
    const LogRecorder recorder;
    logTo(std::string("Callback") + recorder.spec().substr(8));
    EXPECT_EQ(category.output->type, 11);
    EXPECT_EQ(recorder.text(), "text\n");
}

TEST_F(LogOutputTest, EmptyAndUnknownTypesAreRefused) {
    EXPECT_EQ(statusOf(""), kStatusEmptyType);
    EXPECT_EQ(statusOf(";"), kStatusEmptyType);
    EXPECT_EQ(statusOf(";stderr"), kStatusEmptyType);
    EXPECT_EQ(statusOf("bogus"), kStatusUnsupported);
    EXPECT_EQ(statusOf("files"), kStatusUnsupported);
    EXPECT_EQ(statusOf("fil"), kStatusUnsupported);
    EXPECT_EQ(statusOf(" file"), kStatusUnsupported);
    EXPECT_EQ(statusOf("file=stderr"), kStatusUnsupported);
}

// --- The system log ---

TEST_F(LogOutputTest, WithoutALevelThePriorityIsFive) {
    logTo("syslog", "text", kLogLevelInfo);
    logTo("syslog", "text", kLogLevelTragic | kLogFlagRaw);
    EXPECT_EQ(systemLogEntries, (SystemLogEntries{{5, "text"}, {5, "text"}}));
}

TEST_F(LogOutputTest, WithALevelThePriorityIsTheMessagesOwn) {
    for (const char* spec : {"syslog;level=error", "syslog;level=0", "syslog;level=",
                             "syslog;level=err;", "syslog;level=bogus;level=notice"}) {
        systemLogEntries.clear();
        logTo(spec, "text", kLogLevelInfo);
        logTo(spec, "text", 3 | kLogFlagRaw | kLogFlagFunction | 0x300);
        EXPECT_EQ(systemLogEntries, (SystemLogEntries{{40, "text"}, {3, "text"}})) << spec;
    }
}

TEST_F(LogOutputTest, AnInvalidLevelIsNone) {
    for (const char* spec : {"syslog;level=bogus", "syslog;level=-1", "syslog;level=warn5"}) {
        systemLogEntries.clear();
        logTo(spec, "text", kLogLevelInfo);
        EXPECT_EQ(systemLogEntries, (SystemLogEntries{{5, "text"}})) << spec;
    }
}

TEST_F(LogOutputTest, ALevelTextIsCutTo31Characters) {
    // "error+" and 25 digits are 31 characters. One more character would make the level invalid.
    const std::string longest = std::string("error+") + std::string(25, '0');
    ASSERT_EQ(longest.size(), 31u);
    logTo(std::string("syslog;level=") + longest + "x", "text", kLogLevelInfo);
    EXPECT_EQ(systemLogEntries, (SystemLogEntries{{40, "text"}}));
    systemLogEntries.clear();
    logTo(std::string("syslog;level=") + longest.substr(0, 30) + "x", "text", kLogLevelInfo);
    EXPECT_EQ(systemLogEntries, (SystemLogEntries{{5, "text"}}));
    systemLogEntries.clear();
    logTo(std::string("syslog;level=") + std::string(100, '0'), "text", kLogLevelInfo);
    EXPECT_EQ(systemLogEntries, (SystemLogEntries{{40, "text"}}));
}

TEST_F(LogOutputTest, OneNewlineAtTheEndIsLeftOff) {
    for (const char* text : {"a\n", "a\n\n", "a", "\na", "\n"}) logTo("syslog", text);
    EXPECT_EQ(systemLogEntries,
              (SystemLogEntries{{5, "a"}, {5, "a\n"}, {5, "a"}, {5, "\na"}, {5, ""}}));
}

TEST_F(LogOutputTest, OtherParametersOfTheSystemLogAreRefused) {
    EXPECT_EQ(statusOf("syslog;level"), kStatusMalformed);
    EXPECT_EQ(statusOf("syslog;"), kStatusOK);
    EXPECT_EQ(statusOf("syslog;;"), kStatusMalformed);
    EXPECT_EQ(statusOf("syslog;Level=error"), kStatusUnknownParameter);
    EXPECT_EQ(statusOf("syslog;level=error;path=x"), kStatusUnknownParameter);
}

// --- Callbacks ---

struct Call {
    LogMessage message;
    std::string text;
    void* arg;
};
std::vector<Call> calls;

void keepCall(const LogMessage* message, const char* text, std::size_t length, void* arg) {
    calls.push_back({*message, std::string(text, length), arg});
}

std::string pointerText(const void* pointer) {
    std::array<char, 32> text;
    SNPrintF(text.data(), text.size(), "%p", pointer);
    return text.data();
}

const std::string kKeepCall = pointerText(reinterpret_cast<const void*>(&keepCall));

TEST_F(LogOutputTest, ACallbackGetsTheMessageItsTextAndTheArgument) {
    calls.clear();
    int argument = 0;
    logTo(std::string("callback;func=") + kKeepCall + ";arg=" + pointerText(&argument), "text\n",
          kLogLevelError | kLogFlagRaw);
    ASSERT_EQ(calls.size(), 1u);
    EXPECT_EQ(calls[0].text, "text\n");
    EXPECT_EQ(calls[0].arg, &argument);
    EXPECT_EQ(calls[0].message.category, &category);
    EXPECT_STREQ(calls[0].message.function, "f");
    EXPECT_EQ(calls[0].message.level, std::uint32_t{kLogLevelError | kLogFlagRaw});
}

TEST_F(LogOutputTest, ParametersOfACallbackComeInEitherOrder) {
    calls.clear();
    logTo(std::string("callback;arg=0x20;func=") + kKeepCall);
    logTo(std::string("callback;func=") + kKeepCall);
    logTo(std::string("callback;arg=0x1;arg=0x30;func=") + kKeepCall + ";");
    ASSERT_EQ(calls.size(), 3u);
    EXPECT_EQ(calls[0].arg, reinterpret_cast<void*>(0x20));
    EXPECT_EQ(calls[1].arg, nullptr);
    EXPECT_EQ(calls[2].arg, reinterpret_cast<void*>(0x30));
}

TEST_F(LogOutputTest, APointerHasAtMost63Characters) {
    calls.clear();
    const std::string zeros(100, '0');
    const auto padded = [&zeros](const std::string& pointer, std::size_t length) {
        const std::string digits = pointer.substr(2);
        return std::string("0x") + zeros.substr(0, length - 2 - digits.size()) + digits;
    };
    const std::string func = std::string("callback;func=") + kKeepCall;
    logTo(func + ";arg=" + padded("0x40", 63));
    ASSERT_EQ(calls.size(), 1u);
    EXPECT_EQ(calls[0].arg, reinterpret_cast<void*>(0x40));
    EXPECT_EQ(statusOf(func + ";arg=" + padded("0x40", 64)), kStatusWrongLength);
    EXPECT_EQ(statusOf(std::string("callback;func=") + padded(kKeepCall, 64)), kStatusWrongLength);
    logTo(std::string("callback;func=") + padded(kKeepCall, 63));
    EXPECT_EQ(calls.size(), 2u);
}

TEST_F(LogOutputTest, ACallbackNeedsAFunctionAndWholePointers) {
    EXPECT_EQ(statusOf("callback"), kStatusUnsupported);
    EXPECT_EQ(statusOf("callback;"), kStatusUnsupported);
    EXPECT_EQ(statusOf("callback;arg=0x1"), kStatusUnsupported);
    EXPECT_EQ(statusOf("callback;func=0"), kStatusUnsupported);
    EXPECT_EQ(statusOf("callback;func="), kStatusMalformed);
    EXPECT_EQ(statusOf("callback;func=pointer"), kStatusMalformed);
    EXPECT_EQ(statusOf("callback;func=0x10 x"), kStatusMalformed);
    EXPECT_EQ(statusOf("callback;func"), kStatusMalformed);
    EXPECT_EQ(statusOf("callback;func=0x1;colour=1"), kStatusUnknownParameter);
    EXPECT_EQ(statusOf(std::string("callback;colour=") + std::string(64, '1')),
              kStatusUnknownParameter);
}

// The program's own output also appears at once, in order.
TEST_F(LogOutputTest, AStandardStreamIsUnbuffered) {
    const int status = resultInChild([this] {
        if (std::freopen(printed.c_str(), "w", stdout) == nullptr) return 1;
        if (LogControl("None:output=file;stdout") != kStatusOK) return 2;
        std::fputs("at once", stdout);
        return 0;  // without a flush
    });
    EXPECT_EQ(status, 0);
    EXPECT_EQ(contentsOf(printed), "at once");
}

}  // namespace
