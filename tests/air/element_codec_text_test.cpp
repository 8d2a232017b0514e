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

    friend bool operator==(const Probe&, const Probe&) = default;
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

TEST(AirElementCodec, ReadsBigEndianNumbersTextAndStringsOfBits) {
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

TEST(AirElementCodec, LeavesOutRunsThatTheStringOfBitsDoesNotHold) {
    ToldFields fields;
    EXPECT_FALSE(describeBy<Probe>(kLayout, bytesOf("0000 0000 01"), fields));
    EXPECT_EQ(fields.text_, "Number=0;Length=0;Runs{Size=1;}");
}

TEST(AirElementCodec, FailsForAStringOfBitsThatDoesNotFit) {
    EXPECT_FALSE(decodeBy<Probe>(kLayout, bytesOf("0000 0000 02")));
    EXPECT_FALSE(decodeBy<Probe>(kLayout, bytesOf("0000 0003 4142")));
    EXPECT_FALSE(decodeBy<Probe>(kLayout, bytesOf("00")));
}

}  // namespace
