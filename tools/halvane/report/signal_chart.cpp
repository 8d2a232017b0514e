#include "tools/halvane/report/signal_chart.h"

#include <algorithm>
#include <functional>
#include <optional>
#include <string>
#include <utility>

#include "tools/halvane/networks/survey_reader.h"
#include "tools/halvane/output/rounded.h"
#include "tools/halvane/output/time_text.h"
#include "tools/halvane/report/page_words.h"
#include "tools/halvane/survey/saturated.h"

namespace halvane::tool {

namespace {

constexpr std::int64_t kMinute = 60'000'000'000;  // nanoseconds
constexpr int kManyBins = 60;
constexpr int kFewBins = 30;
constexpr int kLongestGap = 5;            // empty bins within a curve
constexpr std::uint64_t kLeastCount = 8;  // measurements of a picture
constexpr double kWidth = 240;            // units of a picture
constexpr double kUnitsPerDecibel = 0.75;
constexpr double kMargin = 2;    // above and below, so that no stroke is cut
constexpr int kStrongest = -15;  // dBm, at the top
constexpr int kWeakest = -95;

struct Picture {
    const ReportNetwork* network;
    std::uint64_t count = 0;  // of measurements
    double mean = 0;          // dBm
};

double yOf(double signal) {
    const double below = kStrongest - std::clamp<double>(signal, kWeakest, kStrongest);
    return kMargin + below * kUnitsPerDecibel;
}

// Runs of points without a longer gap.
std::vector<std::span<const SignalPoint>> runsOf(std::span<const SignalPoint> points, int gap) {
    std::vector<std::span<const SignalPoint>> runs;
    std::size_t first = 0;
    for (std::size_t i = 1; i <= points.size(); ++i) {
        if (i < points.size() && points[i].bin - points[i - 1].bin <= gap + 1) continue;
        runs.push_back(points.subspan(first, i - first));
        first = i;
    }
    return runs;
}

class PictureWriter {
  public:
    PictureWriter(HtmlWriter& html, const ReportData& data, const Stretch& stretch)
        : html_(html),
          data_(data),
          stretch_(stretch),
          length_(static_cast<double>(saturatedDifference(stretch.end, stretch.begin))),
          bins_(binsOf(stretch)) {}

    void write(const Picture& picture) {
        const ReportNetwork& network = *picture.network;
        const auto points = pointsOf(network.network.statistics->history, stretch_);
        html_ << "<li class=\"mult " << classOf(tintOf(data_, network.isOwn)) << "\" data-n=\""
              << HtmlText{network.id} << "\"><p class=\"mh\">";
        writeLink(html_, network);
        html_ << "<span class=\"mv\"><b>" << HtmlText{signedText(rounded(picture.mean))}
              << "</b> <span class=\"u\">dBm</span></span></p>"
                 "<svg viewBox=\"0 0 240 64\" preserveAspectRatio=\"none\" aria-hidden=\"true\" "
                 "height=\"64\">";
        for (const int signal : {-30, -50, -70, -90}) {
            html_ << "<line x1=\"0\" x2=\"240\" y1=\"" << Fixed{yOf(signal)} << "\" y2=\""
                  << Fixed{yOf(signal)} << "\" class=\"grid\"/>";
        }
        for (const auto run : runsOf(points, gapOf(network))) writeRun(run);
        html_ << "</svg><p class=\"mf\"><span>";
        writeFoot(picture, points);
        html_ << "</p></li>";
    }

  private:
    // Slots that are longer than bins leave bins empty.
    int gapOf(const ReportNetwork& network) const {
        const auto slot = static_cast<double>(network.network.statistics->history.slotLength());
        const double binsOfSlot = length_ > 0 ? slot * bins_ / length_ : 0;
        return std::max(kLongestGap, static_cast<int>(std::min(2 * binsOfSlot, kWidth)));
    }

    double xOf(const SignalPoint& point) const { return (point.bin + 0.5) * kWidth / bins_; }

    void writeRun(std::span<const SignalPoint> run) {
        if (run.size() == 1) return writeDot(run.front());
        html_ << "<polygon points=\"";
        for (const SignalPoint& point : run) writePlace(point, point.greatest);
        for (std::size_t i = run.size(); i-- > 0;) writePlace(run[i], run[i].least);
        html_ << "\" class=\"env\"/><polyline points=\"";
        for (const SignalPoint& point : run) writePlace(point, point.mean);
        html_ << "\" class=\"ln\"/>";
    }

    void writePlace(const SignalPoint& point, double signal) {
        html_ << Fixed{xOf(point)} << "," << Fixed{yOf(signal)} << " ";
    }

    void writeDot(const SignalPoint& point) {
        const double x = xOf(point);
        html_ << "<line x1=\"" << Fixed{x} << "\" x2=\"" << Fixed{x} << "\" y1=\""
              << Fixed{yOf(point.greatest)} << "\" y2=\"" << Fixed{yOf(point.least)}
              << "\" class=\"rng\"/><line x1=\"" << Fixed{x} << "\" x2=\"" << Fixed{x + 0.1}
              << "\" y1=\"" << Fixed{yOf(point.mean)} << "\" y2=\"" << Fixed{yOf(point.mean)}
              << "\" class=\"dot\"/>";
    }

    void writeFoot(const Picture& picture, std::span<const SignalPoint> points) {
        int least = 0;
        int greatest = kWeakest * 2;
        for (const SignalPoint& point : points) {
            least = std::min(least, point.least);
            greatest = std::max(greatest, point.greatest);
        }
        html_ << HtmlText{signedText(least)};
        if (greatest != least) html_ << " to " << HtmlText{signedText(greatest)};
        html_ << "</span><span>" << HtmlText{countedText(picture.count, "time", "times")};
        const auto& channel = picture.network->network.profile.channel.primaryChannel;
        if (channel) html_ << " \u00B7 ch " << **channel;
        html_ << "</span>";
    }

    HtmlWriter& html_;
    const ReportData& data_;
    const Stretch& stretch_;
    const double length_;  // nanoseconds
    const int bins_;
};

// Nothing if the network was not measured often enough. The points are left out: a flood of
// networks has far more pictures than the page shows.
std::optional<Picture> pictureOf(const ReportNetwork& network, const Stretch& stretch) {
    // Statistics of another network's frames are told there.
    if (network.network.heard == nullptr) return std::nullopt;
    Picture picture{&network};
    for (const SignalPoint& point : pointsOf(network.network.statistics->history, stretch)) {
        picture.mean += point.mean * static_cast<double>(point.count);
        picture.count += point.count;
    }
    if (picture.count < kLeastCount) return std::nullopt;
    picture.mean /= static_cast<double>(picture.count);
    return picture;
}

bool hasPicture(const ReportData& data, const Stretch& stretch) {
    return std::ranges::any_of(data.networks, [&](const ReportNetwork& network) {
        return pictureOf(network, stretch).has_value();
    });
}

// The strongest first. Where there are too many, own ones come before all others.
std::vector<Picture> picturesOf(const ReportData& data, const Stretch& stretch) {
    std::vector<Picture> pictures;
    for (const ReportNetwork& network : data.networks) {
        if (const auto picture = pictureOf(network, stretch)) pictures.push_back(*picture);
    }
    std::ranges::stable_sort(pictures, std::greater(), &Picture::mean);
    if (pictures.size() > data.limits.pictures) {
        std::stable_partition(pictures.begin(), pictures.end(),
                              [](const Picture& picture) { return picture.network->isOwn; });
    }
    return pictures;
}

void writePictures(HtmlWriter& html, const ReportData& data, const Stretch& stretch,
                   std::span<const Picture> pictures) {
    PictureWriter writer(html, data, stretch);
    html << "<ol class=\"mults\">";
    for (const Picture& picture : pictures) writer.write(picture);
    html << "</ol>";
}

void writeStretch(HtmlWriter& html, const ReportData& data, const Stretch& stretch,
                  std::span<const Picture> pictures) {
    html << "<h3><bdi>" << fileName(data.files[stretch.captures.front()]) << "</bdi>";
    if (stretch.captures.size() > 1) html << " and " << stretch.captures.size() - 1 << " more";
    html << " <span class=\"h3s\">" << HtmlText{utcSecondText(stretch.begin)} << " UTC, "
         << HtmlText{durationText(saturatedDifference(stretch.end, stretch.begin))}
         << "</span></h3>";
    const std::size_t shown = std::min(pictures.size(), data.limits.pictures);
    writePictures(html, data, stretch, pictures.first(shown));
    if (shown == pictures.size()) return;
    const std::size_t more = std::min(pictures.size() - shown, data.limits.morePictures);
    html << "<details class=\"alt\"><summary>"
         << HtmlText{countedText(more, "weaker one", "weaker ones")} << "</summary>";
    writePictures(html, data, stretch, pictures.subspan(shown, more));
    html << "</details>";
    const std::size_t left = pictures.size() - shown - more;
    if (left == 0) return;
    html << "<p class=\"foot\">" << HtmlText{countedText(left, "network", "networks")}
         << " without a picture, for want of room.</p>";
}

constexpr Markup kIntro =
    "<p class=\"intro\">One small picture a network that was measured 8 times or more: from left "
    "to "
    "right the whole capture, lines at \u221230, \u221250, \u221270 and \u221290 dBm. The curve is "
    "the mean, the shade behind it the least to the greatest.</p>";

Markup reasonForNone(const ReportData& data) {
    const auto hasTime = [](const SurveyedCapture& capture) {
        return capture.firstTime.has_value();
    };
    const auto hasSignal = [](const ReportNetwork& network) { return network.signal.has_value(); };
    if (std::ranges::none_of(data.networks, hasSignal)) return "The captures tell no signals.";
    if (std::ranges::none_of(data.captures, hasTime)) return "The captures tell no times.";
    return "No network was measured 8 times or more.";
}

}  // namespace

std::vector<Stretch> stretchesOf(std::span<const SurveyedCapture> captures) {
    std::vector<Stretch> all;
    for (std::size_t i = 0; i < captures.size(); ++i) {
        if (captures[i].firstTime) {
            all.push_back({*captures[i].firstTime, *captures[i].lastTime, {i}});
        }
    }
    std::ranges::stable_sort(all, {}, &Stretch::begin);
    std::vector<Stretch> joined;
    for (Stretch& stretch : all) {
        if (!joined.empty() && saturatedDifference(stretch.begin, joined.back().end) < kMinute) {
            joined.back().end = std::max(joined.back().end, stretch.end);
            joined.back().captures.push_back(stretch.captures.front());
        } else {
            joined.push_back(std::move(stretch));
        }
    }
    return joined;
}

int binsOf(const Stretch& stretch) {
    return saturatedDifference(stretch.end, stretch.begin) < kMinute ? kFewBins : kManyBins;
}

std::vector<SignalPoint> pointsOf(const SignalHistory& history, const Stretch& stretch) {
    const int bins = binsOf(stretch);
    const auto slot = static_cast<double>(history.slotLength());
    const auto begin = static_cast<double>(stretch.begin);
    const double length = std::max(static_cast<double>(stretch.end) - begin, 1.0);
    const auto startOf = [&](const SignalHistory::Slot& heard) {
        return static_cast<double>(heard.index) * slot;
    };
    const auto slots = history.slots();
    auto first = std::ranges::partition_point(
        slots, [&](const SignalHistory::Slot& heard) { return startOf(heard) + slot < begin; });
    std::vector<SignalPoint> points;
    for (const SignalHistory::Slot& heard : std::span(first, slots.end())) {
        const double start = startOf(heard);
        if (start > begin + length) break;
        const double part = (start + slot / 2 - begin) / length;
        const int bin = std::clamp(static_cast<int>(part * bins), 0, bins - 1);
        if (points.empty() || points.back().bin != bin) {
            points.push_back({bin, heard.mean(), heard.least, heard.greatest, heard.count});
            continue;
        }
        SignalPoint& point = points.back();
        const auto before = static_cast<double>(point.count);
        point.count += heard.count;
        point.mean = (point.mean * before + static_cast<double>(heard.sum)) /
                     static_cast<double>(point.count);
        point.least = std::min<int>(point.least, heard.least);
        point.greatest = std::max<int>(point.greatest, heard.greatest);
    }
    return points;
}

void writeSignals(HtmlWriter& html, const ReportData& data) {
    html << "<section id=\"signal\"><h2>Signal over time</h2>";
    std::size_t shown = 0;
    std::size_t left = 0;
    for (const Stretch& stretch : stretchesOf(data.captures)) {
        if (shown == data.limits.stretches) {
            left += hasPicture(data, stretch) ? 1 : 0;
            continue;
        }
        const auto pictures = picturesOf(data, stretch);
        if (pictures.empty()) continue;
        if (shown++ == 0) html << kIntro;
        writeStretch(html, data, stretch, pictures);
    }
    if (shown == 0) html << "<p class=\"foot\">" << reasonForNone(data) << "</p>";
    if (left > 0) {
        html << "<p class=\"foot\">" << HtmlText{countedText(left, "capture", "captures")}
             << " without pictures, for want of room.</p>";
    }
    html << "</section>\n";
}

}  // namespace halvane::tool
