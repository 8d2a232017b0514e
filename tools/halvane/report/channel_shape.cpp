#include "tools/halvane/report/channel_shape.h"

#include <bitset>
#include <cstddef>
#include <string>
#include <vector>

#include "halvane/air/channel_use.h"

#include "tools/halvane/report/page_words.h"

namespace halvane::tool {

namespace {

constexpr double kInset = 0.05;         // per cent, between neighbours
constexpr double kPrimaryInset = 0.09;  // per cent
constexpr double kBarHeight = 11;       // pixels
constexpr double kHalfChannel = 10;     // MHz

// A part of a shape between two places, per cent.
struct Extent {
    double left, right;
};

class ShapeWriter {
  public:
    ShapeWriter(HtmlWriter& html, const ReportData& data, const Radio& radio,
                const ShapePlace& place)
        : html_(html),
          data_(data),
          radio_(radio),
          place_(place),
          channel_(data.channelOf(radio)),
          tint_(tintOf(data, radio.isOwn)),
          roof_(radio.signal ? ChartScale::yOf(*radio.signal) : place.barTop) {}

    void write() {
        const bool isLink = data_.strongestOf(radio_).place != ReportNetwork::Place::Nowhere;
        html_ << "<a";
        if (isLink) {
            html_ << " href=\"#" << HtmlText{data_.strongestOf(radio_).id} << "\" tabindex=\"-1\"";
        }
        html_ << " class=\"sh " << (radio_.signal ? Markup("") : "nos ") << classOf(tint_)
              << "\" data-n=\"" << HtmlText{idsOf(data_, radio_.networks)} << "\">";
        writeTitle();
        for (const Segment& segment : segmentsOf(channel_)) writeSegment(segment);
        if (channel_.span->width > 2 * kHalfChannel) writePrimary();
        html_ << "</a>\n";
    }

  private:
    void writeTitle() {
        const std::string& device = data_.strongestOf(radio_).network.details.accessPoint;
        html_ << "<title>" << HtmlText{data_.nameOf(radio_).octets()};
        if (!device.empty()) html_ << ": " << HtmlText{data_.strongestOf(radio_).name.octets()};
        if (radio_.networks.size() > 1) {
            html_ << ", " << HtmlText{countedText(radio_.networks.size(), "network", "networks")};
        }
        html_ << "\n";
        if (channel_.primaryChannel) html_ << "channel " << **channel_.primaryChannel << ", ";
        html_ << channel_.span->width << " MHz";
        const auto& mask = channel_.punctured;
        const std::size_t punctured = mask ? std::bitset<16>(**mask).count() : 0;
        if (punctured > 0) html_ << ", " << punctured << " \u00D7 20 MHz punctured";
        html_ << "\n";
        if (radio_.signal) {
            html_ << HtmlText{signedText(*radio_.signal)} << " dBm";
        } else {
            html_ << "signal not told";
        }
        html_ << "</title>\n";
    }

    std::vector<Extent> extentsOf(const FrequencyRange& range, double inset) const {
        std::vector<Extent> extents;
        for (const FrequencyRange& part : place_.scale.shown(range)) {
            // The end of a piece belongs to it, and not to the next one.
            extents.push_back(
                {place_.scale.xOf(part.low) + inset, place_.scale.xOf(part.high) - inset});
        }
        return extents;
    }

    void writeSegment(const Segment& segment) {
        const SegmentParts parts = partsOf(segment, channel_);
        for (const FrequencyRange& part : parts.used) {
            for (const Extent& extent : extentsOf(part, kInset)) writeUsed(extent);
        }
        for (const FrequencyRange& part : parts.punctured) {
            for (const Extent& extent : extentsOf(part, kInset)) writePunctured(extent);
        }
    }

    void writeRectangle(const Extent& extent, double bottom) {
        html_ << "<rect x=\"" << Fixed{extent.left, 2} << "%\" width=\""
              << Fixed{extent.right - extent.left, 2} << "%\" y=\"" << Fixed{roof_}
              << "\" height=\"" << Fixed{bottom - roof_} << "\"";
    }

    void writeRoof(const Extent& extent, Markup style) {
        html_ << "<line x1=\"" << Fixed{extent.left, 2} << "%\" x2=\"" << Fixed{extent.right, 2}
              << "%\" y1=\"" << Fixed{roof_} << "\" y2=\"" << Fixed{roof_} << "\" class=\"" << style
              << "\"/>\n";
    }

    void writeWall(double x) {
        html_ << "<line x1=\"" << Fixed{x, 2} << "%\" x2=\"" << Fixed{x, 2} << "%\" y1=\""
              << Fixed{roof_} << "\" y2=\"" << Fixed{ChartScale::kBottom, 0}
              << "\" class=\"wl\"/>\n";
    }

    void writeUsed(const Extent& extent) {
        if (!radio_.signal) {
            writeRectangle(extent, roof_ + kBarHeight);
            html_ << " rx=\"2\" class=\"ns\"/>\n";
            return;
        }
        writeRectangle(extent, ChartScale::kBottom);
        html_ << " class=\"bd\" fill=\"url(#g" << HtmlText{place_.key}
              << (tint_ == Tint::Own ? Markup("o") : "t") << ")\"/>\n";
        writeRoof(extent, "rf");
        writeWall(extent.left);
        writeWall(extent.right);
    }

    void writePunctured(const Extent& extent) {
        writeRectangle(extent, radio_.signal ? ChartScale::kBottom : roof_ + kBarHeight);
        html_ << " class=\"pu\" fill=\"url(#h" << HtmlText{place_.key} << ")\"/>\n";
        if (radio_.signal) writeRoof(extent, "rf pd");
    }

    void writePrimary() {
        if (!channel_.primaryFrequency) return;
        const double center = *channel_.primaryFrequency;
        const FrequencyRange primary{center - kHalfChannel, center + kHalfChannel};
        for (const Extent& extent : extentsOf(primary, kPrimaryInset)) writeRoof(extent, "prim");
    }

    HtmlWriter& html_;
    const ReportData& data_;
    const Radio& radio_;
    const ShapePlace& place_;
    const air::ChannelUse& channel_;
    const Tint tint_;
    const double roof_;
};

}  // namespace

void writeFills(HtmlWriter& html, std::string_view key) {
    html << "<defs><pattern id=\"h" << HtmlText{key}
         << "\" width=\"6\" height=\"6\" patternUnits=\"userSpaceOnUse\" "
            "patternTransform=\"rotate(45)\"><rect width=\"6\" height=\"6\" class=\"hb\"/>"
            "<line x1=\"0\" y1=\"0\" x2=\"0\" y2=\"6\" class=\"hl\"/></pattern>";
    for (const Tint tint : {Tint::Own, Tint::Other}) {
        html << "<linearGradient id=\"g" << HtmlText{key} << (tint == Tint::Own ? Markup("o") : "t")
             << "\" x2=\"0\" y2=\"1\" class=\"" << classOf(tint)
             << "\"><stop offset=\"0\" class=\"ga\"/><stop offset=\"1\" class=\"gb\"/>"
                "</linearGradient>";
    }
    html << "</defs>\n";
}

void writeShape(HtmlWriter& html, const ReportData& data, const Radio& radio,
                const ShapePlace& place) {
    ShapeWriter(html, data, radio, place).write();
}

}  // namespace halvane::tool
