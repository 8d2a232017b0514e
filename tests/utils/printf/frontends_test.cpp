#include <algorithm>
#include <array>
#include <cstdio>
#include <iterator>
#include <limits>
#include <memory>
#include <new>
#include <optional>
#include <thread>

#include "halvane/base/property_list_value.h"
#include "halvane/base/status.h"
#include "halvane/utils/printf/std_string_internal.h"

#include "tests/utils/printf/test_support.h"

extern "C" {
int checkBuffersFromC(void);
int checkHeapFromC(void);
int checkCallbacksFromC(void);
int checkStreamsFromC(void);
int checkFormatFromC(void);
}

namespace {

using halvane::testing::printed;

TEST(PrintFFromC, EveryFrontEndWorks) {
    EXPECT_EQ(checkBuffersFromC(), 0);
    EXPECT_EQ(checkHeapFromC(), 0);
    EXPECT_EQ(checkCallbacksFromC(), 0);
    EXPECT_EQ(checkStreamsFromC(), 0);
    EXPECT_EQ(checkFormatFromC(), 0);
}

std::int32_t collectPiece(const char* text, std::size_t length, void* pieces) {
    static_cast<std::vector<std::string>*>(pieces)->emplace_back(text, length);
    return 0;
}

// Returns what a buffer of `capacity` bytes holds after these pieces: as many whole characters of
// each as fit.
std::string storedOf(const std::vector<std::string>& pieces, std::size_t capacity) {
    std::string stored;
    for (const std::string& piece : pieces) {
        std::size_t fitting = std::min(piece.size(), capacity - stored.size());
        const auto isCutWithin = [&] {
            return fitting < piece.size() &&
                   (static_cast<unsigned char>(piece[fitting]) & 0xC0) == 0x80;
        };
        while (fitting > 0 && isCutWithin()) --fitting;
        stored += piece.substr(0, fitting);
    }
    return stored;
}

TEST(SNPrintF, StoresOfEachPieceWhatFitsForEverySize) {
    // One, two, three and four bytes a character.
    const char* const word = "h\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80z";
    const char* const format = "%s<%s>%8s|%d%s%'s";
    const auto with = [&](auto print, auto... to) {
        return print(to..., format, word, word, "\xC3\xA9", -12345, "\xE2\x82\xAC", "\xC3\xA9");
    };
    std::vector<std::string> pieces;
    const int length = with(CPrintF, collectPiece, static_cast<void*>(&pieces));
    for (std::size_t size = 0; size <= static_cast<std::size_t>(length) + 2; ++size) {
        const std::unique_ptr<char[]> buffer(new char[size]);
        ASSERT_EQ(with(SNPrintF, buffer.get(), size), length);
        if (size > 0) {
            EXPECT_EQ(std::string(buffer.get()), storedOf(pieces, size - 1)) << size;
        }

        const std::string expected = storedOf(pieces, size);
        std::string memory(size, '#');
        with(MemPrintF, static_cast<void*>(memory.data()), size);
        EXPECT_EQ(memory, expected + std::string(size - expected.size(), '#')) << size;
    }
}

TEST(SNPrintF, StoresALaterPieceThatFits) {
    char buffer[3];
    EXPECT_EQ(SNPrintF(buffer, sizeof(buffer), "%s%s", "a\xE2\x82\xAC", "b"), 5);
    EXPECT_STREQ(buffer, "ab");
    EXPECT_EQ(SNPrintF(buffer, sizeof(buffer), "%s%s%s", "\xE2\x82\xAC", "abc", "d"), 7);
    EXPECT_STREQ(buffer, "ab");
    EXPECT_EQ(SNPrintF(buffer, sizeof(buffer), "%s%s%s", "\xE2\x82\xAC", "\xC3\xA9", "d"), 6);
    EXPECT_STREQ(buffer, "\xC3\xA9");
    EXPECT_EQ(SNPrintF(buffer, 2, "%s%s", "\xC3\xA9", "b"), 3);
    EXPECT_STREQ(buffer, "b");
}

// "a", the euro sign byte by byte, "b".
TEST(SNPrintF, CutsNoCharacterWhoseBytesComeInSeveralPieces) {
    const char* const stored[] = {"", "a", "ab", "ab", "a\xE2\x82\xAC", "a\xE2\x82\xAC\x62"};
    for (std::size_t size = 1; size <= std::size(stored); ++size) {
        const std::unique_ptr<char[]> buffer(new char[size]);
        EXPECT_EQ(SNPrintF(buffer.get(), size, "a%c%c%c%s", 0xE2, 0x82, 0xAC, "b"), 5);
        EXPECT_STREQ(buffer.get(), stored[size - 1]) << size;
    }
    char buffer[4];
    EXPECT_EQ(SNPrintF(buffer, 2, "%s%c%c%s", "\xF0\x9F", 0x98, 0x80, "b"), 5);
    EXPECT_STREQ(buffer, "b");
    EXPECT_EQ(SNPrintF(buffer, 4, "%s%s", "\xF0\x9F",
                       "\x98\x80"
                       "b"),
              5);
    EXPECT_STREQ(buffer, "");
}

TEST(SNPrintF, CutsTheDocumentedExampleBeforeTheCharacter) {
    char buffer[4];
    EXPECT_EQ(SNPrintF(buffer, 3, "%s", "h\xC3\xA9llo"), 6);
    EXPECT_STREQ(buffer, "h");
    EXPECT_EQ(SNPrintF(buffer, 4, "%s", "h\xC3\xA9llo"), 6);
    EXPECT_STREQ(buffer, "h\xC3\xA9");
}

TEST(SNPrintF, StoresNothingOfTextThatIsNoCharacter) {
    char buffer[4];
    EXPECT_EQ(SNPrintF(buffer, sizeof(buffer), "a%s", "\x80\x80\x80\x80\x80"), 6);
    EXPECT_STREQ(buffer, "a");
}

TEST(SNPrintF, TerminatesAfterAFormatError) {
    char buffer[8] = "#######";
    EXPECT_EQ(SNPrintF(buffer, sizeof(buffer), "ab%hld", 1), -1);
    EXPECT_STREQ(buffer, "ab");
}

TEST(SNPrintF, CountsWithoutABuffer) {
    EXPECT_EQ(SNPrintF(nullptr, 0, "%05d", 42), 5);
    EXPECT_EQ(MemPrintF(nullptr, 0, "%05d", 42), 5);
}

TEST(SNPrintF, SaturatesTheCountOfAHugeWidth) {
    char buffer[4];
    const int huge = std::numeric_limits<int>::max();
    EXPECT_EQ(SNPrintF(buffer, sizeof(buffer), "%*d%*d", huge, 1, huge, 2), huge);
    EXPECT_STREQ(buffer, "   ");
    EXPECT_EQ(SNPrintF(buffer, sizeof(buffer), "%*d", std::numeric_limits<int>::min(), 7), huge);
    EXPECT_STREQ(buffer, "7  ");
    EXPECT_EQ(SNPrintF(buffer, sizeof(buffer), "%99999999999d", 1), huge);
}

TEST(SNPrintFAdd, AppendsUntilTheEnd) {
    char text[8];
    char* cursor = text;
    char* const end = text + sizeof(text);
    EXPECT_EQ(SNPrintF_Add(&cursor, end, "%d", 12), 0);
    EXPECT_EQ(cursor, text + 2);
    EXPECT_EQ(SNPrintF_Add(&cursor, end, "%s", "34567"), 0);
    EXPECT_EQ(cursor, end - 1);
    EXPECT_STREQ(text, "1234567");
    EXPECT_EQ(SNPrintF_Add(&cursor, end, ""), 0);
    EXPECT_EQ(cursor, end - 1);
    EXPECT_EQ(SNPrintF_Add(&cursor, end, "8"), kStatusTruncated);
    EXPECT_EQ(cursor, end);
    EXPECT_STREQ(text, "1234567");
    EXPECT_EQ(SNPrintF_Add(&cursor, end, "9"), kStatusNoRoom);
}

TEST(SNPrintFAdd, NeverCutsACharacter) {
    char text[4];
    char* cursor = text;
    EXPECT_EQ(SNPrintF_Add(&cursor, text + 4, "ab%s", "\xC3\xA9"), kStatusTruncated);
    EXPECT_STREQ(text, "ab");
    EXPECT_EQ(cursor, text + 4);
}

TEST(SNPrintFAdd, LeavesTheCursorAfterAFormatError) {
    char text[4];
    char* cursor = text;
    EXPECT_EQ(SNPrintF_Add(&cursor, text + 4, "%lhd", 1), -1);
    EXPECT_EQ(cursor, text);
}

TEST(ASPrintF, HoldsAnyLength) {
    for (const int width : {0, 1, 254, 255, 256, 257, 1022, 1023, 1024, 1025, 100000}) {
        char* text = nullptr;
        ASSERT_EQ(ASPrintF(&text, "%*s%s", width, "", "end"), width + 3);
        EXPECT_EQ(std::string(text), std::string(static_cast<std::size_t>(width), ' ') + "end");
        std::free(text);
    }
}

TEST(ASPrintF, LeavesThePointerAloneOnFailure) {
    char* text = nullptr;
    char* const before = reinterpret_cast<char*>(&text);
    text = before;
    EXPECT_EQ(ASPrintF(&text, "something%lhd", 1), -1);
    EXPECT_EQ(text, before);
}

// If no count could state the length of the text, the function allocates nothing.
TEST(ASPrintF, RefusesATextLongerThanACountTells) {
    const int huge = std::numeric_limits<int>::max();
    char* text = nullptr;
    EXPECT_EQ(ASPrintF(&text, "x%*s", huge, ""), kStatusNoMemory);
    EXPECT_EQ(ASPrintF(&text, "%*s", std::numeric_limits<int>::min(), ""), kStatusNoMemory);
    EXPECT_EQ(ASPrintF(&text, "%4294967295d", 1), kStatusNoMemory);
    EXPECT_EQ(text, nullptr);
}

TEST(AppendPrintF, CountsAndCopiesTheWholeString) {
    char* text = nullptr;
    std::string expected;
    for (int i = 0; i < 3000; ++i) {
        std::int32_t count = -1;
        ASSERT_EQ(AppendPrintF(&text, "%d,%n", i, &count),
                  static_cast<int>((expected += std::to_string(i) + ",").size()));
        ASSERT_EQ(count, static_cast<int>(expected.size()));
    }
    EXPECT_EQ(text, expected);
    EXPECT_EQ(AppendPrintF(&text, "%s%s", text, text), static_cast<int>(3 * expected.size()));
    EXPECT_EQ(text, expected + expected + expected);
    const std::string whole = text;
    EXPECT_EQ(AppendPrintF(&text, "%*s", std::numeric_limits<int>::max(), ""), kStatusNoMemory);
    EXPECT_EQ(text, whole);
    std::free(text);
}

TEST(AppendPrintF, ReplacesTheStringByALongerOne) {
    char* text = nullptr;
    EXPECT_EQ(AppendPrintF(&text, "%d", 1), 1);
    EXPECT_STREQ(text, "1");
    EXPECT_EQ(AppendPrintF(&text, "%s", ""), 1);
    EXPECT_STREQ(text, "1");
    EXPECT_EQ(AppendPrintF(&text, ",%s,%d", text, 3), 5);
    EXPECT_STREQ(text, "1,1,3");
    char* const before = text;
    EXPECT_EQ(AppendPrintF(&text, "%hlx", 1), -1);
    EXPECT_EQ(text, before);
    std::free(text);
}

struct Pieces {
    std::vector<std::string> pieces;
    std::size_t limit = SIZE_MAX;
    std::int32_t status = 0;
};

std::int32_t collect(const char* text, std::size_t length, void* context) {
    auto& pieces = *static_cast<Pieces*>(context);
    if (pieces.pieces.size() == pieces.limit) return pieces.status;
    pieces.pieces.emplace_back(text, length);
    return 0;
}

TEST(CPrintF, PassesEachLiteralRunAtOnceAndThenAnEmptyText) {
    Pieces pieces;
    EXPECT_EQ(CPrintF(collect, &pieces, "one run of text%d%s, and another", 5, ""), 29);
    EXPECT_EQ(pieces.pieces,
              (std::vector<std::string>{"one run of text", "5", ", and another", ""}));
}

TEST(CPrintF, SignalsTheEndOfAnEmptyOutput) {
    Pieces pieces;
    EXPECT_EQ(CPrintF(collect, &pieces, "%s", ""), 0);
    EXPECT_EQ(pieces.pieces, std::vector<std::string>{""});
}

TEST(CPrintF, EndsWithTheStatusOfTheCallbackUnchanged) {
    // The pieces are "a", "1", "b", padding, text, and the end signal.
    for (std::size_t limit = 0; limit < 6; ++limit) {
        Pieces pieces{{}, limit, -12345};
        EXPECT_EQ(CPrintF(collect, &pieces, "a%db%3s", 1, "x"), -12345) << limit;
        EXPECT_EQ(pieces.pieces.size(), limit);
    }
}

TEST(CPrintF, SendsNoEndSignalAfterAFormatError) {
    Pieces pieces;
    EXPECT_EQ(CPrintF(collect, &pieces, "a%hhhd", 1), -1);
    EXPECT_EQ(pieces.pieces, std::vector<std::string>{"a"});
}

// A hex dump, a value or an element list takes many writes.
TEST(CPrintF, AbortsInsideALongConversion) {
    const std::vector<std::uint8_t> bytes(4096, 0x41);
    const int size = static_cast<int>(bytes.size());
    for (const char* format : {"%H", "%#H", "%.1H", "%.2H", "%.3H"}) {
        Pieces pieces{{}, 1, -7};
        EXPECT_EQ(CPrintF(collect, &pieces, format, bytes.data(), size, size), -7) << format;
        EXPECT_EQ(pieces.pieces.size(), 1u);
    }
    Pieces pieces{{}, 2, -7};
    EXPECT_EQ(CPrintF(collect, &pieces, "%{ie}", bytes.data(), bytes.size()), -7);
}

// Formats a new line for each piece, through two front ends.
std::int32_t formatInTurn(const char* text, std::size_t length, void* context) {
    auto& lines = *static_cast<std::string*>(context);
    char line[64];
    SNPrintF(line, sizeof(line), "%zu:%'.*s", length, static_cast<int>(length) + 2, text);
    return CPrintF(halvane::testing::appendToString, &lines, "<%s|%.2H>", line, text,
                   static_cast<int>(length), 1);
}

TEST(CPrintF, LetsItsCallbackFormat) {
    std::string lines;
    EXPECT_EQ(CPrintF(formatInTurn, &lines, "ab%d%{dur}", 7, 61), 8);
    EXPECT_EQ(lines,
              "<2:'ab'|61                                  |a               | (2 bytes)\n"
              "... 1 more bytes ...\n>"
              "<1:'7'|37                                  |7               | (1 bytes)\n>"
              "<5:'1m 1s'|31                                  |1               | (5 bytes)\n"
              "... 4 more bytes ...\n>"
              "<0:''|(0 bytes)\n>");
}

TEST(CPrintF, FormatsInSeveralThreadsAtOnce) {
    constexpr int kRounds = 2000;
    const auto formatOften = [](int thread) {
        for (int round = 0; round < kRounds; ++round) {
            const std::string expected = std::to_string(thread) + "/" + std::to_string(round) +
                                         " 0A:7E:55:00:00:01 " + std::string(300, ' ');
            const std::array<std::uint8_t, 6> address = {0x0A, 0x7E, 0x55, 0, 0, 1};
            ASSERT_EQ(printed("%d/%d %.6a %300s", thread, round, address.data(), ""), expected);
        }
    };
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 4; ++thread) threads.emplace_back(formatOften, thread);
    for (auto& thread : threads) thread.join();
}

TEST(FPrintF, WritesToTheStreamAndCountsWithoutOne) {
    const std::unique_ptr<FILE, int (*)(FILE*)> stream(std::tmpfile(), std::fclose);
    ASSERT_NE(stream, nullptr);
    EXPECT_EQ(FPrintF(stream.get(), "%s=%d", "x", 10), 4);
    std::rewind(stream.get());
    char text[8] = "";
    EXPECT_EQ(std::fread(text, 1, sizeof(text), stream.get()), 4u);
    EXPECT_STREQ(text, "x=10");
    EXPECT_EQ(FPrintF(nullptr, "%s=%d", "x", 10), 4);
}

// Whether another thread may write to `stream` now.
bool isFree(FILE* stream) {
    bool isFree = false;
    std::thread([&] {
        isFree = ftrylockfile(stream) == 0;
        if (isFree) funlockfile(stream);
    }).join();
    return isFree;
}

// A value whose description checks whether another thread could write in the middle of the message.
class Witness : public halvane::PropertyListObject {
  public:
    explicit Witness(FILE* stream) : stream_(stream) {}
    std::optional<std::string> description() const override {
        return isFree(stream_) ? "free" : "held";
    }
    int typeNumber() const override { return 1; }

  private:
    FILE* stream_;
};

TEST(FPrintF, KeepsAMessageWholeBetweenThreads) {
    const std::unique_ptr<FILE, int (*)(FILE*)> stream(std::tmpfile(), std::fclose);
    ASSERT_NE(stream, nullptr);
    const auto witness =
        halvane::PropertyListValue::Object(std::make_shared<Witness>(stream.get()));
    const halvane::PropertyListValue value(witness);
    EXPECT_EQ(FPrintF(stream.get(), "%s-%@-%@", "x", &value, &value), 11);
    EXPECT_TRUE(isFree(stream.get()));
    EXPECT_EQ(FPrintF(stream.get(), "%@%hhhd", &value, 1), -1);
    EXPECT_TRUE(isFree(stream.get()));
    std::rewind(stream.get());
    char text[32] = "";
    EXPECT_EQ(std::fread(text, 1, sizeof(text), stream.get()), 15u);
    EXPECT_STREQ(text, "x-held-heldheld");
}

TEST(FPrintF, TellsWhenTheStreamTakesNoMore) {
    const std::unique_ptr<FILE, int (*)(FILE*)> stream(std::fopen("/dev/full", "w"), std::fclose);
    if (stream == nullptr) GTEST_SKIP() << "no /dev/full";
    std::setvbuf(stream.get(), nullptr, _IONBF, 0);
    EXPECT_EQ(FPrintF(stream.get(), "%s", "text"), kStatusTruncated);
}

TEST(MemPrintF, UsesTheWholeSizeWithoutATerminator) {
    std::array<char, 4> memory = {'#', '#', '#', '#'};
    EXPECT_EQ(MemPrintF(memory.data(), 4, "%s", "abcd"), 4);
    EXPECT_EQ(std::string(memory.begin(), memory.end()), "abcd");
    EXPECT_EQ(MemPrintF(memory.data(), 4, "%s", "x"), 1);
    EXPECT_EQ(std::string(memory.begin(), memory.end()), "xbcd");
}

std::int32_t throwing(const char*, std::size_t, PrintFContext*) {
    throw std::bad_alloc();
}

TEST(PrintFCore, LetsNoExceptionOut) {
    PrintFContext context = {};
    context.callback = throwing;
    EXPECT_EQ(PrintFCore(&context, "text"), kStatusNoMemory);
}

TEST(StringPrintF, KeepsWhatStandsBeforeAMalformedModifier) {
    EXPECT_EQ(halvane::stringPrintF("a%db%hld%d", 1, 2, 3), "a1b");
    std::string text = "x";
    halvane::appendPrintF(text, "%hld", 1);
    EXPECT_EQ(text, "x");
}

TEST(StringPrintF, UsesTheEngine) {
    const std::array<std::uint8_t, 6> address = {0, 0x11, 0x22, 0x33, 0x44, 0x55};
    EXPECT_EQ(halvane::stringPrintF("%.6a", address.data()), "00:11:22:33:44:55");
    std::string text = "a";
    halvane::appendPrintF(text, "%{dur}", 61);
    EXPECT_EQ(text, "a1m 1s");
}

}  // namespace
