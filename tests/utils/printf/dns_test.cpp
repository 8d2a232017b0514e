#include <cstddef>
#include <span>

#include "halvane/base/byte_buffer.h"

#include "tests/support/hostile_bytes.h"
#include "tests/utils/printf/test_support.h"

namespace {

using halvane::ByteBuffer;
using halvane::testing::Bytes;
using halvane::testing::forEachHostileForm;
using halvane::testing::printed;

std::string label(std::size_t length, char fill = 'a') {
    return static_cast<char>(length) + std::string(length, fill);
}

TEST(PrintFDNSName, JoinsLabels) {
    // RFC 1035 clause 4.1.4: F.ISI.ARPA.
    EXPECT_EQ(printed("%##s",
                      "\x01"
                      "F\x03"
                      "ISI\x04"
                      "ARPA\x00"),
              "F.ISI.ARPA.");
    EXPECT_EQ(printed("%##s",
                      "\x05"
                      "local"),
              "local.");
    EXPECT_EQ(printed("%##s", ""), ".");
    EXPECT_EQ(printed("[%##8s|%-##8s|%'##s]", "\x01x", "\x01x", "\x01x"),
              "[      x.|x.      |'x.']");
}

TEST(PrintFDNSName, TakesLabelsUpTo63Bytes) {
    EXPECT_EQ(printed("%##s", label(63).c_str()), std::string(63, 'a') + ".");
    EXPECT_EQ(printed("%##s", "\x01x\x40yyy"), "x.<<INVALID DNS LABEL LENGTH 64>>");
    EXPECT_EQ(printed("%##s", "\xC0\x0C"), "<<INVALID DNS LABEL LENGTH 192>>");
    EXPECT_EQ(printed("%##s", "\xFF"), "<<INVALID DNS LABEL LENGTH 255>>");
}

TEST(PrintFDNSName, StopsWhereTheOutputAreaEnds) {
    std::string name;
    for (int i = 0; i < 4; ++i) name += label(63);
    const std::string four = printed("%##s", name.c_str());
    EXPECT_EQ(four.size(), 256u);
    // The buffer holds exactly 256 + 43 characters.
    EXPECT_EQ(printed("%##s", (name + label(42, 'b')).c_str()), four + std::string(42, 'b') + ".");
    EXPECT_EQ(printed("%##s", (name + label(43, 'b')).c_str()), four + "<<DNS NAME TOO LONG>>");
    EXPECT_EQ(printed("%##s", (name + label(63)).c_str()), four + "<<DNS NAME TOO LONG>>");
    EXPECT_EQ(printed("%##s", (name + label(42, 'b') + label(1)).c_str()),
              four + std::string(42, 'b') + ".<<DNS NAME TOO LONG>>");
}

TEST(PrintFDNSName, LimitsTheTextToThePrecision) {
    const char* const name =
        "\x03www\x07"
        "example\x03"
        "com";
    const std::string whole = "www.example.com.";
    for (int precision = 0; precision < 20; ++precision) {
        EXPECT_EQ(printed("%##.*s", precision, name),
                  whole.substr(0, static_cast<std::size_t>(precision)));
    }
}

// With a precision of one less than the size, the reader stays within a name with false lengths.
TEST(PrintFDNSName, StaysWithinThePrecisionOfHostileNames) {
    const Bytes sample = {3,   'w', 'w', 'w', 7,   'e', 'x', 'a', 'm',
                          'p', 'l', 'e', 3,   'c', 'o', 'm', 0};
    forEachHostileForm(sample, {0, 4, 12, 16}, [](const ByteBuffer& name) {
        if (name.empty()) return;
        const int precision = static_cast<int>(name.size()) - 1;
        const std::string text = printed("%##.*s", precision, name.bytes().data());
        EXPECT_LE(text.size(), name.size());
    });
}

std::string record(const std::string& bytes, const char* format = "%{txt}") {
    const auto copy = halvane::testing::exactHeapCopy(
        std::span(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()));
    return printed(format, copy.bytes().data(), copy.size());
}

std::string counted(const std::string& text) {
    return static_cast<char>(text.size()) + text;
}

TEST(PrintFTXTRecord, PrintsAStringALine) {
    EXPECT_EQ(record(counted("a=1") + counted("flag") + counted("b=")), "a=1\nflag\nb=\n");
    EXPECT_EQ(record(counted("a=1") + counted("b=2"), "%2{txt}"), "        a=1\n        b=2\n");
    EXPECT_EQ(record(counted("a") + counted("") + counted("b")), "a\n\nb\n");
}

TEST(PrintFTXTRecord, PrintsANewlineForAnEmptyOne) {
    EXPECT_EQ(record(""), "\n");
    EXPECT_EQ(record(std::string(1, '\0')), "\n");
    EXPECT_EQ(record(std::string(1, '\0') + counted("a=1")), "\n");
    EXPECT_EQ(printed("%{txt}", static_cast<const void*>(nullptr), std::size_t{0}), "\n");
    EXPECT_EQ(printed("%{txt}", static_cast<const void*>(nullptr), std::size_t{1}), "<<NULL>>");
}

TEST(PrintFTXTRecord, ReportsALengthPastTheEnd) {
    EXPECT_EQ(record(counted("a=1") + "\x09"
                                      "abc"),
              "a=1\n### TXT record length byte too big (9, 3 max)\n");
    EXPECT_EQ(record("\x01", "%1{txt}"), "    ### TXT record length byte too big (1, 0 max)\n");
}

TEST(PrintFTXTRecord, SplitsAPackedRecordAtCommas) {
    EXPECT_EQ(record(counted("waMA=00-11,raMA=22,syAP=105")), "00-11\nraMA=22\nsyAP=105\n");
    EXPECT_EQ(record(counted("waMA=a,b")), "a\nb\n");
    EXPECT_EQ(record(counted("waMA=1,a\\,b\\\\c,d"), "%1{txt}"), "    1\n    a,b\\c\n    d\n");
    EXPECT_EQ(record(counted("waMA=")), "\n");
    EXPECT_EQ(record(counted("waMA=,,")), "\n\n\n");
    EXPECT_EQ(record(counted("waMA=waMA=")), "waMA=\n");
    EXPECT_EQ(record(counted("waMA=" + std::string(250, 'x'))), std::string(250, 'x') + "\n");
}

TEST(PrintFTXTRecord, ReportsATrailingBackslash) {
    EXPECT_EQ(record(counted("waMA=1,ab\\,c\\"), "%1{txt}"),
              "    1\n    ### bad TXT escape: ab\\,c\\\n");
    EXPECT_EQ(record(counted("waMA=\\")), "### bad TXT escape: \\\n");
}

TEST(PrintFTXTRecord, WantsAPackedRecordToBeOneString) {
    EXPECT_EQ(record("\x03waMA=1", "%1{txt}"),
              "    ### bad TXT record length byte (3, 6 expected)\n");
    EXPECT_EQ(record(counted("waMA=1") + counted("b")),
              "### bad TXT record length byte (6, 8 expected)\n");
    EXPECT_EQ(record("\xFFwaMA="), "### bad TXT record length byte (255, 5 expected)\n");
    // A string of five bytes is too short for a record.
    EXPECT_EQ(record("\x04waMA"), "waMA\n");
}

TEST(PrintFTXTRecord, SurvivesHostileRecords) {
    const Bytes plain = {3, 'a', '=', '1', 4, 'f', 'l', 'a', 'g', 0, 2, 'b', '='};
    const Bytes packed = {12, 'w', 'a', 'M', 'A', '=', '1', ',', 'a', '\\', ',', 'b', '\\'};
    for (const Bytes& sample : {plain, packed}) {
        forEachHostileForm(sample, {0, 4, 9, 10, 12}, [](const ByteBuffer& bytes) {
            const std::string text = printed("%{txt}", bytes.bytes().data(), bytes.size());
            EXPECT_TRUE(text.ends_with("\n"));
            EXPECT_LT(text.size(), 100u);
        });
    }
}

}  // namespace
