// The Country element (ID 7): a country string, and triplets that state on which channels and with
// which power a station may transmit there.
//
// IEEE 802.11-2020, 9.4.2.8:
//
//     0     element ID 7
//     1     length; ignored: the buffer's own size counts
//     2-4   country string: two letters and the environment octet
//     5-    triplets of 3 octets; 1 or 2 octets at the end are padding
//
// A triplet whose first octet is at most 200 is a channel triplet, any other a regulatory one.
// A value type, used by one thread at a time.
#ifndef HALVANE_IE_COUNTRY_IE_H
#define HALVANE_IE_COUNTRY_IE_H

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/export.h"
#include "halvane/ie/channel_tuple.h"
#include "halvane/ie/regulatory_tuple.h"

namespace halvane {

class HALVANE_EXPORT HalvaneCountryIE {
  public:
    // An empty object: nothing present, not valid.
    // (A defaulted constructor would clear the whole object first, which takes longer than
    // decoding.)
    HalvaneCountryIE() {}  // NOLINT(modernize-use-equals-default)

    // Decodes `ie`, the whole element including its header.
    static HalvaneCountryIE initWithIE(const ByteBuffer& ie);
    // The same for the element of `size` bytes at `offset` in the buffer.
    static HalvaneCountryIE initWithIE(const ByteBuffer& elements, std::size_t offset,
                                       std::size_t size);

    // The whole element.
    const std::optional<ByteBuffer>& rawIE() const { return rawIE_; }

    // True once built from an element, however short. An element without country string or triplets
    // is valid too.
    bool isValid() const { return isValid_; }

    // 3 bytes. No operation converts them to text.
    const std::optional<ByteBuffer>& countryCode() const { return countryCode_; }

    // The triplets of each kind in element order; absent, not empty, if the element has none.
    const std::optional<std::vector<HalvaneChannelTuple>>& channelTuples() const {
        if (areTuplesAwaited_) parseTuples();
        return channelTuples_;
    }
    const std::optional<std::vector<HalvaneRegulatoryTuple>>& regulatoryTuples() const {
        if (areTuplesAwaited_) parseTuples();
        return regulatoryTuples_;
    }

    // Decodes rawIE() again.
    void parseIE();

    // Lines with padded labels, indented by four spaces.
    std::string description() const;

  private:
    void parseTuples() const;

    std::optional<ByteBuffer> rawIE_;
    std::optional<ByteBuffer> countryCode_;
    bool isValid_ = false;
    // Made when they are first asked for.
    mutable bool areTuplesAwaited_ = false;
    mutable std::optional<std::vector<HalvaneChannelTuple>> channelTuples_;
    mutable std::optional<std::vector<HalvaneRegulatoryTuple>> regulatoryTuples_;
};

}  // namespace halvane

#endif
