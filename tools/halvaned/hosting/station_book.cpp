#include "tools/halvaned/hosting/station_book.h"

#include <algorithm>
#include <iterator>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/number.h"
#include "halvane/model/client_builder.h"

#include "tools/halvaned/hostapd/control_message.h"

namespace halvane::hosting {

namespace {

// IEEE 802.11-2020, 9.4.1.7. hostapd does not tell the code that a station gave.
constexpr std::uint16_t kUnspecified = 1;
constexpr std::uint16_t kLeaving = 3;

HalvaneClient newcomer(const MacAddress& address, std::uint64_t now) {
    return ClientBuilder(address).created(now).build();
}

}  // namespace

bool StationBook::note(const std::string& interface, const StationChange& change,
                       std::uint64_t now) {
    const auto found = byKey_.find(Key(interface, change.address));
    const bool isThere = found != byKey_.end() && found->second->client.isAssociated();
    const bool isElsewhere = isThere && found->second->network != change.interface;
    switch (change.kind) {
        case StationChange::Kind::Joined:
            join(interface, change, now);
            return true;
        case StationChange::Kind::Authorized:
            if (!isThere) join(interface, change, now);
            break;
        case StationChange::Kind::Kicked:
            if (isThere && !isElsewhere) leave(*found->second, kUnspecified, now);
            break;
        case StationChange::Kind::Left:
            if (isThere && !isElsewhere) leave(*found->second, kLeaving, now);
            break;
    }
    return !isElsewhere;
}

void StationBook::join(const std::string& interface, const StationChange& change,
                       std::uint64_t now) {
    Key key(interface, change.address);
    auto found = byKey_.find(key);
    if (found == byKey_.end()) {
        entries_.push_back({interface, change.interface, newcomer(change.address, now)});
        found = byKey_.emplace(std::move(key), std::prev(entries_.end())).first;
    }
    Entry& entry = *found->second;
    if (!entry.client.isAssociated()) ++present_;
    entry.network = change.interface;
    entry.client.setIsAssociated(true);
    entry.client.setJoinTime(now);
}

void StationBook::leave(Entry& entry, std::uint16_t reason, std::uint64_t now) {
    --present_;
    entry.client.setIsAssociated(false);
    entry.client.setLeftTime(now);
    entry.client.setDeauthReason(reason);
    forgetFirstGone();
}

void StationBook::forgetFirstGone() {
    if (entries_.size() - present_ <= kMostGone) return;
    // The list is bounded, and this happens once a departure, so looking through it will do.
    auto first = entries_.end();
    for (auto entry = entries_.begin(); entry != entries_.end(); ++entry) {
        if (entry->client.isAssociated()) continue;
        if (first == entries_.end() || entry->client.leftTime() < first->client.leftTime()) {
            first = entry;
        }
    }
    const auto address = MacAddress::fromBytes(first->client.mac());
    byKey_.erase(Key(first->interface, *address));
    entries_.erase(first);
}

void StationBook::note(const std::string& interface, const HostedStation& station, int channel,
                       std::uint64_t now) {
    const StationRecord& record = station.record;
    const auto found = byKey_.find(Key(interface, record.address));
    if (found == byKey_.end() || found->second->network != station.interface) return;
    HalvaneClient& client = found->second->client;
    if (!client.isAssociated()) return;
    if (channel != 0) client.setChannel(Number(std::int64_t{channel}));
    if (record.signal) client.setRSSI(Number(std::int64_t{*record.signal}));
    if (record.capabilities && *record.capabilities != client.capabilities()) {
        client.setCapabilityField(*record.capabilities);
    }
    // Elements are decoded again whenever they are set.
    if (ByteBuffer elements(record.elements); !elements.empty() && client.ieBuffer() != elements) {
        client.setInformationElements(elements);
    }
    // hostapd knows since when it is there better than who has attached later.
    constexpr std::uint64_t kSecond = 1'000'000;
    if (record.connectedTime && *record.connectedTime < now / kSecond) {
        client.setJoinTime(std::min(client.joinTime(), now - *record.connectedTime * kSecond));
    }
}

std::vector<HalvaneClient> StationBook::list() const {
    std::vector<HalvaneClient> clients;
    clients.reserve(entries_.size());
    for (const Entry& entry : entries_) clients.push_back(entry.client);
    return clients;
}

}  // namespace halvane::hosting
