#include "halvane/air/multiple_bssid_profiles.h"

#include <algorithm>
#include <utility>

#include "halvane/air/element_id.h"
#include "halvane/air/multiple_bssid.h"
#include "halvane/air/nontransmitted_bssid_capability.h"
#include "halvane/base/byte_cursor.h"

namespace halvane::air {

namespace {

constexpr std::uint8_t kMaxIndicator = 46;

// Whether an index, which has one octet, can tell the BSSIDs of a set of 2^maxIndicator apart.
bool isSetSize(std::uint8_t maxIndicator) {
    return maxIndicator >= 1 && maxIndicator <= 8;
}

template <typename T>
std::optional<T> firstOf(std::span<const Element> elements) {
    const auto found = std::ranges::find(elements, T::kId, &Element::id);
    return found == elements.end() ? std::nullopt : T::decode(found->body);
}

// Gathers the elements of profiles, which may go on in the next Multiple BSSID element.
class Gatherer {
  public:
    Gatherer(const MacAddress& transmitted, std::vector<NontransmittedProfile>& profiles)
        : transmitted_(transmitted), profiles_(profiles) {}

    void take(const Element& container) {
        ByteCursor cursor(container.body);
        const auto maxIndicator = cursor.u8();
        if (!maxIndicator) return;
        if (!isSetSize(*maxIndicator)) noteFault(container.offset);
        bool isFirst = true;
        while (true) {
            const auto id = cursor.u8();
            const auto length = cursor.u8();
            const std::size_t position = cursor.position();
            const auto body = cursor.take(length.value_or(0));
            if (!length || !body) return;
            if (*id != kNontransmittedProfile) continue;
            takePart(container, position, elementsIn(*body), *maxIndicator, isFirst);
            isFirst = false;
        }
    }

    // Keeps the profile that is open, if it is one.
    void close() {
        if (!std::exchange(isOpen_, false)) return;
        const auto capability = firstOf<NontransmittedBssidCapability>(open_.elements);
        const auto index = firstOf<MultipleBssidIndex>(open_.elements);
        const auto bssid =
            index ? nontransmittedBssid(transmitted_, maxIndicator_, index->index) : std::nullopt;
        const bool isNew =
            bssid && !std::ranges::count(profiles_, *bssid, &NontransmittedProfile::bssid);
        if (!isNew || !isInSet(index->index)) noteFault(openElement_);
        if (!capability || !isNew || isFull()) return;
        open_.bssid = *bssid;
        open_.index = *index;
        open_.capabilities = capability->capabilities;
        profiles_.push_back(std::move(open_));
    }

    std::optional<std::size_t> faultyElement() const { return faultyElement_; }

  private:
    // Whether the set of up to 2^maxIndicator BSSIDs has the index.
    bool isInSet(std::uint8_t index) const {
        return std::uint64_t{index} < std::uint64_t{1} << maxIndicator_;
    }
    // Keeps the first: a profile ends only with the element after its own.
    void noteFault(std::size_t offset) {
        faultyElement_ = std::min(faultyElement_.value_or(offset), offset);
    }
    bool isFull() const { return profiles_.size() == kMaxNontransmittedProfiles; }

    // Takes the elements that stand at `position` of the container's body.
    void takePart(const Element& container, std::size_t position, std::vector<Element> part,
                  std::uint8_t maxIndicator, bool isFirst) {
        const bool begins = !part.empty() && part[0].id == ElementId::NontransmittedBssidCapability;
        if (begins) {
            close();
            open_ = NontransmittedProfile();
            isOpen_ = true;
            maxIndicator_ = maxIndicator;
            openElement_ = container.offset;
        }
        if (!begins && !(isFirst && isOpen_)) return;
        for (Element& element : part) {
            element.offset = container.offsetOfBody(position + element.offset);
            open_.elements.push_back(std::move(element));
        }
    }

    const MacAddress transmitted_;
    std::vector<NontransmittedProfile>& profiles_;
    NontransmittedProfile open_;
    std::uint8_t maxIndicator_ = 0;
    std::size_t openElement_ = 0;  // that began the open profile
    std::optional<std::size_t> faultyElement_;
    bool isOpen_ = false;
};

}  // namespace

std::optional<MacAddress> nontransmittedBssid(const MacAddress& transmitted,
                                              std::uint8_t maxIndicator, std::uint8_t index) {
    if (maxIndicator == 0 || maxIndicator > kMaxIndicator) return std::nullopt;
    std::uint64_t number = 0;
    for (const std::uint8_t octet : transmitted.octets()) number = number << 8 | octet;
    const std::uint64_t low = (std::uint64_t{1} << maxIndicator) - 1;
    if ((index & low) == 0) return std::nullopt;
    number = (number & ~low) | ((number + index) & low);
    MacAddress::Octets octets{};
    for (std::size_t i = octets.size(); i-- > 0; number >>= 8) {
        octets[i] = static_cast<std::uint8_t>(number);
    }
    return MacAddress(octets);
}

MultipleBssidProfiles::MultipleBssidProfiles(std::span<const Element> sender,
                                             const MacAddress& transmitted)
    : sender_(sender) {
    Gatherer gatherer(transmitted, profiles_);
    for (const Element& element : sender) {
        if (element.id == ElementId::MultipleBssid) gatherer.take(element);
    }
    gatherer.close();
    faultyElement_ = gatherer.faultyElement();
}

}  // namespace halvane::air
