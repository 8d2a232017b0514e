// Elements of frames, and records that are made of them.
#include <cstddef>
#include <span>
#include <utility>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/number.h"
#include "halvane/base/oui.h"
#include "halvane/base/property_list_value.h"
#include "halvane/ie/country_ie.h"
#include "halvane/ie/mac.h"
#include "halvane/ie/rsn_ie.h"
#include "halvane/ie/wps_tlvs.h"

#include "bench/foreign_bytes.h"
#include "bench/growth.h"

using halvane::ByteBuffer;
using halvane::HalvaneCountryIE;
using halvane::HalvaneMAC;
using halvane::HalvaneRSNIE;
using halvane::HalvaneWPSTLVs;
using halvane::Number;
using halvane::PropertyListArray;
using halvane::PropertyListDictionary;

namespace bench {

namespace {

ByteBuffer bufferOf(const Bytes& bytes) {
    return ByteBuffer(std::span(bytes));
}

HalvaneMAC recordOf(const ByteBuffer& elements) {
    auto record = HalvaneMAC::initWithMAC({0x02, 0x1A, 0x2B, 0x3C, 0x4D, 0x5E});
    record.setCapabilityField(0x0411);
    record.setInformationElements(elements);
    return record;
}

// Elements of each decoded kind, in turn.
// REQUIRES: 16 * count < 65536.
Bytes manyKinds(std::size_t count) {
    Bytes bytes;
    for (std::size_t i = 0; i < count; ++i) {
        switch (i % 8) {
            case 0:
                append(bytes, {0, 2, 'a', 'b'});
                break;
            case 1:
                append(bytes, {1, 1, 12});
                break;
            case 2:
                append(bytes, {3, 1, 6});
                break;
            case 3:
                append(bytes, {7, 6, 'D', 'E', ' ', 1, 13, 20});
                break;
            case 4:
                append(bytes, {48, 8, 1, 0, 0x00, 0x0F, 0xAC, 4, 1, 0});
                break;
            case 5:
                append(bytes, {45, 4, 0x2C, 0x01, 0x03, 0xFF});
                break;
            case 6:
                append(bytes, {61, 4, 6, 0, 0, 0});
                break;
            default:
                append(bytes, {221, 8, 0x00, 0x50, 0xF2, 4, 0x10, 0x4A, 0, 1});
                break;
        }
    }
    return bytes;
}

// Elements of a buffer as a record walks them; `makeElements(n)` has n of them.
void addWalk(const char* row, std::size_t most, Bytes (*makeElements)(std::size_t)) {
    struct Input {
        ByteBuffer elements;
        std::size_t count;
    };
    addGrowth(
        row, most,
        [makeElements](std::size_t n) {
            return Input{bufferOf(makeElements(n)), n};
        },
        [](const Input& input) { return recordOf(input.elements).IEs().size() == input.count; });
}

// The skeleton of a record whose "IEs" are the elements of `bytes`.
PropertyListDictionary skeletonOf(const Bytes& bytes) {
    PropertyListArray elements;
    for (std::size_t i = 0; i < bytes.size(); i += 2u + bytes[i + 1]) {
        elements.emplace_back(ByteBuffer(std::span(bytes).subspan(i, 2u + bytes[i + 1])));
    }
    PropertyListDictionary skeleton;
    skeleton.set("MAC", ByteBuffer{2, 0, 0, 0, 0, 1});
    skeleton.set("IEs", std::move(elements));
    return skeleton;
}

void addSkeleton(const char* row, std::size_t most, Bytes (*makeElements)(std::size_t)) {
    addGrowth(
        row, most, [makeElements](std::size_t n) { return skeletonOf(makeElements(n)); },
        [](const PropertyListDictionary& skeleton) {
            return !HalvaneMAC::initWithSkeletonRepresentation(skeleton).IEs().empty();
        });
}

void addRecordRows() {
    constexpr std::size_t kMost = 16384;
    addWalk("elements: rates, ascending", kMost, risingRateElements);
    addWalk("elements: rates, descending", kMost, fallingRateElements);
    addWalk("elements: names", kMost, [](std::size_t n) { return repeated({0, 1, 'a'}, n); });
    addWalk("elements: vendor", 4096, [](std::size_t n) {
        return repeated({221, 6, 0x00, 0x50, 0xF2, 1, 1, 0}, n);
    });
    addWalk("elements: WPS", 4096, [](std::size_t n) {
        return repeated({221, 9, 0x00, 0x50, 0xF2, 4, 0x10, 0x4A, 0, 1, 0x10}, n);
    });
    addWalk("elements: all kinds", 4096, manyKinds);
    addSkeleton("skeleton IEs: rates, ascending", kMost, risingRateElements);
    addSkeleton("skeleton IEs: rates, descending", kMost, fallingRateElements);
    addSkeleton("skeleton IEs: vendor", kMost, [](std::size_t n) {
        return repeated({221, 6, 0x00, 0x50, 0xF2, 1, 1, 0}, n);
    });
    addSkeleton("skeleton IEs: all kinds", kMost, manyKinds);
    const auto records = [](std::size_t n) { return recordOf(bufferOf(manyKinds(n))); };
    addGrowth("record: description", 4096, records,
              [](const HalvaneMAC& record) { return !record.description().empty(); });
    addGrowth("record: skeleton", 4096, records,
              [](const HalvaneMAC& record) { return !record.skeletonRepresentation().empty(); });
    addGrowth(
        "record: link history", kMost, [](std::size_t n) { return n; },
        [](std::size_t n) {
            auto record = recordOf({});
            for (std::size_t i = 0; i < n; ++i) {
                record.updateLinkQuality_withTxRate(Number(-50), Number(54));
            }
            return record.averageRate().has_value();
        });
}

void addAttributes(const char* row, Bytes (*makeAttributes)(std::size_t)) {
    addGrowth(
        row, 65536, [makeAttributes](std::size_t n) { return bufferOf(makeAttributes(n)); },
        [](const ByteBuffer& data) { return HalvaneWPSTLVs::initWithData(data).isValid(); });
}

void addDecoderRows() {
    addAttributes("WPS: one attribute, repeated", [](std::size_t n) {
        return repeated({0x10, 0x4A, 0, 1, 0x10}, n);
    });
    addAttributes("WPS: secondary device types", [](std::size_t n) {
        return repeated({0x10, 0x55, 0, 8, 0, 6, 0x00, 0x50, 0xF2, 4, 0, 1}, n);
    });
    addAttributes("WPS: vendor extensions", [](std::size_t n) {
        return repeated({0x10, 0x49, 0, 3, 0x00, 0x37, 0x2A}, n);
    });
    addAttributes("WPS: attributes of all types", [](std::size_t n) {
        Bytes bytes;
        for (std::size_t i = 0; i < n; ++i) {
            append(bytes, {0x10, static_cast<unsigned>(i % 0x70), 0, 1, 0x10});
        }
        return bytes;
    });
    addGrowth(
        "RSN: PMKIDs", 4096,
        [](std::size_t n) {
            Bytes bytes;
            append(bytes, {48, 255, 1, 0, 0x00, 0x0F, 0xAC, 4, 1, 0, 0x00, 0x0F, 0xAC, 4});
            append(bytes, {1, 0, 0x00, 0x0F, 0xAC, 2, 0, 0});
            append(bytes, {static_cast<unsigned>(n & 0xFF), static_cast<unsigned>(n >> 8)});
            bytes.resize(bytes.size() + 16 * n, 7);
            return bufferOf(bytes);
        },
        [](const ByteBuffer& element) {
            const auto rsn =
                HalvaneRSNIE::initWithIE_withOUI(element, ByteBuffer(halvane::kRSNOUI));
            return rsn.pmkids() && !rsn.pmkids()->empty();
        });
    addGrowth(
        "Country: triplets", 16384,
        [](std::size_t n) {
            Bytes bytes;
            append(bytes, {7, 255, 'D', 'E', ' '});
            for (std::size_t i = 0; i < n; ++i) append(bytes, {1, 13, 20});
            return bufferOf(bytes);
        },
        [](const ByteBuffer& element) {
            return HalvaneCountryIE::initWithIE(element).channelTuples().has_value();
        });
}

}  // namespace

void addElementRows() {
    addRecordRows();
    addDecoderRows();
}

}  // namespace bench
