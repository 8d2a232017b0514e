// Formats of any conversions, flags, widths and precisions: the output is that of C's printf where
// both mean the same, and every front end returns the same length.
#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <initializer_list>
#include <limits>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "halvane/utils/printf.h"

#include "fuzz/byte_source.h"
#include "fuzz/require.h"

namespace {

using halvane::fuzzing::ByteSource;

template <typename... Arguments>
std::string viaCallback(const char* format, Arguments... arguments) {
    std::string text;
    const auto append = [](const char* piece, std::size_t length, void* context) {
        static_cast<std::string*>(context)->append(piece, length);
        return static_cast<std::int32_t>(length);
    };
    const int status = CPrintF(append, &text, format, arguments...);
    REQUIRE(status == static_cast<int>(text.size()));
    return text;
}

// Every front end writes the text, as far as it has room.
template <typename... Arguments>
std::string check(const std::string& format, std::size_t room, Arguments... arguments) {
    const std::string text = viaCallback(format.c_str(), arguments...);
    const int length = static_cast<int>(text.size());
    std::vector<char> part(room + 1, 'x');
    REQUIRE(SNPrintF(part.data(), room, format.c_str(), arguments...) == length);
    REQUIRE(room == 0 || ::strnlen(part.data(), room) < room);
    REQUIRE(MemPrintF(part.data(), room, format.c_str(), arguments...) == length);
    REQUIRE(FPrintF(nullptr, format.c_str(), arguments...) == length);
    char* heap = nullptr;
    REQUIRE(ASPrintF(&heap, format.c_str(), arguments...) == length);
    REQUIRE(std::memcmp(heap, text.data(), text.size() + 1) == 0);
    const bool isString = text.find('\0') == std::string::npos;
    REQUIRE(AppendPrintF(&heap, format.c_str(), arguments...) == 2 * length || !isString);
    std::free(heap);
    char* cursor = part.data();
    const int added =
        SNPrintF_Add(&cursor, part.data() + part.size(), format.c_str(), arguments...);
    REQUIRE((added == 0) == (text.size() <= room) || !isString);
    return text;
}

// "%", flags, width and precision. Some are a star, whose value comes from the source.
struct Specification {
    std::string text = "%";
    bool isPlain = true;  // C gives every part of it the same meaning

    explicit Specification(ByteSource& source) {
        for (std::size_t i = source.below(4); i > 0; --i)
            add(source.oneOf(std::string_view("-+0 #'")));
        if (source.flag()) text += std::to_string(source.below(50));
        if (!source.flag()) return;
        text += '.';
        if (source.flag()) text += std::to_string(source.below(40));
    }

  private:
    void add(char flag) {
        isPlain = isPlain && flag != '\'' && flag != '#';
        text += flag;
    }
};

template <typename Argument>
void checkAgainstC(const Specification& specification, const std::string& conversion,
                   std::size_t room, Argument argument) {
    const std::string format = specification.text + conversion;
    const std::string text = check(format, room, argument);
    if (!specification.isPlain) return;
    std::vector<char> expected(text.size() + 512);
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
    const int length = std::snprintf(expected.data(), expected.size(), format.c_str(), argument);
#pragma GCC diagnostic pop
    REQUIRE(text == std::string(expected.data(), static_cast<std::size_t>(length)));
}

void checkNumbers(ByteSource& source, std::size_t room) {
    const Specification specification(source);
    const auto number = source.integer<std::uint64_t>();
    constexpr const char* kConversions[] = {"d", "i", "u", "x", "X", "o"};
    const std::string conversion = source.oneOf(kConversions);
    checkAgainstC(specification, conversion, room, static_cast<int>(number));
    checkAgainstC(specification, "ll" + conversion, room, static_cast<long long>(number));
    checkAgainstC(specification, "hh" + conversion, room, static_cast<int>(number));
    checkAgainstC(specification, "h" + conversion, room, static_cast<int>(number));
    for (const char* own : {"b", "#b", "##b", "###b", "m", "#m", "v", "C", "c", "'c", "''C"}) {
        check(specification.text + own, room, static_cast<int>(number));
    }
    check(specification.text + "llb", room, number);
    check(specification.text + "{dur}", room, static_cast<int>(number));
    check(specification.text + "l{dur}", room, number);
    check(specification.text + "p", room, reinterpret_cast<const void*>(number));
    check("%*.*d", room, static_cast<std::int8_t>(number), static_cast<std::int8_t>(number >> 8),
          static_cast<int>(number));
}

void checkReals(ByteSource& source, std::size_t room) {
    const Specification specification(source);
    const double number = source.integer<std::int32_t>() / 4096.0;
    const std::string text = check(specification.text + "f", room, number);
    if (specification.text == "%") REQUIRE(text == std::to_string(number));
    for (const double odd : {std::numeric_limits<double>::infinity(), -0.0, 1e300,
                             std::numeric_limits<double>::quiet_NaN()}) {
        check(specification.text + "f", room, odd);
    }
}

void checkTexts(ByteSource& source, std::size_t room) {
    Specification specification(source);
    std::erase(specification.text, '#');  // which would require an argument of another kind
    const std::string text = source.text();
    const char* const cText = text.c_str();
    for (const char* own : {"s", "'s", "''s", "###s", "{bogus}", "k"}) {
        check(specification.text + own, room, cText);
    }
    REQUIRE(SNPrintF(nullptr, 0, "%hld", 1) == -1);
    if (specification.text == "%") REQUIRE(check("%s", room, cText) == cText);
    check(specification.text + "{text}", room, text.data(), text.size());
    check("%2{text}", room, cText, SIZE_MAX);
    std::vector<std::uint16_t> units(text.size() / 2 + 1);
    std::memcpy(units.data(), text.data(), text.size() / 2 * 2);
    units.back() = 0;
    for (const char* own : {"S", "#S", "##S", "'S"}) {
        check(specification.text + own, room, units.data());
    }
    std::vector<char> pascal = {static_cast<char>(text.size())};
    pascal.insert(pascal.end(), text.begin(), text.end());
    check(specification.text + "#s", room, pascal.data());
}

void checkBytes(ByteSource& source, std::size_t room) {
    const std::size_t repeat = source.below(3) + 1;
    const auto given = source.bytes(64);
    std::vector<std::uint8_t> bytes(given.begin(), given.end());
    const int size = static_cast<int>(bytes.size());
    for (const char* format : {"%H", "%#H", "%##H", "%.1H", "%2.2H", "%.3H", "%.9H", "%20H|"}) {
        check(format, room, bytes.data(), size, static_cast<int>(room));
    }
    check("%H", room, static_cast<const void*>(nullptr), size, size);
    bytes.resize(64);
    for (const char* format : {"%.4a", "%.6a", "%.8a", "%.16a", "%U", "%#U", "%.7a", "%20.6a|"}) {
        check(format, room, bytes.data());
    }
    // A socket address: its length byte, then its family.
    bytes[0] = static_cast<std::uint8_t>(bytes[0] % bytes.size());
    constexpr std::uint8_t kFamilies[] = {2, 30, 18, 0};
    bytes[1] = kFamilies[source.below(4)];
    check("%" + std::string(repeat + 1, '#') + "a", room, bytes.data());
    constexpr std::uint32_t kTypes[] = {4, 6, 9};
    std::vector<std::uint32_t> words(16);
    std::memcpy(words.data(), bytes.data(), bytes.size());
    words[0] = source.oneOf(kTypes);
    check("%#a", room, words.data());
}

int nested(const char* format, const char* inner, ...) {
    va_list arguments;
    va_start(arguments, inner);
    const int length = SNPrintF(nullptr, 0, format, inner, &arguments);
    va_end(arguments);
    return length;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    ByteSource source(data, size);
    const std::size_t room = source.byte();
    const std::size_t kind = source.below(4);
    if (kind == 0) checkNumbers(source, room);
    if (kind == 1) checkReals(source, room);
    if (kind == 2) checkTexts(source, room);
    if (kind == 3) checkBytes(source, room);
    REQUIRE(nested("%V|", "%d %s", 12, "text") == 8);
    REQUIRE(nested("%V", "%5d", 12, "text") == 5);
    std::int32_t count = 0;
    REQUIRE(SNPrintF(nullptr, 0, "abc%n%%%N", &count) > 4 && count == 3);
    return 0;
}
