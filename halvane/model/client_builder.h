// Makes records of stations from typed values.
//
// A value type. Threads: as for a HalvaneClient.
#ifndef HALVANE_MODEL_CLIENT_BUILDER_H
#define HALVANE_MODEL_CLIENT_BUILDER_H

#include <cstdint>
#include <span>

#include "halvane/base/export.h"
#include "halvane/base/mac_address.h"
#include "halvane/model/client.h"

namespace halvane {

class HALVANE_EXPORT ClientBuilder {
  public:
    // A station that was created now, is not associated, and was never sent away: its
    // deauthReason() is 0.
    explicit ClientBuilder(const MacAddress& address);

    // The capability information field, IEEE 802.11-2020, 9.4.1.4.
    ClientBuilder& capabilities(std::uint16_t field);

    // All elements of its (re)association request, IEEE 802.11-2020, 9.4.2.
    ClientBuilder& elements(std::span<const std::uint8_t> octets);

    // The signal and the noise at the access point, in dBm, and the channel's number:
    ClientBuilder& signal(int dBm);
    ClientBuilder& noise(int dBm);
    ClientBuilder& channel(int number);

    // Whether the station is associated; not at first.
    ClientBuilder& isAssociated(bool value);

    // Times in microseconds of system up-time; 0 for never.
    ClientBuilder& created(std::uint64_t time);
    ClientBuilder& joined(std::uint64_t time);
    ClientBuilder& left(std::uint64_t time);

    // A code of IEEE 802.11-2020, 9.4.1.7; 0 for none.
    ClientBuilder& deauthReason(std::uint16_t code);

    // A station with what was set.
    HalvaneClient build() const { return client_; }

  private:
    HalvaneClient client_;
};

}  // namespace halvane

#endif
