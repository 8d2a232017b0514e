#include "halvane/ie/tessic_p2p_ie.h"

#include <gtest/gtest.h>

#include "tests/support/hostile_bytes.h"

using halvane::ByteBuffer;
using halvane::HalvaneTessicP2PIE;

namespace {

const ByteBuffer kGenerated = {0xDD, 0x04, 0x0A, 0x7E, 0x55, 0x05};

TEST(TessicP2PIE, IsEmptyAtFirst) {
    const HalvaneTessicP2PIE ie;
    EXPECT_FALSE(ie.isValid());
    EXPECT_FALSE(ie.rawIE());
    EXPECT_EQ(ie.signatureLength(), 0u);
    EXPECT_EQ(ie.description(), "    IE                  : (null)\n");
}

TEST(TessicP2PIE, KeepsAnElementUndecoded) {
    halvane::testing::forEachHostileForm({0xDD, 0x04, 0x0A, 0x7E, 0x55, 0x05}, {1},
                                         [](const ByteBuffer& element) {
                                             auto ie = HalvaneTessicP2PIE::initWithIE(element);
                                             ie.parseIE();
                                             EXPECT_TRUE(ie.isValid());
                                             EXPECT_EQ(ie.rawIE(), element);
                                             EXPECT_EQ(ie.signatureLength(), 0u);
                                             EXPECT_EQ(ie.description().back(), '\n');
                                         });
}

TEST(TessicP2PIE, AlwaysGeneratesTheSameSixBytes) {
    HalvaneTessicP2PIE fresh;
    auto replaced = HalvaneTessicP2PIE::initWithIE({1, 2, 3});
    for (auto* ie : {&fresh, &replaced, &fresh}) {
        ie->generateIE();
        EXPECT_TRUE(ie->isValid());
        EXPECT_EQ(ie->rawIE(), kGenerated);
        EXPECT_EQ(ie->signatureLength(), 5u);
    }
}

TEST(TessicP2PIE, DescribesItsBytesAlone) {
    EXPECT_EQ(HalvaneTessicP2PIE::initWithIE(kGenerated).description(),
              "    IE                  : DD 04 0A 7E 55 05 \n");
}

}  // namespace
