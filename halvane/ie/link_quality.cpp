#include "halvane/ie/link_quality.h"

#include "halvane/utils/printf/std_string_internal.h"
#include "halvane/utils/scan_time.h"

namespace halvane {

HalvaneLinkQuality HalvaneLinkQuality::initWithRSSI_withTxRate(const Number& rssi,
                                                               const Number& txRate) {
    HalvaneLinkQuality sample;
    sample.timestamp_ = UpTicksToMicroseconds(UpTicks());
    sample.txRate_ = txRate.real();
    sample.rssi_ = static_cast<double>(rssi.int64());
    return sample;
}

std::string HalvaneLinkQuality::description() const {
    return stringPrintF("<%s> RSSI <%s>, Tx Rate <%s>", timestamp_.description().c_str(),
                        rssi_.description().c_str(), txRate_.description().c_str());
}

}  // namespace halvane
