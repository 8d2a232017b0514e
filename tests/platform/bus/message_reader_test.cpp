#include <cstddef>
#include <cstdint>
#include <gtest/gtest.h>
#include <initializer_list>
#include <string>
#include <string_view>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/number.h"
#include "halvane/base/property_list_value.h"
#include "halvane/platform/bus/message_reader_internal.h"

#include "tests/support/bus_peer.h"
#include "tests/support/loose_bus_message.h"
#include "tests/support/peak_memory.h"

namespace {

using halvane::ByteBuffer;
using halvane::PropertyListArray;
using halvane::PropertyListDictionary;
using halvane::PropertyListValue;
using halvane::readBusMessage;
using halvane::testing::ipcMessage;
using halvane::testing::LooseBusMessage;

// Reads a message that `append` writes. The result has the entry "unreadable" if it cannot be read.
template <typename... Arguments>
PropertyListDictionary readBack(const char* signature, Arguments... arguments) {
    const LooseBusMessage message;
    EXPECT_GE(::sd_bus_message_append(message.get(), signature, arguments...), 0) << signature;
    const auto read = readBusMessage(message.sealed());
    return read ? read->entries() : ipcMessage({{"unreadable", true}}).entries();
}

PropertyListDictionary dictionary(std::initializer_list<PropertyListDictionary::Entry> entries) {
    return ipcMessage(entries).entries();
}

TEST(BusMessageReader, ReadsTheTypesOfTheProtocol) {
    EXPECT_EQ(readBack("a{sv}", 4, "text", "s", "caf\xC3\xA9", "number", "x", INT64_MIN, "boolean",
                       "b", 1, "data", "ay", 3, 0, 255, 1),
              dictionary({{"text", "caf\xC3\xA9"},
                          {"number", INT64_MIN},
                          {"boolean", true},
                          {"data", ByteBuffer{0, 255, 1}}}));
}

TEST(BusMessageReader, ReadsTheOtherBasicTypes) {
    EXPECT_EQ(readBack("a{sv}", 6, "y", "y", 255, "n", "n", -32768, "q", "q", 65535, "i", "i",
                       INT32_MIN, "u", "u", UINT32_MAX, "t", "t", UINT64_MAX),
              dictionary({{"y", 255},
                          {"n", -32768},
                          {"q", 65535},
                          {"i", INT32_MIN},
                          {"u", UINT32_MAX},
                          {"t", UINT64_MAX}}));
    const auto others =
        readBack("a{sv}", 3, "d", "d", -6.5, "o", "o", "/org/example", "g", "g", "a{sv}");
    EXPECT_EQ(others, dictionary({{"d", -6.5}, {"o", "/org/example"}, {"g", "a{sv}"}}));
    EXPECT_TRUE(others.find("d")->as<halvane::Number>()->isReal());
}

TEST(BusMessageReader, ReadsContainers) {
    EXPECT_EQ(readBack("a{sv}", 2, "inner", "a{sv}", 1, "deep", "a{sv}", 1, "x", "x",
                       std::int64_t{1}, "list", "av", 2, "s", "a", "ay", 1, 7),
              dictionary({{"inner", dictionary({{"deep", dictionary({{"x", 1}})}})},
                          {"list", PropertyListArray{"a", ByteBuffer{7}}}}));
    EXPECT_EQ(readBack("a{sv}", 4, "texts", "as", 2, "a", "b", "empty", "as", 0, "numbers", "ai", 2,
                       1, -1, "names", "a{ss}", 1, "k", "v"),
              dictionary({{"texts", PropertyListArray{"a", "b"}},
                          {"empty", PropertyListArray{}},
                          {"numbers", PropertyListArray{1, -1}},
                          {"names", dictionary({{"k", "v"}})}}));
    EXPECT_EQ(readBack("a{sv}", 1, "list", "aa{sv}", 2, 1, "a", "b", 1, 0),
              dictionary({{"list", PropertyListArray{dictionary({{"a", true}}),
                                                     PropertyListDictionary()}}}));
    EXPECT_EQ(readBack("a{sv}", 1, "wrapped", "v", "v", "s", "text"),
              dictionary({{"wrapped", "text"}}));
}

TEST(BusMessageReader, SkipsOtherTypes) {
    EXPECT_EQ(
        readBack("a{sv}", 5, "first", "s", "a", "struct", "(sx)", "t", std::int64_t{1}, "structs",
                 "a(ss)", 1, "a", "b", "byNumber", "a{us}", 1, 7, "seven", "last", "s", "z"),
        dictionary({{"first", "a"}, {"last", "z"}}));
    EXPECT_EQ(readBack("a{sv}", 2, "descriptor", "h", 0, "last", "s", "z"),
              dictionary({{"last", "z"}}));
    EXPECT_EQ(readBack("a{sv}", 1, "list", "av", 3, "s", "a", "(s)", "skipped", "s", "b"),
              dictionary({{"list", PropertyListArray{"a", "b"}}}));
}

// The protocol has no such arrays, and a value takes much more memory than a 16-bit number.
TEST(BusMessageReader, SkipsArraysOf16BitNumbers) {
    EXPECT_EQ(
        readBack("a{sv}", 3, "signed", "an", 2, 1, 2, "unsigned", "aq", 1, 3, "last", "s", "z"),
        dictionary({{"last", "z"}}));
}

// Reads a list of the type `signature` with `count` elements, each made from `value`.
PropertyListDictionary listOf(const char* signature, std::size_t count, int value,
                              std::size_t& peak) {
    const LooseBusMessage message;
    sd_bus_message* const raw = message.get();
    const std::string array = std::string("a") + signature;
    EXPECT_GE(::sd_bus_message_open_container(raw, 'a', "{sv}"), 0);
    EXPECT_GE(::sd_bus_message_open_container(raw, 'e', "sv"), 0);
    EXPECT_GE(::sd_bus_message_append(raw, "s", "list"), 0);
    EXPECT_GE(::sd_bus_message_open_container(raw, 'v', array.c_str()), 0);
    EXPECT_GE(::sd_bus_message_open_container(raw, 'a', signature), 0);
    const std::string_view kind = signature;
    for (std::size_t i = 0; i < count; ++i) {
        const int result = kind == "v"    ? ::sd_bus_message_append(raw, "v", "y", value)
                           : kind == "ab" ? ::sd_bus_message_append(raw, "ab", 1, value)
                                          : ::sd_bus_message_append(raw, signature, value);
        EXPECT_GE(result, 0) << signature;
    }
    for (int i = 0; i < 4; ++i) EXPECT_GE(::sd_bus_message_close_container(raw), 0);
    sd_bus_message* const sealed = message.sealed();
    const halvane::testing::PeakMemory memory;
    const auto read = readBusMessage(sealed);
    peak = memory.bytes();
    return read ? read->entries() : PropertyListDictionary();
}

TEST(BusMessageReader, TakesSixteenBytesForEachOfAnArrayAtMost) {
    struct Row {
        const char* signature;
        std::size_t size;  // of one element
        PropertyListValue element;
    };
    const Row rows[] = {
        {"b", 4, true}, {"i", 4, 1}, {"u", 4, 1}, {"v", 4, 1}, {"ab", 8, PropertyListArray{true}}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.signature);
        for (const std::size_t count : {1'000u, 33'000u, 40'000u}) {
            std::size_t peak = 0;
            const auto entries = listOf(row.signature, count, 1, peak);
            EXPECT_TRUE(entries == dictionary({{"list", PropertyListArray(count, row.element)}}));
            EXPECT_LE(peak, 16 * row.size * count);
        }
    }
}

TEST(BusMessageReader, TakesTheLastOfEqualKeys) {
    EXPECT_EQ(readBack("a{sv}", 3, "k", "s", "first", "other", "b", 0, "k", "x", std::int64_t{2}),
              dictionary({{"k", 2}, {"other", false}}));
}

TEST(BusMessageReader, ReadsNothingElseThanADictionary) {
    const auto unreadable = dictionary({{"unreadable", true}});
    EXPECT_EQ(readBack(""), unreadable);
    EXPECT_EQ(readBack("s", "a{sv}"), unreadable);
    EXPECT_EQ(readBack("a{ss}", 1, "a", "b"), unreadable);
    EXPECT_EQ(readBack("as", 1, "a"), unreadable);
    EXPECT_EQ(readBack("v", "a{sv}", 0), unreadable);
    EXPECT_EQ(readBack("sa{sv}", "first", 0), unreadable);
}

TEST(BusMessageReader, IgnoresWhatComesBehindTheDictionary) {
    EXPECT_EQ(readBack("a{sv}s", 1, "a", "s", "b", "behind"), dictionary({{"a", "b"}}));
}

TEST(BusMessageReader, KeepsBytesThatOutliveTheMessage) {
    PropertyListDictionary entries;
    {
        const LooseBusMessage message;
        const std::string content(100000, 'x');
        ASSERT_GE(::sd_bus_message_open_container(message.get(), 'a', "{sv}"), 0);
        ASSERT_GE(::sd_bus_message_open_container(message.get(), 'e', "sv"), 0);
        ASSERT_GE(::sd_bus_message_append(message.get(), "s", "data"), 0);
        ASSERT_GE(::sd_bus_message_open_container(message.get(), 'v', "ay"), 0);
        ASSERT_GE(::sd_bus_message_append_array(message.get(), 'y', content.data(), content.size()),
                  0);
        for (int i = 0; i < 3; ++i) ASSERT_GE(::sd_bus_message_close_container(message.get()), 0);
        entries = readBusMessage(message.sealed())->entries();
    }
    EXPECT_TRUE(*entries.find("data") ==
                PropertyListValue(ByteBuffer::fromText(std::string(100000, 'x'))));
}

}  // namespace
