#include <gtest/gtest.h>
#include <optional>
#include <vector>

#include "halvane/air/element_codec_internal.h"
#include "halvane/base/inline_list.h"

#include "tests/air/element_samples.h"
#include "tests/air/told_fields.h"
#include "tests/support/hostile_bytes.h"

using halvane::ByteBuffer;
using halvane::InlineList;
using halvane::testing::bytesOf;
using halvane::testing::ToldFields;
using namespace halvane::air;

namespace {

struct Probe {
    std::uint16_t number = 0;
    ByteBuffer name{};
    InlineList<std::uint8_t, 4> runs{};
    ByteBuffer rest{};
};

constexpr BitField kRuns[] = {{0, 3, "Size"}, {9, 2, "Late"}};

// The first three bits of the runs hold their size.
constexpr auto kLayout = [](auto& codec, auto& probe) {
    codec.bigEndian("Number", probe.number);
    codec.bigEndianSized("Length", [&] { codec.text("Name", probe.name); });
    codec.bitString(
        probe.runs, [](Octets left) { return static_cast<std::size_t>(bitsOf(left, 0, 3)); },
        [](BitTeller& teller) { teller.group("Runs", [&] { teller.runs(kRuns); }); });
    codec.rest(probe.rest);
};

TEST(AirElementCodecText, ReadsBigEndianNumbersTextAndStringsOfBits) {
    const auto body = bytesOf("1234 0002 4101 02 06 FF");
    const auto probe = decodeBy<Probe>(kLayout, body);
    ASSERT_TRUE(probe);
    EXPECT_EQ(probe->number, 0x1234);
    EXPECT_EQ(probe->name, ByteBuffer({0x41, 0x01}));
    EXPECT_EQ(probe->runs, (InlineList<std::uint8_t, 4>{0x02, 0x06}));
    EXPECT_EQ(encodeBy(kLayout, *probe), body);
    ToldFields fields;
    EXPECT_FALSE(describeBy<Probe>(kLayout, body, fields));
    EXPECT_EQ(fields.text_,
              "Number=4660;Length=2;Name=A\\x01;Runs{Size=2;Late=3;}Further octets=ff;");
}

TEST(AirElementCodecText, TellsTextWithoutItsPadding) {
    ToldFields fields;
    EXPECT_FALSE(describeBy<Probe>(kLayout, bytesOf("0000 0004 41004200 00"), fields));
    EXPECT_EQ(fields.text_, "Number=0;Length=4;Name=A\\x00B;Runs{}Further octets=00;");
    ToldFields padding;
    EXPECT_FALSE(describeBy<Probe>(kLayout, bytesOf("0000 0002 0000"), padding));
    EXPECT_EQ(padding.text_, "Number=0;Length=2;Name=0000;Runs{}");
}

TEST(AirElementCodecText, LeavesOutRunsThatTheStringOfBitsDoesNotHold) {
    ToldFields fields;
    EXPECT_FALSE(describeBy<Probe>(kLayout, bytesOf("0000 0000 01"), fields));
    EXPECT_EQ(fields.text_, "Number=0;Length=0;Runs{Size=1;}");
}

TEST(AirElementCodecText, FailsForAStringOfBitsThatDoesNotFit) {
    EXPECT_FALSE(decodeBy<Probe>(kLayout, bytesOf("0000 0000 02")));
    EXPECT_FALSE(decodeBy<Probe>(kLayout, bytesOf("0000 0003 4142")));
    EXPECT_FALSE(decodeBy<Probe>(kLayout, bytesOf("00")));
}

struct Opaque {
    ByteBuffer value{};
};

// An opaque value that begins with a length of its own.
constexpr auto kOpaqueLayout = [](auto& codec, auto& element) {
    codec.opaque(element.value, [](ElementReader& inner) {
        ByteBuffer name;
        inner.sized<std::uint8_t>("Length", 0, [&] { inner.text("Name", name); });
    });
};

TEST(AirElementCodecText, TellsWhatItCanOfAnOpaqueValue) {
    const auto told = [](const auto& body) {
        ToldFields fields;
        EXPECT_FALSE(describeBy<Opaque>(kOpaqueLayout, body, fields));
        EXPECT_EQ(decodeBy<Opaque>(kOpaqueLayout, body)->value, ByteBuffer(body));
        EXPECT_EQ(fields.end_, body.size());
        return fields.text_;
    };
    EXPECT_EQ(told(bytesOf("0141")), "Length=1;Name=A;");
    EXPECT_EQ(told(bytesOf("014105")), "Length=1;Name=A;Further octets=05;");
    EXPECT_EQ(told(bytesOf("0341")), "Length=3;Further octets=41;");
    EXPECT_EQ(told(bytesOf("")), "");
}

}  // namespace
