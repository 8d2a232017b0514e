#include "halvane/air/wps_summary.h"

#include <gtest/gtest.h>
#include <string>

#include "tests/air/element_samples.h"
#include "tests/air/told_fields.h"

using halvane::testing::bytesOf;
using halvane::testing::ToldFields;
using namespace halvane::air;

namespace {

TEST(AirWpsSummary, TellsEachAttribute) {
    const auto wps = WpsSummary::decode(bytesOf(
        "104A 0001 10 1044 0001 02 1057 0001 01 1041 0001 00 1012 0002 0004 1011 0003 617031 "
        "1021 0002 6D66 1023 0001 6D 1024 0001 31 1042 0001 32 1008 0002 2688 "
        "1047 0010 00112233445566778899AABBCCDDEEFF 1054 0008 0006 0050F204 0001 103C 0001 03 "
        "1049 0006 00372A 000120"));
    ASSERT_TRUE(wps);
    EXPECT_EQ(wps->version(), 0x10);
    EXPECT_EQ(wps->versionOf2(), 0x20);
    EXPECT_EQ(wps->state(), WpsState::Configured);
    EXPECT_TRUE(wps->isSetupLocked());
    EXPECT_FALSE(wps->isRegistrarSelected());
    EXPECT_EQ(wps->devicePasswordId(), 4);
    EXPECT_EQ(wps->deviceName(), "ap1");
    EXPECT_EQ(wps->manufacturer(), "mf");
    EXPECT_EQ(wps->modelName(), "m");
    EXPECT_EQ(wps->modelNumber(), "1");
    EXPECT_EQ(wps->serialNumber(), "2");
    EXPECT_TRUE(wps->hasConfigMethod(WpsConfigMethod::PushButton));
    EXPECT_TRUE(wps->hasConfigMethod(WpsConfigMethod::VirtualPushButton));
    EXPECT_TRUE(wps->hasConfigMethod(WpsConfigMethod::VirtualDisplay));
    EXPECT_TRUE(wps->hasConfigMethod(WpsConfigMethod::Display));
    EXPECT_FALSE(wps->hasConfigMethod(WpsConfigMethod::Label));
    EXPECT_EQ((*wps->uuid())[15], 0xFF);
    EXPECT_EQ(wps->primaryDeviceType(), (WpsPrimaryDeviceType{6, {0x00, 0x50, 0xF2, 0x04}, 1}));
    EXPECT_EQ(wps->rfBands(), 3);
}

TEST(AirWpsSummary, LacksWhatIsNotThere) {
    const auto none = WpsSummary::decode(bytesOf("1049 0004 00112233 1054 0002 0006 1044 0000"));
    ASSERT_TRUE(none);
    EXPECT_FALSE(none->version() || none->versionOf2() || none->state() || none->uuid());
    EXPECT_FALSE(none->primaryDeviceType() || none->devicePasswordId() || none->isSetupLocked());
    EXPECT_TRUE(none->deviceName().empty());
    EXPECT_FALSE(WpsSummary::decode(bytesOf("104A 0002 10")));
    EXPECT_FALSE(WpsSummary::decode(bytesOf("104A 00")));
}

// The first octet of Config Methods is the more significant one.
TEST(AirWpsSummary, NamesWhatItTells) {
    ToldFields fields;
    EXPECT_FALSE(WpsSummary::describe(bytesOf("1044 0001 01 1049 0006 00372A 000120"), fields));
    EXPECT_EQ(fields.text_,
              "Attribute{Attribute Type=Wi-Fi Protected Setup State;Length=1;Value=Not configured;}"
              "Attribute{Attribute Type=Vendor Extension;Length=6;Vendor ID=00372a;"
              "Attribute{Subelement ID=Version2;Length=1;Value=32;}}");
    ToldFields methods;
    EXPECT_FALSE(WpsSummary::describe(bytesOf("1008 0002 0280"), methods));
    EXPECT_NE(methods.text_.find("Virtual PushButton=1;"), std::string::npos);
    EXPECT_NE(methods.text_.find(";PushButton=1;"), std::string::npos);
    EXPECT_NE(methods.text_.find("Physical PushButton=0;"), std::string::npos);
}

}  // namespace
