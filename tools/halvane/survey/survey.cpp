#include "tools/halvane/survey/survey.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <utility>

#include "halvane/air/bss_profile.h"

#include "tools/halvane/survey/country_findings.h"

namespace halvane::tool {

namespace {

std::uint64_t keyOf(const MacAddress& address) {
    std::uint64_t key = 0;
    for (const std::uint8_t octet : address.octets()) key = key << 8 | octet;
    return key;
}

}  // namespace

bool Survey::contains(const MacAddress& address) const {
    return places_.contains(keyOf(address));
}

void Survey::hold(Heard&& heard) {
    const MacAddress address = heard.address;
    heard.serial = nextSerial_++;
    heard_.push_back(std::move(heard));
    places_.emplace(keyOf(address), std::prev(heard_.end()));
    if (heard_.size() <= most_) return;
    places_.erase(keyOf(heard_.front().address));
    heard_.pop_front();
    ++letGoCount_;
}

void Survey::add(const capture::Sighting& sighting, const HeardFrame& frame) {
    const auto address = MacAddress::fromBytes(sighting.record.mac().bytes());
    if (!address) return;
    const auto known = places_.find(keyOf(*address));
    if (known == places_.end()) {
        return hold({0, *address, capture::FoldedSighting(sighting), NetworkStatistics(frame)});
    }
    known->second->folded.fold(sighting);
    note(known->second, frame);
}

bool Survey::addNumbers(const capture::BeaconFrame& beacon, const capture::RadioInfo& radio,
                        const HeardFrame& frame) {
    const auto known = places_.find(keyOf(beacon.bssid));
    if (known == places_.end() || !known->second->folded.foldNumbers(beacon, radio)) return false;
    note(known->second, frame);
    return true;
}

// The network is now the one that was heard last.
void Survey::note(Place place, const HeardFrame& frame) {
    place->statistics.add(frame);
    heard_.splice(heard_.end(), heard_, place);
}

void Survey::add(Survey&& later) {
    for (const Heard* const next : later.inOrder()) {
        const Place place = later.places_.at(keyOf(next->address));
        const auto known = places_.find(keyOf(place->address));
        if (known == places_.end()) {
            hold(std::move(*place));
            continue;
        }
        known->second->folded.fold(std::move(place->folded));
        known->second->statistics.add(place->statistics);
    }
    // What was heard later is now the newest, in the order in which it was heard last.
    for (const Heard& heard : later.heard_) {
        const auto place = places_.find(keyOf(heard.address));
        if (place != places_.end()) heard_.splice(heard_.end(), heard_, place->second);
    }
    letGoCount_ += later.letGoCount_;
}

std::vector<const Survey::Heard*> Survey::inOrder() const {
    std::vector<const Heard*> order;
    order.reserve(heard_.size());
    for (const Heard& heard : heard_) order.push_back(&heard);
    std::ranges::sort(order, {}, &Heard::serial);
    return order;
}

// Adds the network that was heard, and those that its frames tell of and that nobody told before.
void Survey::tell(const Heard& heard, std::set<MacAddress>& told,
                  std::vector<Network>& networks) const {
    networks.push_back(networkOf(heard.address, heard.folded.sighting(), &heard.statistics));
    networks.back().heard = &heard.folded;
    const Network sender = networks.back();
    for (const air::NontransmittedBss& other : sender.profile.nontransmitted) {
        if (contains(other.bssid) || !told.insert(other.bssid).second) continue;
        networks.push_back({.bssid = other.bssid,
                            .profile = other.profile,
                            .details = sender.details,
                            .beaconInterval = sender.beaconInterval,
                            .statistics = &heard.statistics});
    }
}

std::vector<Network> Survey::networks() const {
    std::vector<Network> networks;
    networks.reserve(heard_.size());
    std::set<MacAddress> told;
    for (const Heard* const heard : inOrder()) tell(*heard, told, networks);
    findOtherCountries(networks);
    return networks;
}

std::vector<Network> Survey::networksOf(const MacAddress& address) const {
    std::vector<Network> networks;
    std::set<MacAddress> told;
    const auto known = places_.find(keyOf(address));
    if (known != places_.end()) tell(*known->second, told, networks);
    return networks;
}

}  // namespace halvane::tool
