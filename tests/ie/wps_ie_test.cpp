#include "halvane/ie/wps_ie.h"

#include <cstddef>
#include <gtest/gtest.h>
#include <string>

#include "halvane/base/number.h"

#include "tests/support/hostile_bytes.h"

using halvane::ByteBuffer;
using halvane::HalvaneWPSIE;
using halvane::Number;
using halvane::testing::Bytes;

namespace {

// From a captured probe response.
const Bytes kProbeResponse = {
    0xDD, 0x6F,                                                              // length 111
    0x00, 0x50, 0xF2, 0x04,                                                  // OUI and type
    0x10, 0x4A, 0x00, 0x01, 0x10,                                            // Version 1.0
    0x10, 0x44, 0x00, 0x01, 0x02,                                            // configured
    0x10, 0x41, 0x00, 0x01, 0x00,                                            // no registrar
    0x10, 0x3B, 0x00, 0x01, 0x03,                                            // Response Type AP
    0x10, 0x47, 0x00, 0x10, 0xAF, 0xA3, 0x6B, 0xE9, 0xF8, 0x65, 0x94, 0xBD,  // UUID-E
    0x75, 0x64, 0x48, 0xF7, 0xEA, 0x93, 0x4A, 0x7D,                          //
    0x10, 0x21, 0x00, 0x07, 0x4C, 0x69, 0x6E, 0x6B, 0x73, 0x79, 0x73,        // Manufacturer
    0x10, 0x23, 0x00, 0x07, 0x57, 0x52, 0x54, 0x31, 0x36, 0x30, 0x4E,        // Model Name
    0x10, 0x24, 0x00, 0x06, 0x31, 0x32, 0x33, 0x34, 0x35, 0x36,              // Model Number
    0x10, 0x42, 0x00, 0x02, 0x34, 0x32,                                      // Serial Number
    0x10, 0x54, 0x00, 0x08, 0x00, 0x06, 0x00, 0x50, 0xF2, 0x04, 0x00, 0x01,  // access point
    0x10, 0x11, 0x00, 0x07, 0x57, 0x52, 0x54, 0x31, 0x36, 0x30, 0x4E,        // Device Name
    0x10, 0x08, 0x00, 0x02, 0x00, 0x84,                                      // Config Methods
};

TEST(WPSIE, IsEmptyAtFirstAndWithoutAnElement) {
    for (const HalvaneWPSIE& ie : {HalvaneWPSIE(), HalvaneWPSIE::initWithIE(std::nullopt)}) {
        EXPECT_FALSE(ie.isValid());
        EXPECT_FALSE(ie.rawIE());
        EXPECT_FALSE(ie.tlvs());
        EXPECT_EQ(ie.description(), "");
    }
}

TEST(WPSIE, DecodesACapturedProbeResponse) {
    const auto ie = HalvaneWPSIE::initWithIE(ByteBuffer(kProbeResponse));
    EXPECT_EQ(ie.rawIE(), ByteBuffer(kProbeResponse));
    EXPECT_FALSE(ie.isValid());
    ASSERT_TRUE(ie.tlvs());
    EXPECT_TRUE(ie.tlvs()->isValid());
    EXPECT_EQ(ie.tlvs()->rawTLVs(), ByteBuffer(kProbeResponse).slice(6));
    EXPECT_EQ(ie.tlvs()->version(), Number(1.0));
    EXPECT_EQ(ie.tlvs()->wpsSetupState(), Number(2));
    EXPECT_EQ(ie.tlvs()->selectedRegistrar(), Number(0));
    EXPECT_EQ(ie.tlvs()->responseType(), Number(3));
    EXPECT_EQ(ie.tlvs()->enrolleeUUID(),
              ByteBuffer::fromHex("afa36be9 f86594bd 756448f7 ea934a7d"));
    EXPECT_EQ(ie.tlvs()->manufacturer(), ByteBuffer::fromHex("4c696e6b737973"));
    EXPECT_EQ(ie.tlvs()->modelName(), ByteBuffer::fromText("WRT160N"));
    EXPECT_EQ(ie.tlvs()->modelNumber(), ByteBuffer::fromText("123456"));
    EXPECT_EQ(ie.tlvs()->serialNumber(), ByteBuffer::fromText("42"));
    EXPECT_EQ(ie.tlvs()->deviceName(), ByteBuffer::fromText("WRT160N"));
    EXPECT_EQ(ie.tlvs()->configMethods(), Number(0x0084));
    ASSERT_TRUE(ie.tlvs()->deviceTypes());
    ASSERT_EQ(ie.tlvs()->deviceTypes()->size(), 1u);
    EXPECT_EQ(ie.tlvs()->deviceTypes()->front().companyName(), "Wi-Fi Alliance");
}

TEST(WPSIE, NeedsAByteOfAttributes) {
    const ByteBuffer element(kProbeResponse);
    for (std::size_t size = 0; size <= 8; ++size) {
        const auto ie = HalvaneWPSIE::initWithIE(element.slice(0, size));
        ASSERT_EQ(ie.tlvs().has_value(), size >= 7) << size;
        if (size >= 7) {
            EXPECT_EQ(ie.tlvs()->rawTLVs(), element.slice(6, size - 6)) << size;
        }
    }
}

TEST(WPSIE, DescribesItsBytesAndItsAttributes) {
    EXPECT_EQ(HalvaneWPSIE::initWithIE(ByteBuffer{0xDD, 0x0A, 0x00, 0x50, 0xF2, 0x04, 0x10, 0x01,
                                                  0x00, 0x02, 0x00, 0x06})
                  .description(),
              "    IE                    : DD 0A 00 50 F2 04 10 01 00 02 00 06 \n"
              "    TLVS\n"
              "    AP Channel                        : 6\n"
              "\n");
}

TEST(WPSIE, DescribesMissingAttributesAsNull) {
    EXPECT_EQ(
        HalvaneWPSIE::initWithIE(ByteBuffer{0xDD, 0x04, 0x00, 0x50, 0xF2, 0x04}).description(),
        "    IE                    : DD 04 00 50 F2 04 \n"
        "    TLVS\n"
        "(null)\n");
}

TEST(WPSIE, HostileFormsKeepTheElementAndStayNotValid) {
    halvane::testing::forEachHostileForm(kProbeResponse,
                                         {1,  8,  9,  13, 14, 18, 19, 23, 24, 28, 29,  48, 49,
                                          59, 60, 70, 71, 80, 81, 86, 87, 98, 99, 109, 110},
                                         [](const ByteBuffer& element) {
                                             const auto ie = HalvaneWPSIE::initWithIE(element);
                                             EXPECT_EQ(ie.rawIE(), element);
                                             EXPECT_FALSE(ie.isValid());
                                             EXPECT_EQ(ie.tlvs().has_value(), element.size() >= 7);
                                             if (ie.tlvs()) {
                                                 EXPECT_EQ(ie.tlvs()->rawTLVs(), element.slice(6));
                                             }
                                             EXPECT_EQ(ie.description().back(), '\n');
                                         });
}

}  // namespace
