// The fields of a HalvaneMAC (halvane/ie/mac.h). Programs use that class and not these fields.
#ifndef HALVANE_IE_MAC_RECORD_H
#define HALVANE_IE_MAC_RECORD_H

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "halvane/base/boxed.h"
#include "halvane/base/byte_buffer.h"
#include "halvane/base/number.h"
#include "halvane/ie/country_ie.h"
#include "halvane/ie/dwds_ie.h"
#include "halvane/ie/ht_capabilities_ie.h"
#include "halvane/ie/ht_operation_ie.h"
#include "halvane/ie/link_quality_history.h"
#include "halvane/ie/rsn_ie.h"
#include "halvane/ie/tessic_ie.h"
#include "halvane/ie/wps_ie.h"

namespace halvane {

// A fresh record equals that of an empty skeleton.
struct MACRecord {
    // The elements that most beacons lack.
    struct RareElements {
        // Each is what the function of HalvaneMAC with its name returns.
        std::optional<HalvaneRSNIE> wpa;
        std::optional<HalvaneTessicIE> tessicIE;
        std::optional<HalvaneDWDSIE> dwdsIE;
        std::optional<HalvaneWPSIE> wpsIE;
    };

    // The rates of the elements in units of 500 kbit/s: the lowest bit stands for 0.
    struct RateBits {
        std::uint64_t low = 0;     // 0 to 63
        std::uint64_t high = 0;    // 64 to 127
        bool areSome = false;      // an element of rates occurs, if an empty one
        bool areRepeated = false;  // one occurs twice
    };

    // The results of decoding the elements.
    struct Walk {
        constexpr Walk() {}

        // Each is what the function of HalvaneMAC with its name returns. The rates are absent while
        // nobody has asked for them.
        std::optional<ByteBuffer> invalidIEs;
        std::optional<ByteBuffer> SSID;
        std::optional<HalvaneRSNIE> rsn;
        std::optional<HalvaneCountryIE> countryIE;
        std::optional<HalvaneHTCapabilitiesIE> HTCaps;
        std::optional<HalvaneHTOperationIE> HTOperation;
        Boxed<RareElements> rare;
        std::optional<Number> maxPHYRate;
        std::optional<Number> channelWidth;
        std::optional<std::string> securityFriendlyName;
        mutable std::optional<std::vector<Number>> supportedRates;
        mutable RateBits awaitedRates;  // those that nobody has asked for
    };

    // The results of the link samples.
    struct Link {
        // Each is what the function of HalvaneMAC with its name returns; history is that of
        // linkQualityHistory().
        std::optional<Number> maxClientRate;
        std::optional<Number> averageRate;
        HalvaneLinkQualityHistory history;
    };

    // Each is what the function of HalvaneMAC with its name returns; link holds the results above.
    // The elements are those of ieBuffer if nobody has asked for them.
    ByteBuffer mac;
    std::uint64_t lastUpdated = 0;
    std::uint64_t firstAdded = 0;
    std::optional<Number> channel;
    std::optional<Number> noise;
    std::optional<Number> RSSI;
    std::optional<Number> beaconInterval;
    std::uint16_t capabilities = 0;
    mutable bool areIEsAwaited = false;
    std::optional<ByteBuffer> ieBuffer{std::in_place};
    mutable std::vector<ByteBuffer> IEs;
    Boxed<Link> link;
};

// A record and, once it has any, the results of its elements, in one block of memory.
//
// An unchanged box takes no memory and reads as a fresh record; one without elements takes only
// the record's. Copying a box copies the record. A moved-from box holds a fresh record.
class MACRecordBox {
  public:
    using Walk = MACRecord::Walk;  // the results
    // Copying copies the record, and moving leaves a fresh one.
    constexpr MACRecordBox() = default;
    MACRecordBox(const MACRecordBox& other)
        : block_(other.block_ ? other.block_->copy() : nullptr) {}
    MACRecordBox& operator=(const MACRecordBox& other) { return *this = MACRecordBox(other); }
    MACRecordBox(MACRecordBox&&) noexcept = default;
    MACRecordBox& operator=(MACRecordBox&&) noexcept = default;
    ~MACRecordBox() = default;

    // The references are valid until the box is next assigned to or changed.
    const MACRecord& operator*() const {
        const Block* const block = block_.get();
        return block != nullptr ? block->record : kFreshValue<MACRecord>.value;
    }
    const MACRecord* operator->() const { return &**this; }
    const Walk& walk() const { return hasWalk() ? *block_->walk : kFreshValue<Walk>.value; }
    // The record and its results, to be changed.
    MACRecord& change() {
        if (!block_) block_ = std::make_unique<Block>();
        return block_->record;
    }
    Walk& changeWalk() {  // takes room for results, if there is none
        makeRoom();
        block_->isWalkFresh = false;
        return *block_->walk;
    }
    // Takes the room for the results now rather than with the first one.
    void makeRoom() {
        if (!hasWalk()) replaceBlock(std::make_unique<WalkBlock>());
    }

    // Replaces the results by what `decode` makes of a fresh Walk. If it throws, they stay.
    template <typename Decode>
    void decodeAnew(Decode decode) {
        if (hasWalk() && block_->isWalkFresh) {
            try {
                decode(*block_->walk);
            } catch (...) {
                *block_->walk = Walk();
                throw;
            }
            block_->isWalkFresh = false;
        } else {
            auto next = std::make_unique<WalkBlock>();
            decode(next->ownWalk);
            next->isWalkFresh = false;
            replaceBlock(std::move(next));
        }
    }

  private:
    struct Block {
        Block() = default;
        explicit Block(const MACRecord& copied) : record(copied) {}
        Block(const Block&) = delete;
        Block& operator=(const Block&) = delete;
        virtual ~Block() = default;
        virtual std::unique_ptr<Block> copy() const { return std::make_unique<Block>(record); }

        MACRecord record;
        Walk* walk = nullptr;
        bool isWalkFresh = true;
    };
    struct WalkBlock final : Block {
        WalkBlock() { walk = &ownWalk; }
        WalkBlock(const MACRecord& copied, const Walk& copiedWalk)
            : Block(copied), ownWalk(copiedWalk) {
            walk = &ownWalk;
            isWalkFresh = false;
        }
        std::unique_ptr<Block> copy() const override {
            return std::make_unique<WalkBlock>(record, ownWalk);
        }

        Walk ownWalk;
    };

    bool hasWalk() const { return block_ && block_->walk != nullptr; }
    void replaceBlock(std::unique_ptr<Block> next) noexcept {
        if (block_) next->record = std::move(block_->record);
        block_ = std::move(next);
    }

    std::unique_ptr<Block> block_;
};

}  // namespace halvane

#endif
