// An RSN or WPA element of any bytes: the decoded element can be generated, and decodes to the
// same.
#include <cstddef>
#include <cstdint>
#include <span>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/oui.h"
#include "halvane/ie/rsn_ie.h"

#include "fuzz/require.h"

using halvane::ByteBuffer;
using halvane::HalvaneRSNIE;

namespace {

void check(const ByteBuffer& bytes, const ByteBuffer& oui) {
    const auto ie = HalvaneRSNIE::initWithIE_withOUI(bytes, oui);
    REQUIRE(ie.rawIE() == bytes);
    REQUIRE(!ie.description().empty());

    auto generated = ie;
    generated.generateIE();
    if (!generated.isValid() || generated.rawIE()->size() > 257) return;
    // A WPA element is generated without capabilities, so a decoder would read its PMKIDs as
    // capabilities.
    const bool hasPMKIDs = ie.pmkids() && !ie.pmkids()->empty();
    if (hasPMKIDs && oui == ByteBuffer(halvane::kWPAOUI)) return;
    const auto again = HalvaneRSNIE::initWithIE_withOUI(generated.rawIE(), oui);
    REQUIRE(again.isValid());
    REQUIRE(again.countUnicastCiphers() == ie.countUnicastCiphers());
    REQUIRE(again.countAKMs() == ie.countAKMs());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const ByteBuffer bytes(std::span(data, size));
    check(bytes, ByteBuffer(halvane::kRSNOUI));
    check(bytes, ByteBuffer(halvane::kWPAOUI));
    return 0;
}
