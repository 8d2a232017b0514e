// The networks of frames that were heard: each with its record, its profile and its statistics.
//
// A survey keeps no more networks than it is told to, so that a flood of addresses does not take
// all memory: the network that was not heard for the longest time goes first.
//
// For one thread at a time; distinct surveys are independent.
#ifndef TOOLS_HALVANE_SURVEY_SURVEY_H
#define TOOLS_HALVANE_SURVEY_SURVEY_H

#include <cstddef>
#include <cstdint>
#include <list>
#include <map>
#include <set>
#include <vector>

#include "halvane/base/mac_address.h"
#include "halvane/capture/beacon_frame.h"
#include "halvane/capture/folded_sighting.h"
#include "halvane/capture/frame_record.h"
#include "halvane/capture/radio_header.h"

#include "tools/halvane/survey/network.h"
#include "tools/halvane/survey/network_statistics.h"

namespace halvane::tool {

class Survey {
  public:
    static constexpr std::size_t kDefaultMost = 65536;

    // REQUIRES: most > 0.
    explicit Survey(std::size_t most = kDefaultMost) : most_(most) {}
    Survey(Survey&&) = default;
    Survey& operator=(Survey&&) = default;
    Survey(const Survey&) = delete;
    Survey& operator=(const Survey&) = delete;

    // The time is proportional to the logarithm of size().
    void add(const capture::Sighting& sighting, const HeardFrame& frame);

    // The same for a frame whose sighting would tell only numbers, because its network is known. No
    // record is decoded for it. Returns false, and adds nothing, for any other frame.
    bool addNumbers(const capture::BeaconFrame& beacon, const capture::RadioInfo& radio,
                    const HeardFrame& frame);

    // Adds what was heard later. The result is that of adding its frames one by one, unless either
    // survey has let networks go.
    void add(Survey&& later);

    std::size_t size() const { return heard_.size(); }
    bool contains(const MacAddress& address) const;
    // How many networks had to go. One that comes back counts again when it goes again.
    std::uint64_t letGoCount() const { return letGoCount_; }
    std::size_t most() const { return most_; }

    // The networks in the order of their first sightings, and behind each those that its frames
    // tell of (Multiple BSSID) and that were not heard themselves. They borrow from the survey: it
    // must outlive them and not change. Findings that need several networks are among theirs.
    std::vector<Network> networks() const;

    // The same of one address: its network first. Empty if the survey does not have it.
    std::vector<Network> networksOf(const MacAddress& address) const;

  private:
    struct Heard {
        std::uint64_t serial;
        MacAddress address;
        capture::FoldedSighting folded;
        NetworkStatistics statistics;
    };
    using Place = std::list<Heard>::iterator;

    void hold(Heard&& heard);
    void note(Place place, const HeardFrame& frame);
    void tell(const Heard& heard, std::set<MacAddress>& told, std::vector<Network>& networks) const;
    std::vector<const Heard*> inOrder() const;

    std::size_t most_;
    std::uint64_t letGoCount_ = 0;
    std::uint64_t nextSerial_ = 0;
    std::list<Heard> heard_;                 // the longest not heard first
    std::map<std::uint64_t, Place> places_;  // by the address as a number: it is compared faster
};

}  // namespace halvane::tool

#endif
