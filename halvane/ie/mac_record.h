// The fields of a HalvaneMAC (halvane/ie/mac.h). Programs use that class and not these fields.
#ifndef HALVANE_IE_MAC_RECORD_H
#define HALVANE_IE_MAC_RECORD_H

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "halvane/base/boxed.h"
#include "halvane/base/byte_buffer.h"
#include "halvane/base/number.h"
#include "halvane/ie/country_ie.h"
#include "halvane/ie/dwds_ie.h"
#include "halvane/ie/ht_capabilities_ie.h"
#include "halvane/ie/ht_operation_ie.h"
#include "halvane/ie/link_quality_history.h"
#include "halvane/ie/rsn_ie.h"
#include "halvane/ie/tessic_ie.h"
#include "halvane/ie/wps_ie.h"

namespace halvane {

// A fresh record equals that of an empty skeleton.
struct MACRecord {
    // An element in a box; the box of an absent one is empty.
    template <typename Element>
    using BoxedElement = Boxed<std::optional<Element>>;

    // The results of decoding the elements.
    struct Walk {
        // Each is what the function of HalvaneMAC with its name returns.
        std::optional<ByteBuffer> invalidIEs;
        std::optional<ByteBuffer> SSID;
        std::optional<std::vector<Number>> supportedRates;
        BoxedElement<HalvaneRSNIE> rsn;
        BoxedElement<HalvaneRSNIE> wpa;
        BoxedElement<HalvaneCountryIE> countryIE;
        BoxedElement<HalvaneTessicIE> tessicIE;
        BoxedElement<HalvaneDWDSIE> dwdsIE;
        BoxedElement<HalvaneWPSIE> wpsIE;
        BoxedElement<HalvaneHTCapabilitiesIE> HTCaps;
        BoxedElement<HalvaneHTOperationIE> HTOperation;
        std::optional<Number> maxPHYRate;
        std::optional<Number> channelWidth;
        std::optional<std::string> securityFriendlyName;
    };

    // The results of the link samples.
    struct Link {
        // Each is what the function of HalvaneMAC with its name returns; history is that of
        // linkQualityHistory().
        std::optional<Number> maxClientRate;
        std::optional<Number> averageRate;
        HalvaneLinkQualityHistory history;
    };

    // Each is what the function of HalvaneMAC with its name returns; walk and link hold the results
    // above.
    ByteBuffer mac;
    std::uint64_t lastUpdated = 0;
    std::uint64_t firstAdded = 0;
    std::optional<Number> channel;
    std::optional<Number> noise;
    std::optional<Number> RSSI;
    std::optional<Number> beaconInterval;
    std::uint16_t capabilities = 0;
    std::optional<ByteBuffer> ieBuffer{std::in_place};
    std::vector<ByteBuffer> IEs;
    Boxed<Walk> walk;
    Boxed<Link> link;
};

}  // namespace halvane

#endif
