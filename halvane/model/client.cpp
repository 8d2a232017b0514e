#include "halvane/model/client.h"

#include <tuple>
#include <utility>

#include "halvane/base/skeleton_internal.h"
#include "halvane/utils/scan_time.h"
#include "halvane/utils/string_printf_internal.h"

namespace halvane {

namespace {

constexpr const char* kIsAssociated = "isAssociated";
constexpr const char* kCreateTime = "createTime";
constexpr const char* kJoinTime = "joinTime";
constexpr const char* kLeftTime = "leftTime";
constexpr const char* kDeauthReason = "deauthReason";

constexpr std::uint64_t kUnspecifiedReason = 1;

}  // namespace

HalvaneClient::HalvaneClient(const ByteBuffer& mac)
    : HalvaneMAC(mac),
      createTime_(UpTicksToMicroseconds(UpTicks())),
      deauthReason_(kUnspecifiedReason) {}

HalvaneClient::HalvaneClient(const PropertyListDictionary& skeleton)
    : HalvaneMAC(skeleton),
      isAssociated_(skeleton::boolFor(skeleton, kIsAssociated)),
      createTime_(skeleton::uint64For(skeleton, kCreateTime)),
      joinTime_(skeleton::uint64For(skeleton, kJoinTime)),
      leftTime_(skeleton::uint64For(skeleton, kLeftTime)),
      deauthReason_(skeleton::uint64For(skeleton, kDeauthReason)) {}

HalvaneClient HalvaneClient::initWithMAC(const ByteBuffer& mac) {
    return HalvaneClient(mac);
}

HalvaneClient HalvaneClient::initWithSkeletonRepresentation(
    const PropertyListDictionary& skeleton) {
    return HalvaneClient(skeleton);
}

PropertyListDictionary HalvaneClient::skeletonRepresentation() const {
    PropertyListDictionary skeleton = HalvaneMAC::skeletonRepresentation();
    skeleton.set(kIsAssociated, isAssociated_);
    skeleton.set(kCreateTime, createTime_);
    skeleton.set(kJoinTime, joinTime_);
    skeleton.set(kLeftTime, leftTime_);
    skeleton.set(kDeauthReason, deauthReason_);
    return skeleton;
}

std::string HalvaneClient::description() const {
    const std::pair<const char*, std::uint64_t> lines[] = {
        {"Last Deauth Reason   : %llu\n", deauthReason_},
        {"Lifetime             : %llu\n", createTime_},
        {"Joined               : %llu\n", joinTime_},
        {"Left                 : %llu\n", leftTime_},
    };
    std::string text = stringPrintF("isAssociated         : %s\n", yesNo(isAssociated_));
    for (const auto& [format, value] : lines) {
        appendPrintF(text, format, static_cast<unsigned long long>(value));
    }
    return text += HalvaneMAC::description() + '\n';
}

bool operator==(const HalvaneClient& a, const HalvaneClient& b) {
    const auto fields = [](const HalvaneClient& client) {
        return std::tie(client.isAssociated_, client.createTime_, client.joinTime_,
                        client.leftTime_, client.deauthReason_);
    };
    return static_cast<const HalvaneMAC&>(a) == static_cast<const HalvaneMAC&>(b) &&
           fields(a) == fields(b);
}

}  // namespace halvane
