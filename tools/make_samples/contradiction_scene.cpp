// Networks that contradict themselves, or do what their band or their generation forbids. Each
// frame is whole; what it says is wrong.
#include <algorithm>
#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

#include "halvane/air/channel.h"
#include "halvane/air/eht_operation.h"
#include "halvane/air/element_id.h"
#include "halvane/air/he_operation.h"
#include "halvane/air/multiple_bssid.h"
#include "halvane/air/multiple_bssid_index.h"
#include "halvane/air/nontransmitted_bssid_capability.h"
#include "halvane/air/vht_operation.h"
#include "halvane/base/byte_buffer.h"

#include "tools/make_samples/access_point.h"
#include "tools/make_samples/air_elements.h"
#include "tools/make_samples/bytes.h"
#include "tools/make_samples/capture_file.h"
#include "tools/make_samples/elements.h"
#include "tools/make_samples/frames.h"
#include "tools/make_samples/multi_link_elements.h"
#include "tools/make_samples/radio_elements.h"
#include "tools/make_samples/scenes.h"

namespace halvane::samples {

namespace {

using air::Band;
using air::ChannelWidth;

struct Contradiction {
    AccessPoint accessPoint{};
    std::vector<Bytes> elements{};
};

Contradiction sound(AccessPoint accessPoint) {
    auto elements = elementsOf(accessPoint, FrameKind::Beacon);
    std::erase(elements, Bytes{});
    return {std::move(accessPoint), std::move(elements)};
}

// Puts `element` in the place of that of the same kind.
void replace(Contradiction& scene, const Bytes& element) {
    *std::ranges::find(scene.elements, idOf(element), idOf) = element;
}

AccessPoint at5Ghz(std::uint8_t number, std::string_view name) {
    return {.number = number,
            .name = name,
            .radio = {{Band::Ghz5, 36}, ChannelWidth::Mhz80, 2},
            .rsn = rsnOf(wpa3Personal()),
            .rsnx = hashToElement()};
}

AccessPoint at6Ghz(std::uint8_t number, std::string_view name, ChannelWidth width) {
    AccessPoint accessPoint = at5Ghz(number, name);
    accessPoint.radio = {{Band::Ghz6, 37}, width, 2};
    accessPoint.rates = withHashToElementAlone(kRates11a);
    return accessPoint;
}

// --- The channel ---

Contradiction twoWidths() {
    Contradiction scene = sound(at5Ghz(0x41, "Two widths"));
    RadioSetup narrow = scene.accessPoint.radio;
    narrow.width = ChannelWidth::Mhz20;
    replace(scene, htOperation(narrow));
    return scene;
}

Contradiction twoChannels() {
    AccessPoint accessPoint = at5Ghz(0x42, "Two channels");
    accessPoint.radio = {{Band::Ghz2, 1}, ChannelWidth::Mhz20, 2};
    Contradiction scene = sound(accessPoint);
    accessPoint.radio.primary.number = 6;
    replace(scene, htOperation(accessPoint.radio));
    return scene;
}

Contradiction offCentre() {
    Contradiction scene = sound(at5Ghz(0x43, "Off centre"));
    air::VhtOperation vht;
    vht.information = {1, 58, 0};  // that of channel 52
    replace(scene, airElement(vht));
    return scene;
}

Contradiction puncturedHeart() {
    AccessPoint accessPoint = at6Ghz(0x44, "Punctured heart", ChannelWidth::Mhz320First);
    accessPoint.generation = 7;
    accessPoint.radio.punctured = 0x0202;  // the primary channel 37 and the channel 5
    accessPoint.multiLink = multiLinkOf({.mldNumber = 0x54});
    return sound(accessPoint);
}

// --- Security ---

Contradiction halfAWpa3() {
    AccessPoint accessPoint = at5Ghz(0x45, "Half a WPA3");
    accessPoint.rsn = rsnOf({.akms = {kSAE}});
    accessPoint.rsnx = {};
    return sound(accessPoint);
}

Contradiction keyMuddle() {
    AccessPoint accessPoint = at5Ghz(0x46, "Key muddle");
    accessPoint.rsn = rsn({.group = kTKIP, .pairwise = {kCCMP, kTKIP}});
    accessPoint.rsnx = {};
    accessPoint.vendor = wpa({.group = kTKIP, .pairwise = {kTKIP}, .keyManagement = {k8021X}});
    return sound(accessPoint);
}

// WPA2 on 6 GHz, and no element that tells the channel.
Contradiction oldKeys() {
    AccessPoint accessPoint = at6Ghz(0x47, "Old keys", ChannelWidth::Mhz20);
    accessPoint.rsn = rsnOf({.akms = {kPSK}});
    accessPoint.rsnx = {};
    Contradiction scene = sound(accessPoint);
    air::HeOperation he;
    he.bssColorInformation.setBits(0, 6, 1);
    replace(scene, airElement(he));
    return scene;
}

Contradiction transitionWithoutDomain() {
    AccessPoint accessPoint = at5Ghz(0x48, "Roam nowhere");
    Keys keys = wpa3Personal();
    keys.akms = {kSAE, kFTSAE};
    accessPoint.rsn = rsnOf(keys);
    return sound(accessPoint);
}

// --- The elements themselves ---

Contradiction saidTwice() {
    Contradiction scene = sound(at5Ghz(0x49, "Said twice"));
    RadioSetup other = scene.accessPoint.radio;
    other.primary.number = 44;
    scene.elements.push_back(htOperation(other));
    return scene;
}

// --- Several networks in a frame ---

Bytes profileWith(std::uint8_t index, const Bytes& name) {
    air::NontransmittedBssidCapability capability;
    capability.capabilities.fields.setBits(0, 16, kESS | kPrivacy);
    const air::MultipleBssidIndex element = {.index = index, .dtimPeriod = 2, .dtimCount = 0};
    return join({airElement(capability), name, airElement(element)});
}

// One profile without a name, and two of one address.
Contradiction namelessGuest() {
    air::MultipleBssid element;
    for (const Bytes& profile :
         {profileWith(1, {}), profileWith(2, ssid("Second")), profileWith(2, ssid("Second too"))}) {
        element.subelements.push_back({air::kNontransmittedProfile, ByteBuffer(profile)});
    }
    element.maxIndicator = 2;
    AccessPoint accessPoint = at5Ghz(0x4C, "Nameless guest");
    accessPoint.multipleBssid = airElement(element);
    return sound(accessPoint);
}

// A link with a password beside one with WPA3, and an MLD of a link's address.
Contradiction linksApart() {
    AccessPoint sender = at5Ghz(0x4D, "Links apart");
    sender.generation = 7;
    AccessPoint weak = at5Ghz(0x4E, "Links apart");
    weak.generation = 7;
    weak.radio.primary.number = 52;
    weak.rsn = rsnOf({.akms = {kPSK}});
    sender.multiLink = multiLinkOf({.mldNumber = sender.number,
                                    .linkId = 0,
                                    .linkCount = 2,
                                    .profiles = {profileOfLink(1, weak, sender)}});
    return sound(sender);
}

}  // namespace

Bytes contradictionsCapture() {
    std::vector<Packet> packets;
    for (const Contradiction& scene :
         {twoWidths(), twoChannels(), offCentre(), puncturedHeart(), halfAWpa3(), keyMuddle(),
          oldKeys(), transitionWithoutDomain(), saidTwice(), namelessGuest(), linksApart()}) {
        packets.push_back({heard(scene.accessPoint, scene.elements, FrameKind::Beacon, -60)});
    }
    return pcapFile(LinkType::Radiotap, Order::Little, packets);
}

}  // namespace halvane::samples
