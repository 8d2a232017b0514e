// The engine's memory: heap strings grow and fail in a defined way, and nothing else allocates.
#include <algorithm>
#include <array>
#include <cstring>
#include <limits>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/date.h"
#include "halvane/base/property_list_value.h"
#include "halvane/base/status.h"
#include "halvane/utils/printf/engine_internal.h"

#include "tests/support/replaced_heap.h"
#include "tests/support/sanitizers.h"
#include "tests/utils/printf/test_support.h"

namespace {

using halvane::ByteBuffer;
using halvane::PropertyListArray;
using halvane::PropertyListDictionary;
using halvane::PropertyListValue;
using halvane::printing::HeapContext;
using halvane::printing::storeInHeapString;
using halvane::testing::heapOf;
using halvane::testing::ScopedHeap;

TEST(HeapString, GrowsTo256BytesAndThenByWholeKilobytes) {
    struct Row {
        int needed;
        std::size_t capacity;
    };
    constexpr std::array<Row, 8> kRows = {{
        {1, 256},
        {255, 256},
        {256, 1024},
        {257, 1024},
        {1024, 1024},
        {1025, 2048},
        {2048, 2048},
        {2049, 3072},
    }};
    for (const auto& row : kRows) {
        HeapContext heap = {};
        heap.output.callback = storeInHeapString;
        const std::string text(static_cast<std::size_t>(row.needed), 'x');
        EXPECT_EQ(PrintFCore(&heap.output, "%s", text.c_str()), row.needed);
        EXPECT_EQ(heap.output.capacity, row.capacity) << row.needed;
        EXPECT_EQ(heap.output.used, text.size());
        std::free(heap.output.buffer);
    }
}

std::size_t gLastSize = 0;

void* reallocateAndKeepSize(void* old, std::size_t size) {
    gLastSize = size;
    return std::realloc(old, size);
}

TEST(HeapString, CountsTheTerminatorAsNeeded) {
    const auto sizeFor = [](const char* format, ...) {
        va_list arguments;
        va_start(arguments, format);
        char* text = nullptr;
        int length = -1;
        {
            const ScopedHeap heap(heapOf<reallocateAndKeepSize>());
            length = VASPrintF(&text, format, arguments);
        }
        va_end(arguments);
        EXPECT_GE(length, 0);
        std::free(text);
        return gLastSize;
    };
    EXPECT_EQ(sizeFor(""), 256u);
    EXPECT_EQ(sizeFor("%254s", ""), 256u);
    EXPECT_EQ(sizeFor("%255s", ""), 256u);
    EXPECT_EQ(sizeFor("%256s", ""), 1024u);
    EXPECT_EQ(sizeFor("%1023s", ""), 1024u);
    EXPECT_EQ(sizeFor("%1024s", ""), 2048u);
}

std::vector<std::size_t> gSizes;

void* reallocateAndNote(void* old, std::size_t size) {
    if (old != nullptr && (gSizes.empty() || gSizes.back() != size)) gSizes.push_back(size);
    return std::realloc(old, size);
}

// If the string moved at each kilobyte, it would be copied once for each kilobyte.
TEST(HeapString, MovesSeldomWhileItIsAppendedTo) {
    constexpr int kAppends = 1000;
    constexpr std::size_t kPiece = 1000;
    gSizes.clear();
    char* text = nullptr;
    for (int i = 1; i <= kAppends; ++i) {
        const ScopedHeap heap({.reallocate = reallocateAndNote});
        ASSERT_EQ(AppendPrintF(&text, "%1000d", i), i * static_cast<int>(kPiece));
    }
    EXPECT_EQ(std::strlen(text), kAppends * kPiece);
    EXPECT_LT(gSizes.size(), 80u);
    EXPECT_LE(gSizes.back(), kAppends * kPiece * 9 / 8);
    std::free(text);
}

// Memory that ends after `left` allocations.
struct Scarce {
    int left = 0;
    void* latest = nullptr;
    std::vector<void*> released;
};
Scarce* gScarce = nullptr;

void* reallocateScarcely(void* old, std::size_t size) {
    if (gScarce->left == 0) return nullptr;
    --gScarce->left;
    gScarce->latest = std::realloc(old, size);
    return gScarce->latest;
}

void releaseScarcely(void* memory) {
    gScarce->released.push_back(memory);
    std::free(memory);
}

int printScarcely(char** text, const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    const ScopedHeap heap(heapOf<reallocateScarcely>(releaseScarcely));
    const int result = VASPrintF(text, format, arguments);
    va_end(arguments);
    return result;
}

int appendScarcely(char** text, const char* added) {
    const ScopedHeap heap(heapOf<reallocateScarcely>(releaseScarcely));
    return AppendPrintF(text, "%s", added);
}

// The new text needs one allocation, and appending it needs another.
TEST(HeapString, KeepsTheStringThatNothingCanBeAppendedTo) {
    for (int left = 0; left < 2; ++left) {
        Scarce scarce;
        scarce.left = left;
        gScarce = &scarce;
        char* text = ::strdup("old");
        char* const before = text;
        EXPECT_EQ(appendScarcely(&text, "new"), kStatusNoMemory);
        EXPECT_EQ(text, before);
        EXPECT_STREQ(text, "old");
        EXPECT_EQ(scarce.released.size(), static_cast<std::size_t>(left));
        std::free(text);
    }
}

// The text needs 256 bytes, then 1024, then 2048 for its terminator.
TEST(HeapString, IsReleasedWhenMemoryEnds) {
    for (int left = 0; left < 3; ++left) {
        Scarce scarce;
        scarce.left = left;
        gScarce = &scarce;
        char untouched = 0;
        char* text = &untouched;
        EXPECT_EQ(printScarcely(&text, "%10s%1014s", "", ""), kStatusNoMemory) << left;
        EXPECT_EQ(text, &untouched);
        std::erase(scarce.released, nullptr);
        EXPECT_EQ(scarce.released, std::vector<void*>(left == 0 ? 0 : 1, scarce.latest));
    }
    Scarce scarce;
    scarce.left = 3;
    gScarce = &scarce;
    char* text = nullptr;
    EXPECT_EQ(printScarcely(&text, "%10s%1014s", "", ""), 1024);
    EXPECT_TRUE(scarce.released.empty());
    std::free(text);
}

#if !HALVANE_IS_SANITIZED

// The number of allocations of this thread. All go through malloc and its kin, which are replaced
// below.
std::size_t allocationCount();

std::int32_t discard(const char*, std::size_t, void*) {
    return 0;
}

// The number of allocations for a format, given to a callback and to a buffer.
std::size_t allocationsOf(const char* format, ...) {
    std::array<char, 4096> buffer;
    va_list arguments;
    va_start(arguments, format);
    va_list forBuffer;
    va_copy(forBuffer, arguments);
    const auto before = allocationCount();
    const int length = VCPrintF(discard, nullptr, format, arguments);
    const int sameLength = VSNPrintF(buffer.data(), buffer.size(), format, forBuffer);
    const auto count = allocationCount() - before;
    va_end(forBuffer);
    va_end(arguments);
    EXPECT_GT(length, 0);
    EXPECT_EQ(sameLength, length);
    return count;
}

std::size_t nestedAllocations(const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    const auto count = allocationsOf("%V", format, &arguments);
    va_end(arguments);
    return count;
}

TEST(PrintFAllocation, IsCountedInThisProgram) {
    const auto before = allocationCount();
    char* text = nullptr;
    ASSERT_EQ(ASPrintF(&text, "%d", 1), 1);
    std::free(text);
    EXPECT_EQ(allocationCount(), before + 1);
    const std::string string(1000, 'x');
    EXPECT_EQ(allocationCount(), before + 2);
}

TEST(PrintFAllocation, HappensInNoConversionOfNumbersAndText) {
    SNPrintF(nullptr, 0, "%N");  // the system reads its time zone once
    int count = 0;
    EXPECT_EQ(allocationsOf("%%|%'c|%C|%+d|%i|%'u|%#o|%#x|%X|%#b|%##b|%###b|%p|%n|%f|%400.20f", 'x',
                            0x61626364, -5, 6, 1234567, 8, 255, 255, 5, 5, 5, &count, &count, 1.5,
                            std::numeric_limits<double>::max()),
              0u);
    EXPECT_EQ(allocationsOf("%m%#m|%N|%v|%{dur}|%s|%'.3s|%#s|%##s|%###s|%S|%500s|%.299d|%y|%{nope}",
                            -6728, 0x61626364, 0x01238004, 90061, "text", "quoted",
                            "\x03"
                            "abc",
                            "\x03www\x07"
                            "example",
                            "void ns::C::m(int)", u"wide", "", 7),
              0u);
    EXPECT_EQ(nestedAllocations("%d %s %{dur}", 1, "nested", 60), 0u);
}

TEST(PrintFAllocation, HappensInNoConversionOfBytesAndObjects) {
    const std::array<std::uint8_t, 32> bytes = {6, 0, 0, 0, 0x20, 1, 2, 3};
    const std::array<std::uint8_t, 8> elements = {0, 2, 'a', 'b', 221, 2, 0, 0};
    EXPECT_EQ(allocationsOf("%H|%#H|%.1H|%.2H|%.3H|%.4a|%.6a|%.16a|%#a|%##a|%U|%#U|%1{ie}|%1{txt}"
                            "|%1{text}",
                            bytes.data(), 32, 32, bytes.data(), 32, 32, bytes.data(), 32, 16,
                            bytes.data(), 32, 32, bytes.data(), 32, 32, bytes.data(), bytes.data(),
                            bytes.data(), bytes.data(), bytes.data(), bytes.data(), bytes.data(),
                            elements.data(), elements.size(),
                            "\x03"
                            "a=b",
                            std::size_t{4}, "one\ntwo\n", SIZE_MAX),
              0u);
    PropertyListDictionary dictionary;
    dictionary.set("text", "a text that is longer than a short string");
    dictionary.set("numbers", PropertyListArray{1, 6.5, true, PropertyListValue()});
    dictionary.set("data", ByteBuffer(bytes));
    dictionary.set("date", halvane::Date::fromUnixTime(5));
    const PropertyListValue value = dictionary;
    EXPECT_EQ(allocationsOf("%@%##@", &value, &value), 0u);
}

#endif

}  // namespace

#if !HALVANE_IS_SANITIZED

// The C library's own names for the replaced functions. A sanitizer replaces them itself.
extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* memory, std::size_t size);
}

namespace {

thread_local std::size_t gAllocations = 0;

std::size_t allocationCount() {
    return gAllocations;
}

}  // namespace

// operator new of the C++ library calls malloc.
extern "C" void* malloc(std::size_t size) noexcept {
    ++gAllocations;
    return __libc_malloc(size);
}
extern "C" void* calloc(std::size_t count, std::size_t size) noexcept {
    ++gAllocations;
    return __libc_calloc(count, size);
}
extern "C" void* realloc(void* memory, std::size_t size) noexcept {
    ++gAllocations;
    return __libc_realloc(memory, size);
}

#endif
