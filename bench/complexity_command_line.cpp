// Command lines.
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "halvane/utils/cli.h"

#include "bench/foreign_bytes.h"
#include "bench/growth.h"

namespace bench {

namespace {

std::uint32_t gVerbose = 0;
const char* gName = nullptr;
char** gItems = nullptr;
std::size_t gItemCount = 0;

CLIOption gOptions[] = {
    {.type = kCLIBoolean, .shortName = 'v', .longName = "verbose", .valuePtr = &gVerbose},
    {.type = kCLIString, .shortName = 'n', .longName = "name", .valuePtr = &gName},
    {.type = kCLIStringArray,
     .shortName = 'a',
     .longName = "add",
     .valuePtr = &gItems,
     .countPtr = &gItemCount},
    {.type = kCLIEnd},
};

// Arguments, and pointers to them.
class Arguments {
  public:
    explicit Arguments(std::vector<std::string> texts) : texts_(std::move(texts)) {
        for (std::string& text : texts_) pointers_.push_back(text.data());
        pointers_.push_back(nullptr);
    }
    Arguments(Arguments&&) = default;

    // Returns true if all arguments except `left` were read.
    bool parse(std::uint32_t flags, std::size_t left) {
        auto vector = pointers_;
        CLIInit(static_cast<int>(texts_.size()), vector.data());
        const bool isRead = CLIParse(gOptions, flags | kCLIOptionsOnly) == 0;
        const bool isAll = static_cast<std::size_t>(gArgC - gArgI) == left;
        StringArray_Free(gItems, gItemCount);
        gItems = nullptr;
        gItemCount = 0;
        CLIFree();
        return isRead && isAll;
    }

  private:
    std::vector<std::string> texts_;
    std::vector<char*> pointers_;
};

// The program's name and n times `piece`.
Arguments argumentsOf(std::vector<std::string> piece, std::size_t count) {
    std::vector<std::string> texts = {"program"};
    for (std::size_t i = 0; i < count; ++i) texts.insert(texts.end(), piece.begin(), piece.end());
    return Arguments(std::move(texts));
}

void addArguments(const char* row, std::vector<std::string> piece, std::uint32_t flags = 0,
                  std::size_t operands = 0) {
    struct Input {
        Arguments arguments;
        std::size_t left;
    };
    addGrowth(
        row, 16384,
        [piece, operands](std::size_t n) {
            return Input{argumentsOf(piece, n), operands * n};
        },
        [flags](Input& input) { return input.arguments.parse(flags, input.left); });
}

void addOneArgument(const char* row, std::string_view head, char character) {
    addGrowth(
        row, 65536,
        [head, character](std::size_t n) {
            return argumentsOf({std::string(head) + std::string(n, character)}, 1);
        },
        [](Arguments& arguments) { return arguments.parse(0, 0); });
}

}  // namespace

void addCommandLineRows() {
    addArguments("CLIParse: a flag, repeated", {"-v"});
    addArguments("CLIParse: a long flag, repeated", {"--verbose"});
    addArguments("CLIParse: a value, repeated", {"--name=x"});
    addArguments("CLIParse: -a, repeated", {"-a", "x"});
    addArguments("CLIParse: --no-add and -a", {"-a", "x", "--no-add"});
    addArguments("CLIParse: operands", {"x"}, 0, 1);
    addArguments("CLIParse: operands before options", {"x", "-v"}, kCLIReorder, 1);
    addOneArgument("CLIParse: a cluster", "-", 'v');
    addOneArgument("CLIParse: a long value", "--name=", 'x');
    addGrowth(
        "StringArray_Append", 16384, [](std::size_t n) { return n; },
        [](std::size_t n) {
            char** array = nullptr;
            std::size_t count = 0;
            for (std::size_t i = 0; i < n; ++i) {
                if (StringArray_Append(&array, &count, "text") != 0) return false;
            }
            StringArray_Free(array, count);
            return count == n;
        });
}

}  // namespace bench
