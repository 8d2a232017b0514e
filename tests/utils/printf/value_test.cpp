#include <cstddef>
#include <initializer_list>
#include <limits>
#include <memory>
#include <new>
#include <optional>
#include <utility>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/date.h"
#include "halvane/base/property_list_value.h"
#include "halvane/platform/bus/ipc_message.h"
#include "halvane/platform/plist/xml_property_list.h"

#include "tests/utils/printf/test_support.h"

namespace {

using halvane::ByteBuffer;
using halvane::Date;
using halvane::PropertyListArray;
using halvane::PropertyListDictionary;
using halvane::PropertyListObject;
using halvane::PropertyListValue;
using halvane::testing::printed;

std::string text(const PropertyListValue& value, const char* format = "%@") {
    return printed(format, &value);
}

PropertyListDictionary dictionary(
    std::initializer_list<std::pair<const char*, PropertyListValue>> entries) {
    PropertyListDictionary result;
    for (const auto& [key, value] : entries) result.set(key, value);
    return result;
}

ByteBuffer letters(std::size_t count) {
    return ByteBuffer::fromText(std::string("ABCDEFGHIJKLMNOPQRSTUVWXYZ").substr(0, count));
}

class Foreign : public PropertyListObject {
  public:
    explicit Foreign(std::optional<std::string> description)
        : description_(std::move(description)) {}
    std::optional<std::string> description() const override { return description_; }
    int typeNumber() const override { return 77; }

  private:
    std::optional<std::string> description_;
};

PropertyListValue foreign(std::optional<std::string> description) {
    return PropertyListValue::Object(std::make_shared<Foreign>(std::move(description)));
}

TEST(PrintFValue, PrintsScalars) {
    EXPECT_EQ(text(true), "true");
    EXPECT_EQ(text(false), "false");
    EXPECT_EQ(text("caf\xC3\xA9"), "caf\xC3\xA9");
    EXPECT_EQ(text(""), "");
    EXPECT_EQ(text(std::string("a\0b", 3)), std::string("a\0b", 3));
    EXPECT_EQ(text(*Date::fromFields({2024, 2, 29, 3, 4, 5})), "2024-02-29 03:04:05");
    EXPECT_EQ(text(*Date::fromFields({1, 1, 1, 0, 0, 0})), "0001-01-01 00:00:00");
}

TEST(PrintFValue, PrintsNumbersAsIntegersWhereExact) {
    EXPECT_EQ(text(0), "0");
    EXPECT_EQ(text(std::numeric_limits<std::int64_t>::min()), "-9223372036854775808");
    EXPECT_EQ(text(std::numeric_limits<std::uint64_t>::max()), "18446744073709551615");
    EXPECT_EQ(text(54.0), "54");
    EXPECT_EQ(text(6.5), "6.500000");
    EXPECT_EQ(text(-0.25), "-0.250000");
    EXPECT_EQ(text(1e20), "100000000000000000000.000000");
    EXPECT_EQ(text(1e19), "10000000000000000000.000000");  // no signed 64-bit integer
    EXPECT_EQ(text(0x1p63), "9223372036854775808.000000");
    EXPECT_EQ(text(-0x1p63), "-9223372036854775808");
    EXPECT_EQ(text(0x1.fffffffffffffp62), "9223372036854774784");
    EXPECT_EQ(text(std::numeric_limits<double>::infinity()), "inf");
}

TEST(PrintFValue, PrintsNoNumberAsTheRealConversionDoes) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(text(nan), printed("%f", nan));
    EXPECT_EQ(text(-nan), printed("%f", -nan));
    EXPECT_EQ(text(nan, "[%5@|"), "[" + printed("%5f", nan) + "|");
}

TEST(PrintFValue, PrintsNullForNothing) {
    EXPECT_EQ(text(PropertyListValue()), "<<NULL>>");
    EXPECT_EQ(text(PropertyListValue::Object()), "<<NULL>>");
    EXPECT_EQ(printed("%@|%#@|%'@", nullptr, nullptr, nullptr), "<<NULL>>|<<NULL>>|<<NULL>>");
}

TEST(PrintFValue, PrintsAForeignObjectsDescriptionOrType) {
    EXPECT_EQ(text(foreign("an object")), "an object");
    EXPECT_EQ(text(foreign("an object"), "%'.6@"), "'an o'");
    EXPECT_EQ(text(foreign(std::nullopt)), "<<UNKNOWN CF OBJECT TYPE: 77>>");
}

TEST(PrintFValue, HonoursFieldPrecisionAndQuotes) {
    EXPECT_EQ(text("abc", "[%6@|"), "[   abc|");
    EXPECT_EQ(text("abc", "[%-6@|"), "[abc   |");
    EXPECT_EQ(text(42, "[%6@|"), "[    42|");
    EXPECT_EQ(text("h\xC3\xA9llo", "%.2@"), "h");
    EXPECT_EQ(text("h\xC3\xA9llo", "%.3@"), "h\xC3\xA9");
    EXPECT_EQ(text("abc", "%'@"), "'abc'");
    EXPECT_EQ(text("abc", "%''@"), "\"abc\"");
    EXPECT_EQ(text("abc", "%'.4@"), "'ab'");
    EXPECT_EQ(text("abc", "%'.1@"), "");
    EXPECT_EQ(text(true, "%'@"), "'true'");
}

TEST(PrintFValue, PrintsDataAsABlock) {
    EXPECT_EQ(text(ByteBuffer()), "(0 bytes)\n");
    EXPECT_EQ(text(letters(3)),
              "414243                              |ABC             | (3 bytes)\n");
    EXPECT_EQ(text(letters(17), "%1@"),
              "\n"
              "    +0000: 41424344 45464748 494a4b4c 4d4e4f50 |ABCDEFGHIJKLMNOP| (17 bytes)\n"
              "    +0010: 51                                  |Q               |\n");
}

TEST(PrintFValue, PrintsArrays) {
    EXPECT_EQ(text(PropertyListArray{}), "[]\n");
    EXPECT_EQ(text(PropertyListArray{1, "two", true, PropertyListValue()}),
              "[\n"
              "    1\n"
              "    two\n"
              "    true\n"
              "    <<NULL>>\n"
              "]\n");
    EXPECT_EQ(text(PropertyListArray{PropertyListArray{}, PropertyListArray{1}, dictionary({})}),
              "[\n"
              "    []\n"
              "    [\n"
              "        1\n"
              "    ]\n"
              "    {}\n"
              "]\n");
}

TEST(PrintFValue, PrintsDataInArraysOnLinesOfItsOwn) {
    EXPECT_EQ(text(PropertyListArray{letters(1), letters(17), 2}),
              "[\n"
              "    41                                  |A               | (1 bytes)\n"
              "    +0000: 41424344 45464748 494a4b4c 4d4e4f50 |ABCDEFGHIJKLMNOP| (17 bytes)\n"
              "    +0010: 51                                  |Q               |\n"
              "    2\n"
              "]\n");
}

TEST(PrintFValue, PrintsDictionaries) {
    EXPECT_EQ(text(dictionary({})), "{}\n");
    EXPECT_EQ(text(dictionary({{"name", "en0"},
                               {"mtu", 1500},
                               {"born", *Date::fromFields({2000, 1, 2, 3, 4, 5})},
                               {"none", PropertyListValue()},
                               {"noArray", PropertyListArray{}},
                               {"noDictionary", dictionary({})},
                               {"channels", PropertyListArray{1, 6}},
                               {"inner", dictionary({{"a", dictionary({{"b", 1}})}})}})),
              "{\n"
              "    name=en0\n"
              "    mtu=1500\n"
              "    born=2000-01-02 03:04:05\n"
              "    none=<<NULL>>\n"
              "    noArray=[]\n"
              "    noDictionary={}\n"
              "    channels=\n"
              "        [\n"
              "            1\n"
              "            6\n"
              "        ]\n"
              "    inner=\n"
              "        {\n"
              "            a=\n"
              "                {\n"
              "                    b=1\n"
              "                }\n"
              "        }\n"
              "}\n");
}

TEST(PrintFValue, PrintsDataInDictionariesInlineOrBelow) {
    const PropertyListValue value =
        dictionary({{"short", letters(2)}, {"long", letters(17)}, {"z", 0}});
    EXPECT_EQ(text(value),
              "{\n"
              "    short=4142                                |AB              | (2 bytes)\n"
              "    long=\n"
              "        +0000: 41424344 45464748 494a4b4c 4d4e4f50 |ABCDEFGHIJKLMNOP| (17 bytes)\n"
              "        +0010: 51                                  |Q               |\n"
              "    z=0\n"
              "}\n");
    EXPECT_EQ(text(value, "%##@"),
              "{\n"
              "    short=\n"
              "        4142                                |AB              | (2 bytes)\n"
              "    long=\n"
              "        +0000: 41424344 45464748 494a4b4c 4d4e4f50 |ABCDEFGHIJKLMNOP| (17 bytes)\n"
              "        +0010: 51                                  |Q               |\n"
              "    z=0\n"
              "}\n");
}

TEST(PrintFValue, PrintsEmptyDataInContainers) {
    EXPECT_EQ(text(PropertyListArray{ByteBuffer()}), "[\n    (0 bytes)\n]\n");
    const PropertyListValue value = dictionary({{"d", ByteBuffer()}});
    EXPECT_EQ(text(value), "{\n    d=(0 bytes)\n}\n");
    EXPECT_EQ(text(value, "%##@"), "{\n    d=\n        (0 bytes)\n}\n");
}

TEST(PrintFValue, IndentsContainersByTheWidth) {
    EXPECT_EQ(text(PropertyListArray{1}, "%1@"), "    [\n        1\n    ]\n");
    EXPECT_EQ(text(dictionary({{"a", 1}}), "%2@"), "        {\n            a=1\n        }\n");
}

TEST(PrintFValue, PrintsDeepNesting) {
    PropertyListValue value = 1;
    for (int depth = 0; depth < 200; ++depth) value = PropertyListArray{std::move(value)};
    const std::string nested = text(value);
    EXPECT_NE(nested.find(std::string(800, ' ') + "1\n"), nested.npos);
    EXPECT_TRUE(nested.ends_with("\n]\n"));
}

PropertyListValue inArrays(PropertyListValue value, int count) {
    for (int level = 0; level < count; ++level) {
        PropertyListArray array;
        array.push_back(std::move(value));
        value = std::move(array);
    }
    return value;
}

// The root is level 1: 255 arrays around a value put it at level 256, the deepest that prints.
TEST(PrintFValue, EndsNestingAtTheDeepestLevel) {
    const std::vector<PropertyListValue> values = {1, ByteBuffer{1}, PropertyListArray{},
                                                   dictionary({})};
    for (const auto& value : values) {
        EXPECT_EQ(text(inArrays(value, 255)).find("<<"), std::string::npos);
        const std::string cut = text(inArrays(value, 256));
        EXPECT_NE(cut.find("\n" + std::string(4 * 256, ' ') + "<<NESTED TOO DEEP>>\n" +
                           std::string(4 * 255, ' ') + "]\n"),
                  std::string::npos);
        const std::string cutEntry = text(inArrays(dictionary({{"key", value}}), 255));
        EXPECT_NE(cutEntry.find(" key=<<NESTED TOO DEEP>>\n"), std::string::npos);
    }
}

TEST(PrintFValue, SurvivesAnyDepth) {
    const PropertyListValue value = inArrays(1, 200'000);
    EXPECT_NE(text(value).find("<<NESTED TOO DEEP>>"), std::string::npos);
    EXPECT_NE(text(value, "%##@").find("<<NESTED TOO DEEP>>"), std::string::npos);
    EXPECT_EQ(text(value, "%#@"), "<<PLIST NOT XML-ABLE>>");
    PropertyListDictionary entries;
    entries.set("key", inArrays(1, 200'000));
    const halvane::IPCMessage message(std::move(entries));
    EXPECT_TRUE(printed("%{xpc}", &message).ends_with(" 0 = <<NESTED TOO DEEP>>\n"));
}

TEST(PrintFValue, PrintsXML) {
    const PropertyListValue value = dictionary({{"name", "en0"}});
    const auto xml = halvane::xmlPropertyList(value);
    ASSERT_TRUE(xml);
    EXPECT_EQ(text(value, "%#@"), *xml);
    std::string indented;
    for (std::size_t start = 0; start < xml->size();) {
        const auto end = xml->find('\n', start) + 1;
        indented += "    " + xml->substr(start, end - start);
        start = end;
    }
    EXPECT_EQ(text(value, "%#1@"), indented);
    EXPECT_NE(indented.find("    \t<key>name</key>"), indented.npos) << indented;
}

TEST(PrintFValue, TellsWhatHasNoXMLForm) {
    EXPECT_EQ(text(PropertyListValue(), "%#@"), "<<PLIST NOT XML-ABLE>>");
    EXPECT_EQ(text(PropertyListArray{foreign("x")}, "%#@"), "<<PLIST NOT XML-ABLE>>");
}

// An allocation that fails while a value prints ends the call, not the process.
class Exhausted : public PropertyListObject {
  public:
    std::optional<std::string> description() const override { throw std::bad_alloc(); }
    int typeNumber() const override { return 0; }
};

TEST(PrintFValue, FailsWithoutMemoryForItsText) {
    const PropertyListValue value = PropertyListValue::Object(std::make_shared<Exhausted>());
    EXPECT_EQ(SNPrintF(nullptr, 0, "a%@", &value), -6728);
}

TEST(PrintFIPCMessage, PrintsTheDescription) {
    const halvane::IPCMessage message(dictionary({{"command", "subscribe"}, {"status", 0}}));
    EXPECT_EQ(printed("%{xpc}", &message), "command = subscribe\nstatus = 0\n");
    EXPECT_EQ(printed("%{XPC}", &message), "command = subscribe\nstatus = 0\n");
    EXPECT_EQ(printed("%1{xpc}", &message), "    command = subscribe\n    status = 0\n");
    const halvane::IPCMessage empty;
    EXPECT_EQ(printed("%{xpc}|%{xpc}", &empty, nullptr), "<<NULL XPC DESC>>|<<NULL>>");
}

}  // namespace
