// Any option table and any arguments: the parser stays within the arguments, stores values only in
// the options' places, and returns a status of its own or of a callback.
#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <deque>
#include <functional>
#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "halvane/base/status.h"
#include "halvane/utils/cli.h"

#include "fuzz/byte_source.h"
#include "fuzz/require.h"
#include "fuzz/surroundings.h"

namespace {

constexpr std::int32_t kCallbackStatus = -77;
constexpr std::int32_t kUntouched = 0x5A5A5A5A;

CLIOption* nestedTable = nullptr;

// The value chooses the outcome: success, done, another status, or a nested call of the parser.
std::int32_t called(CLIOption* option, const char* value, int negated) {
    REQUIRE(option != nullptr && gArgI < gArgC);
    REQUIRE(negated == 0 || value == nullptr);
    if (value == nullptr || *value == '\0') return 0;
    if (*value == 'd') return kStatusDone;
    if (*value == 'e') return kCallbackStatus;
    if (*value == 'p' && nestedTable != nullptr) {
        CLIOption* const table = std::exchange(nestedTable, nullptr);
        return CLIParse(table, kCLIOptionsOnly);
    }
    return 0;
}

// Uses one argument, and parses a table of its own.
void handle() {
    REQUIRE(gArgI <= gArgC && gCLICurrentOption != nullptr);
    if (gArgI < gArgC) ++gArgI;
    if (CLIOption* const table = std::exchange(nestedTable, nullptr)) CLIParse(table, kCLIReorder);
}

// The place of one option's value, of every type.
struct Slot {
    std::int32_t number = kUntouched;
    const char* text = nullptr;
    char** array = nullptr;
    std::size_t count = 0;

    ~Slot() { StringArray_Free(array, count); }
};

// Tables and slots as the input chooses them; they stay in place.
class Tables {
  public:
    explicit Tables(halvane::fuzzing::ByteSource& source) : source_(source) {}

    CLIOption* make(int depth) {
        const std::size_t count = source_.below(7);
        auto& table = tables_.emplace_back();
        table.resize(count + 1);
        for (std::size_t i = 0; i < count; ++i) table[i] = option(depth);
        return table.data();
    }

    void check() const {
        for (const Slot& slot : slots_) {
            for (std::size_t i = 0; i < slot.count; ++i) REQUIRE(slot.array[i] != nullptr);
            REQUIRE((slot.count == 0) == (slot.array == nullptr));
        }
    }

  private:
    static constexpr const char* kNames[] = {nullptr, "",  "all",    "no-all",     "list",
                                             "help",  "x", "number", "ver\xC3\xA9"};
    static constexpr const char* kTexts[] = {nullptr, "", "One line.",
                                             "Two\nlines, one of which "
                                             "is a good deal longer than the others are."};

    CLIOption option(int depth) {
        CLIOption option;
        option.type = 1 + static_cast<std::uint32_t>(source_.below(12));
        option.shortName =
            static_cast<std::uint8_t>(source_.oneOf(std::string_view("\0abcx1-", 7)));
        option.longName = source_.oneOf(kNames);
        option.flags = source_.byte() & ~static_cast<std::uint32_t>(kCLISeen);
        option.argName = source_.oneOf(kTexts);
        option.shortHelp = source_.oneOf(kTexts);
        option.longHelp = source_.oneOf(kTexts);
        setValue(option, slots_.emplace_back());
        if (option.type == kCLICommand) setCommand(option, depth);
        return option;
    }

    void setValue(CLIOption& option, Slot& slot) {
        const bool isText = option.type == kCLIString || option.type == kCLIStringArray;
        if (isText) option.defaultValue = CLI_DEFAULT_TEXT(source_.oneOf(kTexts));
        if (option.type == kCLIInteger) option.defaultValue = source_.byte();
        if (option.type == kCLICallback) return setCallback(option);
        if (source_.flag()) return;  // its value is dropped
        if (option.type == kCLIStringArray) {
            option.valuePtr = &slot.array;
            option.countPtr = &slot.count;
        } else if (option.type == kCLIString) {
            option.valuePtr = static_cast<void*>(&slot.text);
        } else if (option.type != kCLICommand) {
            option.valuePtr = &slot.number;
        }
    }

    void setCallback(CLIOption& option) {
        constexpr CLICallback kCallbacks[] = {called, _CLIHelpOption, _CLIVersionOption};
        option.callback = source_.oneOf(kCallbacks);
        if (option.callback != _CLIVersionOption) return;
        option.valuePtr = CLI_TEXT(source_.oneOf(kTexts));
        option.countPtr = CLI_TEXT(source_.oneOf(kTexts));
    }

    void setCommand(CLIOption& option, int depth) {
        constexpr CLIHandler kHandlers[] = {nullptr, handle, _CLIHelpCommand, _CLIVersionCommand};
        option.handler = source_.oneOf(kHandlers);
        if (depth > 0 && source_.flag()) option.subOptions = make(depth - 1);
        if (option.handler == _CLIVersionCommand) option.valuePtr = CLI_TEXT("1.0");
    }

    halvane::fuzzing::ByteSource& source_;
    std::deque<std::vector<CLIOption>> tables_;
    std::deque<Slot> slots_;
};

// The rest of the input, cut at newlines and NULs.
std::vector<std::string> argumentsFrom(std::string text) {
    std::vector<std::string> arguments = {"bin/tool"};
    while (!text.empty() && arguments.size() < 64) {
        const std::size_t end =
            std::min(text.find_first_of(std::string_view("\n\0", 2)), text.size());
        arguments.push_back(text.substr(0, end));
        text.erase(0, end + 1);
    }
    return arguments;
}

void check(CLIOption* table, std::uint32_t flags, std::vector<std::string>& arguments) {
    std::vector<char*> vector;
    for (std::string& argument : arguments) vector.push_back(argument.data());
    const int count = static_cast<int>(vector.size());
    vector.push_back(nullptr);
    REQUIRE(std::strcmp(CLIInit(count, vector.data()), "tool") == 0);
    const std::int32_t status = CLIParse(table, flags);
    REQUIRE(status == 0 || status == kCallbackStatus ||
            (status >= kCLIUnknownType && status <= kCLINoMemory));
    REQUIRE(gArgI >= 0 && gArgI <= gArgC && gArgC <= count);
    for (int i = gArgI; i < gArgC; ++i) REQUIRE(std::ranges::count(vector, gArgV[i]) >= 1);
    CLIFree();
    REQUIRE(gArgI == gArgC && gCLICurrentOption == nullptr);
}

void checkInteger(const std::string& text) {
    for (const int base : {0, 10, 16, 37}) {
        const char* end = nullptr;
        int error = -1;
        const auto value = StringToInteger64(text.c_str(), -1000, 1000, base, &end, &error);
        REQUIRE(end >= text.c_str() && end <= text.c_str() + text.size());
        REQUIRE(error == EINVAL || error == ERANGE || (value >= -1000 && value <= 1000));
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    halvane::fuzzing::ByteSource source(data, size);
    const std::uint32_t flags = source.byte() & (kCLIReorder | kCLIOptionsOnly);
    Tables tables(source);
    CLIOption* const table = tables.make(2);
    nestedTable = tables.make(0);
    auto arguments = argumentsFrom(source.restText());
    checkInteger(arguments.back());
    {
        const halvane::fuzzing::QuietStreams quiet;
        check(table, flags, arguments);
    }
    tables.check();
    return 0;
}
