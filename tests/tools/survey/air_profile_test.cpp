#include "tools/halvane/survey/air_profile.h"

#include <algorithm>
#include <gtest/gtest.h>

#include "halvane/air/channel.h"
#include "halvane/air/finding.h"
#include "halvane/air/generation.h"
#include "halvane/air/profile.h"
#include "halvane/air/security.h"
#include "halvane/base/byte_buffer.h"
#include "halvane/base/number.h"
#include "halvane/capture/frame_record.h"
#include "halvane/ie/mac.h"

#include "tests/support/elements.h"
#include "tests/support/hostile_bytes.h"

using namespace halvane;
using namespace halvane::testing;
using halvane::tool::airProfileOf;

namespace {

capture::Sighting sightingOf(const Bytes& elements) {
    auto record = HalvaneMAC::initWithMAC({0x02, 0, 0, 0, 0x08, 0x20});
    record.setInformationElements(ByteBuffer(elements));
    return {record, {}};
}

TEST(AirProfileOfASighting, TakesItsElements) {
    const auto profile = airProfileOf(sightingOf(ssidElement("net")));
    EXPECT_EQ((*profile.ssid)->text(), "net");
}

TEST(AirProfileOfASighting, TakesItsCapabilities) {
    auto sighting = sightingOf(ssidElement("net"));
    sighting.record.setCapabilityField(0x0011);
    EXPECT_EQ(*airProfileOf(sighting).security.name, air::Security::Wep);
    sighting.record.setCapabilityField(0x0001);
    EXPECT_EQ(*airProfileOf(sighting).security.name, air::Security::Open);
}

TEST(AirProfileOfASighting, TakesItsAddress) {
    const auto profile = airProfileOf(sightingOf(element(71, {2, 0, 7, 83, 2, 1, 0, 85, 1, 1})));
    ASSERT_EQ(profile.nontransmitted.size(), 1u);
    EXPECT_EQ(profile.nontransmitted[0].bssid.text(), "02:00:00:00:08:21");
}

TEST(AirProfileOfASighting, TakesTheRadiosFrequency) {
    auto sighting = sightingOf(ssidElement("net"));
    EXPECT_FALSE(airProfileOf(sighting).channel.band);
    sighting.radioFrequency = 5955;
    EXPECT_EQ(**airProfileOf(sighting).channel.band, air::Band::Ghz6);
}

TEST(AirProfileOfASighting, TakesItsBeaconInterval) {
    const auto isLong = [](const capture::Sighting& sighting) {
        const auto profile = airProfileOf(sighting);
        return std::ranges::count(profile.findings, air::FindingKind::LongBeaconInterval,
                                  &air::Finding::kind) == 1;
    };
    auto sighting = sightingOf(ssidElement("net"));
    EXPECT_FALSE(isLong(sighting));
    sighting.record.setBeaconInterval(Number(1000));
    EXPECT_TRUE(isLong(sighting));
}

TEST(AirProfileOfASighting, NeedsNoElements) {
    const capture::Sighting sighting = {HalvaneMAC::initWithMAC({}), {}};
    const auto profile = airProfileOf(sighting);
    EXPECT_FALSE(profile.ssid);
    EXPECT_EQ(*profile.generation, air::Generation::Legacy);
}

}  // namespace
