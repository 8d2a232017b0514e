#include "tools/halvane/output/json_writer.h"

#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <functional>
#include <gtest/gtest.h>
#include <limits>
#include <nlohmann/json.hpp>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/escaped_text.h"
#include "halvane/base/number.h"

#include "tools/halvane/output/json_key.h"

using halvane::ByteBuffer;
using halvane::Number;
using halvane::tool::JSONKey;
using halvane::tool::JSONWriter;
using nlohmann::ordered_json;

namespace {

using Layout = JSONWriter::Layout;

std::string written(const std::function<void(JSONWriter&)>& write,
                    Layout layout = Layout::OneLine) {
    JSONWriter writer(layout);
    write(writer);
    return std::string(writer.text());
}

std::string ofString(std::string_view text) {
    return written([&](JSONWriter& writer) { writer.string(text); });
}
std::string ofNumber(const Number& number) {
    return written([&](JSONWriter& writer) { writer.number(number); });
}
std::string ofReal(double value) {
    return written([&](JSONWriter& writer) { writer.real(value); });
}

// --- Strings ---

TEST(JSONWriterStrings, EscapesControlsQuotesAndBackslashesAlone) {
    for (unsigned code = 0; code < 0x80; ++code) {
        const std::string text = {'a', static_cast<char>(code), 'z'};
        EXPECT_EQ(ofString(text), ordered_json(text).dump()) << code;
    }
    EXPECT_EQ(ofString("\b\f\n\r\t\"\\/"), R"("\b\f\n\r\t\"\\/")");
    EXPECT_EQ(ofString(std::string("\0\x1F\x7F", 3)), "\"\\u0000\\u001f\x7F\"");
    EXPECT_EQ(ofString(""), R"("")");
    EXPECT_EQ(ofString({}), R"("")");
}

// Characters are looked at several at a time, from wherever the text starts.
TEST(JSONWriterStrings, EscapeACharacterWhereverItStands) {
    for (std::size_t size = 1; size <= 40; ++size) {
        for (std::size_t place = 0; place < size; ++place) {
            for (const char character :
                 {'\0', '\x1F', ' ', '!', '"', '#', '[', '\\', ']', '\x7F'}) {
                std::string text(size, 'a');
                text[place] = character;
                ASSERT_EQ(ofString(text), ordered_json(text).dump()) << size << ' ' << place;
            }
            std::string text(size, '~');
            text[place] = '\x80';
            ASSERT_EQ(ofString(text), '"' + std::string(place, '~') + "\xEF\xBF\xBD" +
                                          std::string(size - place - 1, '~') + '"');
        }
    }
}

TEST(JSONWriterStrings, LeaveCharactersBeyondASCIIAsTheyAre) {
    for (const std::string_view text :
         {"\xC2\x80", "\xDF\xBF", "\xE0\xA0\x80", "\xED\x9F\xBF", "\xEE\x80\x80", "\xEF\xBF\xBF",
          "\xE2\x80\xA8", "\xF0\x90\x80\x80", "\xF4\x8F\xBF\xBF", "Caf\xC3\xA9 \xF0\x9F\x98\x80"}) {
        EXPECT_EQ(ofString(text), '"' + std::string(text) + '"');
        EXPECT_EQ(ofString(text), ordered_json(text).dump());
    }
}

TEST(JSONWriterStrings, ReplaceEachOctetThatBelongsToNoCharacter) {
    const std::string replacement = "\xEF\xBF\xBD";
    struct Row {
        std::string_view text;
        std::size_t count;  // of replacements between "a" and "z"
        const char* reason;
    };
    for (const Row& row : {Row{"\xFF", 1, "no lead"},
                           {"\x80", 1, "a continuation alone"},
                           {"\xC0\xAF", 2, "overlong, of two octets"},
                           {"\xE0\x80\x80", 3, "overlong, of three octets"},
                           {"\xED\xA0\x80", 3, "a surrogate"},
                           {"\xF4\x90\x80\x80", 4, "beyond U+10FFFF"},
                           {"\xE2\x82", 2, "cut short"}}) {
        std::string expected = "\"a";
        for (std::size_t i = 0; i < row.count; ++i) expected += replacement;
        EXPECT_EQ(ofString('a' + std::string(row.text) + 'z'), expected + "z\"") << row.reason;
        EXPECT_EQ(ofString('a' + std::string(row.text)), expected + '"') << row.reason;
    }
}

TEST(JSONWriterStrings, OfOctetsAreShownAndThenEscaped) {
    const auto shown = [](std::string_view text) {
        const auto octets = ByteBuffer::fromText(text);
        return written([&](JSONWriter& writer) { writer.shownString(octets.bytes()); });
    };
    EXPECT_EQ(shown("home"), R"("home")");
    EXPECT_EQ(shown(""), R"("")");
    EXPECT_EQ(shown("a\"b"), R"("a\"b")");
    EXPECT_EQ(shown("a\\b"), R"("a\\\\b")");
    EXPECT_EQ(shown("\n\xFF"), R"("\\x0A\\xFF")");
    EXPECT_EQ(shown("Caf\xC3\xA9"), "\"Caf\xC3\xA9\"");
    for (unsigned octet = 0; octet < 256; ++octet) {
        const std::string text = {'a', static_cast<char>(octet)};
        EXPECT_EQ(shown(text), ordered_json(halvane::escapedText(text)).dump()) << octet;
    }
}

TEST(JSONWriterStrings, OfBytesAreLowerCaseDigits) {
    for (std::size_t size = 0; size < 300; ++size) {
        std::vector<std::uint8_t> octets(size);
        for (std::size_t i = 0; i < size; ++i) octets[i] = static_cast<std::uint8_t>(size + 7 * i);
        const ByteBuffer bytes(octets);
        EXPECT_EQ(written([&](JSONWriter& writer) { writer.hexString(bytes.bytes()); }),
                  '"' + bytes.hex() + '"');
    }
}

TEST(JSONWriterStrings, OfAnAddressHaveSixPairsAtMost) {
    const ByteBuffer bytes = {0x02, 0x1A, 0x2B, 0x3C, 0x4D, 0x5E, 0x6F, 0x70};
    const char* const expected[] = {R"("")",
                                    R"("02")",
                                    R"("02:1A")",
                                    R"("02:1A:2B")",
                                    R"("02:1A:2B:3C")",
                                    R"("02:1A:2B:3C:4D")",
                                    R"("02:1A:2B:3C:4D:5E")",
                                    R"("02:1A:2B:3C:4D:5E")",
                                    R"("02:1A:2B:3C:4D:5E")"};
    for (std::size_t size = 0; size <= bytes.size(); ++size) {
        const auto part = bytes.bytes().first(size);
        EXPECT_EQ(written([&](JSONWriter& writer) { writer.addressString(part); }), expected[size]);
    }
}

// --- Numbers ---

TEST(JSONWriterNumbers, WriteIntegersOfEveryWidth) {
    EXPECT_EQ(written([](JSONWriter& writer) { writer.integer(std::uint8_t{200}); }), "200");
    EXPECT_EQ(written([](JSONWriter& writer) { writer.integer(std::int16_t{-1}); }), "-1");
    EXPECT_EQ(ofNumber(Number(INT64_MIN)), "-9223372036854775808");
    EXPECT_EQ(ofNumber(Number(INT64_MAX)), "9223372036854775807");
    EXPECT_EQ(ofNumber(Number(UINT64_MAX)), "18446744073709551615");
    for (unsigned bit = 0; bit < 64; ++bit) {
        const std::uint64_t power = std::uint64_t{1} << bit;
        for (const std::uint64_t value : {power - 1, power, power + 1}) {
            EXPECT_EQ(ofNumber(Number(value)), std::to_string(value));
            EXPECT_EQ(ofNumber(Number(-static_cast<std::int64_t>(value >> 1))),
                      std::to_string(-static_cast<std::int64_t>(value >> 1)));
        }
    }
}

TEST(JSONWriterNumbers, WriteIntegersOfEveryNumberOfDigits) {
    for (int value = -1100; value <= 11000; ++value) {
        ASSERT_EQ(written([&](JSONWriter& writer) { writer.integer(value); }),
                  std::to_string(value));
    }
    for (std::uint64_t power = 10; power <= UINT64_MAX / 10; power *= 10) {
        for (const std::uint64_t value : {power - 1, power, power + 1}) {
            EXPECT_EQ(ofNumber(Number(value)), std::to_string(value));
        }
    }
}

TEST(JSONWriterNumbers, WriteAWholeDoubleAsAnInteger) {
    constexpr double kTwoTo53 = 9007199254740992.0;
    EXPECT_EQ(ofNumber(Number(kTwoTo53 - 1)), "9007199254740991");
    EXPECT_EQ(ofNumber(Number(-kTwoTo53)), "-9007199254740992");
    EXPECT_EQ(ofNumber(Number(kTwoTo53 + 2)), "9007199254740994");
    EXPECT_EQ(ofNumber(Number(54.0)), "54");
    EXPECT_EQ(ofNumber(Number(0.0)), "0");
    EXPECT_EQ(ofNumber(Number(-0.0)), "0");
    EXPECT_EQ(ofNumber(Number(-3.0)), "-3");
    EXPECT_EQ(ofNumber(Number(-9223372036854775808.0)), "-9223372036854775808");
    EXPECT_EQ(ofNumber(Number(9223372036854775808.0)), "9223372036854775808");
    EXPECT_EQ(ofNumber(Number(18446744073709551616.0)), "1.8446744073709552e+19");
}

TEST(JSONWriterNumbers, WriteFractionsInTheirShortestForm) {
    struct Row {
        double value;
        const char* text;
    };
    for (const Row& row : {Row{5.5, "5.5"},
                           {6.1, "6.1"},
                           {-6.5, "-6.5"},
                           {72.2, "72.2"},
                           {0.1, "0.1"},
                           {0.25, "0.25"},
                           {99999999999.9, "99999999999.9"},
                           {123456789012345.6, "123456789012345.6"},
                           {0.0001, "0.0001"},
                           {0.00012, "0.00012"},
                           {0.00001, "1e-05"},
                           {1e300, "1e+300"},
                           {1.5e300, "1.5e+300"},
                           {-1.5e-7, "-1.5e-07"},
                           {5e-324, "5e-324"},
                           {std::numeric_limits<double>::max(), "1.7976931348623157e+308"}}) {
        EXPECT_EQ(ofNumber(Number(row.value)), row.text);
    }
}

TEST(JSONWriterNumbers, WriteARealNumberAsOneEvenWhereItIsWhole) {
    EXPECT_EQ(ofReal(0.0), "0.0");
    EXPECT_EQ(ofReal(-0.0), "-0.0");
    EXPECT_EQ(ofReal(54), "54.0");
    EXPECT_EQ(ofReal(999999999999999), "999999999999999.0");
    EXPECT_EQ(ofReal(1e15), "1e+15");
    for (int power = -22; power <= 22; ++power) {
        const double value = std::pow(10.0, power);
        EXPECT_EQ(ofReal(value), ordered_json(value).dump());
    }
}

TEST(JSONWriterNumbers, WriteNullForWhatIsNotFinite) {
    for (const double value :
         {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity(),
          -std::numeric_limits<double>::infinity()}) {
        EXPECT_EQ(ofNumber(Number(value)), "null");
        EXPECT_EQ(ofReal(value), "null");
    }
}

TEST(JSONWriterNumbers, WriteEveryTenthAsAnotherLibraryDoes) {
    for (int tenths = -100000; tenths <= 100000; ++tenths) {
        if (tenths % 10 == 0) continue;
        const double value = tenths / 10.0;
        ASSERT_EQ(ofNumber(Number(value)), ordered_json(value).dump());
    }
}

// The other library finds the shortest digits nearly always.
TEST(JSONWriterNumbers, ReadBackEqualAndAreNoLongerThanAnotherLibrarys) {
    std::mt19937_64 random(1);
    for (int i = 0; i < 20000; ++i) {
        const std::uint64_t bits = random();
        double value = 0;
        static_assert(sizeof(value) == sizeof(bits));
        std::memcpy(&value, &bits, sizeof(value));
        if (!std::isfinite(value)) continue;
        const std::string text = ofNumber(Number(value));
        double readBack = 0;
        std::from_chars(text.data(), text.data() + text.size(), readBack);
        ASSERT_EQ(readBack, value) << text;
        ASSERT_LE(text.size(), ordered_json(value).dump().size()) << text;
    }
}

// --- Containers ---

void writeNested(JSONWriter& writer) {
    writer.beginObject();
    writer.key("empty");
    writer.beginObject();
    writer.endObject();
    writer.key("none");
    writer.beginArray();
    writer.endArray();
    writer.key("list");
    writer.beginArray();
    writer.integer(1);
    writer.beginArray();
    writer.boolean(true);
    writer.null();
    writer.endArray();
    writer.beginObject();
    writer.key("text");
    writer.string("a");
    writer.key("flag");
    writer.boolean(false);
    writer.endObject();
    writer.beginArray();
    writer.endArray();
    writer.endArray();
    writer.endObject();
}

constexpr const char* kNested =
    R"({"empty":{},"none":[],"list":[1,[true,null],{"text":"a","flag":false},[]]})";

TEST(JSONWriterContainers, StandOnOneLineWithoutBlanks) {
    EXPECT_EQ(written(writeNested), kNested);
}

TEST(JSONWriterContainers, AreIndentedByTwoColumns) {
    EXPECT_EQ(written(writeNested, Layout::Indented), ordered_json::parse(kNested).dump(2));
    EXPECT_EQ(written(
                  [](JSONWriter& writer) {
                      writer.beginObject();
                      writer.key("a");
                      writer.beginArray();
                      writer.integer(1);
                      writer.endArray();
                      writer.endObject();
                  },
                  Layout::Indented),
              "{\n  \"a\": [\n    1\n  ]\n}");
}

TEST(JSONWriterContainers, EscapeNamesThatAreNoLiterals) {
    for (const auto layout : {JSONWriter::Layout::OneLine, JSONWriter::Layout::Indented}) {
        JSONWriter writer(layout);
        writer.beginObject();
        writer.name("a\"b");
        writer.integer(1);
        writer.name("");
        writer.beginArray();
        writer.endArray();
        writer.key("$ref");
        writer.boolean(true);
        writer.endObject();
        EXPECT_EQ(writer.text(), layout == JSONWriter::Layout::OneLine
                                     ? "{\"a\\\"b\":1,\"\":[],\"$ref\":true}"
                                     : "{\n  \"a\\\"b\": 1,\n  \"\": [],\n  \"$ref\": true\n}");
    }
}

TEST(JSONWriterContainers, OfNothingAreBracketsInBothLayouts) {
    for (const Layout layout : {Layout::OneLine, Layout::Indented}) {
        EXPECT_EQ(written(
                      [](JSONWriter& writer) {
                          writer.beginArray();
                          writer.endArray();
                      },
                      layout),
                  "[]");
        EXPECT_EQ(written(
                      [](JSONWriter& writer) {
                          writer.beginObject();
                          writer.endObject();
                      },
                      layout),
                  "{}");
    }
}

TEST(JSONWriterContainers, NestDeeply) {
    constexpr int kDepth = 500;
    for (const Layout layout : {Layout::OneLine, Layout::Indented}) {
        const std::string text = written(
            [](JSONWriter& writer) {
                for (int i = 0; i < kDepth; ++i) writer.beginArray();
                writer.string("x");
                for (int i = 0; i < kDepth; ++i) writer.endArray();
            },
            layout);
        EXPECT_EQ(text, ordered_json::parse(text).dump(layout == Layout::Indented ? 2 : -1));
    }
}

// --- The buffer ---

TEST(JSONWriterBuffer, IsUsedAgainWithoutMovingOnceItIsLargeEnough) {
    JSONWriter writer;
    writeNested(writer);
    const char* const first = writer.text().data();
    for (int i = 0; i < 100; ++i) {
        writer.clear();
        EXPECT_EQ(writer.text(), "");
        writeNested(writer);
        EXPECT_EQ(writer.text(), kNested);
        EXPECT_EQ(writer.text().data(), first);
    }
}

TEST(JSONWriterBuffer, MayBeClearedWithinAnArray) {
    JSONWriter writer;
    std::string text;
    writer.beginArray();
    for (int i = 0; i < 3; ++i) {
        writer.integer(i);
        text += writer.text();
        writer.clear();
    }
    writer.endArray();
    text += writer.text();
    EXPECT_EQ(text, "[0,1,2]");
}

// A key of the greatest size that compiles, at every distance from the buffer's end.
TEST(JSONWriterBuffer, GrowsForAKey) {
    constexpr JSONKey kLongest = "a23456789_123456789_123456789_123456789_12345";
    static_assert(kLongest.memberSize == JSONKey::kRoom);
    for (std::size_t size = 3900; size < 4200; ++size) {
        const std::string before(size, 'x');
        EXPECT_EQ(written([&](JSONWriter& writer) {
                      writer.verbatim(before);
                      writer.beginObject();
                      writer.key(kLongest);
                      writer.integer(1);
                      writer.endObject();
                  }),
                  before + "{\"" + std::string(kLongest.text) + "\":1}");
    }
}

TEST(JSONWriterBuffer, GrowsToWhateverIsWritten) {
    for (std::size_t size = 1; size <= std::size_t{1} << 20; size = size * 3 + 1) {
        for (const char character : {'a', '\n', '\xFF'}) {
            const std::string text(size, character);
            const std::string json = ofString(text);
            const std::string unit = character == 'a'    ? "a"
                                     : character == '\n' ? "\\n"
                                                         : "\xEF\xBF\xBD";
            ASSERT_EQ(json.size(), size * unit.size() + 2);
            EXPECT_EQ(json.substr(1, unit.size()), unit);
            EXPECT_EQ(json.substr(json.size() - 1 - unit.size()), unit + '"');
        }
    }
}

TEST(JSONWriterBuffer, TakesTextBetweenDocuments) {
    EXPECT_EQ(written([](JSONWriter& writer) {
                  writer.verbatim("");
                  writer.integer(1);
                  writer.newline();
                  writer.verbatim("[\n");
                  writer.integer(2);
                  writer.hexDigits(std::vector<std::uint8_t>{0x0A, 0xFF});
              }),
              "1\n[\n20aff");
}

}  // namespace
