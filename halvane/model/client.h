// A station associated with a network that the machine hosts: its record as seen in the air, and
// the times when it came and went.
//
// The code that tracks the station sets the fields; nothing here changes them. A value type; only
// one thread at a time may use it.
#ifndef HALVANE_MODEL_CLIENT_H
#define HALVANE_MODEL_CLIENT_H

#include <cstdint>
#include <string>

#include "halvane/base/boxed.h"
#include "halvane/base/byte_buffer.h"
#include "halvane/base/export.h"
#include "halvane/base/property_list_value.h"
#include "halvane/ie/mac.h"

namespace halvane {

class HALVANE_EXPORT HalvaneClient : public HalvaneMAC {
  public:
    // Creates the record of a station, created now, not associated, with deauthReason() 1.
    static HalvaneClient initWithMAC(const ByteBuffer& mac);

    // Reads the keys of a HalvaneMAC and its own. A missing key of its own reads as 0 or false.
    static HalvaneClient initWithSkeletonRepresentation(const PropertyListDictionary& skeleton);

    // Writes the keys of a HalvaneMAC, and then always "isAssociated", "createTime", "joinTime",
    // "leftTime" and "deauthReason".
    PropertyListDictionary skeletonRepresentation() const override;

    // Whether the station is associated.
    bool isAssociated() const { return station_->isAssociated; }
    void setIsAssociated(bool value) { station_.change().isAssociated = value; }

    // Times of creation, of joining and of leaving, in microseconds of system up-time; 0 if not yet
    // set.
    std::uint64_t createTime() const { return station_->createTime; }
    void setCreateTime(std::uint64_t value) { station_.change().createTime = value; }
    std::uint64_t joinTime() const { return station_->joinTime; }
    void setJoinTime(std::uint64_t value) { station_.change().joinTime = value; }
    std::uint64_t leftTime() const { return station_->leftTime; }
    void setLeftTime(std::uint64_t value) { station_.change().leftTime = value; }

    // The reason of the last deauthentication, a code of IEEE 802.11-2020, 9.4.1.7; 1 is
    // "unspecified".
    std::uint64_t deauthReason() const { return station_->deauthReason; }
    void setDeauthReason(std::uint64_t value) { station_.change().deauthReason = value; }

    // Five lines of padded labels ("Lifetime" is createTime()), the HalvaneMAC's description, and a
    // newline.
    std::string description() const override;

    // Equal clients are equal as HalvaneMAC records and in the five fields.
    friend HALVANE_EXPORT bool operator==(const HalvaneClient& a, const HalvaneClient& b);

  private:
    explicit HalvaneClient(const ByteBuffer& mac);
    explicit HalvaneClient(const PropertyListDictionary& skeleton);

    struct Station {
        bool isAssociated = false;
        std::uint64_t createTime = 0;
        std::uint64_t joinTime = 0;
        std::uint64_t leftTime = 0;
        std::uint64_t deauthReason = 0;

        friend bool operator==(const Station& a, const Station& b) = default;
    };

    // Boxed like the fields of the base class.
    Boxed<Station> station_;
};

}  // namespace halvane

#endif
