#include "tools/halvane/report/channel_chart.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "halvane/air/channel.h"
#include "halvane/air/channel_use.h"

#include "tools/halvane/output/shown_text.h"
#include "tools/halvane/report/channel_shape.h"
#include "tools/halvane/report/channel_use.h"
#include "tools/halvane/report/chart_labels.h"
#include "tools/halvane/report/chart_scale.h"
#include "tools/halvane/report/page_words.h"
#include "tools/halvane/report/radar_ranges.h"

namespace halvane::tool {

namespace {

constexpr double kRangeLine = 20;  // pixels, as all below
constexpr double kNumberLine = 361;
constexpr double kCellTop = 370;
constexpr double kCellLine = 383;
constexpr double kToldLine = 403;
constexpr double kToldRow = 20;
constexpr double kBarsTop = 402;
constexpr double kBarRow = 17;
constexpr double kBarLine = 9.5;  // from the bar's top to the baseline of its name
constexpr double kBarGap = 8;
constexpr double kFoot = 4;
constexpr double kCellInset = 0.06;   // per cent
constexpr double kRangeInset = 0.15;  // per cent
constexpr int kMiddleSignal = -55;    // dBm, at half the height
constexpr std::size_t kCellSteps = 4;
constexpr std::size_t kOwnBonus = 6;  // dB

// What differs from band to band.
struct BandPicture {
    air::Band band;
    std::string_view key;  // for ids and classes
    Markup style;
    ChartWidths widths;
};
constexpr BandPicture kPictures[] = {
    {air::Band::Ghz2, "24", "scroll ch24", {592, 1010, 1310}},
    {air::Band::Ghz5, "5", "scroll ch5", {692, 1010, 1310}},
    {air::Band::Ghz6, "6", "scroll ch6", {692, 1010, 1310}},
};
constexpr std::array<Markup, 3> kLevels = {"l0", "l1", "l2"};
constexpr std::array<Markup, 3> kLevelNotes = {"m-l0", "m-l1", "m-l2"};

// How strongly shapes are filled, by how many lie over each other.
Markup densityOf(std::size_t most) {
    if (most < 4) return "chart";
    if (most < 9) return "chart d1";
    return most < 16 ? Markup("chart d2") : "chart d3";
}

Markup shadeOf(std::size_t count, std::size_t most) {
    constexpr std::array<Markup, kCellSteps + 1> kShades = {"b0", "b1", "b2", "b3", "b4"};
    const std::size_t all = std::max(most, kCellSteps);
    return kShades[(count * kCellSteps + all - 1) / all];
}

// From left to right, per cent.
struct Extents {
    double left, right;
};

// A name in the picture, isolated from what stands beside it.
std::string isolated(const ShownText& name) {
    return "\u2068" + name.octets() + "\u2069";
}

class ChannelChart {
  public:
    ChannelChart(HtmlWriter& html, const ReportData& data, const BandPicture& picture,
                 std::span<const FrequencyRange> radar)
        : html_(html),
          data_(data),
          picture_(picture),
          radar_(radar),
          scale_(*ChartScale::of(picture.band)),
          all_(radiosOf(data, picture.band)),
          cells_(channelCells(data, scale_, all_)),
          most_(mostRadios(cells_)) {
        // A channel that few countries have is shown where it is used.
        std::erase_if(cells_, [&](const ChannelCell& cell) {
            return picture.band == air::Band::Ghz2 && cell.number > 13 && cell.radios == 0;
        });
        hasTold_ =
            std::ranges::any_of(cells_, [](const ChannelCell& cell) { return cell.told > 0; });
        chooseShapes();
    }

    bool isEmpty() const { return all_.empty(); }

    void write() {
        html_ << "<figure class=\"card\" data-band=\"" << bandText() << "\"><figcaption><h3>"
              << bandText() << " GHz <span class=\"h3s\">" << HtmlText{countText()}
              << "</span></h3></figcaption><div class=\"" << picture_.style
              << "\" tabindex=\"0\" role=\"group\" aria-label=\"" << bandText()
              << " GHz chart, scrolls sideways\">";
        writePicture();
        html_ << "</div>";
        writeNotes();
        writeTable();
        html_ << "</figure>\n";
    }

  private:
    HtmlText bandText() const { return {air::bandName(picture_.band)}; }

    std::string countText() const {
        std::size_t networks = 0;
        for (const std::size_t index : all_) networks += data_.radios[index].networks.size();
        return countedText(all_.size(), "radio", "radios") + ", " +
               countedText(networks, "network", "networks");
    }

    // Own radios and strong ones come first, up to the limit.
    void chooseShapes() {
        std::vector<std::size_t> chosen = all_;
        std::stable_partition(chosen.begin(), chosen.end(),
                              [&](std::size_t index) { return data_.radios[index].isOwn; });
        if (chosen.size() > data_.limits.shapes) chosen.resize(data_.limits.shapes);
        std::ranges::sort(chosen);
        for (const std::size_t index : chosen) {
            (data_.radios[index].signal ? shapes_ : bars_).push_back(index);
        }
        notDrawn_ = all_.size() - chosen.size();
    }

    double barsTop() const { return kBarsTop + (hasTold_ ? kToldRow : 0); }

    void writePicture() {
        // The bars decide how high the picture is.
        HtmlWriter bars;
        writeBars(bars);
        const double height = barRows_ == 0
                                  ? barsTop() - kFoot
                                  : barsTop() + kBarRow * static_cast<double>(barRows_) + kFoot;
        html_ << "<svg class=\"" << densityOf(most_) << "\" height=\"" << Fixed{height, 0}
              << "\" role=\"img\" aria-labelledby=\"ct" << HtmlText{picture_.key}
              << "\">\n<title id=\"ct" << HtmlText{picture_.key} << "\">" << bandText()
              << " GHz: " << HtmlText{countText()}
              << ". The table below the chart says the same in words.</title>\n";
        writeFills(html_, picture_.key);
        writeRanges();
        writeScale();
        writeCells();
        for (const std::size_t index : shapes_) {
            writeShape(html_, data_, data_.radios[index], {scale_, picture_.key});
        }
        if (shapes_.empty()) {
            html_ << "<text x=\"50%\" y=\"" << Fixed{ChartScale::yOf(kMiddleSignal), 0}
                  << "\" class=\"pt\">The signal of no radio is told.</text>\n";
        }
        html_.append(bars);
        writeTold();
        writeLine(ChartScale::kLeft, ChartScale::kRight, ChartScale::kBottom, "axis");
        writeLabels();
        html_ << "</svg>";
    }

    // --- The ground ---

    void writeLine(double left, double right, double y, Markup style) {
        html_ << "<line x1=\"" << Fixed{left, 2} << "%\" x2=\"" << Fixed{right, 2} << "%\" y1=\""
              << Fixed{y} << "\" y2=\"" << Fixed{y} << "\" class=\"" << style << "\"/>\n";
    }

    bool isRadar(const FrequencyRange& range) const {
        const double middle = (range.low + range.high) / 2;
        return std::ranges::any_of(
            radar_, [&](const FrequencyRange& radar) { return radar.contains(middle); });
    }

    void writeRanges() {
        for (const FrequencyRange& radar : radar_) {
            for (const FrequencyRange& part : scale_.shown(radar)) {
                const double left = scale_.xOf(part.low);
                html_ << "<rect x=\"" << Fixed{left, 2} << "%\" width=\""
                      << Fixed{scale_.xOf(part.high) - left, 2} << "%\" y=\""
                      << Fixed{ChartScale::kTop, 0} << "\" height=\""
                      << Fixed{ChartScale::kBottom - ChartScale::kTop, 0} << "\" class=\"dfs\"/>\n";
            }
        }
        for (const NamedRange& named : scale_.namedRanges()) {
            const double left = scale_.xOf(named.range.low) + kRangeInset;
            const double right = scale_.xOf(named.range.high) - kRangeInset;
            writeLine(left, right, kRangeLine, "part");
            html_ << "<text x=\"" << Fixed{(left + right) / 2, 2} << "%\" y=\""
                  << Fixed{kRangeLine - 5, 0} << "\" class=\"pt\">" << HtmlText{named.name}
                  << (isRadar(named.range) ? Markup(" \u00B7 radar") : "") << "</text>\n";
        }
    }

    void writeScale() {
        constexpr int kStep = 10;
        for (int signal = -20; signal > ChartScale::kWeakest; signal -= kStep) {
            const double y = ChartScale::yOf(signal);
            writeLine(ChartScale::kLeft, ChartScale::kRight, y, "grid");
            html_ << "<text x=\"" << Fixed{ChartScale::kLeft - 0.5, 2} << "%\" y=\""
                  << Fixed{y + 3.5} << "\" class=\"yt\">" << HtmlText{signedText(signal)}
                  << "</text>\n";
        }
        html_ << "<text x=\"0\" y=\"38\" class=\"yt u\">dBm</text>\n";
    }

    bool isMainChannel(int number) const {
        if (picture_.band == air::Band::Ghz2) return number == 1 || number == 6 || number == 11;
        return picture_.band == air::Band::Ghz6;
    }

    void writeCells() {
        for (const ChannelCell& cell : cells_) {
            const double middle = scale_.xOf(cell.frequency);
            const double left = scale_.xOf(cell.frequency - scale_.cellWidth() / 2) + kCellInset;
            const double right = scale_.xOf(cell.frequency + scale_.cellWidth() / 2) - kCellInset;
            if (scale_.isNumbered(cell.number)) {
                html_ << "<text x=\"" << Fixed{middle, 2} << "%\" y=\"" << Fixed{kNumberLine, 0}
                      << "\" class=\"xt" << (isMainChannel(cell.number) ? Markup(" psc") : "")
                      << "\">" << cell.number << "</text>\n";
            }
            const Markup shade = shadeOf(cell.radios, most_);
            html_ << "<rect x=\"" << Fixed{left, 2} << "%\" width=\"" << Fixed{right - left, 2}
                  << "%\" y=\"" << Fixed{kCellTop, 0} << "\" height=\"18\" class=\"busy " << shade
                  << "\"><title>channel " << cell.number << ": "
                  << HtmlText{countedText(cell.radios, "radio", "radios")} << "</title></rect>\n";
            if (cell.radios == 0) continue;
            html_ << "<text x=\"" << Fixed{middle, 2} << "%\" y=\"" << Fixed{kCellLine, 0}
                  << "\" class=\"bt\">" << cell.radios << "</text>\n";
        }
        html_ << "<text x=\"0\" y=\"383\" class=\"yt u\">radios</text>\n";
        if (hasTold_) html_ << "<text x=\"0\" y=\"403\" class=\"yt u\">told</text>\n";
        if (!bars_.empty()) {
            html_ << "<text x=\"0\" y=\"" << Fixed{barsTop() + kBarLine}
                  << "\" class=\"yt u\">no dBm</text>\n";
        }
    }

    void writeTold() {
        for (const ChannelCell& cell : cells_) {
            if (cell.told == 0) continue;
            const double x = scale_.xOf(cell.frequency);
            html_ << "<circle cx=\"" << Fixed{x, 2} << "%\" cy=\"" << Fixed{ChartScale::kBottom, 0}
                  << "\" r=\"4\" class=\"told\"/>\n<text x=\"" << Fixed{x, 2} << "%\" y=\""
                  << Fixed{kToldLine, 0} << "\" class=\"bt\">" << cell.told << "</text>\n";
        }
    }

    // --- Radios without a signal ---

    struct Bar {
        double left, right;  // pixels at the least width, with the name
        bool isNameLeft = false;
    };

    Bar barOf(const Extents& extents, double nameWidth) const {
        const double width = picture_.widths.front();
        const double pixels = nameWidth + kBarGap;
        Bar bar{extents.left / 100 * width, extents.right / 100 * width};
        const double end = ChartScale::kRight / 100 * width;
        bar.isNameLeft = bar.right + pixels > end;
        (bar.isNameLeft ? bar.left : bar.right) += bar.isNameLeft ? -pixels : pixels;
        return bar;
    }

    void writeBars(HtmlWriter& html) {
        std::vector<double> ends;  // pixels, of each row
        for (const std::size_t index : bars_) {
            const Radio& radio = data_.radios[index];
            const auto extents = extentsOf(radio);
            if (!extents) continue;
            const ShownText label = radioLabel(data_, radio);
            const Bar bar = barOf(*extents, textWidth(label.octets()));
            const auto row =
                std::ranges::find_if(ends, [&](double end) { return end + kBarGap < bar.left; });
            const auto number = static_cast<std::size_t>(row - ends.begin());
            if (number == data_.limits.untoldRows) {
                ++notDrawn_;
                continue;
            }
            if (row == ends.end()) ends.push_back(0);
            ends[number] = bar.right;
            writeBar(html, radio, *extents, label, {bar.isNameLeft, number});
        }
        barRows_ = ends.size();
    }

    struct BarPlace {
        bool isNameLeft;
        std::size_t row;
    };

    void writeBar(HtmlWriter& html, const Radio& radio, const Extents& extents,
                  const ShownText& label, const BarPlace& place) const {
        const bool isNameLeft = place.isNameLeft;
        const double top = barsTop() + kBarRow * static_cast<double>(place.row);
        writeShape(html, data_, radio, {scale_, picture_.key, top});
        html << "<text x=\"" << Fixed{isNameLeft ? extents.left : extents.right, 2} << "%\" dx=\""
             << (isNameLeft ? Markup("-5") : "5") << "\" y=\"" << Fixed{top + kBarLine}
             << "\" class=\"lb " << (isNameLeft ? Markup("le ") : "ls ")
             << classOf(tintOf(data_, radio.isOwn)) << "\" data-n=\""
             << HtmlText{idsOf(data_, radio.networks)} << "\">" << HtmlText{isolated(label)}
             << "</text>\n";
    }

    // --- Names ---

    // From the first to the last frequency of a radio that the picture shows, per cent.
    std::optional<Extents> extentsOf(const Radio& radio) const {
        std::optional<Extents> all;
        for (const Segment& segment : segmentsOf(data_.channelOf(radio))) {
            for (const FrequencyRange& part : scale_.shown(segment.range)) {
                const Extents own{scale_.xOf(part.low), scale_.xOf(part.high)};
                if (!all) all = own;
                all->right = own.right;
            }
        }
        return all;
    }

    // One for each segment of each radio, the strongest first; own ones count as stronger.
    void collectWishes() {
        std::vector<std::size_t> order = shapes_;
        std::ranges::stable_sort(order, std::greater(), [&](std::size_t index) {
            const Radio& radio = data_.radios[index];
            return *radio.signal + (radio.isOwn ? static_cast<int>(kOwnBonus) : 0);
        });
        for (const std::size_t index : order) {
            const Radio& radio = data_.radios[index];
            const ShownText label = radioLabel(data_, radio);
            for (const Segment& segment : segmentsOf(data_.channelOf(radio))) {
                const auto parts = scale_.shown(segment.range);
                if (parts.empty()) continue;
                wishes_.push_back({.left = scale_.xOf(parts.front().low),
                                   .right = scale_.xOf(parts.back().high),
                                   .roof = ChartScale::yOf(*radio.signal),
                                   .width = textWidth(label.octets())});
                wishers_.push_back(index);
            }
        }
    }

    void writeLabels() {
        collectWishes();
        const auto places = placeLabels(wishes_, picture_.widths);
        for (std::size_t i = 0; i < places.size(); ++i) {
            for (std::size_t level = 0; level < unnamed_.size(); ++level) {
                if (!places[i] || places[i]->level > level) ++unnamed_[level];
            }
            if (places[i]) writeLabel(data_.radios[wishers_[i]], *places[i], wishes_[i].roof);
        }
    }

    void writeLabel(const Radio& radio, const PlacedLabel& place, double roof) {
        const Markup tint = classOf(tintOf(data_, radio.isOwn));
        const std::string ids = idsOf(data_, radio.networks);
        if (place.hasLeader) {
            html_ << "<line x1=\"" << Fixed{place.x, 2} << "%\" x2=\"" << Fixed{place.x, 2}
                  << "%\" y1=\"" << Fixed{place.y + 3} << "\" y2=\"" << Fixed{roof - 1}
                  << "\" class=\"lead " << kLevels[place.level] << " " << tint << "\" data-n=\""
                  << HtmlText{ids} << "\"/>\n";
        }
        html_ << "<text x=\"" << Fixed{place.x, 2} << "%\" y=\"" << Fixed{place.y}
              << "\" class=\"lb " << kLevels[place.level] << " " << tint << "\" data-n=\""
              << HtmlText{ids} << "\">" << HtmlText{isolated(radioLabel(data_, radio))}
              << "</text>\n";
    }

    // --- Below the picture ---

    void writeNotes() {
        html_ << "<p class=\"foot lab\">";
        for (std::size_t level = 0; level < unnamed_.size(); ++level) {
            if (unnamed_[level] == 0) continue;
            html_ << "<span class=\"" << kLevelNotes[level] << "\">" << unnamed_[level] << " of "
                  << HtmlText{countedText(wishes_.size(), "shape", "shapes")}
                  << (unnamed_[level] == 1 ? Markup(" carries") : " carry")
                  << " no label for want of room; the table names "
                  << (unnamed_[level] == 1 ? Markup("it") : "them") << ".</span>";
        }
        html_ << "</p>";
        if (notDrawn_ == 0) return;
        html_ << "<p class=\"foot\">" << HtmlText{countedText(notDrawn_, "radio is", "radios are")}
              << " counted and not drawn, to keep the picture readable.</p>";
    }

    void writeTable() {
        html_ << "<details class=\"alt\"><summary>As a table: " << bandText()
              << " GHz by channel</summary><div class=\"scroll\" tabindex=\"0\" role=\"group\" "
                 "aria-label=\""
              << bandText()
              << " GHz by channel, scrolls sideways\"><table class=\"plain\"><thead><tr>"
                 "<th scope=\"col\">Channel</th><th scope=\"col\">Radios over it</th>"
                 "<th scope=\"col\">Networks</th><th scope=\"col\">of these radios here "
                 "primary</th><th scope=\"col\">Strongest, dBm</th>"
                 "<th scope=\"col\">Load told by them</th></tr></thead><tbody>";
        for (const ChannelCell& cell : cells_) {
            if (cell.radios > 0) writeTableRow(cell);
        }
        html_ << "</tbody></table></div></details>";
    }

    void writeTableRow(const ChannelCell& cell) {
        html_ << "<tr><th scope=\"row\">" << cell.number << "</th><td>" << cell.radios
              << "</td><td>" << cell.networks << "</td><td>" << cell.primaries << "</td><td>";
        if (cell.strongest->signal) {
            writeLink(html_, *cell.strongest);
            html_ << " " << HtmlText{signedText(*cell.strongest->signal)};
        } else {
            html_ << untold();
        }
        html_ << "</td><td>";
        writeLoads(cell.loads);
        html_ << "</td></tr>";
    }

    void writeLoads(std::span<const int> loads) {
        constexpr std::size_t kMost = 3;
        if (loads.empty()) html_ << untold();
        for (std::size_t i = 0; i < std::min(kMost, loads.size()); ++i) {
            html_ << (i == 0 ? Markup("") : ", ") << percentOfLoad(loads[i]) << "\u00A0%";
        }
        if (loads.size() > kMost) html_ << " \u2026";
    }

    HtmlWriter& html_;
    const ReportData& data_;
    const BandPicture& picture_;
    const std::span<const FrequencyRange> radar_;
    const ChartScale scale_;
    const std::vector<std::size_t> all_;  // indexes of radios, as all below
    std::vector<ChannelCell> cells_;
    const std::size_t most_;
    bool hasTold_ = false;
    std::vector<std::size_t> shapes_;  // with a signal
    std::vector<std::size_t> bars_;    // without one
    std::size_t notDrawn_ = 0;
    std::size_t barRows_ = 0;
    std::vector<LabelWish> wishes_;
    std::vector<std::size_t> wishers_;
    std::array<std::size_t, 3> unnamed_{};  // shapes without a name, by level
};

// A sample for the legend: a shape of 46 by 26 pixels.
void writeLegendShape(HtmlWriter& html, Tint tint, Markup more) {
    html << "<svg width=\"46\" height=\"26\" aria-hidden=\"true\" class=\"" << classOf(tint)
         << "\"><rect x=\"2\" y=\"6\" width=\"42\" height=\"20\" class=\"bd\" fill=\"url(#gk"
         << (tint == Tint::Own ? Markup("o") : "t")
         << ")\"/><path d=\"M2 26V6M44 26V6\" class=\"wl\"/><path d=\"M2 6H44\" class=\"rf\"/>"
         << more << "</svg>";
}

void writeLegend(HtmlWriter& html, const ReportData& data) {
    const Tint others = data.hasOwn ? Tint::Other : Tint::Own;
    html << "<svg width=\"0\" height=\"0\" class=\"vh\" aria-hidden=\"true\">";
    writeFills(html, "k");
    html << "</svg><ul class=\"legend\" aria-label=\"How to read the charts\">";
    if (data.hasOwn) {
        html << "<li>";
        writeLegendShape(html, Tint::Own, "");
        html << "your network</li>";
    }
    html << "<li>";
    writeLegendShape(html, others, "");
    html << (data.hasOwn ? Markup("another") : "a radio") << "</li><li>";
    writeLegendShape(html, others, "<path d=\"M3 6H13\" class=\"prim\"/>");
    html << "primary 20 MHz</li><li><svg width=\"46\" height=\"26\" aria-hidden=\"true\" class=\""
         << classOf(others)
         << "\"><rect x=\"2\" y=\"6\" width=\"21\" height=\"20\" class=\"bd\" fill=\"url(#gkt)\"/>"
            "<rect x=\"23\" y=\"6\" width=\"11\" height=\"20\" fill=\"url(#hk)\"/>"
            "<rect x=\"34\" y=\"6\" width=\"10\" height=\"20\" class=\"bd\" fill=\"url(#gkt)\"/>"
            "<path d=\"M2 26V6M44 26V6\" class=\"wl\"/><path d=\"M2 6H23M34 6H44\" class=\"rf\"/>"
            "<path d=\"M23 6H34\" class=\"rf pd\"/></svg>punctured: not used</li><li>"
            "<svg width=\"46\" height=\"26\" aria-hidden=\"true\" class=\""
         << classOf(others)
         << " bare\"><rect x=\"2\" y=\"9\" width=\"42\" height=\"11\" rx=\"2\" class=\"ns\"/></svg>"
            "signal not told</li><li><svg width=\"46\" height=\"26\" aria-hidden=\"true\">"
            "<rect x=\"2\" y=\"4\" width=\"42\" height=\"22\" class=\"dfs\"/></svg>radar (DFS)"
            "</li></ul>\n";
}

// Networks that no picture shows.
void writeOthers(HtmlWriter& html, const ReportData& data) {
    const auto isDrawn = [&](const ReportNetwork& network) {
        const air::ChannelUse& channel = network.network.profile.channel;
        return channel.band && channel.span->center1 && ChartScale::of(**channel.band);
    };
    const auto drawn = std::ranges::count_if(data.networks, isDrawn);
    const std::size_t others = data.networks.size() - static_cast<std::size_t>(drawn);
    if (others == 0) return;
    html << "<p class=\"foot\">" << HtmlText{countedText(others, "network", "networks")}
         << " of another band, or without a channel, in the table alone.</p>";
}

}  // namespace

void writeChannels(HtmlWriter& html, const ReportData& data) {
    html << "<section id=\"channels\"><h2>Channels</h2><p class=\"intro\">A shape covers the "
            "frequencies that a radio uses; its height is the signal. Names on one radio share one "
            "shape (\u00D74). The row below counts the radios over each channel.</p>";
    writeLegend(html, data);
    const auto radar = radarRanges(commonCountry(data));
    std::vector<std::string> empty;
    for (const BandPicture& picture : kPictures) {
        ChannelChart chart(html, data, picture, radar);
        if (chart.isEmpty()) {
            empty.emplace_back(air::bandName(picture.band));
        } else {
            chart.write();
        }
    }
    for (const std::string& band : empty) {
        html << "<p class=\"foot\">No network was heard on " << HtmlText{band} << " GHz.</p>";
    }
    writeOthers(html, data);
    html << "</section>\n";
}

}  // namespace halvane::tool
