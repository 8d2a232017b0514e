#include "halvane/model/client.h"

#include <utility>

#include "halvane/base/skeleton_internal.h"
#include "halvane/utils/printf/std_string_internal.h"
#include "halvane/utils/scan_time.h"

namespace halvane {

namespace {

constexpr const char* kIsAssociated = "isAssociated";
constexpr const char* kCreateTime = "createTime";
constexpr const char* kJoinTime = "joinTime";
constexpr const char* kLeftTime = "leftTime";
constexpr const char* kDeauthReason = "deauthReason";

constexpr std::uint64_t kUnspecifiedReason = 1;

}  // namespace

HalvaneClient::HalvaneClient(const ByteBuffer& mac) : HalvaneMAC(mac) {
    Station& station = station_.change();
    station.createTime = UpTicksToMicroseconds(UpTicks());
    station.deauthReason = kUnspecifiedReason;
}

HalvaneClient::HalvaneClient(const PropertyListDictionary& skeleton) : HalvaneMAC(skeleton) {
    const Station station = {
        skeleton::boolFor(skeleton, kIsAssociated),   skeleton::uint64For(skeleton, kCreateTime),
        skeleton::uint64For(skeleton, kJoinTime),     skeleton::uint64For(skeleton, kLeftTime),
        skeleton::uint64For(skeleton, kDeauthReason),
    };
    if (station != *station_) station_.change() = station;
}

HalvaneClient HalvaneClient::initWithMAC(const ByteBuffer& mac) {
    return HalvaneClient(mac);
}

HalvaneClient HalvaneClient::initWithSkeletonRepresentation(
    const PropertyListDictionary& skeleton) {
    return HalvaneClient(skeleton);
}

PropertyListDictionary HalvaneClient::skeletonRepresentation() const {
    PropertyListDictionary skeleton = HalvaneMAC::skeletonRepresentation();
    skeleton.set(kIsAssociated, isAssociated());
    skeleton.set(kCreateTime, createTime());
    skeleton.set(kJoinTime, joinTime());
    skeleton.set(kLeftTime, leftTime());
    skeleton.set(kDeauthReason, deauthReason());
    return skeleton;
}

std::string HalvaneClient::description() const {
    const std::pair<const char*, std::uint64_t> lines[] = {
        {"Last Deauth Reason   : %llu\n", deauthReason()},
        {"Lifetime             : %llu\n", createTime()},
        {"Joined               : %llu\n", joinTime()},
        {"Left                 : %llu\n", leftTime()},
    };
    std::string text = stringPrintF("isAssociated         : %s\n", yesNo(isAssociated()));
    for (const auto& [format, value] : lines) {
        appendPrintF(text, format, static_cast<unsigned long long>(value));
    }
    return text += HalvaneMAC::description() + '\n';
}

bool operator==(const HalvaneClient& a, const HalvaneClient& b) {
    return static_cast<const HalvaneMAC&>(a) == static_cast<const HalvaneMAC&>(b) &&
           a.station_ == b.station_;
}

}  // namespace halvane
