#include <cstdint>
#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/date.h"
#include "halvane/platform/bus/message_check_internal.h"

#include "tests/support/bus_peer.h"

namespace {

using halvane::busSignatureOf;
using halvane::ByteBuffer;
using halvane::checkBusMessage;
using halvane::IPCMessage;
using halvane::PropertyListArray;
using halvane::PropertyListDictionary;
using halvane::PropertyListValue;
using halvane::testing::ipcMessage;

TEST(BusMessageCheck, KnowsTheTypeOfAValue) {
    EXPECT_STREQ(busSignatureOf(true), "b");
    EXPECT_STREQ(busSignatureOf(INT64_MIN), "x");
    EXPECT_STREQ(busSignatureOf(std::uint64_t{INT64_MAX}), "x");
    EXPECT_STREQ(busSignatureOf(std::uint64_t{INT64_MAX} + 1), "t");
    EXPECT_STREQ(busSignatureOf(1.0), "d");
    EXPECT_STREQ(busSignatureOf("text"), "s");
    EXPECT_STREQ(busSignatureOf(ByteBuffer{1}), "ay");
    EXPECT_STREQ(busSignatureOf(PropertyListArray()), "av");
    EXPECT_STREQ(busSignatureOf(PropertyListDictionary()), "a{sv}");
    EXPECT_EQ(busSignatureOf(PropertyListValue()), nullptr);
    EXPECT_EQ(busSignatureOf(halvane::Date()), nullptr);
    EXPECT_EQ(busSignatureOf(PropertyListValue::Object()), nullptr);
}

// The sizes are added up by hand. Padding for the value's alignment comes before each value.
TEST(BusMessageCheck, AddsUpWhatAMessageTakes) {
    constexpr std::size_t kHead = 4 + 4;              // array length, padding to the first entry
    constexpr std::size_t kKey = 4 + 1 + 1;           // length, "a", terminator: 14
    constexpr std::size_t kStart = kHead + kKey + 3;  // a signature of one type: 17
    struct Row {
        PropertyListValue value;
        std::size_t size;
    };
    PropertyListDictionary inner;
    inner.set("b", true);
    const std::vector<Row> rows = {
        {true, kStart + 3 + 4},
        {1, kStart + 7 + 8},
        {1.5, kStart + 7 + 8},
        {"text", kStart + 3 + 4 + 4 + 1},
        {"", kStart + 3 + 4 + 1},
        {ByteBuffer{1, 2, 3}, kStart + 1 + 2 + 4 + 3},  // "ay" is one byte longer
        {ByteBuffer(), kStart + 1 + 2 + 4},
        {PropertyListArray{}, kStart + 1 + 2 + 4},
        {PropertyListArray{true}, kStart + 1 + 2 + 4 + 3 + 1 + 4},  // "b", padding, value
        {PropertyListDictionary(), kStart + 4 + 3 + 4 + 4},         // padded though it is empty
        {inner, kStart + 4 + 3 + 4 + 4 + kKey + 3 + 3 + 4},
    };
    for (const Row& row : rows) {
        const auto check = checkBusMessage(ipcMessage({{"a", row.value}}), 1000);
        EXPECT_EQ(check.refusal, "");
        EXPECT_EQ(check.size, row.size) << busSignatureOf(row.value);
    }
    EXPECT_EQ(checkBusMessage(IPCMessage(), 1000).size, kHead);
    // The first entry takes 24 bytes, so the second one starts at a multiple of 8.
    EXPECT_EQ(checkBusMessage(ipcMessage({{"a", true}, {"b", true}}), 1000).size,
              24u + kKey + 3 + 3 + 4);
}

TEST(BusMessageCheck, RefusesWhatIsLongerThanTheLimit) {
    // The messages end with a text, with the head of an array, and with the head of a dictionary.
    for (const IPCMessage& message :
         {ipcMessage({{"a", "text"}}), ipcMessage({{"a", PropertyListArray()}}),
          ipcMessage({{"a", PropertyListDictionary()}}), IPCMessage()}) {
        const std::size_t size = checkBusMessage(message, 1000).size;
        EXPECT_EQ(checkBusMessage(message, size).refusal, "");
        for (std::size_t limit = 0; limit < size; ++limit) {
            EXPECT_EQ(checkBusMessage(message, limit).refusal, "the message is too long") << limit;
        }
    }
}

TEST(BusMessageCheck, RefusesWhatNestsTooDeep) {
    // Each array takes two levels: its own, and that of the variant in it. Three levels of the
    // message are above them.
    PropertyListValue value = true;
    for (int i = 0; i < 30; ++i) value = PropertyListArray{value};
    EXPECT_EQ(checkBusMessage(ipcMessage({{"a", value}}), 10000).refusal, "");
    value = PropertyListArray{value};
    EXPECT_EQ(checkBusMessage(ipcMessage({{"a", value}}), 10000).refusal,
              "the message nests too deep");
}

}  // namespace
