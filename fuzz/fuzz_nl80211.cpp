// A message of nl80211 of any attributes, most of them whole: a walk returns parts of the message
// in their order, and what is told of a network stands in it.
#include <algorithm>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <linux/nl80211.h>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "fuzz/byte_source.h"
#include "fuzz/netlink_source.h"
#include "fuzz/require.h"
#include "tools/halvane/input/netlink_attributes.h"
#include "tools/halvane/input/nl80211_message.h"

using halvane::fuzzing::ByteSource;
using halvane::fuzzing::putAttribute;
using namespace halvane::tool;

namespace {

using Bytes = std::vector<std::uint8_t>;
using View = std::span<const std::uint8_t>;

class Message {
  public:
    explicit Message(ByteSource& source) : source_(source) {
        constexpr std::uint8_t kCommands[] = {NL80211_CMD_NEW_SCAN_RESULTS,
                                              NL80211_CMD_NEW_INTERFACE, NL80211_CMD_SCAN_ABORTED,
                                              NL80211_CMD_TRIGGER_SCAN};
        bytes_ = {source_.oneOf(kCommands), 1, 0, 0};
        while (!source_.empty()) addAttribute();
    }

    const Bytes& bytes() const { return bytes_; }

  private:
    void put(Bytes& bytes, std::uint16_t type, View value) {
        putAttribute(source_, bytes, type, value);
    }

    void addAttribute() {
        constexpr std::uint16_t kTypes[] = {NL80211_ATTR_IFINDEX, NL80211_ATTR_IFNAME,
                                            NL80211_ATTR_IFTYPE, NL80211_ATTR_WDEV};
        switch (source_.below(4)) {
            case 0:
                return put(bytes_, source_.oneOf(kTypes), source_.bytes(16));
            case 1: {
                const auto raw = source_.bytes();
                bytes_.insert(bytes_.end(), raw.begin(), raw.end());
                return;
            }
            default:
                return addNetwork();
        }
    }

    void addNetwork() {
        Bytes network;
        const std::size_t count = source_.below(24);
        for (std::size_t i = 0; i < count; ++i) {
            const auto type = static_cast<std::uint16_t>(source_.below(24));
            put(network, type, source_.bytes(64));
        }
        put(bytes_, NL80211_ATTR_BSS, network);
    }

    ByteSource& source_;
    Bytes bytes_;
};

bool isPart(View part, View whole) {
    return part.empty() || (part.data() >= whole.data() &&
                            part.data() + part.size() <= whole.data() + whole.size());
}

void checkWalk(View bytes, int depth) {
    NetlinkAttributes attributes(bytes);
    std::size_t read = 0;
    while (const auto attribute = attributes.next()) {
        REQUIRE(isPart(attribute->value, bytes));
        read += 4 + attribute->value.size();
        REQUIRE(read <= bytes.size());
        if (depth > 0) checkWalk(attribute->value, depth - 1);
    }
    REQUIRE(attributes.areBroken() || bytes.size() - read <= 3 * bytes.size() / 4);
    REQUIRE(!attributes.next());
}

void checkElements(const std::optional<Bytes>& elements, View message) {
    REQUIRE(!elements || elements->size() <= message.size());
    if (!elements || elements->empty()) return;
    const auto found =
        std::search(message.begin(), message.end(), elements->begin(), elements->end());
    REQUIRE(found != message.end());
}

void checkReaders(View message) {
    const auto network = readScannedNetwork(message);
    REQUIRE(network || !network.error().empty());
    if (network && *network) {
        REQUIRE(message.front() == NL80211_CMD_NEW_SCAN_RESULTS);
        checkElements((*network)->probeResponseElements, message);
        checkElements((*network)->beaconElements, message);
        const auto age = (*network)->age(std::chrono::hours(1));
        REQUIRE(!age || age->count() >= 0);
    }
    const auto interface = readInterface(message);
    REQUIRE(interface || !interface.error().empty());
    if (interface && *interface) {
        REQUIRE((*interface)->name.find('\0') == std::string::npos);
        REQUIRE((*interface)->name.size() <= message.size());
    }
    const auto event = readScanEvent(message, 5);
    REQUIRE(event || !event.error().empty());
}

void check(View message) {
    if (message.size() >= 4) checkWalk(message.subspan(4), 2);
    checkReaders(message);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    check(View(data, size));
    ByteSource source(data, size);
    check(Message(source).bytes());
    return 0;
}
