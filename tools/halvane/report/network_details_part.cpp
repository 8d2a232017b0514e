#include "tools/halvane/report/network_details_part.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "halvane/air/bit_octets.h"
#include "halvane/air/bss_profile.h"
#include "halvane/air/element_info.h"
#include "halvane/air/element_range.h"
#include "halvane/air/finding.h"
#include "halvane/base/ascii_internal.h"
#include "halvane/capture/frame_record.h"

#include "tools/halvane/output/element_places.h"
#include "tools/halvane/output/explain_rows.h"
#include "tools/halvane/output/explained_bss.h"
#include "tools/halvane/output/reason_table.h"
#include "tools/halvane/output/shown_text.h"
#include "tools/halvane/output/time_text.h"
#include "tools/halvane/output/wrapped_text.h"
#include "tools/halvane/report/page_words.h"
#include "tools/halvane/survey/network.h"
#include "tools/halvane/survey/network_statistics.h"
#include "tools/halvane/survey/signal_histogram.h"

namespace halvane::tool {

namespace {

constexpr std::size_t kGroup = 4;           // octets between two blanks
constexpr std::size_t kMostNeighbours = 8;  // networks of the same radio

// "57504133 0a", with a blank after four octets.
std::string octetText(std::span<const std::uint8_t> octets) {
    std::string text;
    for (std::size_t i = 0; i < octets.size(); ++i) {
        if (i > 0 && i % kGroup == 0) text += ' ';
        appendHexOctet(text, octets[i], kLowerHexDigits);
    }
    return text;
}

std::span<const std::uint8_t> octetsOf(std::string_view text) {
    return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

// The parts of an explanation, with what joins them.
void writeParts(HtmlWriter& html, const std::vector<TextPart>& parts) {
    bool isFirst = true;
    for (const TextPart& part : parts) {
        if (!isFirst) html << HtmlText{part.joiner};
        isFirst = false;
        for (std::size_t i = 0; i < part.words.size(); ++i) {
            if (i > 0) html << " ";
            html << part.words[i];
        }
    }
}

class DetailsWriter {
  public:
    DetailsWriter(HtmlWriter& html, const ReportData& data, const ReportNetwork& network)
        : html_(html),
          data_(data),
          network_(network),
          profile_(network.network.profile),
          heard_(*network.network.statistics) {}

    void write() {
        html_ << "<dl class=\"dl\">";
        writeNames();
        writeHeard();
        writeExplained();
        writeSameRadio();
        html_ << "</dl>";
        writeOwnFindings();
        writeElements();
    }

  private:
    void begin(Markup what) { html_ << "<div><dt>" << what << "</dt><dd>"; }
    void end() { html_ << "</dd></div>"; }
    void why(std::string_view reason) {
        if (!reason.empty()) html_ << "<span class=\"why\">" << HtmlText{reason} << "</span>";
    }
    void row(Markup what, std::string_view value, std::string_view reason = {}) {
        begin(what);
        html_ << HtmlText{value};
        why(reason);
        end();
    }

    void writeNames() {
        begin(network_.network.details.meshID ? Markup("Mesh") : "Name");
        writeName(html_, network_);
        const std::string octets = octetText(octetsOf(nameOf(network_.network)));
        if (!octets.empty()) html_ << " <span class=\"u\">" << HtmlText{octets} << "</span>";
        end();

        begin("Address");
        html_ << "<code>" << HtmlText{addressText(network_)} << "</code> ";
        const auto* const makers = data_.options.makers;
        const auto maker = makers != nullptr ? makers->find(network_.network.bssid) : std::nullopt;
        if (network_.network.bssid.isLocal()) {
            html_ << "locally administered";
        } else if (maker) {
            html_ << shownText(*maker, {});
        }
        end();

        const std::string& device = network_.network.details.accessPoint;
        if (device.empty()) return;
        begin("Access point");
        html_ << "<bdi>" << shownText(device, {}) << "</bdi>";
        why("the maker\u2019s element");
        end();
    }

    // Each value with the reason for it, as `halvane decode --explain` tells it. What comes from
    // the frames of another network has no elements here.
    void writeExplained() {
        std::optional<capture::Sighting> sighting;
        if (network_.network.heard != nullptr) sighting = network_.network.heard->sighting();
        const bool hasElements = sighting && sighting->record.ieBuffer();
        const air::Octets elements =
            hasElements ? air::Octets(sighting->record.ieBuffer()->bytes()) : air::Octets();
        const bool hasOrigin = sighting && sighting->origin;
        const ElementPlaces places(elements, hasOrigin ? sighting->origin->offset : 0);
        const auto rows =
            explainRows({.profile = profile_,
                         .elements = elements,
                         .places = places,
                         .radioFrequency = sighting ? sighting->radioFrequency : std::nullopt});
        for (std::size_t i = 0; i < rows.size(); ++i) {
            if (!rows[i].what.empty() || i == 0) beginRow(rows[i].what, i > 0);
            // Reasons end their lines themselves.
            if (rows[i].what.empty() && i > 0 && rows[i - 1].because.empty()) html_ << "<br/>";
            writeParts(html_, rows[i].value);
            if (rows[i].because.empty()) continue;
            html_ << "<span class=\"why\">";
            writeParts(html_, rows[i].because);
            html_ << "</span>";
        }
        if (!rows.empty()) end();
    }
    void beginRow(std::string_view what, bool isAfterAnother) {
        if (isAfterAnother) end();
        html_ << "<div><dt>" << HtmlText{what} << "</dt><dd>";
    }

    void writeHeard() {
        const SignalHistogram& signal = heard_.signal;
        if (network_.signal) {
            std::string text = signedText(*network_.signal) + " dBm median";
            if (signal.least() != signal.greatest()) {
                text +=
                    ", " + signedText(*signal.least()) + " to " + signedText(*signal.greatest());
            }
            row("Signal", text, "measured " + countedText(signal.count(), "time", "times"));
        } else {
            row("Signal", "not told");
        }
        const bool isOwn = network_.network.heard != nullptr;
        begin("Heard");
        html_ << HtmlText{countedText(heard_.frames(), "frame", "frames")}
              << (isOwn ? Markup("") : " of the network that tells of this one");
        if (heard_.firstTime) {
            const std::string first = utcSecondText(*heard_.firstTime);
            const std::string last = utcSecondText(*heard_.lastTime);
            why((first == last ? first : first + " to " + last) + " UTC");
        }
        end();
    }

    void writeSameRadio() {
        const Radio& radio = data_.radios[network_.radio];
        if (radio.networks.size() < 2) return;
        begin("Same radio");
        std::size_t written = 0;
        for (const std::size_t index : radio.networks) {
            const ReportNetwork& other = data_.networks[index];
            if (&other == &network_) continue;
            if (written++ == kMostNeighbours) break;
            if (written > 1) html_ << ", ";
            writeLinkAndAddress(html_, other);
        }
        if (radio.networks.size() - 1 > kMostNeighbours) {
            html_ << " and " << radio.networks.size() - 1 - kMostNeighbours << " more";
        }
        why("same access point, channel and width");
        end();
    }

    void writeOwnFindings() {
        if (profile_.findings.empty()) return;
        html_ << "<ul class=\"fl\">";
        for (const air::Finding& finding : profile_.findings) {
            const air::FindingInfo& info = finding.info();
            html_ << "<li>" << signOf(info.severity) << " <span class=\"vh\">"
                  << HtmlText{air::severityName(info.severity)} << ": </span>"
                  << HtmlText{info.sentence};
            if (!info.advice.empty()) {
                html_ << " <span class=\"u\">" << HtmlText{info.advice} << "</span>";
            }
            html_ << "</li>";
        }
        html_ << "</ul>";
    }

    void writeElements() {
        if (network_.network.heard == nullptr || !network_.hasOctets) return;
        const capture::Sighting sighting = network_.network.heard->sighting();
        const auto& buffer = sighting.record.ieBuffer();
        if (!buffer) return;
        const air::ElementRange elements(buffer->bytes());
        std::size_t count = 0;
        for (const air::Element& element : elements) count += element.octets.empty() ? 0 : 1;
        const std::string frame = sighting.origin && sighting.origin->frame > 0
                                      ? " of frame " + std::to_string(sighting.origin->frame)
                                      : std::string();
        html_ << "<details class=\"els\"><summary>"
              << HtmlText{countedText(count, "element", "elements")} << HtmlText{frame}
              << ", with their octets</summary><div class=\"scroll\" tabindex=\"0\" role=\"group\" "
                 "aria-label=\"Elements, scrolls sideways\"><table class=\"plain\"><thead><tr>"
                 "<th scope=\"col\">Octet</th><th scope=\"col\">Element</th>"
                 "<th scope=\"col\">Length</th><th scope=\"col\">Octets</th></tr></thead><tbody>";
        // As the reasons count.
        const std::size_t start = sighting.origin ? sighting.origin->offset : 0;
        for (const air::Element& element : elements) {
            writeElement(start + element.offset, air::elementName(element), element.body);
        }
        const air::TrailingOctets rest = elements.trailing();
        if (!rest.empty()) writeElement(start + rest.offset, "cut", rest.octets);
        html_ << "</tbody></table></div></details>";
    }

    void writeElement(std::size_t offset, std::string_view name, air::Octets octets) {
        html_ << "<tr><td class=\"n\">" << offset << "</td><td>" << HtmlText{name}
              << "</td><td class=\"n\">" << octets.size() << "</td><td><code>"
              << HtmlText{octetText(octets)} << "</code></td></tr>";
    }

    HtmlWriter& html_;
    const ReportData& data_;
    const ReportNetwork& network_;
    const air::BssProfile& profile_;
    const NetworkStatistics& heard_;
};

}  // namespace

void writeDetails(HtmlWriter& html, const ReportData& data, const ReportNetwork& network) {
    DetailsWriter(html, data, network).write();
}

}  // namespace halvane::tool
