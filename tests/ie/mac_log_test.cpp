// What merging records logs.
#include <gtest/gtest.h>

#include "halvane/ie/mac.h"
#include "halvane/utils/log.h"

#include "tests/support/elements.h"
#include "tests/support/log_recorder.h"

namespace {

using halvane::ByteBuffer;
using halvane::HalvaneMAC;
using halvane::testing::element;
using halvane::testing::LogRecorder;
using halvane::testing::ssidElement;

HalvaneMAC recordOf(std::optional<ByteBuffer> elements) {
    auto record = HalvaneMAC::initWithMAC({0x02, 0x1A, 0x2B, 0x3C, 0x4D, 0x5E});
    if (elements) record.setInformationElements(*elements);
    return record;
}

class MACMergeLog : public ::testing::Test {
  protected:
    MACMergeLog() {
        LogUtils_Finalize();
        LogIsEnabled(&gLogCategory_WiFiIE, kLogLevelVerbose);
        setLevel("verbose");
        LogControl(("WiFiIE:flags=function;level,WiFiIE:output=" + recorder_.spec()).c_str());
    }
    ~MACMergeLog() override { LogUtils_Finalize(); }

    static void setLevel(const std::string& level) {
        LogControl(("WiFiIE:level=" + level).c_str());
    }

    LogRecorder recorder_;
};

TEST_F(MACMergeLog, TellsElementsAndSSIDsThatDiffer) {
    auto record = recordOf(ByteBuffer(ssidElement("ab")));
    record.mergeEntries(recordOf(ByteBuffer(ssidElement("cd"))));
    EXPECT_EQ(recorder_.text(),
              "[,mergeEntries:@verbose] Old IEs <"
              "00026162                            |^^ab            | (4 bytes)\n"
              ">\n, New IEs <"
              "00026364                            |^^cd            | (4 bytes)\n"
              ">\n\n"
              "[,mergeEntries:@verbose] Old SSID <6162  |  ab>, New SSID <6364  |  cd>\n");
}

TEST_F(MACMergeLog, NamesItsFunction) {
    auto record = recordOf(std::nullopt);
    record.mergeEntries(recordOf(ByteBuffer(ssidElement("ab"))));
    EXPECT_EQ(recorder_.function, "-[HalvaneMAC mergeEntries:]");
}

TEST_F(MACMergeLog, TellsAnSSIDThatOneOfThemLacks) {
    auto record = recordOf(std::nullopt);
    record.mergeEntries(recordOf(ByteBuffer(ssidElement("ab"))));
    EXPECT_TRUE(recorder_.text().ends_with("Old SSID <  |  >, New SSID <6162  |  ab>\n"));

    auto revealed = recordOf(ByteBuffer(ssidElement("ab")));
    revealed.mergeEntries(recordOf(std::nullopt));
    EXPECT_TRUE(recorder_.text().ends_with("Old SSID <6162  |  ab>, New SSID <  |  >\n"));
}

TEST_F(MACMergeLog, TellsNoSSIDsThatAreTheSame) {
    auto record = recordOf(ByteBuffer(ssidElement("ab")));
    record.mergeEntries(recordOf(ByteBuffer(ssidElement("ab"))));
    EXPECT_EQ(recorder_.text().find("SSID"), std::string::npos);
    EXPECT_EQ(recorder_.text().find("[,mergeEntries:@verbose] Old IEs <"), 0u);
}

TEST_F(MACMergeLog, TellsWhatIsAbsent) {
    auto record = recordOf(std::nullopt);
    record.mergeEntries(recordOf(std::nullopt));
    EXPECT_EQ(recorder_.text(),
              "[,mergeEntries:@verbose] Old IEs <<<NULL>>>\n, New IEs <<<NULL>>>\n\n");
}

TEST_F(MACMergeLog, TellsNothingOfAnotherAddress) {
    auto record = recordOf(ByteBuffer(ssidElement("ab")));
    auto other = HalvaneMAC::initWithMAC({0x02, 0x1A, 0x2B, 0x3C, 0x4D, 0x5F});
    other.setInformationElements(ByteBuffer(ssidElement("cd")));
    record.mergeEntries(other);
    EXPECT_TRUE(recorder_.pieces.empty());
}

TEST_F(MACMergeLog, TellsNothingAboveItsLevel) {
    setLevel("verbose+1");
    auto record = recordOf(ByteBuffer(ssidElement("ab")));
    record.mergeEntries(recordOf(ByteBuffer(ssidElement("cd"))));
    EXPECT_TRUE(recorder_.pieces.empty());
}

}  // namespace
