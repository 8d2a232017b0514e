// The parser writes each message, and each page of help, in one write.
#include <cerrno>
#include <sys/socket.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>
#include <utility>

#include "halvane/utils/cli/message_internal.h"

#include "tests/utils/cli/test_support.h"

using namespace halvane::testing;

namespace {

// Captures a stream of this process, one text for each write. A packet socket keeps the writes
// apart. It drops writes that exceed its buffer, so that no writer waits.
class CapturedWrites {
  public:
    explicit CapturedWrites(std::FILE* stream) : stream_(stream), saved_(::dup(::fileno(stream))) {
        constexpr int kType = SOCK_SEQPACKET | SOCK_NONBLOCK | SOCK_CLOEXEC;
        std::fflush(stream);
        if (saved_ < 0 || ::socketpair(AF_UNIX, kType, 0, ends_) != 0 ||
            ::dup2(ends_[1], ::fileno(stream)) < 0) {
            throw std::system_error(errno, std::generic_category(), "capturing writes");
        }
    }
    CapturedWrites(const CapturedWrites&) = delete;
    CapturedWrites& operator=(const CapturedWrites&) = delete;
    ~CapturedWrites() {
        std::fflush(stream_);
        ::dup2(saved_, ::fileno(stream_));
        for (const int end : {saved_, ends_[0], ends_[1]}) ::close(end);
    }

    Words all() const {
        std::fflush(stream_);
        Words writes;
        std::vector<char> part(1 << 17);
        for (ssize_t length = 0;
             (length = ::recv(ends_[0], part.data(), part.size(), MSG_DONTWAIT)) > 0;) {
            writes.emplace_back(part.data(), static_cast<std::size_t>(length));
        }
        return writes;
    }

  private:
    std::FILE* stream_;
    int saved_;
    int ends_[2] = {-1, -1};
};

// tool [-n N] (scan (fast | --ssid ... | <place>) | help | version)
class CLIMessageTest : public ::testing::Test {
  protected:
    Words writesOf(Words words, std::FILE* stream = stderr) {
        const CommandLine line(std::move(words));
        const CapturedWrites writes(stream);
        CLIParse(root, 0);
        return writes.all();
    }

    std::int32_t depth = 0;
    CLIOption fast[3] = {
        {.type = kCLIString, .longName = "ssid", .argName = "name", .flags = kCLIRequired},
        {.type = kCLIInteger, .shortName = 'c', .longName = "channel", .flags = kCLIRequired},
        {.type = kCLIEnd}};
    CLIOption scan[3] = {
        {.type = kCLICommand, .longName = "fast", .subOptions = fast, .longHelp = "One.\nTwo."},
        {.type = kCLISection, .shortHelp = "NOTES", .longHelp = "Three.\nFour."},
        {.type = kCLIEnd}};
    CLIOption root[6] = {{.type = kCLIInteger,
                          .shortName = 'n',
                          .longName = "depth",
                          .valuePtr = &depth,
                          .flags = kCLINoNegation},
                         {.type = kCLINumber},
                         {.type = kCLICommand, .longName = "scan", .subOptions = scan},
                         {.type = kCLICommand, .longName = "help", .handler = _CLIHelpCommand},
                         {.type = kCLICommand,
                          .longName = "version",
                          .valuePtr = CLI_TEXT("1"),
                          .countPtr = CLI_TEXT("2"),
                          .handler = _CLIVersionCommand},
                         {.type = kCLIEnd}};
};

TEST_F(CLIMessageTest, IsOneWrite) {
    struct Row {
        Words words;
        const char* message;
    };
    const Row rows[] = {
        {{"-x"}, "error: unknown option 'x'.\n"},
        {{"--x"}, "error: unknown option 'x'.\n"},
        {{"-99999999999"}, "error: -NUM option out-of-range: '99999999999'.\n"},
        {{"-nx"}, "error: option 'n' expects a numerical value.\n"},
        {{"--depth"}, "error: option 'depth' requires a value.\n"},
        {{"--no-depth"}, "error: option 'depth' can't be negated.\n"},
        {{"x"}, "error: unknown command 'x'. See 'tool help' for a list of commands.\n"},
        {{"scan", "x"},
         "error: unknown scan command 'x'. See 'tool help scan' for a list of commands.\n"},
        {{"scan"},
         "error: no scan command specified. See 'tool help scan' for more information.\n"},
        {{"help", "x"}, "error: unknown command 'x'.\n"},
    };
    for (const Row& row : rows) EXPECT_EQ(writesOf(row.words), Words{row.message});
}

TEST_F(CLIMessageTest, IsOneWriteForEachOptionThatIsMissing) {
    EXPECT_EQ(writesOf({"scan", "fast"}), (Words{"error: --ssid <name>     not specified\n",
                                                 "error: -c, --channel ... not specified\n"}));
}

TEST_F(CLIMessageTest, IsOneWriteForEachArgumentThatIsLeft) {
    root[2].subOptions = nullptr;
    EXPECT_EQ(writesOf({"scan", "x", "y"}),
              (Words{"warning: unused argument 'x'.\n", "warning: unused argument 'y'.\n"}));
}

TEST_F(CLIMessageTest, IsOneWriteForAPageOfHelp) {
    for (const Words& words : {Words{"help"}, {"help", "scan"}, {"help", "scan", "fast"}, {}}) {
        const Words writes = writesOf(words);
        ASSERT_EQ(writes.size(), 1u);
        EXPECT_EQ(writes[0], CommandLine(words, root).errors);
    }
}

TEST_F(CLIMessageTest, IsOneWriteForTheVersion) {
    std::fflush(stdout);
    EXPECT_EQ(writesOf({"version"}, stdout), Words{"tool version 1 (2)\n"});
}

TEST_F(CLIMessageTest, IsOneWriteWhateverItsLength) {
    const std::string name(50000, 'x');
    EXPECT_EQ(writesOf({"--" + name}), Words{"error: unknown option '" + name + "'.\n"});
}

TEST(CLIMessage, IsMeasuredWithoutAStream) {
    const CapturedWrites writes(stderr);
    halvane::cli::Message message(nullptr);
    EXPECT_EQ(message.add("%s-%d", "abc", 12), 6);
    EXPECT_EQ(message.add("%s", ""), 0);
    message.write();
    EXPECT_EQ(writes.all(), Words());
}

TEST(CLIMessageDeathTest, IsOneWriteBeforeAnEnd) {
    const CapturedWrites writes(stderr);
    std::fflush(stdout);
    const pid_t child = ::fork();
    if (child == 0) ErrQuit(3, "error: %s at %d\n", "no", 5);
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_EQ(WEXITSTATUS(status), 3);
    EXPECT_EQ(writes.all(), Words{"error: no at 5\n"});
}

}  // namespace
