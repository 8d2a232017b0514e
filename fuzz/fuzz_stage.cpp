// The stages and generators of the element classes, called with any element and in any order.
#include <algorithm>
#include <array>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <iterator>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/number.h"
#include "halvane/base/oui.h"
#include "halvane/base/vendor.h"
#include "halvane/ie/bss_coexistence_ie.h"
#include "halvane/ie/channel_tuple.h"
#include "halvane/ie/country_ie.h"
#include "halvane/ie/dwds_ie.h"
#include "halvane/ie/fancy_formatting.h"
#include "halvane/ie/ht_capabilities_ie.h"
#include "halvane/ie/ht_operation_ie.h"
#include "halvane/ie/mac.h"
#include "halvane/ie/mcs.h"
#include "halvane/ie/regulatory_tuple.h"
#include "halvane/ie/rsn_ie.h"
#include "halvane/ie/tessic_ie.h"
#include "halvane/ie/tessic_p2p_ie.h"

#include "fuzz/byte_source.h"
#include "fuzz/require.h"

using namespace halvane;

namespace {

using Bytes = std::span<const std::uint8_t>;

constexpr void (HalvaneRSNIE::*kFlagSetters[])(bool) = {
    &HalvaneRSNIE::setAllowUnicastCipherTKIP,
    &HalvaneRSNIE::setAllowUnicastCipherCCMP,
    &HalvaneRSNIE::setAllowUnicastCipherUseGroup,
    &HalvaneRSNIE::setAllowMulticastCipherWEP40,
    &HalvaneRSNIE::setAllowMulticastCipherWEP104,
    &HalvaneRSNIE::setAllowMulticastCipherTKIP,
    &HalvaneRSNIE::setAllowMulticastCipherCCMP,
    &HalvaneRSNIE::setAllowKeyManagementPSK,
    &HalvaneRSNIE::setAllowKeyManagement8021X,
    &HalvaneRSNIE::setSupportsPreAuthentication,
    &HalvaneRSNIE::setHasNoPairwise,
    &HalvaneRSNIE::setIsPeerKeyEnabled,
};

void setFlags(HalvaneRSNIE& ie, std::uint16_t bits) {
    int bit = 0;
    for (const auto set : kFlagSetters) (ie.*set)((bits >> bit++ & 1) != 0);
}

void checkRSNStages(fuzzing::ByteSource source) {
    using Stage = std::size_t (HalvaneRSNIE::*)(std::size_t, std::size_t);
    constexpr Stage kStages[] = {
        &HalvaneRSNIE::parseVersion_withLength,        &HalvaneRSNIE::parseGroupCipher_withLength,
        &HalvaneRSNIE::parsePairwiseCipher_withLength, &HalvaneRSNIE::parseAKM_withLength,
        &HalvaneRSNIE::parseCapabilities_withLength,   &HalvaneRSNIE::parsePMKIDs_withLength};
    const OUI& oui = source.flag() ? kRSNOUI : kWPAOUI;
    std::array<std::uint8_t, 6> order{};
    for (auto& stage : order) stage = source.byte();
    const std::size_t start = source.byte();
    auto ie = HalvaneRSNIE::initWithIE_withOUI(ByteBuffer(source.rest()), ByteBuffer(oui));
    const std::size_t size = ie.rawIE()->size();
    std::size_t left = size - std::min(start, size);
    for (const std::uint8_t stage : order) {
        const std::size_t after = (ie.*kStages[stage % std::size(kStages)])(size - left, left);
        REQUIRE(after <= left);
        left = after;
    }
}

void checkRSNGenerator(fuzzing::ByteSource source) {
    HalvaneRSNIE ie;
    const OUI& oui = source.flag() ? kRSNOUI : kWPAOUI;
    ie.setOui(ByteBuffer(oui));
    setFlags(ie, source.integer<std::uint16_t>());
    ie.setReplayCounterPTKSA(source.below(4));
    ie.setReplayCounterGTKSA(source.below(4));
    std::vector<ByteBuffer> pmkids;
    for (std::size_t i = source.below(4); i > 0 && oui == kRSNOUI; --i) {
        auto pmkid = source.buffer(16);
        if (pmkid.size() == 16) pmkids.push_back(std::move(pmkid));
    }
    if (!pmkids.empty()) ie.setPmkids(pmkids);
    ie.generateIE();
    REQUIRE(ie.isValid() == (ie.countUnicastCiphers() > 0 && ie.countAKMs() > 0));
    REQUIRE(ie.rawIE().has_value() == ie.isValid());
    if (!ie.isValid()) return;
    const auto again = HalvaneRSNIE::initWithIE_withOUI(ie.rawIE(), ByteBuffer(oui));
    REQUIRE(again.isValid());
    REQUIRE(again.rawIE()->bytes()[1] + 2u == again.rawIE()->size());
    REQUIRE(again.allowUnicastCipherCCMP() == ie.allowUnicastCipherCCMP());
    REQUIRE(again.allowUnicastCipherTKIP() == ie.allowUnicastCipherTKIP());
    REQUIRE(again.allowKeyManagement8021X() == ie.allowKeyManagement8021X() ||
            ie.allowKeyManagementPSK());
    REQUIRE(again.pmkids().value_or(pmkids) == pmkids);
}

void checkP2P(const ByteBuffer& bytes) {
    auto ie = HalvaneTessicP2PIE::initWithIE(bytes);
    ie.parseIE();
    REQUIRE(ie.isValid() && ie.rawIE() == bytes && ie.signatureLength() == 0);
    ie.generateIE();
    const std::uint8_t expected[] = {221, 4, kVendorOUI[0], kVendorOUI[1], kVendorOUI[2], 5};
    REQUIRE(ie.rawIE() == ByteBuffer(Bytes(expected)) && ie.signatureLength() == 5);
    REQUIRE(!ie.description().empty());
}

template <typename Tuple>
std::size_t countOf(const std::optional<std::vector<Tuple>>& tuples) {
    REQUIRE(!tuples || !tuples->empty());
    return tuples ? tuples->size() : 0;
}

void checkCountry(const ByteBuffer& bytes) {
    auto ie = HalvaneCountryIE::initWithIE(bytes);
    const std::size_t triplets = bytes.size() < 5 ? 0 : (bytes.size() - 5) / 3;
    REQUIRE(countOf(ie.channelTuples()) + countOf(ie.regulatoryTuples()) == triplets);
    REQUIRE(ie.countryCode().has_value() == (bytes.size() >= 5));
    const std::string before = ie.description();
    ie.parseIE();
    REQUIRE(before.size() <= ie.description().size());
    const Bytes tuple = bytes.bytes();
    REQUIRE(!HalvaneChannelTuple::initWithTuple_withLength(tuple.data(), tuple.size())
                 .description()
                 .empty());
    REQUIRE(!HalvaneRegulatoryTuple::initWithTuple_withLength(tuple.data(), tuple.size())
                 .description()
                 .empty());
}

void checkHTCapabilities(const ByteBuffer& bytes) {
    const auto ie = HalvaneHTCapabilitiesIE::initWithIE(bytes);
    REQUIRE(ie.isValid() == (bytes.size() == 28) && !ie.description().empty());
    if (!ie.isValid()) return;
    std::vector<Number> indices;
    for (int i = 0; i <= 76; ++i) {
        const auto octet = bytes.bytes()[5 + static_cast<std::size_t>(i) / 8];
        if ((octet >> i % 8 & 1) != 0) indices.emplace_back(i);
    }
    REQUIRE(ie.mcsRates() == indices);
    for (const int width : {0, 20, 40}) {
        for (const bool isShort : {false, true}) {
            const Number rate = HalvaneMCS::sharedSystem().rateForMCSSet_withChannelWidth_shortGI(
                indices, width, isShort);
            REQUIRE(rate >= Number(0) && rate <= Number(600));
        }
    }
}

void checkHTOperation(const ByteBuffer& bytes) {
    auto ie = HalvaneHTOperationIE::initWithIE(bytes);
    REQUIRE(ie.isValid() == (bytes.size() == 24) && !ie.description().empty());
    if (!ie.isValid()) return;
    REQUIRE(ie.primaryChannel() == bytes.bytes()[2]);
    REQUIRE(ie.secondaryChannelOffset() == (bytes.bytes()[3] & 3));
    REQUIRE(ie.staChannelWidth() == ((bytes.bytes()[3] & 4) != 0 ? 40 : 20));
}

void checkVendorElements(const ByteBuffer& bytes) {
    const auto tessic = HalvaneTessicIE::initWithIE(bytes);
    REQUIRE(tessic.isValid() == (bytes.size() >= 9));
    REQUIRE(tessic.TessicVersion().has_value() == (bytes.size() >= 6));
    REQUIRE(tessic.TessicProductName().has_value() == (bytes.size() >= 7));
    REQUIRE(!tessic.description().empty());
    const auto dwds = HalvaneDWDSIE::initWithIE(bytes);
    REQUIRE(dwds.isValid() && !dwds.description().empty());
    const std::uint8_t flags = bytes.size() >= 13 ? bytes.bytes()[12] : 0;
    REQUIRE(dwds.isClosedNetworkOverDWDS() == ((flags & 8) != 0));
}

void checkFormatting(const ByteBuffer& bytes) {
    const std::size_t lines = bytes.empty() ? 0 : (bytes.size() - 1) / 32;
    REQUIRE(FancyFormatting::formattedHexData(bytes).size() == 3 * bytes.size() + lines);
    REQUIRE(FancyFormatting::formattedData_includeHex(bytes, false).size() == bytes.size());
    REQUIRE(FancyFormatting::formattedData_includeHex(bytes, true).size() == 3 * bytes.size() + 5);
    REQUIRE(FancyFormatting::formattedMAC(bytes).size() <= 17);
}

// Passes its own elements to the stages of the walk.
struct StageMAC : HalvaneMAC {
    StageMAC() : HalvaneMAC(ByteBuffer{2, 0, 0, 0, 0, 1}) {}

    void run(fuzzing::ByteSource source) {
        const unsigned maximum = source.byte();
        while (!source.empty()) {
            const std::size_t stage = source.below(6);
            const ByteBuffer element = source.buffer();
            if (stage == 0) parseInformationElement(element);
            if (stage == 1) parseInformationElementSSID(element);
            if (stage == 2) {
                parseInformationElementSupportedRates_withMaximumLength(element, maximum);
            }
            if (stage == 3) parseInformationElementVendorSpecific(element);
            if (stage == 4) cleanupIEs();
            if (stage == 5) parseInformationElements();
        }
        REQUIRE(!description().empty());
        cleanupIEs();
        REQUIRE(!SSID() && !supportedRates() && !rsn() && !countryIE());
    }
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const fuzzing::ByteSource source(data, size);
    const ByteBuffer bytes(Bytes(data, size));
    checkRSNStages(source);
    checkRSNGenerator(source);
    checkP2P(bytes);
    checkCountry(bytes);
    checkHTCapabilities(bytes);
    checkHTOperation(bytes);
    checkVendorElements(bytes);
    checkFormatting(bytes);
    StageMAC().run(source);
    return 0;
}
