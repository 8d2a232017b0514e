#include "halvane/air/wapi.h"

#include <gtest/gtest.h>
#include <string_view>

#include "halvane/air/element_info.h"
#include "halvane/air/element_range.h"

#include "tests/air/element_samples.h"
#include "tests/air/told_fields.h"
#include "tests/support/hostile_bytes.h"

using halvane::ByteBuffer;
using halvane::testing::Bytes;
using halvane::testing::bytesOf;
using halvane::testing::ToldFields;
using namespace halvane::air;

namespace {

constexpr std::string_view kPsk = "0100 0100 00147202 0100 00147201 00147201 0000";

TEST(AirWapi, DecodesEveryField) {
    const auto wapi =
        Wapi::decode(bytesOf("0100 0200 00147201 00147202 0100 00147201 00147201 0100 0100 "
                             "00112233445566778899AABBCCDDEEFF 99"));
    ASSERT_TRUE(wapi);
    ASSERT_EQ(wapi->akms.size(), 2u);
    EXPECT_EQ(akmText(wapi->akms[0]), "WAI-CERTIFICATE");
    EXPECT_EQ(akmText(wapi->akms[1]), "WAI-PSK");
    EXPECT_EQ(cipherText(wapi->unicast[0]), "WPI-SMS4");
    EXPECT_EQ(cipherText(wapi->multicast), "WPI-SMS4");
    EXPECT_TRUE(wapi->hasPreauthentication());
    EXPECT_EQ((*wapi->bkids)[0][15], 0xFF);
    EXPECT_EQ(wapi->rest, ByteBuffer({0x99}));
    EXPECT_FALSE(Wapi::decode(bytesOf(kPsk))->bkids);
    EXPECT_FALSE(Wapi::decode(bytesOf("0100 0100 00147202 0200 00147201 00147201 0000")));
}

// Four octets with the same element ID are IEEE 802.11's.
TEST(AirWapi, SharesItsIdWithAccessDelays) {
    const auto fieldsOf = [](const Bytes& body) {
        ToldFields fields;
        EXPECT_FALSE(elementInfo(Wapi::kId)->decoder.describe(body, fields));
        return fields.text_;
    };
    EXPECT_EQ(fieldsOf(bytesOf(kPsk)),
              "Version=1;AKM Suite Count=1;AKM Suite=WAI-PSK;Unicast Cipher Suite Count=1;"
              "Unicast Cipher Suite=WPI-SMS4;Multicast Cipher Suite=WPI-SMS4;"
              "WAPI Capability Information{Preauthentication=0;Reserved=0;}");
    EXPECT_EQ(fieldsOf(bytesOf("01020304")),
              "Average Access Delay For Best Effort=1;Average Access Delay For Background=2;"
              "Average Access Delay For Video=3;Average Access Delay For Voice=4;");
    EXPECT_FALSE(Wapi::isWapi({}));
    EXPECT_FALSE(Wapi::isWapi(bytesOf("0100 0000 0000 00147201 00")));
    EXPECT_TRUE(Wapi::isWapi(bytesOf("0100 0000 0000 00147201 0000")));
    Element element;
    element.id = Wapi::kId;
    const Bytes four = bytesOf("01020304");
    element.body = four;
    EXPECT_EQ(elementName(element), "BSS AC Access Delay");
    const Bytes wapi = bytesOf(kPsk);
    element.body = wapi;
    EXPECT_EQ(elementName(element), "WAPI");
}

}  // namespace
