// Numbers: reading agrees with naive code, written numbers read back the same, and arithmetic
// agrees with that of a wider type.
#include <algorithm>
#include <bit>
#include <cerrno>
#include <climits>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <initializer_list>
#include <numeric>
#include <span>
#include <string>
#include <vector>

#include "halvane/base/status.h"
#include "halvane/utils/convert.h"
#include "halvane/utils/convert/statistics.h"
#include "halvane/utils/scan/up_ticks.h"
#include "halvane/utils/strings.h"

#include "fuzz/byte_source.h"
#include "fuzz/require.h"

namespace {

__extension__ typedef __int128 Wide;
__extension__ typedef unsigned __int128 UnsignedWide;

int digitOf(char character) {
    if (character >= '0' && character <= '9') return character - '0';
    const char letter = static_cast<char>(character | 32);
    return letter >= 'a' && letter <= 'z' ? letter - 'a' + 10 : 36;
}

struct Naive {
    Wide value = 0;       // kept below 2^80
    std::size_t end = 0;  // 0: no number
};

// White space, a sign, a prefix and digits. For base 0 the prefix determines the base.
Naive naiveInteger(const std::string& text, int base) {
    std::size_t at = std::min(text.find_first_not_of(" \t\n\v\f\r"), text.size());
    const bool isNegative = at < text.size() && text[at] == '-';
    if (at < text.size() && (text[at] == '-' || text[at] == '+')) ++at;
    const bool isHex = text.size() - at > 2 && text[at] == '0' && (text[at + 1] | 32) == 'x' &&
                       digitOf(text[at + 2]) < 16;
    if ((base == 0 || base == 16) && isHex) at += 2;
    if (base == 0) base = isHex ? 16 : (at < text.size() && text[at] == '0' ? 8 : 10);
    Naive result;
    for (; at < text.size() && digitOf(text[at]) < base; ++at) {
        if (result.value < Wide{1} << 70) result.value = result.value * base + digitOf(text[at]);
        result.end = at + 1;
    }
    if (isNegative) result.value = -result.value;
    return result;
}

void checkIntegers(const std::string& text, int base) {
    const std::string cText = text.c_str();
    const Naive naive = naiveInteger(cText, base);
    const auto clamped = static_cast<int>(std::clamp<Wide>(naive.value, INT_MIN, INT_MAX));
    const char* end = nullptr;
    errno = 0;
    REQUIRE(strtoi(text.data(), text.size(), &end, base) == clamped);
    REQUIRE(errno == (naive.value == clamped ? 0 : ERANGE));
    REQUIRE(end == text.data() + naive.end);
    REQUIRE(strtoi(text.c_str(), SIZE_MAX, nullptr, base) == clamped);
    const std::int32_t number = TextToInt32(text.data(), text.size(), base);
    // Only this function accepts the prefix "0b".
    const bool isBinary = text.find_first_of("bB") != std::string::npos;
    if (text == cText && !isBinary && base != 0) {
        const Naive prefixed = naiveInteger(text, base < 34 ? 0 : base);
        const bool isHex = text.find_first_of("xX") != std::string::npos;
        REQUIRE(isHex || prefixed.end == 0 || number == clamped);
    }
}

void checkBCD(const std::string& text, std::uint64_t value) {
    const char* end = nullptr;
    const std::uint64_t read = BCDTextToInt(text.data(), text.size(), &end);
    REQUIRE(end >= text.data() && end <= text.data() + text.size());
    REQUIRE(read == 0 || end > text.data());
    char written[kBCDTextSize];
    const bool isWritten = BCDTextFromInt(value, written, sizeof(written)) == kStatusOK;
    REQUIRE(isWritten == (value <= kBCDMax));
    if (isWritten) REQUIRE(BCDTextToInt(written, SIZE_MAX, nullptr) == value);
}

void checkPacked(const std::string& text, std::uint32_t bits) {
    char buffer[kBitListTextSize];
    std::uint32_t again = 0;
    REQUIRE(BitListString_Parse(BitListString_Make(bits, buffer, nullptr), SIZE_MAX, &again) ==
            kStatusOK);
    REQUIRE(again == bits);
    BitListString_Parse(text.data(), text.size(), &again);
    char code[kFourCharCodeTextSize];
    const std::uint32_t read = TextToFourCharCode(text.data(), text.size());
    REQUIRE(TextToFourCharCode(FourCharCodeToCString(read, code), 4) == read);
    char version[kNumVersionTextSize];
    const std::uint32_t packed = TextToNumVersion(text.data(), text.size());
    NumVersionToCString(packed, version);
    // 0 is no version, but "0.0" is one, in the final stage.
    REQUIRE(packed == 0 || TextToNumVersion(version, SIZE_MAX) == packed);
    REQUIRE(std::strlen(NumVersionToCString(bits, version)) < sizeof(version));
    char source[kSourceVersionTextSize];
    const std::uint32_t number = TextToSourceVersion(text.data(), text.size());
    REQUIRE(TextToSourceVersion(SourceVersionToCString(number, source), SIZE_MAX) == number);
    const int ordinal = static_cast<int>(bits % 100);
    const std::string suffix = NumberToOrdinalSuffixCString(static_cast<int>(bits % 1000));
    const bool isTeen = ordinal > 10 && ordinal < 14;
    const char* const expected[] = {"th", "st", "nd", "rd"};
    REQUIRE(suffix == expected[!isTeen && ordinal % 10 < 4 ? ordinal % 10 : 0]);
    char mapped[20];
    REQUIRE(std::string(MapValueToString(static_cast<int>(bits), "%d", mapped, sizeof(mapped),
                                         "seven", 7, static_cast<const char*>(nullptr))) ==
            (bits == 7 ? "seven" : std::to_string(static_cast<int>(bits))));
}

void checkMath(std::uint64_t a, std::uint64_t b) {
    std::uint64_t high = 0, low = 0;
    Multiply64x64(a, b, &high, &low);
    const auto product = static_cast<UnsignedWide>(a) * b;
    REQUIRE(low == static_cast<std::uint64_t>(product));
    REQUIRE(high == static_cast<std::uint64_t>(product >> 64));
    const auto signedA = static_cast<std::int64_t>(a), signedB = static_cast<std::int64_t>(b);
    if (signedA > 0 && signedB > 0) REQUIRE(gcd64(signedA, signedB) == std::gcd(signedA, signedB));
    if (signedA <= 0) REQUIRE(gcd64(signedA, signedB) == signedB);
    REQUIRE(ifloor2_64(a) == std::bit_floor(a));
    REQUIRE(ilog2_64(a) == static_cast<int>(a == 0 ? 0 : std::bit_width(a) - 1));
    const bool hasPower = a != 0 && a <= std::uint64_t{1} << 63;
    REQUIRE(iceil2_64(a) == (hasPower ? std::bit_ceil(a) : 0));
    const auto narrow = static_cast<std::uint32_t>(b);
    REQUIRE(ifloor2(narrow) == std::bit_floor(narrow));
    REQUIRE(iceil2(narrow) == (narrow == 0 || narrow > 1u << 31 ? 0 : std::bit_ceil(narrow)));
    const std::uint32_t power = narrow % 32;
    std::uint64_t expected = 1;
    for (std::uint32_t i = 0; i < std::min(power, 19u); ++i) expected *= 10;
    REQUIRE(ipow10_64(power) == expected);
    REQUIRE(ipow10(power) == std::min<std::uint64_t>(ipow10_64(power), 1000000000));
    const int angle = static_cast<int>(narrow);
    constexpr double kTurn = int{kSineFullTurn};
    const double sine = int{kSineOne} * std::sin(2 * M_PI * (angle % kSineFullTurn) / kTurn);
    REQUIRE(std::abs(isin(angle) - sine) <= 14);
}

void checkTicks(std::uint64_t ticks) {
    REQUIRE(UpTicksToSeconds(ticks) <= UpTicksToMilliseconds(ticks));
    REQUIRE(UpTicksToMilliseconds(ticks) <= UpTicksToMicroseconds(ticks));
    REQUIRE(UpTicksToMicroseconds(ticks) <= UpTicksToNanoseconds(ticks));
    const std::uint64_t small = ticks >> 32;
    REQUIRE(UpTicksToSeconds(SecondsToUpTicks(small)) == small ||
            UpTicksToSeconds(SecondsToUpTicks(small)) + 1 == small);
    REQUIRE(MillisecondsToUpTicks(small) >= MicrosecondsToUpTicks(small));
    REQUIRE(MicrosecondsToUpTicks(small) >= NanosecondsToUpTicks(small));
    const std::uint64_t back = NTPtoUpTicks(UpTicksToNTP(small));
    REQUIRE(back <= small && small - back <= 1);
    REQUIRE(UpTicks() <= UpTicks() && UpTicksPerSecond() > 0);
    // The fuzzer's own alarm may end the sleep.
    REQUIRE(SleepForUpTicks(0) == 0 || errno == EINTR);
    SleepUntilUpTicks(0);
}

void checkSwaps(std::span<const std::uint8_t> bytes) {
    std::vector<std::uint8_t> reversed(bytes.rbegin(), bytes.rend());
    std::vector<std::uint8_t> memory(bytes.begin(), bytes.end());
    MemReverse(memory.data(), memory.size());
    REQUIRE(memory == reversed);
    MemReverseCopy(reversed.data(), reversed.size(), memory.data());
    REQUIRE(std::ranges::equal(memory, bytes));
    for (const auto swap : {EndianSwap16Mem, EndianSwap32Mem}) {
        swap(memory.data(), memory.size());
        if (memory.size() >= 4 && swap == EndianSwap32Mem) REQUIRE(memory[0] == bytes[3]);
        swap(memory.data(), memory.size());
        REQUIRE(std::ranges::equal(memory, bytes));
    }
    std::vector<std::uint8_t> copy(memory.size());
    EndianSwap16MemCopy(memory.data(), memory.size(), copy.data());
    EndianSwap16Mem(memory.data(), memory.size());
    REQUIRE(copy == memory);
    EndianSwap32MemCopy(memory.data(), memory.size(), copy.data());
    EndianSwap32Mem(memory.data(), memory.size());
    REQUIRE(copy == memory);
}

void checkStatistics(halvane::fuzzing::ByteSource source) {
    std::vector<double> a, b;
    for (std::size_t i = source.below(16); i > 0; --i) {
        a.push_back(source.integer<std::int16_t>() / 4.0);
        b.push_back(source.integer<std::int16_t>() / 4.0);
    }
    const double distance = EuclideanDistance(a.data(), b.data(), a.size());
    double sum = 0;
    for (std::size_t i = 0; i < a.size(); ++i) sum += (a[i] - b[i]) * (a[i] - b[i]);
    REQUIRE(std::abs(distance - std::sqrt(sum)) <= 1e-9 * (1 + distance));
    const double correlation = PearsonCorrelation(a.data(), b.data(), a.size());
    REQUIRE(correlation >= -1 && correlation <= 1);
    auto sorted = a;
    std::ranges::sort(sorted);
    REQUIRE(TorbenMedian(a.data(), a.size()) ==
            (sorted.empty() ? 0 : sorted[(sorted.size() - 1) / 2]));
    const double wild = std::bit_cast<double>(source.integer<std::uint64_t>());
    a.push_back(wild);
    b.push_back(1);
    REQUIRE(std::isnan(TorbenMedian(a.data(), a.size())) == std::isnan(wild));
    EuclideanDistance(a.data(), b.data(), a.size());
    PearsonCorrelation(a.data(), b.data(), a.size());
    REQUIRE(TranslateValue(5, 0, 10, 100, 200) == 150);
    const double swapped = EndianSwapFloat64(EndianSwapFloat64(1.5));
    REQUIRE(swapped == 1.5 && EndianSwapFloat32(EndianSwapFloat32(0.25F)) == 0.25F);
}

void checkRandom(std::size_t minimum, std::size_t maximum) {
    std::vector<char> text(maximum + 1);
    RandomString(minimum, maximum, text.data());
    const std::size_t length = std::strlen(text.data());
    REQUIRE(length >= std::min(minimum, maximum) && length <= maximum);
    std::vector<std::uint8_t> bytes(maximum);
    REQUIRE(RandomBytes(bytes.data(), bytes.size()) == kStatusOK);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    halvane::fuzzing::ByteSource source(data, size);
    checkStatistics(source);
    checkSwaps(source.rest());
    const auto a = source.integer<std::uint64_t>();
    const auto b = source.integer<std::uint64_t>();
    constexpr int kBases[] = {0, 2, 8, 10, 16, 36};
    const int base = source.oneOf(kBases);
    const std::string text = source.restText();
    checkIntegers(text, base);
    checkBCD(text, a);
    checkPacked(text, static_cast<std::uint32_t>(b));
    checkMath(a, b);
    checkTicks(a);
    checkRandom(a % 64, b % 64);
    return 0;
}
