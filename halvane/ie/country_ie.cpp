#include "halvane/ie/country_ie.h"

#include <cstdint>
#include <span>

#include "halvane/base/byte_cursor.h"
#include "halvane/base/describe.h"
#include "halvane/base/element_id.h"
#include "halvane/ie/fancy_formatting.h"
#include "halvane/utils/printf/std_string_internal.h"

namespace halvane {

namespace {

constexpr std::size_t kCountryCodeSize = 3;
constexpr std::size_t kTupleSize = 3;
constexpr std::uint8_t kFirstExtensionIdentifier = 201;

template <typename Tuple>
void appendTuple(std::optional<std::vector<Tuple>>& tuples, std::span<const std::uint8_t> bytes) {
    if (!tuples) tuples.emplace();
    tuples->push_back(Tuple::initWithTuple_withLength(bytes.data(), bytes.size()));
}

template <typename Tuple>
void describeTuples(std::string& text, const char* label,
                    const std::optional<std::vector<Tuple>>& tuples) {
    if (!tuples) return;
    for (const Tuple& tuple : *tuples) {
        appendPrintF(text, "    %s : %s\n", label, tuple.description().c_str());
    }
}

}  // namespace

HalvaneCountryIE HalvaneCountryIE::initWithIE(const ByteBuffer& ie) {
    return initWithIE(ie, 0, ie.size());
}

HalvaneCountryIE HalvaneCountryIE::initWithIE(const ByteBuffer& elements, std::size_t offset,
                                              std::size_t size) {
    HalvaneCountryIE object;
    object.isValid_ = true;
    object.rawIE_.emplace(elements, offset, size);
    object.parseIE();
    return object;
}

void HalvaneCountryIE::parseIE() {
    countryCode_.reset();
    channelTuples_.reset();
    regulatoryTuples_.reset();
    areTuplesAwaited_ = false;
    if (!rawIE_) return;

    ByteCursor cursor(*rawIE_);
    if (!cursor.skip(kElementHeaderSize)) return;
    if (!cursor.skip(kCountryCodeSize)) return;
    countryCode_.emplace(*rawIE_, kElementHeaderSize, kCountryCodeSize);
    areTuplesAwaited_ = true;
}

void HalvaneCountryIE::parseTuples() const {
    channelTuples_.reset();
    regulatoryTuples_.reset();
    ByteCursor cursor(*rawIE_);
    cursor.skip(kElementHeaderSize + kCountryCodeSize);
    while (cursor.remaining() >= kTupleSize) {
        const bool isChannel = cursor.peek() < kFirstExtensionIdentifier;
        const auto tuple = *cursor.take(kTupleSize);
        if (isChannel) {
            appendTuple(channelTuples_, tuple);
        } else {
            appendTuple(regulatoryTuples_, tuple);
        }
    }
    areTuplesAwaited_ = false;
}

std::string HalvaneCountryIE::description() const {
    std::string text;
    appendPrintF(text, "    IE                       : %s\n",
                 FancyFormatting::formattedHexData(rawIE_).c_str());
    if (!isValid_) return text;
    appendPrintF(text, "    Country Code             : %s\n", describe(countryCode_).c_str());
    describeTuples(text, "Channel Tuple           ", channelTuples());
    describeTuples(text, "Regulatory Tuple        ", regulatoryTuples());
    return text;
}

}  // namespace halvane
