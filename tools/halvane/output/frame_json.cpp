#include "tools/halvane/output/frame_json.h"

#include <algorithm>
#include <functional>
#include <string_view>
#include <tuple>
#include <utility>

#include "halvane/air/bss_profile.h"
#include "halvane/air/element_id.h"
#include "halvane/air/element_range.h"
#include "halvane/air/finding.h"
#include "halvane/base/byte_cursor.h"
#include "halvane/base/element_id.h"
#include "halvane/base/mac_address.h"
#include "halvane/capture/beacon_frame.h"
#include "halvane/ie/mac.h"

#include "tools/halvane/output/air_properties.h"
#include "tools/halvane/output/element_json.h"
#include "tools/halvane/output/element_properties.h"
#include "tools/halvane/output/frame_properties.h"
#include "tools/halvane/output/json_record.h"
#include "tools/halvane/output/property_table.h"
#include "tools/halvane/output/record_json.h"
#include "tools/halvane/output/record_properties.h"
#include "tools/halvane/survey/air_profile.h"

namespace halvane::tool {

namespace {

// --- Parts of tables ---

template <Tabled Record, std::size_t first, std::size_t... rows>
void writeRows(JSONWriter& writer, const Record& record, std::index_sequence<rows...>) {
    const auto write = [&](const auto& row) {
        writeMember(writer, row.key, std::invoke(row.read, record));
    };
    (write(std::get<first + rows>(kProperties<Record>)), ...);
}

template <Tabled Record, std::size_t first, std::size_t last>
void writeRows(JSONWriter& writer, const Record& record) {
    writeRows<Record, first>(writer, record, std::make_index_sequence<last - first>());
}

template <Tabled Record>
constexpr std::size_t rowOf(std::string_view key) {
    const auto& rows = kPropertyDescriptions<Record>;
    return static_cast<std::size_t>(std::ranges::find(rows, key, &PropertyDescription::key) -
                                    rows.begin());
}
template <Tabled Record>
constexpr std::size_t kRows = kPropertyDescriptions<Record>.size();

// Those before differ from frame to frame; those from here on follow from the Basis.
constexpr std::size_t kFirstKept = rowOf<HalvaneMAC>("beaconInterval");
static_assert(kFirstKept < kRows<HalvaneMAC>);

constexpr std::size_t kElementsRow = rowOf<RecordAir>("elements");
constexpr std::size_t kFindingsRow = kElementsRow + 1;
static_assert(kFindingsRow == rowOf<RecordAir>("findings") && kFindingsRow + 1 == kRows<RecordAir>);

// Those between the first and this one follow from the kind.
constexpr std::size_t kSourcesRow = rowOf<air::Finding>("sources");
static_assert(kSourcesRow + 1 == kRows<air::Finding>);

void writeFinding(JSONWriter& writer, const air::Finding& finding, ConstantTexts& texts) {
    writer.beginObject();
    writeRows<air::Finding, 0, 1>(writer, finding);
    texts.write(writer, static_cast<std::size_t>(finding.kind),
                [&] { writeRows<air::Finding, 1, kSourcesRow>(writer, finding); });
    writeRows<air::Finding, kSourcesRow, kRows<air::Finding>>(writer, finding);
    writer.endObject();
}

// Writes the members that follow from the Basis. Returns where the digits of the body of `tim`
// start in the writer's text; at its end if there is no TIM.
std::size_t writeElementMembers(JSONWriter& writer, const capture::Sighting& sighting,
                                air::Octets elements, std::optional<std::size_t> tim,
                                ConstantTexts& findings) {
    const air::BssProfile profile = airProfileOf(sighting);
    const RecordAir all = {profile, air::ElementRange(elements)};
    writeRows<HalvaneMAC, kFirstKept, kRows<HalvaneMAC>>(writer, sighting.record);
    writeRows<RecordAir, 0, kElementsRow>(writer, all);
    writer.key(std::get<kElementsRow>(kProperties<RecordAir>).key);
    const auto digits = writeElements(writer, all.elements, tim);
    writer.key(std::get<kFindingsRow>(kProperties<RecordAir>).key);
    writer.beginArray();
    for (const air::Finding& finding : profile.findings) writeFinding(writer, finding, findings);
    writer.endArray();
    return digits.value_or(writer.text().size());
}

// --- Keys ---

// Tells a network's beacons from its probe responses. Of the number of octets only the lowest bits
// count. REQUIRES: the address has all its octets.
std::uint64_t keyOf(const MacAddress& address, capture::BeaconSubtype subtype, std::size_t size) {
    std::uint64_t key = 0;
    for (const std::uint8_t octet : address.octets()) key = key << 8 | octet;
    const unsigned kind = subtype == capture::BeaconSubtype::Beacon ? 0 : 1;
    return key << 16 | (size & 0x7FFF) << 1 | kind;
}

bool isEqual(air::Octets left, air::Octets right) {
    return std::ranges::equal(left, right);
}

}  // namespace

// --- What the text depends on ---

FrameJSON::Basis::Facts::Facts(const capture::Sighting& sighting)
    : capabilities(sighting.record.capabilities()),
      beaconInterval(sighting.record.beaconInterval()),
      radioFrequency(sighting.radioFrequency),
      isCut(sighting.isCut) {
    // A profile asks of the signal only whether a milliwatt can be true.
    const auto& signal = sighting.record.RSSI();
    if (signal && *signal > Number(0)) implausibleSignal = static_cast<int>(signal->int64());
}

FrameJSON::Basis::Basis(const capture::Sighting& sighting, const ByteBuffer& elements)
    : facts_(sighting), elements_(elements) {
    // The elements' walks differ from an element of this length on.
    constexpr std::uint8_t kAmbiguousLength = 254;
    // After the count and the period, which does count, the bitmap may follow.
    constexpr std::size_t kLeast = 2;
    ByteCursor cursor(elements);
    while (const auto id = cursor.u8()) {
        const auto length = cursor.u8();
        if (!length || *length >= kAmbiguousLength || *length > cursor.remaining()) return;
        const bool isTIM = static_cast<air::ElementId>(*id) == air::ElementId::Tim;
        if (isTIM && *length >= kLeast) {
            body_ = cursor.position();
            bodyEnd_ = body_ + *length;
            return;
        }
        cursor.skip(*length);
    }
}

std::optional<std::size_t> FrameJSON::Basis::tim() const {
    if (body_ == 0) return std::nullopt;
    return body_ - kElementHeaderSize;
}

air::Octets FrameJSON::Basis::timIn(air::Octets elements) const {
    return elements.subspan(body_, bodyEnd_ - body_);
}

// Octets that are equal up to the end of TIM's header have the same elements there.
bool FrameJSON::Basis::isOf(const capture::Sighting& sighting, air::Octets elements) const {
    const air::Octets own = elements_.bytes();
    if (own.size() != elements.size() || facts_ != Facts(sighting)) return false;
    if (body_ == 0) return isEqual(own, elements);
    constexpr std::size_t kPeriod = 1;
    return isEqual(own.first(body_), elements.first(body_)) &&
           timIn(own)[kPeriod] == timIn(elements)[kPeriod] &&
           isEqual(own.subspan(bodyEnd_), elements.subspan(bodyEnd_));
}

std::size_t FrameJSON::Kept::size() const {
    return sizeof(*this) + basis.size() + text.capacity();
}

// --- Records ---

const FrameJSON::Kept* FrameJSON::find(std::uint64_t key, const capture::Sighting& sighting,
                                       air::Octets elements) const {
    const auto found = kept_.find(key);
    if (found == kept_.end() || !found->second.basis.isOf(sighting, elements)) return nullptr;
    return &found->second;
}

void FrameJSON::repeat(JSONWriter& writer, const Kept& kept, air::Octets elements,
                       const FrameOrigin& origin) {
    const std::string_view text = kept.text;
    const auto& [digits, time, afterTime] = kept.places;
    const air::Octets tim = kept.basis.timIn(elements);
    const std::size_t afterTIM = digits + 2 * tim.size();
    ++repeats_;
    writer.verbatim(text.substr(0, digits));
    writer.hexDigits(tim);
    writer.verbatim(text.substr(afterTIM, time - afterTIM));
    writeMembers(writer, FrameTime{origin});
    writer.verbatim(text.substr(afterTime));
}

// The memory of an earlier text serves again.
void FrameJSON::keep(std::uint64_t key, Basis&& basis, std::string_view text,
                     const Places& places) {
    auto found = kept_.find(key);
    if (found == kept_.end()) {
        found = kept_.emplace(key, Kept{std::move(basis), std::string(text), places}).first;
    } else {
        Kept& kept = found->second;
        keptSize_ -= kept.size();
        kept.basis = std::move(basis);
        kept.text = text;
        kept.places = places;
    }
    keptSize_ += found->second.size();
    if (keptSize_ <= kMostKept) return;
    kept_.clear();
    keptSize_ = 0;
}

void FrameJSON::write(JSONWriter& writer, const capture::Sighting& sighting,
                      const FrameOrigin& origin, const MakerOf& makerOf) {
    const HalvaneMAC& record = sighting.record;
    const auto& buffer = record.ieBuffer();
    const auto address = MacAddress::fromBytes(record.mac().bytes());
    if (!buffer || !address) return writeJSON(writer, sighting, origin, nullptr, makerOf);

    const air::Octets elements = buffer->bytes();
    const std::uint64_t key = keyOf(*address, origin.subtype, elements.size());
    writer.beginObject();
    writeMembers(writer, origin);
    writeMembers(writer, sighting);
    writeRows<HalvaneMAC, 0, kFirstKept>(writer, record);
    if (const Kept* const kept = find(key, sighting, elements)) {
        repeat(writer, *kept, elements, origin);
        return writer.endObject();
    }
    Basis basis(sighting, *buffer);
    const std::size_t start = writer.text().size();
    const std::size_t digits =
        writeElementMembers(writer, sighting, elements, basis.tim(), findings_);
    const std::size_t time = writer.text().size();
    writeMembers(writer, FrameTime{origin});
    const std::size_t afterTime = writer.text().size();
    writeTexts(writer, record, makerOf);
    keep(key, std::move(basis), writer.text().substr(start),
         {digits - start, time - start, afterTime - start});
    writer.endObject();
}

}  // namespace halvane::tool
