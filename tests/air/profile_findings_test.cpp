// Every row of the table of findings: what raises it, where it points, and what does not raise it.
#include <algorithm>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "halvane/air/element_id.h"
#include "halvane/air/finding.h"
#include "halvane/air/profile.h"
#include "halvane/air/source.h"
#include "halvane/base/mac_address.h"

#include "tests/air/element_samples.h"
#include "tests/air/finding_cases.h"
#include "tests/support/elements.h"
#include "tests/support/hostile_bytes.h"

using halvane::MacAddress;
using halvane::testing::Bytes;
using halvane::testing::bytesOf;
using halvane::testing::element;
using halvane::testing::FindingCase;
using halvane::testing::findingCases;
using halvane::testing::HeardFrame;
using namespace halvane::air;

namespace {

constexpr MacAddress kBssid({0x02, 0x00, 0x00, 0x00, 0x08, 0x20});

std::uint8_t octetOf(std::string_view text) {
    std::uint8_t number = 0;
    EXPECT_EQ(std::from_chars(text.data(), text.data() + text.size(), number).ec, std::errc())
        << text;
    return number;
}

// One item of HeardFrame::elements.
Bytes octetsOfItem(std::string_view item) {
    const std::size_t equals = item.find('=');
    const std::string_view number = item.substr(0, equals);
    const Bytes body = bytesOf(item.substr(equals + 1));
    if (number == "x") return body;
    const std::size_t slash = number.find('/');
    if (slash == std::string_view::npos) return element(octetOf(number), body);
    Bytes extended = {octetOf(number.substr(slash + 1))};
    extended.insert(extended.end(), body.begin(), body.end());
    return element(octetOf(number.substr(0, slash)), extended);
}

Bytes octetsOf(std::string_view items) {
    Bytes octets;
    while (!items.empty()) {
        const std::size_t end = std::min(items.find(';'), items.size());
        const Bytes item = octetsOfItem(items.substr(0, end));
        octets.insert(octets.end(), item.begin(), item.end());
        items.remove_prefix(std::min(end + 1, items.size()));
    }
    return octets;
}

BssProfile profileOfFrame(const HeardFrame& frame) {
    RadioHint radio;
    if (frame.frequency != 0) radio.frequency = frame.frequency;
    radio.signal = frame.signal;
    return profileOf(octetsOf(frame.elements), {kBssid, frame.capabilities, frame.interval}, radio);
}

std::string textOf(const Source& source) {
    if (source.origin != Origin::Element) return std::string(originName(source.origin));
    std::string text = std::to_string(idOctetOf(source.id));
    if (const auto extension = extensionOf(source.id)) text += '/' + std::to_string(*extension);
    return text + '@' + std::to_string(source.offset);
}

std::string textOf(const Sources& sources) {
    std::string text;
    for (const Source& source : sources) text += (text.empty() ? "" : " ") + textOf(source);
    return text;
}

const Finding* findIn(const BssProfile& profile, FindingKind kind) {
    const auto found = std::ranges::find(profile.findings, kind, &Finding::kind);
    return found == profile.findings.end() ? nullptr : &*found;
}

// One alone needs several networks.
TEST(AirFindings, EachHasACase) {
    const auto cases = findingCases();
    for (const FindingInfo& info : findingInfos()) {
        if (info.kind == FindingKind::CountryDiffers) continue;
        EXPECT_TRUE(std::ranges::count(cases, info.kind, &FindingCase::kind)) << info.id;
    }
}

TEST(AirFindings, AreRaisedWithTheirSources) {
    for (const FindingCase& row : findingCases()) {
        SCOPED_TRACE(std::string(findingInfo(row.kind).id) + ": " + row.raising.elements);
        const BssProfile profile = profileOfFrame(row.raising);
        const Finding* const finding = findIn(profile, row.kind);
        ASSERT_NE(finding, nullptr);
        EXPECT_EQ(textOf(finding->sources), row.sources);
        EXPECT_EQ(std::ranges::count(profile.findings, row.kind, &Finding::kind), 1);
    }
}

TEST(AirFindings, AreNotRaisedByWhatIsNear) {
    for (const FindingCase& row : findingCases()) {
        SCOPED_TRACE(std::string(findingInfo(row.kind).id) + ": " + row.quiet.elements);
        const BssProfile profile = profileOfFrame(row.quiet);
        EXPECT_EQ(findIn(profile, row.kind), nullptr);
    }
}

TEST(AirFindings, BeginWithTheWorst) {
    for (const FindingCase& row : findingCases()) {
        const BssProfile profile = profileOfFrame(row.raising);
        EXPECT_TRUE(std::ranges::is_sorted(profile.findings, [](const auto& a, const auto& b) {
            return a.info().severity > b.info().severity;
        })) << row.raising.elements;
    }
}

// Whatever the octets are, each source is an element of the frame.
TEST(AirFindings, PointAtElements) {
    for (const FindingCase& row : findingCases()) {
        SCOPED_TRACE(row.raising.elements);
        const Bytes octets = octetsOf(row.raising.elements);
        const BssProfile profile = profileOfFrame(row.raising);
        for (const Finding& finding : profile.findings) {
            for (const Source& source : finding.sources) {
                if (source.origin != Origin::Element) continue;
                ASSERT_LT(source.offset, octets.size()) << finding.info().id;
                EXPECT_EQ(octets[source.offset], idOctetOf(source.id)) << finding.info().id;
            }
        }
    }
}

// What a frame tells up to a cut, it tells without the cut too. The privacy bit alone proves that a
// network is open, even where an element behind it names an encrypted half.
void expectNothingFromAbsence(const HeardFrame& frame) {
    const Bytes octets = octetsOf(frame.elements);
    const FixedFields fixed = {kBssid, frame.capabilities, frame.interval};
    RadioHint radio;
    if (frame.frequency != 0) radio.frequency = frame.frequency;
    radio.signal = frame.signal;
    const BssProfile whole = profileOf(octets, fixed, radio);
    radio.isCut = true;
    for (std::size_t size = 0; size < octets.size(); ++size) {
        const Bytes start(octets.begin(), octets.begin() + static_cast<std::ptrdiff_t>(size));
        for (const Finding& finding : profileOf(start, fixed, radio).findings) {
            if (finding.kind == FindingKind::FrameCut || finding.kind == FindingKind::OpenNetwork) {
                continue;
            }
            EXPECT_NE(findIn(whole, finding.kind), nullptr)
                << finding.info().id << " after " << size << " octets of " << frame.elements;
        }
    }
}

TEST(AirFindings, RestOnNoAbsenceInACutFrame) {
    for (const FindingCase& row : findingCases()) {
        expectNothingFromAbsence(row.raising);
        expectNothingFromAbsence(row.quiet);
    }
}

// Between two elements only the capture can tell of a cut.
TEST(AirFindings, TellOfACutBetweenElements) {
    const BssProfile profile = profileOf(octetsOf("0=61"), {}, {.isCut = true});
    const Finding* const cut = findIn(profile, FindingKind::FrameCut);
    ASSERT_NE(cut, nullptr);
    EXPECT_EQ(textOf(cut->sources), "radio");
    EXPECT_EQ(findIn(profileOf(octetsOf("0=61")), FindingKind::FrameCut), nullptr);
}

}  // namespace
