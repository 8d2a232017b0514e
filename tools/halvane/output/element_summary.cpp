#include "tools/halvane/output/element_summary.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <iterator>
#include <string_view>
#include <utility>

#include "halvane/air/bit_octets.h"
#include "halvane/air/country.h"
#include "halvane/air/ds_parameter_set.h"
#include "halvane/air/eht_capabilities.h"
#include "halvane/air/eht_mcs_sets.h"
#include "halvane/air/eht_operation.h"
#include "halvane/air/element_id.h"
#include "halvane/air/element_info.h"
#include "halvane/air/erp.h"
#include "halvane/air/extended_capabilities.h"
#include "halvane/air/extended_supported_rates.h"
#include "halvane/air/field_sink.h"
#include "halvane/air/he_6ghz_band_capabilities.h"
#include "halvane/air/he_capabilities.h"
#include "halvane/air/he_operation.h"
#include "halvane/air/rate_octet.h"
#include "halvane/air/rsn.h"
#include "halvane/air/rsnx.h"
#include "halvane/air/ssid_element.h"
#include "halvane/air/suite.h"
#include "halvane/air/supported_operating_classes.h"
#include "halvane/air/supported_rates.h"
#include "halvane/air/tim.h"
#include "halvane/air/transmit_power_envelope.h"
#include "halvane/air/wmm.h"
#include "halvane/air/wpa.h"
#include "halvane/base/byte_cursor.h"
#include "halvane/base/ssid.h"

#include "tools/halvane/output/country_text.h"
#include "tools/halvane/output/explain_parts.h"

namespace halvane::tool {

namespace {

using Summary = std::optional<ElementSummary>;

Summary textOf(std::string text) {
    return ElementSummary{std::move(text), {}};
}

void addPart(std::string& text, std::string_view part, std::string_view joiner = ", ") {
    if (!text.empty()) text += joiner;
    text += part;
}

std::string plainText(const ShownText& text) {
    return text.octets();
}

std::string hexOctets(air::Octets octets) {
    std::string text;
    for (const std::uint8_t octet : octets) {
        char pair[4];
        std::snprintf(pair, sizeof pair, "%02X", unsigned{octet});
        text += pair;
    }
    return text;
}

// --- Name, rates, times ---

Summary summaryOf(const air::SsidElement& element, const TextRules& rules) {
    const auto octets = element.ssid.bytes();
    return textOf(plainText(shownName(std::string(octets.begin(), octets.end()), rules)));
}

// "5.5" from 11.
std::string rateText(int halfMegabits) {
    return std::to_string(halfMegabits / 2) + (halfMegabits % 2 == 0 ? "" : ".5");
}

template <typename Rates>
Summary ratesOf(const Rates& rates) {
    std::string text;
    std::string selectors;
    bool hasBasic = false;
    for (const air::RateOctet& octet : rates) {
        if (const auto rate = octet.rate()) {
            addPart(text, rateText(*rate) + (octet.isBasic() ? "*" : ""), " ");
            hasBasic = hasBasic || octet.isBasic();
        } else {
            addPart(selectors, std::to_string(octet.octet & 0x7F), " ");
        }
    }
    if (!text.empty()) text += " Mbit/s";
    if (hasBasic) addPart(text, "* basic", "; ");
    if (!selectors.empty()) addPart(text, "membership selector " + selectors, "; ");
    return textOf(std::move(text));
}

Summary summaryOf(const air::SupportedRates& element, const TextRules&) {
    return ratesOf(element.rates);
}

Summary summaryOf(const air::ExtendedSupportedRates& element, const TextRules&) {
    return ratesOf(element.rates);
}

Summary summaryOf(const air::DsParameterSet& element, const TextRules&) {
    if (!element.rest.empty()) return std::nullopt;
    return textOf("channel " + std::to_string(element.currentChannel));
}

// The bit of the association ID 0 stands for the group in the control field, and is none here.
Summary summaryOf(const air::Tim& element, const TextRules&) {
    int stations = 0;
    const std::size_t bits = 8 * element.partialBitmap.size();
    for (std::size_t i = 0; i < bits; ++i) {
        const std::size_t aid = element.firstAid() + i;
        if (aid != 0 && element.hasTraffic(aid)) ++stations;
    }
    std::string traffic;
    if (element.hasGroupTraffic()) traffic = "group traffic";
    if (stations > 0) addPart(traffic, "traffic for " + counted(stations, "station"));
    return textOf("DTIM count " + std::to_string(element.dtimCount) + ", period " +
                  std::to_string(element.dtimPeriod) + "; " +
                  (traffic.empty() ? "no traffic" : traffic));
}

Summary summaryOf(const air::Erp& element, const TextRules&) {
    if (!element.rest.empty()) return std::nullopt;
    char text[8];
    std::snprintf(text, sizeof text, "%02X", static_cast<unsigned>(element.parameters.bits(0, 8)));
    std::string words = text;
    if (element.isNonErpPresent()) addPart(words, "non-ERP present");
    if (element.isProtectionUsed()) addPart(words, "protection");
    if (element.isLongPreambleNeeded()) addPart(words, "long preamble");
    return textOf(std::move(words));
}

// --- Country and channels ---

Summary summaryOf(const air::Country& element, const TextRules& rules) {
    const std::string code(element.countryCode.begin(), element.countryCode.end());
    std::string text = plainText(shownText(code, rules)) + ", " + environmentText(element);
    for (const air::CountryTriplet& triplet : element.triplets) {
        if (triplet.isOperating()) {
            addPart(text, "operating class " + std::to_string(triplet.operatingClass()), "; ");
        } else {
            addPart(text,
                    std::to_string(triplet.channelCount) + " from " +
                        std::to_string(triplet.firstChannel) + " with " +
                        std::to_string(triplet.maxPower()) + " dBm",
                    "; ");
        }
    }
    return textOf(std::move(text));
}

Summary summaryOf(const air::SupportedOperatingClasses& element, const TextRules&) {
    const auto* const end = std::find(element.classes.begin(), element.classes.end(), 0);
    // Pairs of classes, which tell more than a list, follow the 0.
    if (end != element.classes.end() && end + 1 != element.classes.end()) return std::nullopt;
    std::string text = std::to_string(element.currentClass) + " (in use)";
    for (const auto* item = element.classes.begin(); item != end; ++item) {
        addPart(text, std::to_string(*item));
    }
    return textOf(std::move(text));
}

constexpr std::array<std::string_view, 6> kEnvelopes = {
    "local EIRP",
    "local EIRP PSD",
    "regulatory client EIRP",
    "regulatory client EIRP PSD",
    "additional regulatory client EIRP",
    "additional regulatory client EIRP PSD",
};

// In units of 0.5 dBm or 0.5 dBm/MHz.
std::string powerText(std::int8_t value) {
    if (value == air::TransmitPowerEnvelope::kNoLimit) return "no limit";
    char text[16];
    std::snprintf(text, sizeof text, "%g", value / 2.0);
    return text;
}

Summary summaryOf(const air::TransmitPowerEnvelope& element, const TextRules&) {
    const auto kind = static_cast<std::size_t>(element.interpretation());
    const bool isMore = element.power320 || element.psdExtension || !element.rest.empty();
    if (isMore || kind >= kEnvelopes.size() || element.category() > 1) return std::nullopt;
    std::string values;
    for (const std::int8_t value : element.values) addPart(values, powerText(value), " ");
    return textOf(std::string(kEnvelopes.at(kind)) + ", " +
                  (element.category() == 0 ? "default" : "subordinate") + " category: " + values +
                  (element.isPsd() ? " dBm/MHz" : " dBm"));
}

// --- Security ---

std::string field(std::string_view label, const std::string& value) {
    constexpr std::size_t kLabelCells = 9;
    std::string text(label);
    text.resize(std::max(kLabelCells, text.size() + 1), ' ');
    return text + value;
}

template <typename Suites, typename ToText>
std::string suitesText(const Suites& suites, ToText toText) {
    std::string text;
    for (const air::Suite& suite : suites) addPart(text, toText(suite));
    return text;
}

// "00-0F-AC:8".
std::string selectorOf(const air::Suite& suite) {
    char text[32];
    std::snprintf(text, sizeof text, "%02X-%02X-%02X:%u", unsigned{suite.oui[0]},
                  unsigned{suite.oui[1]}, unsigned{suite.oui[2]}, unsigned{suite.type});
    return text;
}

// "SAE (00-0F-AC:8)".
std::string selectorText(const air::Suite& suite) {
    if (air::akmName(suite).empty()) return air::akmText(suite);
    return air::akmText(suite) + " (" + selectorOf(suite) + ')';
}

std::string capabilitiesText(const air::Rsn& rsn) {
    std::string text = "no PMF";
    if (rsn.isPmfCapable()) text = rsn.isPmfRequired() ? "PMF required and capable" : "PMF capable";
    if (rsn.isPmfRequired() && !rsn.isPmfCapable()) text = "PMF required and not capable";
    if (rsn.has(air::RsnCapability::Preauthentication)) addPart(text, "preauthentication", "; ");
    const auto addCounters = [&](int count, std::string_view word) {
        if (count == 1) return;
        addPart(text, std::to_string(count) + ' ' + std::string(word) + " replay counters", "; ");
    };
    addCounters(rsn.ptksaReplayCounters(), "PTKSA");
    addCounters(rsn.gtksaReplayCounters(), "GTKSA");
    return text;
}

template <typename Holder, typename ToText>
ElementSummary suitesOf(const Holder& element, ToText akmToText) {
    ElementSummary summary{"version " + std::to_string(element.version), {}};
    if (element.group) summary.lines.push_back(field("group", air::cipherText(*element.group)));
    if (element.pairwise) {
        summary.lines.push_back(field("pairwise", suitesText(*element.pairwise, air::cipherText)));
    }
    if (element.akms) summary.lines.push_back(field("AKM", suitesText(*element.akms, akmToText)));
    return summary;
}

Summary summaryOf(const air::Rsn& element, const TextRules&) {
    if (!element.rest.empty()) return std::nullopt;
    ElementSummary summary = suitesOf(element, selectorText);
    if (element.capabilities) {
        const auto bits = static_cast<unsigned>(element.capabilities->bits(0, 16));
        summary.lines.push_back(field(hexText(bits), capabilitiesText(element)));
    }
    if (element.pmkids && !element.pmkids->empty()) {
        summary.lines.push_back(field("PMKIDs", std::to_string(element.pmkids->size())));
    }
    if (element.groupManagement) {
        summary.lines.push_back(
            field("group management", air::cipherText(*element.groupManagement)));
    }
    return summary;
}

// --- Capabilities and operation ---

// Collects the flags that are set.
class FlagList : public air::FieldSink {
  public:
    explicit FlagList(bool hasNumbers) : hasNumbers_(hasNumbers) {}

    void flag(const air::FieldPlace& place, std::string_view label, bool value) override {
        if (!value) return;
        const std::size_t bit = 8 * std::size_t{place.offset} + place.firstBit;
        addPart(text_, (hasNumbers_ ? std::to_string(bit) + ' ' : "") + std::string(label));
    }
    void number(const air::FieldPlace& place, std::string_view label, std::int64_t value,
                const air::NumberForm&) override {
        if (value == 0 || !hasNumbers_) return;
        const std::size_t bit = 8 * std::size_t{place.offset} + place.firstBit;
        addPart(text_,
                std::to_string(bit) + ' ' + std::string(label) + ' ' + std::to_string(value));
    }
    void text(const air::FieldPlace&, std::string_view, std::string_view) override {}
    void octets(const air::FieldPlace&, std::string_view, air::Octets) override {}
    void beginGroup(std::string_view) override {}
    void endGroup() override {}

    std::string take() { return text_.empty() ? "none" : std::move(text_); }

  private:
    const bool hasNumbers_;
    std::string text_;
};

template <typename Element>
Summary flagsOf(air::Octets body, bool hasNumbers) {
    FlagList flags(hasNumbers);
    if (Element::describe(body, flags)) return std::nullopt;
    return textOf(flags.take());
}

std::string streamsText(int streams, int mcs) {
    return counted(streams, "stream") + ", MCS 0 to " + std::to_string(mcs);
}

Summary summaryOf(const air::HeCapabilities& element, const TextRules&) {
    const int streams = element.upTo80.rx.streams();
    if (streams == 0 || !element.rest.empty()) return std::nullopt;
    const char* const width = element.at80Plus80 ? ", up to 80+80 MHz"
                              : element.at160    ? ", up to 160 MHz"
                                                 : "";
    return textOf(streamsText(streams, *element.upTo80.rx.highestMcs(streams)) + width);
}

std::string centersText(int field, int segment0, int segment1) {
    std::string text = "width " + std::to_string(field);
    if (segment0 != 0) text += ", CCFS0 " + std::to_string(segment0);
    if (segment1 != 0) text += ", CCFS1 " + std::to_string(segment1);
    return text;
}

// The 6 GHz Operation Information tells the width by a number from 0 to 3.
Summary summaryOf(const air::HeOperation& element, const TextRules&) {
    constexpr std::array<std::string_view, 4> kWidths = {"20", "40", "80", "160"};
    if (!element.rest.empty()) return std::nullopt;
    std::string text;
    if (const auto& own = element.sixGhz) {
        text = "6 GHz, primary " + std::to_string(own->primaryChannel) + ", width " +
               std::string(kWidths.at(static_cast<std::size_t>(own->channelWidth()))) + " MHz";
        if (own->centerSegment0 != 0) text += ", CCFS0 " + std::to_string(own->centerSegment0);
        if (own->centerSegment1 != 0) text += ", CCFS1 " + std::to_string(own->centerSegment1);
        text += ", lowest rate " + std::to_string(own->minimumRate) + " Mbit/s";
    }
    if (const auto& vht = element.vht) {
        addPart(text,
                "VHT " + centersText(vht->channelWidth, vht->centerSegment0, vht->centerSegment1));
    }
    std::string color =
        element.bssColor() == 0 ? "no colour" : "colour " + std::to_string(element.bssColor());
    if (element.isBssColorDisabled()) color += ", switched off";
    addPart(text, color, "; ");
    return textOf(std::move(text));
}

Summary summaryOf(const air::EhtOperation& element, const TextRules&) {
    const auto& own = element.information;
    if (!own) return textOf("no operation information");
    std::string text = centersText(static_cast<int>(own->control.bits(0, 3)), own->centerSegment0,
                                   own->centerSegment1);
    if (own->disabledSubchannels) {
        const auto bits = static_cast<unsigned>(own->disabledSubchannels->bits(0, 16));
        text += "; disabled subchannels " + hexText(bits);
    }
    return textOf(std::move(text));
}

// --- By element ---

using Summarize = Summary (*)(const ElementList&, const air::Element&, const TextRules&);

template <typename Element>
Summary summaryBy(const ElementList&, const air::Element& element, const TextRules& rules) {
    const auto decoded = Element::decode(element.body);
    return decoded ? summaryOf(*decoded, rules) : std::nullopt;
}

Summary extendedCapabilities(const ElementList&, const air::Element& element, const TextRules&) {
    return flagsOf<air::ExtendedCapabilities>(element.body, true);
}

Summary rsnx(const ElementList&, const air::Element& element, const TextRules&) {
    return flagsOf<air::Rsnx>(element.body, false);
}

Summary he6GhzBand(const ElementList&, const air::Element& element, const TextRules&) {
    ByteCursor cursor(element.body);
    const auto bits = cursor.u16le();
    if (!bits || !cursor.atEnd()) return std::nullopt;
    return textOf(hexText(*bits));
}

// Drafts of 802.11g gave ERP another number, which some access points still send beside it.
constexpr auto kDraftErp = static_cast<air::ElementId>(47);

// The streams of the narrowest map, and the highest MCS that they have.
Summary ehtCapabilities(const ElementList& list, const air::Element& element, const TextRules&) {
    const auto decoded = air::EhtCapabilities::decode(element.body);
    if (!decoded || list.he() == nullptr) return std::nullopt;
    const auto sets = decoded->mcsSets(*list.he());
    if (!sets || !sets->upTo80) return std::nullopt;
    const int streams = sets->upTo80->rxStreams();
    const auto mcs = streams > 0 ? sets->upTo80->highestRxMcs(streams) : std::nullopt;
    if (!mcs) return std::nullopt;
    return textOf(streamsText(streams, *mcs) + (sets->at320   ? ", up to 320 MHz"
                                                : sets->at160 ? ", up to 160 MHz"
                                                              : ""));
}

Summary draftErp(const ElementList&, const air::Element& element, const TextRules&) {
    return element.body.size() == 1 ? textOf(hexOctets(element.body)) : std::nullopt;
}

struct Row {
    air::ElementId id;
    Summarize summarize;
};
constexpr Row kRows[] = {
    {air::ElementId::Ssid, summaryBy<air::SsidElement>},
    {air::ElementId::SupportedRates, summaryBy<air::SupportedRates>},
    {air::ElementId::ExtendedSupportedRates, summaryBy<air::ExtendedSupportedRates>},
    {air::ElementId::DsParameterSet, summaryBy<air::DsParameterSet>},
    {air::ElementId::Tim, summaryBy<air::Tim>},
    {air::ElementId::Erp, summaryBy<air::Erp>},
    {kDraftErp, draftErp},
    {air::ElementId::Country, summaryBy<air::Country>},
    {air::ElementId::SupportedOperatingClasses, summaryBy<air::SupportedOperatingClasses>},
    {air::ElementId::TransmitPowerEnvelope, summaryBy<air::TransmitPowerEnvelope>},
    {air::ElementId::Rsn, summaryBy<air::Rsn>},
    {air::ElementId::ExtendedCapabilities, extendedCapabilities},
    {air::ElementId::Rsnx, rsnx},
    {air::ElementId::HeCapabilities, summaryBy<air::HeCapabilities>},
    {air::ElementId::HeOperation, summaryBy<air::HeOperation>},
    {air::ElementId::He6GhzBandCapabilities, he6GhzBand},
    {air::ElementId::EhtCapabilities, ehtCapabilities},
    {air::ElementId::EhtOperation, summaryBy<air::EhtOperation>},
};

// --- Vendors ---

constexpr std::size_t kOui = 3;
constexpr std::size_t kVendorHead = 4;  // OUI and type

// WPA, and the few octets of a vendor that nobody knows.
Summary vendorSummary(const air::Element& element) {
    constexpr std::size_t kFewOctets = 8;
    const auto* const info = air::vendorElementInfo(element.body);
    if (info != nullptr && info->oui == air::Wpa::kOui && info->type == air::Wpa::kType) {
        const auto wpa = air::Wpa::decode(element.body.subspan(kVendorHead));
        if (!wpa || !wpa->rest.empty()) return std::nullopt;
        return suitesOf(*wpa, air::akmText);
    }
    if (info != nullptr && info->oui == air::Wmm::kOui && info->type == air::Wmm::kType) {
        const auto wmm = air::Wmm::decode(element.body.subspan(kVendorHead));
        if (!wmm || wmm->subtype() != air::WmmSubtype::Parameter || !wmm->rest.empty())
            return std::nullopt;
        return textOf(wmm->isUapsdSupported() ? "Parameter; U-APSD" : "Parameter");
    }
    const bool isKnown = info != nullptr && info->decoder.describe != nullptr;
    if (isKnown || element.body.size() < kVendorHead) return std::nullopt;
    const air::Octets rest = element.body.subspan(kVendorHead);
    if (rest.size() > kFewOctets) return std::nullopt;
    return textOf(hexOctets(rest));
}

// "Vendor 00-50-F2:2, WMM"; a vendor whose name alone is known has none here.
std::string vendorHeading(const air::Element& element) {
    ByteCursor cursor(element.body);
    const auto oui = cursor.take(kOui);
    const auto type = cursor.u8();
    if (!type) return "Vendor";
    const air::Suite whose = {{(*oui)[0], (*oui)[1], (*oui)[2]}, *type};
    const std::string text = "Vendor " + selectorOf(whose);
    const auto* const info = air::vendorElementInfo(element.body);
    return info != nullptr ? text + (", " + std::string(info->name)) : text;
}

struct Heading {
    air::ElementId id;
    std::string_view name;
};
constexpr Heading kHeadings[] = {
    {air::ElementId::SupportedRates, "Supported Rates"},
    {air::ElementId::ExtendedSupportedRates, "Extended Supported Rates"},
    {air::ElementId::DsParameterSet, "DS Parameter Set"},
    {air::ElementId::Rsnx, "RSNX"},
    {kDraftErp, "ERP (draft, as 42)"},
};

}  // namespace

std::optional<ElementSummary> elementSummary(const ElementList& list, const air::Element& element,
                                             const TextRules& rules) {
    if (element.id == air::ElementId::Vendor) return vendorSummary(element);
    const auto* const row = std::ranges::find(kRows, element.id, &Row::id);
    return row != std::end(kRows) ? row->summarize(list, element, rules) : std::nullopt;
}

std::string elementHeading(const air::Element& element) {
    if (element.id == air::ElementId::Vendor) return vendorHeading(element);
    const auto* const heading = std::ranges::find(kHeadings, element.id, &Heading::id);
    return heading != std::end(kHeadings) ? std::string(heading->name) : air::elementName(element);
}

}  // namespace halvane::tool
